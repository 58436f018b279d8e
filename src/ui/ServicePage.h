// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Services.h"

struct Program;
class QWidget;

// Shows the page of a service in the system's browser. Where none can be started that is told over `owner`, with the
// address.
void OpenServicePage(Program &program, QWidget *owner, Service service);
