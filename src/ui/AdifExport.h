// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/Result.h"

#include <QByteArray>
#include <QIODevice>
#include <QString>
#include <functional>
#include <memory>
#include <optional>

struct Program;
class QWidget;

// What the commands that write an ADIF file have in common: the file is chosen, an old one only replaced after a Yes,
// the records are written with progress, and at the end the operator can look at the file.
class AdifExport {
public:
    AdifExport(Program &program, QWidget *owner)
        : program_(program)
        , owner_(owner)
    {
    }

    // The chosen path; nothing after a cancel or a No.
    std::optional<QString> ChooseFile();

    // Header, records and, where wanted, the last line. `next` gives the records in blocks, an empty one at the end. A
    // file that cannot be finished is told; what is written of it stays.
    using Next = std::function<Result<QByteArray>()>;
    bool Write(const QString &path, const Next &next, bool lastLine, const std::function<bool()> &step);

    // "Guardado!", and the file in a text viewer after a Yes.
    void AskToView(const QString &path);

private:
    Program &program_;
    QWidget *owner_;
};
