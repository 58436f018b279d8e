// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QLineEdit>
#include <QTest>

// What becomes of the fields of the main window: time, the row, what stays, and what a failing disk may not take.
class TestForm1Store : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    void Start()
    {
        desk_->Furnish();
        desk_->Start();
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    // --- Time

    void LocalTimeAndUtcReachTheRow_data()
    {
        QTest::addColumn<QString>("offset");
        QTest::addColumn<QDateTime>("now"); // local
        QTest::addColumn<QString>("zone"); // of Label11; empty: the clock runs
        QTest::addColumn<QString>("typed"); // over what the fields show
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("stored");
        const auto row = [](const char *name, const char16_t *offset, const QDateTime &now, const char16_t *zone,
                             const char16_t *typed, const char16_t *shown, const char16_t *stored) {
            QTest::newRow(name) << QString::fromUtf16(offset) << now << QString::fromUtf16(zone)
                                << QString::fromUtf16(typed) << QString::fromUtf16(shown) << QString::fromUtf16(stored);
        };
        const QDateTime newYearsEve({2026, 12, 31}, {22, 30, 40}), november({2026, 11, 30}, {22, 45});
        row("clock", u"-3", newYearsEve, u"", u"", u"01/01/2027 01:30", u"2027-01-01 01:30:00");
        row("local, typed", u"-3", november, u"LU", u"31/12/2026 23:30", u"30/11/2026 22:45", u"2027-01-01 02:30:00");
        row("UTC, typed", u"-3", november, u"UTC", u"31/12/2026 23:30", u"01/12/2026 01:45", u"2026-12-31 23:30:00");
    }
    void LocalTimeAndUtcReachTheRow()
    {
        QFETCH(QString, offset);
        QFETCH(QString, zone);
        QFETCH(QString, typed);
        desk_->clock.now = *static_cast<QDateTime *>(QTest::qData("now", qMetaTypeId<QDateTime>()));
        desk_->Furnish();
        desk_->Configure(u"DiferUTC="_qs, offset);
        desk_->Start();
        if (!zone.isEmpty())
            desk_->Click(u"Check1"_qs);
        if (zone == u"UTC")
            desk_->Click(u"Label11"_qs);
        QTEST(QString(desk_->Text(u"Fecha"_qs) + u' ' + desk_->Text(u"Hora"_qs)), "shown");
        if (!typed.isEmpty()) {
            desk_->Fill(u"Fecha"_qs, typed.section(u' ', 0, 0));
            desk_->Fill(u"Hora"_qs, typed.section(u' ', 1));
        }
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        QTEST(QString(desk_->LastStored(&QsoRow::Fecha) + u' ' + desk_->LastStored(&QsoRow::Hora)), "stored");
    }

    // --- The focus contract

    void TimeAndPagesLeaveTheFieldAlone_data()
    {
        QTest::addColumn<QString>("field");
        for (const QString &field : {u"Corresponsal"_qs, u"Hora"_qs, u"RSE"_qs, u"Text1"_qs, u"Text2"_qs, u"MYSOTA"_qs})
            QTest::newRow(qPrintable(field)) << field;
    }
    void TimeAndPagesLeaveTheFieldAlone()
    {
        QFETCH(QString, field);
        desk_->Furnish(45);
        desk_->Start();
        desk_->Click(u"Check1"_qs);
        desk_->Click(u"Check4"_qs);
        desk_->Fill(field, u"12"_qs);
        auto *line = desk_->Find<QLineEdit>(field);
        line->setText(u"12/"_qs);
        line->setSelection(1, 2);
        desk_->clock.now = desk_->clock.now.addDays(40);
        desk_->Advance(60000);
        desk_->Main().LoadLogPage(21);
        desk_->Main().SetArchivoMenu(false);
        desk_->Main().SetArchivoMenu(true);
        QCoreApplication::processEvents();
        QCOMPARE(desk_->Focus(), field);
        QCOMPARE(line->text(), u"12/"_qs);
        QCOMPARE(line->selectedText(), u"2/"_qs);
        QCOMPARE(desk_->Told(), QStringList());
    }

    void TheClockWritesUnderTheFocus()
    {
        Start();
        desk_->Find(u"Hora"_qs)->setFocus();
        desk_->clock.now = desk_->clock.now.addSecs(60);
        desk_->Advance(1000);
        QCOMPARE(desk_->Focus(), u"Hora"_qs);
        QCOMPARE(desk_->Text(u"Hora"_qs), u"00:16"_qs);
        QCOMPARE(desk_->Find<QLineEdit>(u"Hora"_qs)->selectedText(), u"16"_qs);
    }

    // --- What is kept and what goes with the contact

    void NoBorrarKeepsTheRemarks()
    {
        Start();
        desk_->Put(u"Obs"_qs, u"antena nueva"_qs);
        desk_->Click(u"Check3"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Text(u"Obs"_qs), u"antena nueva"_qs);
        desk_->Click(u"Check3"_qs);
        desk_->Contact(u"CX2AA"_qs);
        QCOMPARE(desk_->Text(u"Obs"_qs), QString());
        QCOMPARE(desk_->LastStored(&QsoRow::Obs), u"antena nueva"_qs);
    }

    void TheOwnSummitNeedsAnActivationTheOwnParkDoesNot()
    {
        Start();
        QVERIFY(!desk_->Find(u"activador"_qs)->isVisible());
        desk_->Click(u"Check4"_qs);
        QVERIFY(desk_->Find(u"activador"_qs)->isVisible());
        for (const QString &field : {u"SOTA"_qs, u"POTA_IN"_qs, u"MYSOTA"_qs, u"MY_POTA"_qs})
            desk_->Fill(field, u"lu-"_qs + field.toLower());
        const auto stored = [&] {
            const QsoRow row = desk_->Rows().value(desk_->Rows().size() - 1);
            return QStringList{row.SOTA, row.POTA, row.MYSOTA, row.IOTA};
        };
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(stored(), QStringList({u"LU-SOTA"_qs, u"LU-POTA_IN"_qs, u"LU-MYSOTA"_qs, u"LU-MY_POTA"_qs}));
        desk_->Click(u"Check4"_qs);
        QVERIFY(!desk_->Find(u"activador"_qs)->isVisible());
        desk_->Contact(u"CX2AA"_qs);
        QCOMPARE(stored(), QStringList({{}, {}, {}, u"LU-MY_POTA"_qs}));
    }

    // --- A store that fails

    void AStoreThatFailsKeepsEveryField_data()
    {
        QTest::addColumn<int>("trouble");
        QTest::addColumn<QString>("said");
        QTest::newRow("disk full") << 0 << u"No queda lugar en el disco"_qs;
        QTest::newRow("failing sync") << 3 << u"El disco falló"_qs;
        QTest::newRow("another program") << 4 << u"está en uso por otro programa"_qs;
        QTest::newRow("gone") << 5 << u"No se encuentra la base de datos"_qs;
    }
    void AStoreThatFailsKeepsEveryField()
    {
        QFETCH(int, trouble);
        QFETCH(QString, said);
        FaultVfs &disk = FaultVfs::Instance();
        Start();
        desk_->Click(u"Check4"_qs);
        const QHash<QString, QString> typed{{u"Corresponsal"_qs, u"CX1AA"_qs}, {u"Text2"_qs, u"GF05"_qs},
            {u"Obs"_qs, u"no perder"_qs}, {u"SOTA"_qs, u"LUR/C-001"_qs}, {u"POTA_IN"_qs, u"AR-0001"_qs},
            {u"MYSOTA"_qs, u"LUR/C-002"_qs}, {u"MY_POTA"_qs, u"AR-0002"_qs}, {u"RSE"_qs, u"57"_qs},
            {u"RSR"_qs, u"56"_qs}, {u"Text1"_qs, u"700"_qs}};
        for (auto field = typed.begin(); field != typed.end(); ++field)
            desk_->Put(field.key(), field.value());
        std::unique_ptr<RawDatabase> other;
        switch (trouble) {
        case 0:
            disk.SetRoom(0);
            break;
        case 1:
            disk.SetAccess(FaultVfs::Access::ReadOnlyFolder);
            break;
        case 2:
            disk.FailWrites(1, FaultVfs::forever, FaultVfs::Trouble::IoError);
            break;
        case 3:
            disk.FailSyncs(1, FaultVfs::forever);
            break;
        case 4:
            other = std::make_unique<RawDatabase>(desk_->Path(u"base0.mdb"_qs));
            QVERIFY(other->Run("BEGIN EXCLUSIVE"));
            break;
        case 5:
            QVERIFY(QFile::rename(desk_->Path(u"base0.mdb"_qs), desk_->Path(u"otra"_qs)));
            break;
        }
        desk_->Find(u"Obs"_qs)->setFocus();
        desk_->Press(Qt::Key_Return);
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 1);
        for (const QString &part :
            {u"XEl QSO no fue guardado. Sus datos siguen en los campos.\n\n"_qs, said, desk_->Path(u"base0.mdb"_qs)})
            QVERIFY2(told.first().contains(part), qPrintable(told.first()));
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        for (auto field = typed.begin(); field != typed.end(); ++field)
            QCOMPARE(desk_->Text(field.key()), field.value());

        desk_->HealDisk();
        other.reset();
        if (trouble == 5) {
            QVERIFY(!desk_->Has(u"base0.mdb"_qs));
            QVERIFY(QFile::rename(desk_->Path(u"otra"_qs), desk_->Path(u"base0.mdb"_qs)));
        }
        QCOMPARE(desk_->Rows().size(), 0);
        desk_->Find(u"Obs"_qs)->setFocus();
        desk_->Press(Qt::Key_Return);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Rows().size(), 1);
        QCOMPARE(desk_->LastStored(&QsoRow::Obs), u"no perder"_qs);
        QCOMPARE(RawDatabase(desk_->Path(u"base0.mdb"_qs)).Value("PRAGMA integrity_check"), u"ok"_qs);
    }

    void AMemoryThatCannotBeWrittenDoesNotComeBetween()
    {
        Start();
        desk_->unwritable = QStringList{u"mem.ini"_qs, u"memsat.ini"_qs};
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Rows().size(), 1);
        QCOMPARE(desk_->Told(), QStringList());
    }
};

TORDILLO_TEST(TestForm1Store)
#include "TestForm1Store.moc"
