// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"

#include <QComboBox>

// The editor of the satellite catalogue.
class TestForm11 : public DeskTest {
    Q_OBJECT

    const QString file_ = u"satelites.txt"_qs;

    void InEditor(const std::function<void()> &act)
    {
        InWindow("satel", [&] {
            act();
            Press(Qt::Key_Escape);
            QVERIFY(!form->isVisible());
        });
    }
    void BeginWith(const QByteArray &catalogue)
    {
        Furnish();
        Write(file_, catalogue);
        Start();
    }
    bool Editing() const { return Find("Frame3")->isVisible(); }
    QString Edited() const { return Texts("Text2 Combo8 Combo7 Combo6 Text3 Text5 Label2"); }
    // The names that the main window offers.
    QString Offered() const
    {
        const auto *combo = Main().findChild<QComboBox *>(u"Combo3"_qs);
        QStringList names;
        for (int i = 0; i < combo->count(); ++i)
            names << combo->itemText(i);
        return names.join(u' ');
    }

private Q_SLOTS:
    void ASatelliteIsAdded()
    {
        BeginWith("AO-7;70cm;2m;SSB;100.4\r\nrota\r\nLI-2;2m;70cm;SSB;\r\n");
        InEditor([&] {
            QCOMPARE(Cells("List1", 0), u"AO-7;70cm;2m;SSB;100.4|rota|LI-2;2m;70cm;SSB; "_qs);
            QCOMPARE(Texts("Combo1 Combo2 Combo3"), u"2m|70cm|FM"_qs);
            QVERIFY(!Editing());
            Fill("Text1", "qo;-100"); // no separator comes into a field
            Put("Combo1", "23cm");
            Fill("Frec_new", "1267.1x000"); // eight characters, digits and the point
            QCOMPARE(Text("Frec_new"), u"1267.100"_qs);
            Fill("Text4", "67.0");
            Click("Command1");
            QCOMPARE(Said(), QString());
            QCOMPARE(Offered(), u"AO-7 LI-2 QO-100"_qs);
        });
        QCOMPARE(Content(file_),
            QByteArray("AO-7;70cm;2m;SSB;100.4\r\nrota\r\nLI-2;2m;70cm;SSB;\r\n" // as they were

                       "QO-100;23cm;70cm;FM;67.0;1267.100\r\n"));
    }

    void ARowIsEditedAndTheOthersStay()
    {
        BeginWith("rota;\xf1\r\nQO-100;23cm;2m;FM;67.0;1267.100\r\n\r\nX;13cm;10m;CW;1;2;3\r\nAO-7;70cm;2m;SSB; \r\n");
        InEditor([&] {
            ClickRow("List1", 1);
            QVERIFY(Editing());
            QCOMPARE(Edited() + Focus(), u"QO-100|23cm|2m|FM|67.0|1267.100|1Text2"_qs);
            Fill("Text5", "1268.000");
            Fill("Text2", "ao-7"); // twice the same name is not looked for here
            Click("Command2");
            QVERIFY(!Editing());
            QCOMPARE(Focus(), u"List1"_qs);
            // What the lists do not hold is not changed into what they do.
            for (const int key : {Qt::Key_End, Qt::Key_Up, Qt::Key_Return})
                Press(key);
            QCOMPARE(Edited(), u"X|13cm|10m|CW|1|2|3"_qs);
            Fill("Text2", "y");
            Click("Command2");
        });
        QCOMPARE(Said(), QString());
        QCOMPARE(Content(file_),
            QByteArray(
                "rota;\xf1\r\nAO-7;23cm;2m;FM;67.0;1268.000\r\n\r\nY;13cm;10m;CW;1;2\r\nAO-7;70cm;2m;SSB; \r\n"));
        QCOMPARE(Offered(), u"AO-7 Y AO-7"_qs);
    }

    void RefusalsHaveTheirFocus()
    {
        BeginWith("AO-7;70cm;2m;SSB;100.4\r\n");
        struct Step {
            Words control, typed, told, focus;
        };
        const Step steps[] = {{"Text1", "  ", "!Falta el nombre del Satélite!", "Text1"},
            {"Text1", "ao-7", "!el satélite AO-7 ya está en la lista!", {}},
            {"Frec_new", "145", "!El formato de la frecuencia es:\n\nMMM.KKK", "Frec_new"},
            {"Frec_new", "149.000", "!La frecuencia es 149.000\nNo es de la banda de 2m!", "Frec_new"}};
        InEditor([&] {
            for (const Step &step : steps) {
                Fill(step.control, step.typed);
                Click("Command1");
                QCOMPARE(Said(), step.told);
                if (!step.focus.isEmpty())
                    QCOMPARE(Focus(), step.focus);
            }
            Fill("Frec_new", {});
            Put("Combo1", "70cm");
            Put("Combo2", "70cm");
            Click("Command1");
            QCOMPARE(Said() + Focus(), u"!Banda de Subida igual a la de Bajada ?Combo2"_qs);
        });
        QCOMPARE(Content(file_), QByteArray("AO-7;70cm;2m;SSB;100.4\r\n"));
    }

    void RemovingAsksFirst()
    {
        BeginWith("A;70cm;2m;SSB; \r\nB;70cm;2m;SSB; \r\nC;70cm;2m;SSB; \r\n");
        InEditor([&] {
            for (const bool yes : {false, true}) {
                dialogs.answers << yes;
                ClickRow("List1", 1);
                Click("Command4");
                QCOMPARE(dialogs.shown.last().preset, Dialogs::Button::No);
                QCOMPARE(Said(), u"?Elimina Satélite B?"_qs);
                QCOMPARE(Editing(), !yes);
                QCOMPARE(Offered(), yes ? u"A C"_qs : u"A B C"_qs);
            }
        });
        QCOMPARE(Content(file_), QByteArray("A;70cm;2m;SSB; \r\nC;70cm;2m;SSB; \r\n"));
    }

    void ACatalogueThatCannotBeWrittenStays()
    {
        BeginWith("A;70cm;2m;SSB; \r\n");
        unwritable = QStringList{file_};
        InEditor([&] {
            Fill("Text1", "B");
            Click("Command1");
            dialogs.answers << true;
            ClickRow("List1", 0);
            Click("Command4");
            Click("Command2");
            QCOMPARE(Told().filter(file_).size(), 3);
            QCOMPARE(Cells("List1", 0), u"A;70cm;2m;SSB; "_qs);
            QVERIFY(Editing()); // what was typed can be tried again
        });
        QCOMPARE(Offered(), u"A"_qs);
    }
};

TORDILLO_TEST(TestForm11)
#include "TestForm11.moc"
