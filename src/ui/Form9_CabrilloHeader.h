// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "interchange/CabrilloWriter.h"
#include "ui/Window.h"

#include <array>
#include <memory>
#include <utility>

struct Program;
class QComboBox;
namespace Ui {
class Form9;
}

// The header of a Cabrillo file, above the lines of the contest in Text8, which the operator may still change.
class Form9 : public Window {
    Q_OBJECT

public:
    Form9(Program &program, QWidget *owner);
    ~Form9() override;

    // Shows the lines until the file is written or the window closed. `rows` is the whole contest: what was written is
    // compared with it.
    void ShowHeader(const QString &contest, const CabrilloWriter::QsoLines &lines, const QList<QsoRow> &rows);

protected:
    bool PreviewKey(QKeyEvent *event) override;

private:
    std::array<std::pair<QComboBox *, CabrilloWriter::Choice>, 5> Lists() const;
    CabrilloWriter::Header ReadHeader() const;
    void ShowPersonalData(const CabrilloWriter::Header &header);
    void WriteCabrilloFile();
    bool ChooseFile(QString &path);
    void CheckWrittenFile(const QString &path);

    Program &program_;
    std::unique_ptr<Ui::Form9> ui_;
    QList<QsoRow> rows_;
};
