// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeQsos.h"
#include "logging/QsoEdit.h"
#include "support/Fixtures.h"

using namespace SomeQsos;

class TestQsoEdit : public StoreTest {
    Q_OBJECT

    // A row as foreign programs leave them, with nothing in the form in which the window would write it.
    void StoreForeignRow(const QByteArray &frequency = "14,25050")
    {
        Sql("INSERT INTO Tabla1 VALUES(NULL,'ssb ','20M',' lu9zzz','lu1abc/w','24/11/2026','9:05:59',"
            "'5','',' Ñandú  ','lu1aaa ','Log inicial','"
            + frequency + "','gf05ab12','fe46 ','2','SO-50  ',NULL,NULL,' lud/da-001 ','ar-1 ',NULL,'  lud/2')");
    }
    QsoRow Row() { return Rows().value(0); }
    static EditFields Valid()
    {
        EditFields fields;
        fields.station = u"LU9ZZZ"_qs;
        fields.operatorCall = u"LU1AAA"_qs;
        fields.call = u"CX1AA"_qs;
        fields.mode = u"SSB"_qs;
        fields.reportSent = fields.reportReceived = u"x"_qs; // the content is not looked at
        return fields;
    }

private Q_SLOTS:
    void SavedUntouchedARowStaysByteForByte()
    {
        StoreForeignRow();
        const EditFields fields = QsoEdit::FromRow(Row());
        QCOMPARE(fields.date + u'|' + fields.time + u'|' + fields.mhz + u'|' + fields.khz + u'|' + fields.satellite
                + u'|' + fields.SOTA,
            u"24/11/2026|09:05|14|2505|SO-50|lud/da-001"_qs);
        QsoRow expected = Row();
        expected.LdA.clear();
        expected.Argento = u"Chubut"_qs;
        QVERIFY(*QsoEdit::UpdateQso(*store_, fields, fields));
        QVERIFY(Row() == expected);
        QCOMPARE(Value("SELECT typeof(Perfil)||typeof(Argento)||quote(LdA) FROM Tabla1"), u"nulltext''"_qs);
    }

    void SavingRewritesWhatItsRulesSay()
    {
        StoreForeignRow("1267,100");
        Sql("UPDATE Tabla1 SET Nombre_Sat='so-50'");
        const EditFields fields = QsoEdit::FromRow(Row());
        QVERIFY(*QsoEdit::UpdateQso(*store_, fields, fields));
        QCOMPARE(Row().Banda, u"23m"_qs); // 23 cm by the name of this window
        QCOMPARE(Row().Frecuencia, u"1267,100"_qs);
        QCOMPARE(Row().Nombre_Sat, u"SO-50"_qs);
    }

    void EachFieldWritesItsOwnColumn()
    {
        using E = EditFields;
        const std::tuple<QString E::*, QString, QString> changes[] = {{&E::station, u"LU8AAA"_qs, u"MyCall=LU8AAA"_qs},
            {&E::call, u"LU2ABC"_qs, u"Estacion=LU2ABC;Argento=Capital"_qs}, {&E::operatorCall, {}, u"Operador="_qs},
            {&E::date, u"01/02/2027"_qs, u"Fecha=2027-02-01"_qs}, {&E::time, u"23:59"_qs, u"Hora=23:59:00"_qs},
            {&E::reportSent, u"59"_qs, u"RSE=59"_qs}, {&E::reportReceived, u" 57"_qs, u"RSR= 57"_qs},
            {&E::remarks, u" O'Hi'ggins\"-- "_qs, u"Obs= OHiggins\"-- "_qs},
            {&E::mhz, u"7"_qs, u"Frecuencia=7.2505"_qs}, {&E::khz, u"090"_qs, u"Frecuencia=14.090"_qs},
            {&E::band, u"40m"_qs, u"Banda=40m"_qs}, {&E::mode, u"CW"_qs, u"Modo=CW"_qs},
            {&E::ownGrid, u"GF05AB"_qs, u"MiGrid=GF05AB"_qs}, {&E::grid, {}, u"SuGrid="_qs},
            {&E::satellite, u"ao-7"_qs, u"Nombre_Sat=AO-7"_qs}, {&E::SOTA, u" A "_qs, u"SOTA=A"_qs},
            {&E::POTA, u" B "_qs, u"POTA=B"_qs}, {&E::MYSOTA, u" C "_qs, u"MYSOTA=C"_qs},
            {&E::IOTA, u" D "_qs, u"IOTA=D"_qs}};
        for (const auto &[field, typed, stored] : changes) {
            Sql("DELETE FROM Tabla1");
            StoreForeignRow("14.2505");
            const QsoRow expected = RowOf(stored, RowOf(u"LdA=;Argento=Chubut"_qs, Row()));
            const EditFields shown = QsoEdit::FromRow(Row());
            EditFields fields = shown;
            fields.*field = typed;
            QVERIFY(*QsoEdit::UpdateQso(*store_, fields, shown));
            QVERIFY2(Row() == expected, qPrintable(stored));
        }
    }

    void ARowThatIsGoneIsReported()
    {
        StoreForeignRow();
        const EditFields fields = QsoEdit::FromRow(Row());
        QVERIFY(*QsoEdit::DeleteQso(*store_, fields.id));
        QVERIFY(!*QsoEdit::UpdateQso(*store_, fields, fields));
    }

    void TheRowToEditIsFound()
    {
        const QString other = u"otro"_qs;
        NewQso newer = Qso(u"CX2AA"_qs), older = Qso(u"CX1AA"_qs);
        older.date = u"23/11/2026"_qs;
        const qint64 first = *AddQso(*store_, logName, newer), second = *AddQso(*store_, logName, newer);
        const qint64 third = *AddQso(*store_, logName, older), elsewhere = *AddQso(*store_, other, newer);
        const auto found = [&](std::optional<qint64> id) {
            const Result<std::optional<QsoRow>> row = QsoEdit::FindQso(*store_, logName, id);
            return *row ? (*row)->id : 0;
        };
        QCOMPARE(found(std::nullopt), second);
        QCOMPARE(found(third), third);
        QCOMPARE(found(elsewhere), 0);
        QVERIFY(*QsoEdit::DeleteQso(*store_, second));
        QCOMPARE(found(second), 0);
        QCOMPARE(found(std::nullopt), first);
    }

    void SavingIsRefusedForOneReasonAtATime()
    {
        using Field = QsoEdit::Refusal::Field;
        // From the last reason to the first: each is found before those that are already there.
        EditFields fields = Valid();
        QVERIFY(!QsoEdit::RefuseSave(fields));
        const auto expect = [&](const QString &message, bool critical, Field field) {
            const auto refusal = QsoEdit::RefuseSave(fields);
            QVERIFY2(refusal && refusal->message == message, qPrintable(message));
            QVERIFY(refusal->critical == critical && refusal->field == field);
        };
        fields.mode.clear();
        expect(u"Falta el Modo!"_qs, false, Field::Mode);
        fields.reportReceived = u"  "_qs;
        expect(u"Reporte incorrecto!"_qs, false, Field::ReportReceived);
        fields.reportSent.clear();
        expect(u"Reporte incorrecto!"_qs, false, Field::ReportSent);
        fields.operatorCall = fields.call;
        expect(u"QSO con el Operador???"_qs, true, Field::Call);
        fields.station = fields.call;
        expect(u"QSO con la propia estación???"_qs, true, Field::Call);
        fields.mode = u"Sat"_qs;
        fields.satellite = u" "_qs;
        expect(u"Debe agregar el nombre del Satélite"_qs, true, Field::Satellite);
    }

    void DatesAndTimesAreChecked()
    {
        const QString badDate = u"Error Fecha!\nFormato: DD/MM/AAAA"_qs, badTime = u"Error Hora!\nFormato: HH:MM"_qs;
        const QList<std::pair<QString, QString>> dates{{u"29/02/2024"_qs, {}}, {{}, badDate},
            {u"29/02/2025"_qs, badDate}, {u"1/02/2024"_qs, badDate}, {u"?1/02/2024"_qs, badDate}};
        for (const auto &[text, message] : dates)
            QCOMPARE(QsoEdit::CheckDate(text), message);
        const QList<std::pair<QString, QString>> times{{u"23:59"_qs, {}}, {u"9:05"_qs, badTime}, {u"1?:05"_qs, badTime},
            {u"24:60"_qs, u"Error Hora!\nMayor de 23."_qs}, {u"23:60"_qs, u"Error Minutos!\nMayor de 59."_qs}};
        for (const auto &[text, message] : times)
            QCOMPARE(QsoEdit::CheckTime(text), message);
    }

    void ListsAndStatesOfTheWindow()
    {
        QCOMPARE(QsoEdit::ModesForList(u"CW"_qs).join(u','), u"SSB,CW,FM,AM,DVoice,DV IP,Echo,Echo IP"_qs);
        QCOMPARE(QsoEdit::ModesForList(u"FT8"_qs).mid(7), QStringList({u"Echo IP"_qs, u"FT8"_qs}));
        QCOMPARE(QsoEdit::ModesForKey(u"Sat"_qs).join(u','), u"SSB,FM,CW,Sat"_qs);
        QCOMPARE(QsoEdit::ModesForKey(u"ssb"_qs).join(u','), u"SSB,FM,CW,Sat,ssb"_qs);
        QString states;
        for (const QString &lda : {u""_qs, u"0"_qs, u" 1"_qs, u"2 "_qs, u"x"_qs})
            states += QsoEdit::Uploaded(lda) + QsoEdit::Confirmed(lda) + u' ';
        QCOMPARE(states, u"NONO NONO SINO SISI NONO "_qs);
    }
};

TORDILLO_TEST(TestQsoEdit)
#include "TestQsoEdit.moc"
