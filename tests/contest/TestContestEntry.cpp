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
    void TheFirstThingMissingIsTold()
    {
        using F = ContestFields;
        // From the last that is asked for to the first; each is told before those behind it.
        const std::tuple<QString F::*, QString, ContestFocus> fields[] = {{&F::rsr, QString(), ContestFocus::Rsr},
            {&F::rse, u"Falta la Serie Enviada"_qs, ContestFocus::Rse},
            {&F::corresponsal, QString(), ContestFocus::Corresponsal},
            {&F::hora, u"Falta el QTR!"_qs, ContestFocus::Hora},
            {&F::fecha, u"Falta la Fecha!"_qs, ContestFocus::Fecha},
            {&F::ownCall, u"Falta su Señal Distintiva!"_qs, ContestFocus::OwnCall}};
        ContestFields entry = Full();
        QVERIFY(!CheckContestEntry(entry));
        for (const auto &[field, message, focus] : fields) {
            (entry.*field).clear();
            const auto refusal = CheckContestEntry(entry);
            QVERIFY(refusal);
            QCOMPARE(refusal->message, message);
            QCOMPARE(refusal->focus, focus);
        }
    }

    void ARowIsMadeOfTheFields()
    {
        ContestFields fields = Full();
        for (const auto &[fecha, hora] : {std::pair{u"31/02/2026"_qs, u"00:00"_qs}, {u"24/11/2026"_qs, u"24:00"_qs}}) {
            fields.fecha = fecha;
            fields.hora = hora;
            QVERIFY(CheckContestEntry(fields));
        }
        fields.fecha = u"24/11/"_qs;
        fields.hora = u"9:5"_qs;
        QVERIFY(!CheckContestEntry(fields));
        const QsoRow row = BuildContestRow(fields);
        const QStringList columns{row.Fecha, row.Hora, row.Modo, row.Banda, row.MyCall, row.Estacion, row.RSE, row.RSR,
            row.Obs, row.Operador, row.NombreLog, row.Frecuencia, row.LdA, row.Nombre_Sat};
        QCOMPARE(columns.join(u'|'), u"20001124|0905|SSB|40m|LU9ZZZ|LU1ABC|7|O'H|||CQWW|3650|CQWW|Incremental"_qs);
    }

    void FieldsThatAreLeft()
    {
        QCOMPARE(CheckContestFecha(u"24/11/"_qs).text, u"24/11/2000"_qs);
        QCOMPARE(CheckContestFecha(u"02/13/2026"_qs).message,
            u"la Fecha 02/13/2026 no es válida!\n\nFormato: dd/mm/aaaa"_qs);
        QCOMPARE(CheckContestHora(u"9:5"_qs).text + CheckContestHora(u"9:5"_qs).message, u"09:05"_qs);
        QCOMPARE(CheckContestHora(u"09:60"_qs).message, u"la Hora 09:60 no es válida!\n\nFormato: hh:mm"_qs);
    }

    void SerialsAndKeys()
    {
        for (const auto &[last, next] :
            {std::pair{u"", u"1"}, {u"0099", u"100"}, {u"BA", u"1"}, {u"12X", u"13"}, {u"99999999999", u"2147483648"}})
            QCOMPARE(NextContestSerial(QString::fromUtf16(last)), QString::fromUtf16(next));
        const std::pair<ContestFilter, QString> filters[] = {{ContestFilter::OwnCall, u"LU1A/09"_qs},
            {ContestFilter::Date, u"1/09"_qs}, {ContestFilter::Time, u"1:09"_qs}, {ContestFilter::Digits, u"109"_qs},
            {SentSerieFilter(SerieType::Incremental), u"109"_qs}, {SentSerieFilter(SerieType::Fija), u"LU1A09"_qs},
            {SentSerieFilter(u""), u"LU1A09"_qs}};
        for (const auto &[filter, passed] : filters)
            QCOMPARE(FilterContestText(u"lu1?ñA'/: 0é-9", filter), passed);
    }

    void SmallRules()
    {
        for (const auto &[mode, report] : {std::pair{u"SSB", u"59"}, {u"FM", u"59"}, {u"CW", u"599"}, {u"DG", u"599"}})
            QCOMPARE(ContestReport(mode), QString::fromUtf16(report));
        QStringList bands;
        for (const QString &megahertz : ContestMegahertz())
            bands << ContestBandOfMegahertz(megahertz).value_or(u"-"_qs);
        QCOMPARE(bands.join(u' '), u"160m 80m 40m 20m 15m 10m - -"_qs);
        QCOMPARE(CheckContestOwnCall(u"LU1"), QString());
        QCOMPARE(CheckContestOwnCall(u"LU/"), u"LU/ NO Parece ser una Señal distintiva Válida!"_qs);
        QCOMPARE(OwnCallWarning(u"LU1ABC", u"LU1ABC"), u"QSO con LU1ABC ???"_qs);
    }
};

TORDILLO_TEST(TestContestEntry)
#include "TestContestEntry.moc"
