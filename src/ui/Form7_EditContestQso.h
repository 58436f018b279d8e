// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestEdit.h"
#include "ui/Window.h"

#include <memory>

struct Program;
namespace Ui {
class Form7;
}

// One contact of a contest to change or delete. The id lives in the title.
//
// | control        | column                | guarded by      |
// |----------------|-----------------------|-----------------|
// | Combo1, Combo2 | Banda, Modo           |                 |
// | Text1, Text2   | MyCall, Estacion      |                 |
// | Text3          | Frecuencia, kilohertz | CheckFrequency  |
// | Text4, Text5   | Fecha, Hora           | CheckDate, CheckTime |
// | Text6, Text7   | RSE, RSR              |                 |
// | Label3, Label10 | contest and series type, read only |    |
class Form7 : public Window {
    Q_OBJECT

public:
    Form7(Program &program, QWidget *owner);
    ~Form7() override;

    // Shows the contact until the window is left; true when the contest has changed.
    bool Edit(const QsoRow &row, int place);

protected:
    bool PreviewKey(QKeyEvent *event) override;
    void FieldEntered(QWidget *field) override;
    void FieldLeft(QWidget *field) override;

private:
    ContestEditFields ReadFields() const;
    QString CheckOf(QWidget *field) const;
    void Save();
    void Delete();

    Program &program_;
    std::unique_ptr<Ui::Form7> ui_;
    ContestEditFields stored_;
    bool changed_ = false;
};
