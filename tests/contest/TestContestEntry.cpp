// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/ContestEntry.h"
#include "contest/ContestLogs.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {

ContestFields Full()
{
    return {u"LU9ZZZ"_qs, u"24/11/2026"_qs, u"21:15"_qs, u"LU1ABC"_qs, u"SSB"_qs, u"40m"_qs, u"3"_qs, u"650"_qs,
        u"7"_qs, u"O'H"_qs, u"CQWW"_qs, SerieType::Incremental};
}

} // namespace

class TestContestEntry : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void TheFirstThingMissingIsTold_data()
    {
        using Field = QString ContestFields::*;
        QTest::addColumn<QList<Field>>("emptied");
        QTest::addColumn<QString>("message");
        QTest::addColumn<ContestFocus>("focus");
        using F = ContestFields;
        QTest::newRow("own call") << QList<Field>{&F::ownCall, &F::fecha, &F::hora, &F::corresponsal, &F::rse, &F::rsr}
                                  << u"Falta su Señal Distintiva!"_qs << ContestFocus::OwnCall;
        QTest::newRow("date") << QList<Field>{&F::fecha, &F::hora, &F::corresponsal, &F::rse, &F::rsr}
                              << u"Falta la Fecha!"_qs << ContestFocus::Fecha;
        QTest::newRow("time") << QList<Field>{&F::hora, &F::corresponsal, &F::rse, &F::rsr} << u"Falta el QTR!"_qs
                              << ContestFocus::Hora;
        QTest::newRow("call") << QList<Field>{&F::corresponsal, &F::rse, &F::rsr} << QString()
                              << ContestFocus::Corresponsal;
        QTest::newRow("sent") << QList<Field>{&F::rse, &F::rsr} << u"Falta la Serie Enviada"_qs << ContestFocus::Rse;
        QTest::newRow("received") << QList<Field>{&F::rsr} << QString() << ContestFocus::Rsr;
    }
    void TheFirstThingMissingIsTold()
    {
        QFETCH(QList<QString ContestFields::*>, emptied);
        ContestFields fields = Full();
        QVERIFY(!CheckContestEntry(fields));
        for (QString ContestFields::*field : emptied)
            (fields.*field).clear();
        const auto refusal = CheckContestEntry(fields);
        QVERIFY(refusal);
        QTEST(refusal->message, "message");
        QTEST(refusal->focus, "focus");
    }

    void ARowIsMadeOfTheFields_data()
    {
        QTest::addColumn<QString>("fecha");
        QTest::addColumn<QString>("hora");
        QTest::addColumn<QString>("stored"); // empty: refused
        QTest::newRow("as the clock shows it") << u"24/11/2026"_qs << u"21:15"_qs << u"20261124 2115"_qs;
        QTest::newRow("short time") << u"01/02/2026"_qs << u"9:5"_qs << u"20260201 0905"_qs;
        QTest::newRow("no year") << u"24/11/"_qs << u"00:00"_qs << u"20001124 0000"_qs;
        QTest::newRow("no such day") << u"31/02/2026"_qs << u"00:00"_qs << QString();
        QTest::newRow("no such hour") << u"24/11/2026"_qs << u"24:00"_qs << QString();
    }
    void ARowIsMadeOfTheFields()
    {
        QFETCH(QString, stored);
        ContestFields fields = Full();
        QFETCH(QString, fecha);
        QFETCH(QString, hora);
        fields.fecha = fecha;
        fields.hora = hora;
        QCOMPARE(CheckContestEntry(fields).has_value(), stored.isEmpty());
        if (stored.isEmpty())
            return;
        const QsoRow row = BuildContestRow(fields);
        QCOMPARE(QString(row.Fecha + u' ' + row.Hora), stored);
        const QStringList others{row.Modo, row.Banda, row.MyCall, row.Estacion, row.RSE, row.RSR, row.Obs, row.Operador,
            row.NombreLog, row.Frecuencia, row.LdA, row.Nombre_Sat};
        QCOMPARE(others.join(u'|'), u"SSB|40m|LU9ZZZ|LU1ABC|7|O'H|||CQWW|3650|CQWW|Incremental"_qs);
    }

    void FieldsThatAreLeft_data()
    {
        QTest::addColumn<bool>("isDate");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("message");
        QTest::newRow("date") << true << u"24/11/2026"_qs << u"24/11/2026"_qs << QString();
        QTest::newRow("date without year") << true << u"24/11/"_qs << u"24/11/2000"_qs << QString();
        QTest::newRow("month 13") << true << u"02/13/2026"_qs << u"02/13/2026"_qs
                                  << u"la Fecha 02/13/2026 no es válida!\n\nFormato: dd/mm/aaaa"_qs;
        QTest::newRow("time") << false << u"9:5"_qs << u"09:05"_qs << QString();
        QTest::newRow("minute 60") << false << u"09:60"_qs << u"09:60"_qs
                                   << u"la Hora 09:60 no es válida!\n\nFormato: hh:mm"_qs;
    }
    void FieldsThatAreLeft()
    {
        QFETCH(bool, isDate);
        QFETCH(QString, typed);
        const EntryRules::FieldCheck check = isDate ? CheckContestFecha(typed) : CheckContestHora(typed);
        QTEST(check.text, "text");
        QTEST(check.message, "message");
    }

    void Serials_data()
    {
        QTest::addColumn<QString>("last");
        QTest::addColumn<QString>("next");
        for (const auto &[last, next] : {std::pair{u"", u"1"}, {u"7", u"8"}, {u"0099", u"100"}, {u"BA", u"1"},
                 {u"12X", u"13"}, {u"99999999999", u"2147483648"}})
            QTest::newRow(qPrintable(QString::fromUtf16(last))) << QString::fromUtf16(last) << QString::fromUtf16(next);
    }
    void Serials()
    {
        QFETCH(QString, last);
        QTEST(NextContestSerial(last), "next");
    }

    void Keys_data()
    {
        QTest::addColumn<ContestFilter>("filter");
        QTest::addColumn<QString>("passed");
        QTest::newRow("own call") << ContestFilter::OwnCall << u"LU1A/09"_qs;
        QTest::newRow("Incremental") << SentSerieFilter(SerieType::Incremental) << u"109"_qs;
        QTest::newRow("Fija") << SentSerieFilter(SerieType::Fija) << u"LU1A09"_qs;
        QTest::newRow("any other type") << SentSerieFilter(u"") << u"LU1A09"_qs;
    }
    void Keys()
    {
        QFETCH(ContestFilter, filter);
        QTEST(FilterContestText(u"lu1?ñA'/ 0é-9", filter), "passed");
    }

    void SmallRules()
    {
        for (const auto &[mode, report] : {std::pair{u"SSB", u"59"}, {u"FM", u"59"}, {u"CW", u"599"}, {u"DG", u"599"}})
            QCOMPARE(ContestReport(mode), QString::fromUtf16(report));
        QStringList bands;
        for (const QString &megahertz : ContestMegahertz())
            bands << ContestBandOfMegahertz(megahertz).value_or(u"-"_qs);
        QCOMPARE(bands.join(u' '), u"160m 80m 40m 20m 15m 10m - -"_qs);
        QCOMPARE(CheckContestOwnCall(u""), QString());
        QCOMPARE(CheckContestOwnCall(u"LU1"), QString());
        QCOMPARE(CheckContestOwnCall(u"LU/"), u"LU/ NO Parece ser una Señal distintiva Válida!"_qs);
        QCOMPARE(OwnCallWarning(u"LU1ABC", u"LU1ABC"), u"QSO con LU1ABC ???"_qs);
        QCOMPARE(OwnCallWarning(u"LU1ABD", u"LU1ABC") + OwnCallWarning(u" ", u" "), QString());
        QCOMPARE(ContestCountText(0), u"0 QSOs "_qs);
        QCOMPARE(ContestCountAfterStore(u"122 QSOs "), u"123 QSOs"_qs);
    }
};

TORDILLO_TEST(TestContestEntry)
#include "TestContestEntry.moc"
