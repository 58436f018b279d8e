// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

struct Program;
struct QslCard;
class QWidget;

// Has the QSL card of a contact drawn by Bagual, if that has a design for the own call, and offers to show the picture.
// What is missing is told in a box over `owner`, and then nothing is started.
void DrawQslCard(const Program &program, QWidget *owner, const QslCard &card);
