// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QComboBox>
#include <QListWidget>
#include <QTest>

// The editor of the satellite catalogue.
class TestForm11 : public QObject {
    Q_OBJECT

    std::unique_ptr<Desk> desk_;
    const QString file_ = u"satelites.txt"_qs;

    void InEditor(const std::function<void()> &act)
    {
        desk_->InModal([&] { desk_->Menu("satel"); },
            [&] {
                act();
                desk_->Press(Qt::Key_Escape);
            });
    }
    void Start(const QByteArray &catalogue)
    {
        desk_->Furnish();
        desk_->Write(file_, catalogue);
        desk_->Start();
    }
    void ClickRow(int row) const
    {
        auto *list = desk_->Find<QListWidget>(u"List1"_qs);
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, list->visualItemRect(list->item(row)).center());
    }
    bool Editing() const { return desk_->Find(u"Frame3"_qs)->isEnabled(); }
    QString Edited() const
    {
        QStringList texts;
        for (const QString &name :
            {u"Text2"_qs, u"Combo8"_qs, u"Combo7"_qs, u"Combo6"_qs, u"Text3"_qs, u"Text5"_qs, u"Label2"_qs})
            texts << desk_->Text(name);
        return texts.join(u'|');
    }
    // The names that the main window offers.
    QString Offered() const
    {
        const auto *combo = desk_->Main().findChild<QComboBox *>(u"Combo3"_qs);
        QStringList names;
        for (int i = 0; i < combo->count(); ++i)
            names << combo->itemText(i);
        return names.join(u' ');
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<Desk>(); }
    void cleanup() { desk_.reset(); }

    void ASatelliteIsAdded()
    {
        Start("AO-7;70cm;2m;SSB;100.4\r\nrota\r\nLI-2;2m;70cm;SSB;\r\n");
        InEditor([&] {
            QCOMPARE(desk_->Find<QListWidget>(u"List1"_qs)->item(2)->text(), u"LI-2;2m;70cm;SSB; "_qs);
            QCOMPARE(desk_->Text(u"Combo1"_qs) + desk_->Text(u"Combo2"_qs) + desk_->Text(u"Combo3"_qs), u"2m70cmFM"_qs);
            QVERIFY(!Editing());
            desk_->Fill(u"Text1"_qs, u"qo-100"_qs);
            desk_->Find<QComboBox>(u"Combo1"_qs)->setCurrentText(u"23cm"_qs);
            desk_->Fill(u"Frec_new"_qs, u"1267.1x000"_qs); // eight characters, digits and the point
            QCOMPARE(desk_->Text(u"Frec_new"_qs), u"1267.100"_qs);
            desk_->Fill(u"Text4"_qs, u"67.0"_qs);
            desk_->Click(u"Command1"_qs);
            QCOMPARE(desk_->Told(), QStringList());
            QCOMPARE(Offered(), u"AO-7 LI-2 QO-100"_qs);
        });
        QCOMPARE(desk_->Content(file_),
            QByteArray("AO-7;70cm;2m;SSB;100.4\r\nrota\r\nLI-2;2m;70cm;SSB; \r\n"
                       "QO-100;23cm;70cm;FM;67.0;1267.100\r\n"));
    }

    void ARowIsEditedAndTheOthersStay()
    {
        Start("rota;\xf1\r\nQO-100;23cm;2m;FM;67.0;1267.100\r\n\r\nX;13cm;10m;CW;1;2;3\r\nAO-7;70cm;2m;SSB; \r\n");
        InEditor([&] {
            ClickRow(1);
            QVERIFY(Editing());
            QCOMPARE(Edited(), u"QO-100|23cm|2m|FM|67.0|1267.100|1"_qs);
            desk_->Fill(u"Text5"_qs, u"1268.000"_qs);
            desk_->Fill(u"Text2"_qs, u"ao-7"_qs); // twice the same name is not looked for here
            desk_->Click(u"Command2"_qs);
            QVERIFY(!Editing());
            // What the lists do not hold is not changed into what they do.
            ClickRow(3);
            QCOMPARE(Edited(), u"X|13cm|10m|CW|1|2|3"_qs);
            desk_->Fill(u"Text2"_qs, u"y"_qs);
            desk_->Click(u"Command2"_qs);
        });
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Content(file_),
            QByteArray(
                "rota;\xf1\r\nAO-7;23cm;2m;FM;67.0;1268.000\r\n\r\nY;13cm;10m;CW;1;2\r\nAO-7;70cm;2m;SSB; \r\n"));
        QCOMPARE(Offered(), u"AO-7 Y AO-7"_qs);
    }

    void RemovingAsksFirst()
    {
        Start("A;70cm;2m;SSB; \r\nB;70cm;2m;SSB; \r\nC;70cm;2m;SSB; \r\n");
        InEditor([&] {
            for (const bool yes : {false, true}) {
                desk_->dialogs.answers = QList<bool>{yes};
                ClickRow(1);
                desk_->Click(u"Command4"_qs);
                QCOMPARE(desk_->dialogs.shown.last().preset, Dialogs::Button::No);
                QCOMPARE(desk_->Told(), QStringList({u"?Elimina Satélite B?"_qs}));
                QCOMPARE(Editing(), !yes);
                QCOMPARE(Offered(), yes ? u"A C"_qs : u"A B C"_qs);
            }
        });
        QCOMPARE(desk_->Content(file_), QByteArray("A;70cm;2m;SSB; \r\nC;70cm;2m;SSB; \r\n"));
    }

    void ACatalogueThatCannotBeWrittenStays()
    {
        Start("A;70cm;2m;SSB; \r\n");
        desk_->unwritable = QStringList{file_};
        InEditor([&] {
            desk_->Fill(u"Text1"_qs, u"B"_qs);
            desk_->Click(u"Command1"_qs);
            desk_->dialogs.answers = QList<bool>{true};
            ClickRow(0);
            desk_->Click(u"Command4"_qs);
            desk_->Click(u"Command2"_qs);
            QCOMPARE(desk_->Told().filter(file_).size(), 3);
            QCOMPARE(desk_->Find<QListWidget>(u"List1"_qs)->count(), 1);
            QVERIFY(Editing()); // what was typed can be tried again
        });
        QCOMPARE(Offered(), u"A"_qs);
    }
};

TORDILLO_TEST(TestForm11)
#include "TestForm11.moc"
