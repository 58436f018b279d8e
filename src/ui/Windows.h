// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

struct Program;
class Form1;
class Form2;
class Form3;
class Form4;
class Form5;
class Form6;
class Form7;
class Form8;
class Form9;
class Form10;
class Form11;
class Form12;
class Form13;
class Form14;
class Form15;
class Form16;
class Form17;
class Form18;
class Form19;
class Form20;
class Form21;
class Form22;
class KeyerTest;
class Manual;
class Form33;
class QWidget;

// Makes each window once, on first use, and keeps it until the program ends.
class Windows {
public:
    Windows();
    ~Windows();

    // Must be called before any window is asked for; `program` outlives the windows.
    void SetProgram(Program &program) { program_ = &program; }

    Form1 &Main();
    Form2 &Settings();
    Form3 &OpenLog();
    Form4 &Contest();
    Form5 &EditQso();
    Form6 &Search();
    Form7 &EditContestQso(QWidget &owner);
    Form8 &ContestLogs();
    Form9 &CabrilloHeader(QWidget &owner);
    Form10 &About();
    // `changed` is called after each change of the catalogue.
    Form11 &Satellites(std::function<void()> changed);
    Form12 &AdifImport();
    Form13 &Analysis();
    Form14 &Provinces();
    Form15 &Backup();
    Form16 &Profiles();
    Form17 &CallQsos();
    Form18 &Closing();
    Form19 &CabrilloText();
    Form20 &Macros(QWidget &owner);
    Form21 &PhoneImportHelp(QWidget &owner);
    Form22 &Keyboard(QWidget &owner);
    KeyerTest &TestKeyer(QWidget &owner);
    Form33 &LookupResult();
    Manual &Book();

private:
    template <typename Form, typename... Arguments>
    Form &Made(std::unique_ptr<Form> &form, Arguments &&...arguments);

    Program *program_ = nullptr;
    std::unique_ptr<Form1> form1_;
    std::unique_ptr<Form2> form2_;
    std::unique_ptr<Form3> form3_;
    std::unique_ptr<Form4> form4_;
    std::unique_ptr<Form5> form5_;
    std::unique_ptr<Form6> form6_;
    std::unique_ptr<Form7> form7_;
    std::unique_ptr<Form8> form8_;
    std::unique_ptr<Form9> form9_;
    std::unique_ptr<Form10> form10_;
    std::unique_ptr<Form11> form11_;
    std::unique_ptr<Form12> form12_;
    std::unique_ptr<Form13> form13_;
    std::unique_ptr<Form14> form14_;
    std::unique_ptr<Form15> form15_;
    std::unique_ptr<Form16> form16_;
    std::unique_ptr<Form17> form17_;
    std::unique_ptr<Form18> form18_;
    std::unique_ptr<Form19> form19_;
    std::unique_ptr<Form20> form20_;
    std::unique_ptr<Form21> form21_;
    std::unique_ptr<Form22> form22_;
    std::unique_ptr<KeyerTest> keyerTest_;
    std::unique_ptr<Form33> form33_;
    std::unique_ptr<Manual> manual_; // the last one, since it lies over any of the others
};
