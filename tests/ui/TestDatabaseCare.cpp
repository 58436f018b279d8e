// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "core/QsoTable.h"
#include "support/RawDatabase.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QDir>
#include <QFile>
#include <QTest>

// Copies that nobody asks for, and what they are good for. The small windows that need little more than to open.
class TestDatabaseCare : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;

    QStringList Copies() const { return QDir(desk_->Path(u"copias"_qs)).entryList(QDir::Files, QDir::Name); }
    // A start, and the time that a copy takes.
    void StartAndWait()
    {
        desk_->Start();
        desk_->clock.now = desk_->clock.now.addSecs(60);
        for (int i = 0; i < 60; ++i) {
            desk_->Advance(15);
            QTest::qSleep(1);
        }
    }
    void Spoil(qint64 from, qint64 size) const
    {
        QFile file(desk_->Path(u"base0.mdb"_qs));
        QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(from));
        file.write(QByteArray(size, '\0'));
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void ADatabaseInRuinsIsReplacedOnlyWhenAsked_data()
    {
        QTest::addColumn<int>("ruin");
        QTest::newRow("zeros inside") << 1;
        QTest::newRow("lost") << 3;
    }
    void ADatabaseInRuinsIsReplacedOnlyWhenAsked()
    {
        QFETCH(int, ruin);
        desk_->Furnish(3);
        StartAndWait();
        desk_->Kill();
        const QString path = desk_->Path(u"base0.mdb"_qs);
        if (ruin == 1)
            Spoil(4096, QFile(path).size() - 4096);
        else
            QVERIFY(QFile::remove(path));
        const QByteArray before = desk_->Content(u"base0.mdb"_qs);
        QVERIFY(!desk_->Load());
        QVERIFY(desk_->Content(u"base0.mdb"_qs) == before && desk_->Has(u"base0.mdb"_qs) == (ruin != 3));
        QCOMPARE(desk_->dialogs.shown.size(), 1);
        QCOMPARE(desk_->dialogs.shown.first().preset, Dialogs::Button::No);
        const QString told = desk_->Told().value(0);
        QVERIFY2(
            told.contains(path) && told.contains(desk_->Path(QString(u"copias/" + Copies()[0]))), qPrintable(told));
        desk_->dialogs.answers = QList<bool>{true};
        desk_->Start();
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 3 QSOs"_qs);
        const QStringList aside = QDir(desk_->Path({})).entryList({u"base0_apartada_*.mdb"_qs}, QDir::Files);
        QCOMPARE(aside.size(), ruin == 3 ? 0 : 1);
        QCOMPARE(desk_->Told().size(), ruin == 3 ? 1 : 2);
        if (ruin != 3)
            QVERIFY(desk_->Content(aside.first()) == before);
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->Rows().size(), 4);
    }

    void DamageThatTheFirstPageDoesNotMeetIsFoundByTheCopy()
    {
        desk_->Furnish(4000);
        StartAndWait();
        desk_->Contact(u"CX1AA"_qs);
        desk_->Kill();
        const qint64 root = RawDatabase(desk_->Path(u"base0.mdb"_qs))
                                .Value("SELECT rootpage FROM sqlite_schema WHERE name='Tabla2_modo'")
                                .toLongLong();
        Spoil((root - 1) * 4096, 4096);
        desk_->dialogs.answers = QList<bool>{true};
        StartAndWait();
        const QStringList told = desk_->Told();
        QCOMPARE(told.size(), 2);
        QVERIFY2(told.first().contains(u"dañada"_qs) && told.first().contains(desk_->Path(u"base0.mdb"_qs) + u'\n')
                && !told.first().contains(u".nueva"_qs),
            qPrintable(told.first()));
        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 4000 QSOs"_qs);
    }

    // --- Small windows

    void ProfilesAreKeptAndDoNothing()
    {
        desk_->Furnish();
        desk_->Start();
        const auto inProfiles = [&](const std::function<void()> &act) {
            desk_->InModal([&] { desk_->Menu("ppeerr"); },
                [&] {
                    act();
                    desk_->Press(Qt::Key_Escape);
                });
        };
        inProfiles([&] {
            desk_->Fill(u"Perfil1_0"_qs, u"casa"_qs);
            desk_->Fill(u"Perfil1_2"_qs, u"móvil"_qs);
            desk_->Click(u"Crear2"_qs); // each keeps all three
        });
        QCOMPARE(desk_->Content(u"Perfiles.cfg"_qs), QByteArray("Perfil1=CASA\r\nPerfil2=\r\nPerfil3=M\xd3VIL\r\n"));
        inProfiles([&] {
            QCOMPARE(desk_->Text(u"Perfil1_0"_qs) + desk_->Text(u"Perfil1_1"_qs) + desk_->Text(u"Perfil1_2"_qs),
                u"CASAMÓVIL"_qs);
            desk_->unwritable = QStringList{u"Perfiles.cfg"_qs};
            desk_->Click(u"Crear2"_qs);
            QCOMPARE(desk_->Told().size(), 1);
        });
    }
};

TORDILLO_TEST(TestDatabaseCare)
#include "TestDatabaseCare.moc"
