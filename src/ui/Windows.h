// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <memory>

struct Program;
class Form1;
class Form2;
class Form17;

// Makes each window once, on first use, and keeps it until the program ends.
class Windows {
public:
    Windows();
    ~Windows();

    // Must be called before any window is asked for; `program` outlives the windows.
    void SetProgram(Program &program) { program_ = &program; }

    Form1 &Main();
    Form2 &Settings();
    Form17 &CallQsos();

private:
    Program *program_ = nullptr;
    std::unique_ptr<Form1> form1_;
    std::unique_ptr<Form2> form2_;
    std::unique_ptr<Form17> form17_;
};
