// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QLineEdit;

// Lets the operator bring nothing but a grid locator into this field, by keys or in one piece (KeyFilter::Grid,
// TidyGrid). Texts that the program sets stay as they are. Whether the grid is whole is asked when the field is left.
void KeepGridShape(QLineEdit *field);
