// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ContestDesk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QAbstractButton>
#include <QTest>
#include <QTextBrowser>

// The contest window as it is used: with the keys.
class TestForm4 : public QObject {
    Q_OBJECT

    std::unique_ptr<ContestDesk> desk_;

    void In(const QString &contest, const std::function<void()> &act)
    {
        desk_->Furnish();
        desk_->Start();
        desk_->InContest(contest, act);
    }
    QString Shown() const
    {
        return desk_->Texts({u"Combo1"_qs, u"Combo2"_qs, u"RSE"_qs, u"Corresponsal"_qs, u"RSR"_qs});
    }

private Q_SLOTS:
    void init() { desk_ = std::make_unique<ContestDesk>(); }
    void cleanup() { desk_.reset(); }

    void SerialsCountForEachMode()
    {
        In(u"CONDOR"_qs, [&] {
            QCOMPARE(Shown(), u"SSB|80m|1||"_qs);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            QCOMPARE(desk_->Texts({u"Label9"_qs, u"Text2"_qs, u"Fecha"_qs, u"Hora"_qs}),
                u"0 QSOs |LU9ZZZ|25/11/2026|00:15"_qs);
            desk_->Work(u"lu1abc"_qs, u"007"_qs);
            desk_->Work(u"PY2AA"_qs, u"12"_qs);
            QCOMPARE(Shown(), u"SSB|80m|3||"_qs);
            desk_->Choose(u"Combo1"_qs, u"CW"_qs);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            QCOMPARE(desk_->Text(u"RSE"_qs), u"1"_qs);
            desk_->Choose(u"Combo2"_qs, u"20m"_qs);
            desk_->Fill(u"RSE"_qs, u"x40"_qs); // letters are no serial
            desk_->Find(u"Corresponsal"_qs)->setFocus();
            desk_->Work(u"CE3BB"_qs, u"a1"_qs);
            QCOMPARE(desk_->Text(u"RSE"_qs), u"41"_qs);
            desk_->Choose(u"Combo1"_qs, u"SSB"_qs);
            QCOMPARE(desk_->Text(u"RSE"_qs), u"3"_qs);
            QCOMPARE(desk_->Text(u"Label9"_qs), u"3 QSOs"_qs);
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), (QStringList{u"CE3BB"_qs, u"PY2AA"_qs, u"LU1ABC"_qs}));
            QCOMPARE(desk_->Column(u"ListView2"_qs, 7), (QStringList{u"599"_qs, u"59"_qs, u"59"_qs}));
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs),
            (QStringList{u"LU1ABC SSB 80m 1 007"_qs, u"PY2AA SSB 80m 2 12"_qs, u"CE3BB CW 20m 40 A1"_qs}));
        // The frequency is that of its own fields, whatever the band says.
        const QsoRow last = desk_->ContestQsos(u"CONDOR"_qs).last();
        QCOMPARE(
            (QStringList{last.Frecuencia, last.Fecha, last.Hora, last.MyCall, last.LdA, last.Nombre_Sat}.join(u'|')),
            u"3650|20261125|0015|LU9ZZZ|CONDOR|Incremental"_qs);

        desk_->Start(); // another day
        desk_->InContest(u"CONDOR"_qs, [&] {
            QCOMPARE(Shown(), u"CW|20m|41||"_qs);
            QCOMPARE(desk_->Text(u"Label9"_qs), u"3 QSOs "_qs);
            QCOMPARE(desk_->Text(u"Frame3"_qs), u"Log Concurso: CONDOR"_qs);
        });
    }

    void Duplicates()
    {
        In(u"CONDOR"_qs, [&] {
            desk_->Work(u"LU1ABC"_qs, u"1"_qs);
            desk_->Type(u"LU1AB"_qs);
            QVERIFY(!desk_->IsShown(u"Label7"_qs));
            const QRect callField = desk_->Find(u"Corresponsal"_qs)->geometry();
            const QRect list = desk_->Find(u"ListView2"_qs)->geometry();
            desk_->Type(u"C"_qs);
            QVERIFY(desk_->IsShown(u"Label7"_qs) && desk_->IsShown(u"Frame4"_qs));
            QCOMPARE(desk_->Text(u"Label7"_qs), u"DUPLICADO"_qs);
            QCOMPARE(desk_->Column(u"ListView1"_qs, 8), QStringList{u"LU1ABC"_qs});
            QCOMPARE(desk_->Find(u"Corresponsal"_qs)->geometry(), callField); // nothing jumps
            QCOMPARE(desk_->Find(u"ListView2"_qs)->geometry(), list);
            desk_->Choose(u"Combo2"_qs, u"40m"_qs);
            QVERIFY(!desk_->IsShown(u"Label7"_qs));
            desk_->Choose(u"Combo2"_qs, u"80m"_qs);
            QVERIFY(desk_->IsShown(u"Label7"_qs));
            desk_->Choose(u"Combo1"_qs, u"FM"_qs);
            QVERIFY(!desk_->IsShown(u"Label7"_qs));
            desk_->Choose(u"Combo1"_qs, u"SSB"_qs);
            QVERIFY(desk_->IsShown(u"Label7"_qs));
            desk_->Press(Qt::Key_Space);
            desk_->Type(u"2"_qs);
            desk_->Press(Qt::Key_Return); // warned, and stored all the same
            QVERIFY(!desk_->IsShown(u"Label7"_qs) && !desk_->IsShown(u"Frame4"_qs));

            // The very same contact: nothing is said, and nothing changes.
            desk_->Fill(u"RSE"_qs, u"2"_qs);
            desk_->Fill(u"RSR"_qs, u"2"_qs);
            desk_->Fill(u"Corresponsal"_qs, u"LU1ABC"_qs);
            desk_->clock.now = desk_->clock.now.addSecs(600);
            desk_->Advance(1000);
            desk_->Hold(Qt::Key_Return, 5);
            QCOMPARE(Shown(), u"SSB|80m|2|LU1ABC|2"_qs);
            QCOMPARE(desk_->Text(u"Label9"_qs), u"2 QSOs"_qs);
            QCOMPARE(desk_->Told(), QStringList());
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs), (QStringList{u"LU1ABC SSB 80m 1 1"_qs, u"LU1ABC SSB 80m 2 2"_qs}));
    }

    void Keys()
    {
        desk_->Write(u"dxcc.txt"_qs, "CE;Chile\r\n");
        In(u"CONDOR"_qs, [&] {
            desk_->Type(u"ce-3,ñbb"_qs);
            QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"CE3BB"_qs);
            QCOMPARE(desk_->Text(u"Label11"_qs), u"Chile"_qs);
            desk_->Press(Qt::Key_Space);
            QCOMPARE(desk_->Focus(), u"RSR"_qs);
            desk_->Type(u"7"_qs);
            desk_->Press(Qt::Key_Space);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            desk_->Type(u"x"_qs); // behind what stands there
            QCOMPARE(Shown(), u"SSB|80m|1|CE3BBX|7"_qs);
            desk_->Press(Qt::Key_Space);
            desk_->Press(Qt::Key_W, Qt::ControlModifier);
            QCOMPARE(Shown(), u"SSB|80m|1||7"_qs);
            QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
            QCOMPARE(desk_->Text(u"Label11"_qs), QString());
            desk_->Type(u"w"_qs);
            QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"W"_qs);
            desk_->Press(Qt::Key_Escape);
            QVERIFY(desk_->Front()->isVisible() && desk_->Front()->objectName() == u"Form4");
            desk_->Press(Qt::Key_PageDown);
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 21 ppm"_qs);
            for (int i = 0; i < 15; ++i)
                desk_->Press(Qt::Key_PageUp);
            QCOMPARE(desk_->Text(u"LabelVel"_qs), u"Vel 10 ppm"_qs);

            desk_->Click(u"Check2"_qs);
            for (const auto &[field, typed, taken] : {std::tuple{u"Fecha"_qs, u"2?4/11/2026"_qs, u"24/11/2026"_qs},
                     {u"Hora"_qs, u"0?9:15"_qs, u"09:15"_qs}, {u"Text1"_qs, u"?7"_qs, u"7"_qs}}) {
                desk_->Fill(field, typed);
                QCOMPARE(desk_->Text(field), taken);
            }
            desk_->Fill(u"Corresponsal"_qs, u"LU9ZZZ"_qs); // the own call warns, and no more
            desk_->Press(Qt::Key_Space);
            QCoreApplication::processEvents();
            QCOMPARE(desk_->Told(), QStringList{u"!QSO con LU9ZZZ ???"_qs});
            QCOMPARE(desk_->Focus(), u"RSR"_qs);
            desk_->Press(Qt::Key_Return);
            QCOMPARE(desk_->Text(u"Label9"_qs), u"1 QSOs"_qs);
        });
    }

    void MasterCheckShowsAndGives()
    {
        constexpr int ofPrefix = 500;
        QByteArray list("#24/11/2026#\r\nLU2AB\r\n");
        for (int i = 0; i < ofPrefix; ++i)
            list += "LU1" + QByteArray::number(i) + "\r\n";
        desk_->Write(u"master.txt"_qs, list);
        In(u"CONDOR"_qs, [&] {
            desk_->Click(u"Check8"_qs);
            QCOMPARE(desk_->Text(u"Frame2"_qs), u"MasterCheck (501)"_qs);
            desk_->Type(u"lu1"_qs);
            auto *shown = desk_->Find<QTextBrowser>(u"MCheck"_qs);
            QCOMPARE(shown->document()->blockCount(), ofPrefix + 1);
            shown->moveCursor(
                QTextCursor::End); // the one that differs, in its third character and behind what was typed
            QString colours;
            for (int i = 0; i < 5; ++i, shown->moveCursor(QTextCursor::PreviousCharacter))
                colours.prepend(shown->textCursor().charFormat().foreground().color().name() + u' ');
            QCOMPARE(colours, u"#0000ff #0000ff #ff0000 #ff0000 #ff0000 "_qs);
            shown->moveCursor(QTextCursor::End);
            QTest::mouseClick(shown->viewport(), Qt::LeftButton, {}, shown->cursorRect().center());
            QCOMPARE(Shown(), u"SSB|80m|1|LU2AB|"_qs);
            QCOMPARE(desk_->Focus(), u"RSR"_qs);
        });
    }

    void LeavingAsks()
    {
        In(u"CONDOR"_qs, [&] {
            QWidget *window = desk_->Front();
            const QString lost = u"?LU1 sin registrar, lo descarta?"_qs,
                          leave = u"?"
                                  u" Sale del concurso?"_qs;
            desk_->Type(u"LU1"_qs);
            QVERIFY(!window->close()); // No is the preset
            QCOMPARE(desk_->Told(), QStringList{lost});
            desk_->dialogs.answers = {true, false};
            QVERIFY(!window->close());
            QCOMPARE(desk_->Told().size(), 2);
            QCOMPARE(desk_->Text(u"Corresponsal"_qs), u"LU1"_qs);
            QVERIFY(!desk_->Has(u"varCW.cfg"_qs));
            desk_->Choose(u"Combo1"_qs, u"CW"_qs);
            desk_->Choose(u"Combo3"_qs, u"COM7"_qs);
            desk_->Click(u"Check4"_qs);
            desk_->dialogs.answers = {true};
            window->findChild<QAction *>(u"sdc"_qs)->trigger(); // the menu asks once only
            QCOMPARE(desk_->Told(), QStringList{leave});
            QVERIFY(!window->isVisible());
        });
        const QByteArray saved = desk_->Content(u"varCW.cfg"_qs);
        QVERIFY2(saved.startsWith("COM7\r\n"), saved.constData());
        QVERIFY(desk_->Main().isMaximized());
        desk_->InContest(u"CONDOR"_qs, [&] {
            QCOMPARE(desk_->Texts({u"Combo3"_qs, u"Corresponsal"_qs}), u"COM7|"_qs);
            QVERIFY(desk_->Find<QAbstractButton>(u"Check4"_qs)->isChecked());
        });
    }

    void AStoreThatFailsLosesNothing()
    {
        In(u"CONDOR"_qs, [&] {
            desk_->Work(u"LU1ABC"_qs, u"1"_qs);
            FaultVfs::Instance().SetRoom(0);
            desk_->Work(u"LU2ABC"_qs, u"5"_qs);
            const QString told = desk_->Told().join(u'\n');
            QVERIFY2(told.startsWith(u"XEl QSO no fue guardado."), qPrintable(told));
            QVERIFY2(told.contains(u"No queda lugar en el disco"), qPrintable(told));
            QCOMPARE(Shown(), u"SSB|80m|2|LU2ABC|5"_qs);
            QCOMPARE(desk_->Text(u"Label9"_qs), u"1 QSOs"_qs);
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), QStringList{u"LU1ABC"_qs});
            Desk::HealDisk();
            desk_->Press(Qt::Key_Return);
            QCOMPARE(desk_->Column(u"ListView2"_qs, 9), (QStringList{u"LU2ABC"_qs, u"LU1ABC"_qs}));
        });
        QCOMPARE(desk_->Calls(u"CONDOR"_qs).size(), 2);
    }
};

TORDILLO_TEST(TestForm4)
#include "TestForm4.moc"
