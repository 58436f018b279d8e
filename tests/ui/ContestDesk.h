// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Desk.h"
#include "contest/ContestLogs.h"
#include "contest/ContestLookup.h"
#include "contest/ContestTable.h"

#include <QAbstractItemModel>
#include <QAbstractItemView>
#include <QTest>
#include <QTimer>

// The desk in a contest: two stand in the database, CONDOR (Incremental) and ANDES (Fija), both empty. The clock shows
// 25/11/2026 00:15 UTC.
class ContestDesk : public Desk {
public:
    void Furnish() const
    {
        Desk::Furnish();
        LogStore store(Path(u"base0.mdb"_qs));
        QVERIFY(CreateContest(store, u"CONDOR"_qs, SerieType::Incremental));
        QVERIFY(CreateContest(store, u"ANDES"_qs, SerieType::Fija));
    }

    // Does `choose` in the list of contests and `act` in the contest that it leads to; then the contest is left, with
    // Yes to all questions, where `act` has not done so.
    void InContest(const std::function<void()> &choose, const std::function<void()> &act)
    {
        bool acted = false;
        QTimer poll;
        QObject::connect(&poll, &QTimer::timeout, &poll, [&] {
            if (Front()->objectName() != u"Form4" || !Front()->isVisible())
                return;
            poll.stop();
            QWidget *contest = Front();
            static_cast<void>(QTest::qWaitForWindowActive(contest));
            acted = true;
            act();
            if (!contest->isVisible())
                return;
            dialogs.answers = {true, true};
            contest->close();
            dialogs.answers.clear();
        });
        InModal([&] { Menu("cabro"); },
            [&] {
                choose();
                poll.start(0);
            });
        QVERIFY2(acted, "no contest was opened");
    }
    void InContest(const QString &name, const std::function<void()> &act)
    {
        InContest([&] { OpenInList(name); }, act);
    }
    void OpenInList(const QString &name) const
    {
        const QStringList names = Column(u"ListView1"_qs, 1);
        QVERIFY2(names.contains(name), qPrintable(names.join(u',')));
        DoubleClick(u"ListView1"_qs, int(names.indexOf(name)));
    }

    // One column of a list, from the top.
    QStringList Column(const QString &list, int column) const
    {
        const QAbstractItemModel *model = Find<QAbstractItemView>(list)->model();
        QStringList texts;
        for (int row = 0; row < model->rowCount(); ++row)
            texts << model->index(row, column).data().toString();
        return texts;
    }
    bool IsShown(const QString &name) const { return Find(name)->isVisible(); }
    QString Texts(const QStringList &names) const
    {
        QStringList texts;
        for (const QString &name : names)
            texts << Text(name);
        return texts.join(u'|');
    }
    // Types the call, a blank and the exchange as an operator does, and stores.
    void Work(const QString &call, const QString &exchange) const
    {
        Type(call);
        Press(Qt::Key_Space);
        Type(exchange);
        Press(Qt::Key_Return);
    }
    // The contacts of a contest as they stand in the file, oldest first.
    QList<QsoRow> ContestQsos(const QString &contest) const
    {
        LogStore store(Path(u"base0.mdb"_qs));
        const Result<QList<QsoRow>> read = ContestRows(store, contest);
        QList<QsoRow> rows = read ? *read : QList<QsoRow>();
        rows.removeIf([](const QsoRow &row) { return row.Modo.isEmpty(); });
        return rows;
    }
    QStringList Calls(const QString &contest) const
    {
        QStringList calls;
        for (const QsoRow &row : ContestQsos(contest))
            calls << row.Estacion + u' ' + row.Modo + u' ' + row.Banda + u' ' + row.RSE + u' ' + row.RSR;
        return calls;
    }
};
