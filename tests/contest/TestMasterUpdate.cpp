// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/MasterCheck.h"
#include "contest/MasterUpdate.h"
#include "support/MemoryFiles.h"
#include "support/TestRegistry.h"

#include <QTest>

using Kind = MasterUpdate::Kind;

class TestMasterUpdate : public QObject {
    Q_OBJECT

    static MasterUpdate Take(MemoryFiles &files, std::optional<QDate> present, const QString &text)
    {
        const auto update = TakeMasterList(files, u"/p"_qs, present, text);
        return update ? *update : MasterUpdate{Kind::NoList, update.failure().text};
    }

private Q_SLOTS:
    void OnlyALaterListIsTaken()
    {
        const QDate old(2025, 1, 2);
        struct Row {
            QString text;
            std::optional<QDate> present;
            Kind kind;
            QString message;
        };
        const QString head = u"Su archivo Master check con fecha "_qs;
        const Row rows[] = {
            {u"#03/01/2025#\nLU1ABC\nLU2ABC\n"_qs, old, Kind::Replaced,
                head + u"02/01/2025 estaba desacualizado!\nen la web tiene fecha: 03/01/2025\nYa está actualizado!"},
            {u"#01/13/2025#\r\nLU1ABC"_qs, old, Kind::Replaced,
                head + u"02/01/2025 estaba desacualizado!\nen la web tiene fecha: 13/01/2025\nYa está actualizado!"},
            {u"#2/1/2025#\nLU1ABC"_qs, old, Kind::UpToDate, head + u"02/01/2025 está acualizado!"},
            {u"#1/1/2025#\nLU1ABC"_qs, old, Kind::UpToDate, head + u"02/01/2025 está acualizado!"},
            {u"#1/1/1999#\nLU1ABC"_qs, std::nullopt, Kind::Replaced,
                head + u" estaba desacualizado!\nen la web tiene fecha: 01/01/1999\nYa está actualizado!"},
            {u"<html>Error</html>"_qs, old, Kind::NoList, {}}, {{}, old, Kind::NoList, {}},
            {u"LU1ABC\n#03/01/2025#"_qs, old, Kind::NoList, {}}, {u"# #\n"_qs, old, Kind::NoList, {}}};
        for (const Row &row : rows) {
            MemoryFiles files;
            files.content[u"/p/master.txt"_qs] = "vieja";
            const MasterUpdate update = Take(files, row.present, row.text);
            QVERIFY2(update.kind == row.kind, qPrintable(row.text));
            QCOMPARE(update.message, row.message);
            const bool replaced = update.kind == Kind::Replaced;
            QCOMPARE(files.content[u"/p/master.txt"_qs] == "vieja", !replaced);
            QCOMPARE(MasterUpdateOffer(row.present, row.text).isEmpty(), !replaced);
            QVERIFY(files.content.count(u"/p/webomc.txt"_qs) == 1);
        }
        QCOMPARE(MasterUpdateOffer(old, u"#03/01/2025#"_qs),
            QString(head + u"02/01/2025 debe actualizarse\nLo hace ahora?"));
    }

    void WhatIsWrittenIsReadAgain()
    {
        MemoryFiles files;
        Take(files, std::nullopt, u"#03/01/2025#\nLU1ABC\nLU2ABC\n"_qs);
        QCOMPARE(files.content[u"/p/master.txt"_qs], "#03/01/2025#\n\rLU1ABC\n\rLU2ABC\n\r");
        const MasterCheck list = LoadMasterFile(files, u"/p/master.txt"_qs);
        QCOMPARE(list.Calls(), QStringList({u"LU1ABC"_qs, u"LU2ABC"_qs}));
        QCOMPARE(*list.Date(), QDate(2025, 1, 3));
    }
};

TORDILLO_TEST(TestMasterUpdate)
#include "TestMasterUpdate.moc"
