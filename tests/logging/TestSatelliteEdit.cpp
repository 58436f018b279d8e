// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/SatelliteEdit.h"
#include "logging/Satellites.h"
#include "support/TestRegistry.h"

#include <QTest>

using SatelliteEdit::Fields;

class TestSatelliteEdit : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void WhatKeepsASatelliteOut()
    {
        using Field = SatelliteEdit::Refusal::Field;
        const QString format = u"En 23 cm, el formato de la frecuencia es:\n\nMMMM.KKK"_qs;
        const QStringList lines = QStringList(DefaultSatellites()) << u"rota"_qs << u"so-50b;2m"_qs;
        struct Case {
            Fields fields;
            QString message;
            Field focus;
        };
        const auto fields = [](const QString &name, const QString &up, const QString &frequency) {
            return Fields{name, up, u"2m"_qs, u"FM"_qs, {}, frequency};
        };
        const Case cases[] = {{fields({}, u"2m"_qs, u"x"_qs), u"Falta el nombre del Satélite!"_qs, Field::Name},
            {fields(u"AO-7"_qs, u"2m"_qs, u"x"_qs), u"Banda de Subida igual a la de Bajada ?"_qs, Field::DownlinkBand},
            {fields(u"AO-7"_qs, u"70cm"_qs, u"435100"_qs), format, Field::Frequency},
            {fields(u"AO-7"_qs, u"23cm"_qs, u"435.100"_qs), format, Field::Frequency},
            {fields(u"ao-7"_qs, u"23cm"_qs, u"1267.100"_qs), u"el satélite AO-7 ya está en la lista!"_qs, Field::None},
            {fields(u"rota"_qs, u"70cm"_qs, {}), {}, Field::None}, // the file's own spelling is another name
            {fields(u"AO-70"_qs, u"23cm"_qs, u"1267.100"_qs), {}, Field::None}};
        for (const Case &one : cases) {
            const auto refusal = SatelliteEdit::RefuseAdding(one.fields, lines);
            QCOMPARE(refusal ? refusal->message : QString(), one.message);
            QCOMPARE(refusal ? refusal->field : Field::None, one.focus);
        }
    }

    void FrequenciesByBand()
    {
        const QString format23 = u"En 23 cm, el formato de la frecuencia es:\n\nMMMM.KKK"_qs;
        const QString format = u"El formato de la frecuencia es:\n\nMMM.KKK"_qs;
        const QString band2 = u"La frecuencia es 149.000\nNo es de la banda de 2m!"_qs;
        const QString band70 = u"La frecuencia es 429.999\nNo es de la banda de 70m!"_qs;
        const QString band23 = u"La frecuencia es 1266.900\nNo es de la banda de satélites en 23cm!\n"
                               "debe estar en 1267MHz"_qs;
        struct Case {
            QString band, text, message;
        };
        const Case cases[] = {{u"2m"_qs, {}, {}}, {u"2m"_qs, u"148.999"_qs, {}}, {u"2m"_qs, u"149.000"_qs, band2},
            {u"2m"_qs, u"145.50"_qs, format}, {u"70cm"_qs, u"440.999"_qs, {}}, {u"70cm"_qs, u"429.999"_qs, band70},
            {u"23cm"_qs, u"1268.999"_qs, {}}, {u"23cm"_qs, u"1266.900"_qs, band23},
            {u"23cm"_qs, u"435.100"_qs, format23}};
        for (const Case &one : cases)
            QCOMPARE(SatelliteEdit::CheckFrequency(one.band, one.text), one.message);
    }

    void LinesKeepTheirSeparators()
    {
        const QList<std::pair<QString, Fields>> lines{
            {u"X;23cm;2m;FM;67.0;1267.100"_qs, {u"X"_qs, u"23cm"_qs, u"2m"_qs, u"FM"_qs, u"67.0"_qs, u"1267.100"_qs}},
            {u"X;70cm;2m;SSB; ; "_qs, {u"X"_qs, u"70cm"_qs, u"2m"_qs, u"SSB"_qs, {}, {}}}};
        for (const auto &[line, fields] : lines) {
            QCOMPARE(SatelliteEdit::Line(fields), line);
            QCOMPARE(SatelliteEdit::Line(SatelliteEdit::Parse(line)), line);
        }
        QCOMPARE(SatelliteEdit::Parse(u"X;70cm"_qs).downlinkBand, QString());
        QCOMPARE(SatelliteEdit::ShownLines({u"A;2m;70cm;SSB;"_qs, u"B;2m;70cm;SSB; "_qs, u"rota"_qs, {}}),
            QStringList({u"A;2m;70cm;SSB; "_qs, u"B;2m;70cm;SSB; "_qs, u"rota"_qs, {}}));
    }
};

TORDILLO_TEST(TestSatelliteEdit)
#include "TestSatelliteEdit.moc"
