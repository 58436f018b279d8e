// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <QString>

struct Program;
class Window;

// What is done with a whole contest: its files, and its way into the general log.
class ContestCommands : public QObject {
    Q_OBJECT

public:
    ContestCommands(Program &program, Window &window);

    // The contest the commands work on, and the own call that its contacts must have.
    void SetContest(const QString &name, const QString &type) { name_ = name, type_ = type; }

    void BuildCabrilloLines(const QString &ownCall);
    void ExportContestAdif(const QString &ownCall);
    // Gives how many contacts were added.
    qsizetype ImportContestCabrillo(const QString &ownCall);
    // `count` is the number of contacts that the window shows.
    void TransferToGeneralLog(qint64 count);

private:
    void Tell(const QString &failure);

    Program &program_;
    Window &window_;
    QString name_, type_;
};
