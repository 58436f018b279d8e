// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "logging/LogNames.h"
#include "support/Fixtures.h"

class TestLogNames : public StoreTest {
    Q_OBJECT

    QString Listed()
    {
        QStringList texts;
        const Result<QList<LogEntry>> logs = ListLogs(*store_);
        for (const LogEntry &entry : logs ? *logs : QList<LogEntry>())
            texts << LogListText(entry);
        return texts.join(u'|');
    }
    void Add(const QString &log, int count)
    {
        for (int i = 0; i < count; ++i)
            QVERIFY(AddQso(*store_, log, SomeQsos::Numbered(i)));
    }

private Q_SLOTS:
    void LogsAreListedInOrderWithTheirCounts()
    {
        QCOMPARE(Listed(), QString());
        for (const QString &log : {u"zorro"_qs, u"Éxito"_qs, u"ñandú"_qs, u"Ñ"_qs, u"abc"_qs, u"B (2)"_qs, u"nz"_qs})
            QVERIFY(CreateLog(*store_, log));
        QVERIFY(CreateLog(*store_, u"abc"_qs)); // twice is once
        Add(u"abc"_qs, 3);
        Add(u"ABC"_qs, 1); // another tool's spelling of the same log
        Add(u"Sin marca"_qs, 2);
        Sql("INSERT INTO Tabla1 (Modo) VALUES('CW')"); // belongs to no log
        QCOMPARE(Listed(),
            u"abc (4 QSOs)|B (2) (0 QSOs)|Éxito (0 QSOs)|nz (0 QSOs)|Ñ (0 QSOs)|ñandú (0 QSOs)|Sin marca (2 QSOs)|"
            "zorro (0 QSOs)"_qs);
    }

    void AnyNameWorks()
    {
        for (const QString &name : {u"a (b)"_qs, u"100%"_qs, u"a\"b"_qs, u"日本"_qs}) {
            init();
            Add(u"zz"_qs, 1);
            QVERIFY(CreateLog(*store_, name));
            QCOMPARE(*CountQsos(*store_, name), 0);
            Add(name, 2);
            QVERIFY(Listed().contains(name + u" (2 QSOs)"));
            QCOMPARE(*DeleteLog(*store_, name), u"zz"_qs);
            QCOMPARE(Listed(), u"zz (1 QSOs)"_qs);
        }
    }

    void TheLogToOpenAfterADeletion()
    {
        Add(u"b"_qs, 2);
        QVERIFY(CreateLog(*store_, u"A"_qs));
        QVERIFY(CreateLog(*store_, u"C"_qs));
        QCOMPARE(*DeleteLog(*store_, u"C"_qs), u"A"_qs);
        QCOMPARE(*DeleteLog(*store_, u"a"_qs), u"b"_qs);
        QCOMPARE(*DeleteLog(*store_, u"b"_qs), u"Base 1"_qs);
        QCOMPARE(Listed(), QString()); // it has no row yet
    }
};

TORDILLO_TEST(TestLogNames)
#include "TestLogNames.moc"
