// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Desk.h"
#include "support/TestRegistry.h"
#include "ui/Form1_Main.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

// The operator at the main window: from the keys to the stored row.
class TestForm1Entry : public QObject {
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

    // --- The walk

    void AContactIsTypedWithTheKeyboardAlone()
    {
        Start();
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        desk_->Type(u"lu1abc"_qs);
        desk_->Press(Qt::Key_Return);
        desk_->Type(u"57"_qs); // over the selected report
        desk_->Press(Qt::Key_Return);
        desk_->Type(u"58"_qs);
        desk_->Press(Qt::Key_Enter);
        QCOMPARE(desk_->Focus(), u"Text1"_qs);
        desk_->Type(u"710"_qs);
        QCOMPARE(desk_->Focus(), u"Obs"_qs); // three digits move on to the remarks
        desk_->Type(u"Día de O'Higgins"_qs);
        desk_->Press(Qt::Key_Return);

        QCOMPARE(desk_->Told(), QStringList());
        const QList<QsoRow> rows = desk_->Rows();
        QCOMPARE(rows.size(), 1);
        QsoRow expected;
        expected.id = rows.first().id;
        expected.Modo = u"SSB"_qs;
        expected.Banda = u"80m"_qs;
        expected.MyCall = u"LU9ZZZ"_qs;
        expected.Estacion = u"LU1ABC"_qs;
        expected.Fecha = u"2026-11-25"_qs;
        expected.Hora = u"00:15:00"_qs;
        expected.RSE = u"57"_qs;
        expected.RSR = u"58"_qs;
        expected.Obs = u"Día de O'Higgins"_qs;
        expected.Operador = u"LU1AAA"_qs;
        expected.NombreLog = u"Log inicial"_qs;
        expected.Frecuencia = u"3.710"_qs;
        expected.MiGrid = u"GF05AB"_qs;
        expected.LdA = u"1"_qs;
        expected.Argento = u"Capital"_qs;
        QCOMPARE(rows.first(), expected);

        QCOMPARE(desk_->Text(u"Label6"_qs), u"Log: Log inicial, con 1 QSOs"_qs);
        const QStringList left{desk_->Focus(), desk_->Text(u"Corresponsal"_qs), desk_->Text(u"Obs"_qs),
            desk_->Text(u"RSE"_qs), desk_->Text(u"RSR"_qs), desk_->Text(u"Text1"_qs)};
        QCOMPARE(left, QStringList({u"Corresponsal"_qs, {}, {}, u"57"_qs, u"58"_qs, u"710"_qs}));
    }

    void EnterWalksTheFields_data()
    {
        QTest::addColumn<bool>("manual");
        QTest::addColumn<bool>("satellite");
        QTest::addColumn<QString>("fields");
        QTest::newRow("clock") << false << false << u"RSE Text1 Text2 Obs"_qs;
        QTest::newRow("both") << true << true << u"Fecha Hora RSE Text2 Obs"_qs;
    }
    void EnterWalksTheFields()
    {
        QFETCH(bool, manual);
        QFETCH(bool, satellite);
        QFETCH(QString, fields);
        Start();
        if (manual)
            desk_->Click(u"Check1"_qs);
        if (satellite) {
            desk_->Click(u"Check2"_qs);
            desk_->Choose(u"Combo3"_qs, u"SO-50"_qs);
        }
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        desk_->Type(u"CX1AA"_qs);
        const QHash<QString, QString> selected{{u"Fecha"_qs, u"24"_qs}, {u"Hora"_qs, u"15"_qs}, {u"RSE"_qs, u"59"_qs},
            {u"RSR"_qs, u"59"_qs}, {u"Text1"_qs, u"650"_qs}};
        for (const QString &field : fields.replace(u"RSE"_qs, u"RSE RSR"_qs).split(u' ')) {
            desk_->Press(Qt::Key_Return);
            QCOMPARE(desk_->Focus(), field);
            QCOMPARE(desk_->Find<QLineEdit>(field)->selectedText(), selected.value(field));
            QVERIFY(desk_->Rows().isEmpty());
        }
        desk_->Press(Qt::Key_Return);
        QCOMPARE(desk_->Rows().size(), 1);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        QCOMPARE(desk_->LastStored(&QsoRow::Nombre_Sat), satellite ? u"SO-50"_qs : QString());
        QCOMPARE(desk_->Told(), QStringList());
    }

    void TheSatelliteDictatesModeAndFrequencyUntilItIsLeft()
    {
        Start();
        desk_->Fill(u"Text1"_qs, u"710"_qs);
        QVERIFY(!desk_->Find(u"Frame2"_qs)->isVisible());
        desk_->Click(u"Check2"_qs);
        QVERIFY(desk_->Find(u"Frame2"_qs)->isVisible());
        // None was ever chosen: the catalogue's last row stands in the labels, but it gives no frequency.
        QCOMPARE(desk_->Text(u"mhz"_qs) + u'.' + desk_->Text(u"Text1"_qs), u"3."_qs);
        desk_->Choose(u"Combo3"_qs, u"SO-50"_qs);
        for (const QString &locked : {u"Combo1"_qs, u"mhz"_qs, u"Text1"_qs})
            QVERIFY2(!desk_->Find(locked)->isEnabled(), qPrintable(locked));
        desk_->Contact(u"CX1AA"_qs);
        const QsoRow row = desk_->Rows().value(0);
        const QStringList stored{row.Nombre_Sat, row.Modo, row.Frecuencia, row.Banda};
        QCOMPARE(stored, QStringList({u"SO-50"_qs, u"FM"_qs, u"145.550"_qs, u"2m"_qs}));

        desk_->Click(u"Check2"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
        desk_->Contact(u"CX2AA"_qs);
        const QsoRow after = desk_->Rows().value(1);
        const QStringList restored{after.Nombre_Sat, after.Modo, after.Frecuencia, after.Banda};
        QCOMPARE(restored, QStringList({{}, u"SSB"_qs, u"3.710"_qs, u"80m"_qs}));
    }

    void EnterRefuses_data()
    {
        QTest::addColumn<QString>("set"); // field=value, by blanks
        QTest::addColumn<QString>("from"); // the field that has the focus
        QTest::addColumn<QString>("told");
        QTest::addColumn<QString>("focus");
        const QString call = u"Falta el Corresponsal!"_qs, rsr = u"!Reporte Recibido no válido!"_qs,
                      rse = u"!Reporte Enviado no válido!"_qs;
        for (const QString &field : {u"Corresponsal"_qs, u"RSE"_qs, u"RSR"_qs, u"Text1"_qs, u"Text2"_qs, u"Obs"_qs})
            QTest::addRow("no call, from %s", qPrintable(field))
                << u"Corresponsal="_qs << field << QString(u'!' + call) << u"Corresponsal"_qs;
        QTest::newRow("received 69") << u"RSR=69"_qs << u"Obs"_qs << rsr << u"RSR"_qs;
        QTest::newRow("received before sent") << u"RSE=5 RSR=5"_qs << u"Corresponsal"_qs << rsr << u"RSR"_qs;
        QTest::newRow("59 in CW") << u"Combo1=CW"_qs << u"Obs"_qs << rsr << u"RSR"_qs;
        QTest::newRow("no satellite") << u"Check2=1"_qs << u"Obs"_qs << u"!Elija un satélite!"_qs << u"Combo3"_qs;
        QTest::newRow("own call") << u"Corresponsal=LU9ZZZ"_qs << u"Corresponsal"_qs
                                  << u"XQSO con la propia estación???"_qs << u"Corresponsal"_qs;
    }
    void EnterRefuses()
    {
        QFETCH(QString, set);
        QFETCH(QString, from);
        QFETCH(QString, told);
        QFETCH(QString, focus);
        Start();
        desk_->Find(from)->setFocus();
        desk_->Put(u"Corresponsal"_qs, u"CX1AA"_qs);
        for (const QString &pair : set.split(u' ')) {
            if (pair == u"Check2=1")
                desk_->Click(u"Check2"_qs);
            else
                desk_->Put(pair.section(u'=', 0, 0), pair.section(u'=', 1));
        }
        desk_->Find(from)->setFocus();
        desk_->Told();
        desk_->Press(Qt::Key_Return);
        QCOMPARE(desk_->Told(), QStringList({told}));
        QCOMPARE(desk_->Focus(), focus);
        QVERIFY(desk_->Rows().isEmpty());
    }

    void TheButtonStoresWhatEnterRefuses()
    {
        Start();
        desk_->Type(u"LU9ZZZ"_qs);
        desk_->Click(u"Command2"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->LastStored(&QsoRow::Estacion), u"LU9ZZZ"_qs);
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
    }

    void AContactWithoutAModeIsNotStoredOutOfSight()
    {
        Start();
        desk_->Type(u"CX1AA"_qs);
        desk_->Put(u"Combo1"_qs, {});
        desk_->Click(u"Command2"_qs);
        QCOMPARE(desk_->Told(), QStringList({u"!Falta el Modo!"_qs}));
        QCOMPARE(desk_->Focus(), u"Combo1"_qs);
        desk_->Type(u"AM"_qs);
        desk_->Click(u"Command2"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->LastStored(&QsoRow::Modo), u"AM"_qs);
    }

    void AHeldEnterTakesOneStepAndStoresNothingMore()
    {
        Start();
        desk_->Type(u"CX1AA"_qs);
        desk_->Hold(Qt::Key_Return, 30);
        QCOMPARE(desk_->Focus(), u"RSE"_qs);
        desk_->Find(u"Obs"_qs)->setFocus();
        desk_->Hold(Qt::Key_Return, 30);
        QCOMPARE(desk_->Rows().size(), 1);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Focus(), u"Corresponsal"_qs);
    }

    // --- Fields

    void AFieldLeftBadKeepsTheFocusAndSaysWhy_data()
    {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("told");
        QTest::addColumn<QString>("then"); // what the field holds afterwards
        const auto row = [](const char *name, const char16_t *field, const char16_t *typed, const char16_t *told,
                             const char16_t *then) {
            QTest::newRow(name) << QString::fromUtf16(field) << QString::fromUtf16(typed) << QString::fromUtf16(told)
                                << QString::fromUtf16(then);
        };
        row("letters only", u"Corresponsal", u"ABC", u"!ABC NO Parece ser una Señal distintiva Válida!", u"ABC");
        row("sent 99", u"RSE", u"99", u"!el Reporte 99 no es válido!", u"59");
        row("grid of five", u"Text2", u"GF05A", u"!Grilla incorrecta!", u"GF05A");
    }
    void AFieldLeftBadKeepsTheFocusAndSaysWhy()
    {
        QFETCH(QString, field);
        QFETCH(QString, typed);
        QFETCH(QString, told);
        Start();
        desk_->Click(u"Check1"_qs);
        desk_->Put(u"Corresponsal"_qs, u"CX1AA"_qs);
        desk_->Fill(field, typed);
        desk_->Press(Qt::Key_Tab);
        QCOMPARE(desk_->dialogs.shown.value(0).owner, &desk_->Main());
        QCOMPARE(desk_->Told(), QStringList({told}));
        QCOMPARE(desk_->Focus(), field);
        QTEST(desk_->Text(field), "then");

        // The click on the button that leaves the field does not store past it either.
        desk_->Fill(field, typed);
        desk_->Click(u"Command2"_qs);
        QCOMPARE(desk_->Told(), QStringList({told}));
        QCOMPARE(desk_->Focus(), field);
        QVERIFY(desk_->Rows().isEmpty());
    }

    void OutOfBandIsSaidOnceForAValue()
    {
        Start();
        const QStringList warning{u"!3.490 KHz\n\nFuera de banda!"_qs};
        desk_->Fill(u"Text1"_qs, u"490"_qs);
        QCOMPARE(desk_->Told(), warning);
        QCOMPARE(desk_->Focus(), u"Text1"_qs);
        QCOMPARE(desk_->Text(u"Label7"_qs), u"80m"_qs);
        desk_->Press(Qt::Key_Tab);
        QCOMPARE(desk_->Told(), QStringList());
        QCOMPARE(desk_->Focus(), u"Text2"_qs);
        desk_->Fill(u"Text1"_qs, u"500"_qs);
        QCOMPARE(desk_->Told(), QStringList());
        desk_->Fill(u"Text1"_qs, u"490"_qs);
        QCOMPARE(desk_->Told(), warning);
        desk_->Contact(u"CX1AA"_qs);
        QCOMPARE(desk_->LastStored(&QsoRow::Frecuencia), u"3.490"_qs);
    }

    void ATypedChoiceThatIsLeftIsNoClick()
    {
        Start();
        desk_->Find(u"RSR"_qs)->setFocus();
        for (const QString &field : {u"mhz"_qs, u"Text1"_qs}) {
            desk_->Press(Qt::Key_Tab);
            QCOMPARE(desk_->Focus(), field);
        }
        desk_->Fill(u"mhz"_qs, u"14"_qs);
        desk_->Press(Qt::Key_Tab);
        QCOMPARE(desk_->Focus(), u"Text1"_qs);
        QCOMPARE(desk_->Text(u"Label7"_qs), u"80m"_qs);
        desk_->Press(Qt::Key_Tab); // leaving the kilohertz sets the band
        QCOMPARE(desk_->Text(u"Label7"_qs), u"20m"_qs);
        desk_->Fill(u"Combo1"_qs, u"CW"_qs);
        desk_->Press(Qt::Key_Tab);
        QCOMPARE(desk_->Focus(), u"Combo2"_qs);
        QCOMPARE(desk_->Text(u"RSE"_qs), u"59"_qs);
    }
};

TORDILLO_TEST(TestForm1Entry)
#include "TestForm1Entry.moc"
