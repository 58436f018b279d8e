// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Online.h"
#include "online/ListUpload.h"
#include "support/TestRegistry.h"

using namespace UploadRules;
using Manner = LocalServer::Manner;
using Target = ListUpload::Target;

class TestListUpload : public QObject {
    Q_OBJECT

    static QStringList Row(const QString &call, const QString &frequency = u"14.250"_qs,
        const QString &mode = u"SSB"_qs, const QString &satellite = {}, const QString &remarks = u"doce letras!"_qs)
    {
        QStringList row(22);
        row[2] = call;
        row[4] = frequency;
        row[5] = mode;
        row[6] = u"59"_qs;
        row[8] = u"05/03/2024"_qs;
        row[9] = u"18:07"_qs;
        row[10] = u"LU9ZZZ"_qs;
        row[12] = remarks;
        row[16] = satellite;
        return row;
    }

    struct Ran {
        QStringList lines; // with the colour in front
        ListUpload::Counts counts;
        std::optional<ListUpload::End> end;
        QString cause;
        std::unique_ptr<ListUpload> run;
    };
    static std::unique_ptr<Ran> Begin(Online &online, Target target, qsizetype rows, ListUpload::Errors &errors)
    {
        auto ran = std::make_unique<Ran>();
        ListUpload::Listener listener;
        listener.row = [](qsizetype place) -> std::optional<QStringList> {
            if (place == 1)
                return std::nullopt; // gone meanwhile
            return Row(u"LU%1AA"_qs.arg(place));
        };
        listener.write = [to = ran.get()](const QString &text, ListUpload::Colour colour) {
            to->lines << QString(QChar(u"gra"[int(colour)]) + text);
        };
        listener.progress = [](const ListUpload::Counts &) {};
        listener.ended = [to = ran.get()](ListUpload::End end, const ListUpload::Counts &counts, const QString &cause) {
            to->end = end;
            to->counts = counts;
            to->cause = cause;
            to->run.reset();
        };
        ran->run = std::make_unique<ListUpload>(online.scheduler, target,
            Account{online.server.Base(), u"yo@x"_qs, u"a&b%c+d#ñ"_qs}, true, rows, errors, listener);
        ran->run->Start();
        return ran;
    }
    static std::unique_ptr<Ran> Whole(Online &online, Target target, qsizetype rows, ListUpload::Errors &errors)
    {
        auto ran = Begin(online, target, rows, errors);
        if (!online.Until([&] { return ran->end.has_value(); }))
            qWarning("the run did not end");
        return ran;
    }

private Q_SLOTS:
    void BandsByTheWholeMegahertz()
    {
        UploadBand band;
        const std::pair<QString, QString> rows[] = {{u"5.300"_qs, {}}, {u"14.250.0"_qs, u"20m"_qs},
            {u"5.300"_qs, u"20m"_qs}, {u"1.8"_qs, u"160m"_qs}, {u"29,600"_qs, u"10m"_qs}, {u"55.9"_qs, u"6m"_qs},
            {u"56"_qs, u"6m"_qs}, {u"148"_qs, u"2m"_qs}, {u"450.1"_qs, u"70cm"_qs}, {{}, u"70cm"_qs}};
        for (const auto &[frequency, expected] : rows)
            QCOMPARE(band.Of(Row({}, frequency)), expected);
        const QStringList internet = Row({}, u"14.250"_qs, u"DV IP"_qs);
        QCOMPARE(band.Of(internet), u"20m"_qs);
        QCOMPARE(band.OfLda(internet), u"2m"_qs);
        QCOMPARE(band.OfLda(Row({}, u"5.300"_qs)), u"2m"_qs);
    }

    void RowsForLda()
    {
        struct Case {
            QString mode, satellite, tail;
        };
        const QString head =
            u"http://x/php/tordillo2Compact.php?user=yo@x&pass=a%26b&micall=LU9ZZZ&sucall=LU1AA&banda="_qs;
        const Case cases[] = {{u"SSB"_qs, {}, u"20m&modo=SSB&|"_qs}, {u"DVoice"_qs, {}, u"20m&modo=DV&|"_qs},
            {u"DV IP"_qs, {}, u"2m&modo=DV&|INTERNET"_qs}, {u"Echo IP"_qs, u"AO-7"_qs, u"2m&modo=ECHO&|INTERNET"_qs},
            {u"Echo"_qs, {}, u"20m&modo=ECHO&|"_qs}, {u"FM"_qs, u"AO-7"_qs, u"20m&modo=FM&|SAT"_qs}};
        for (const Case &c : cases) {
            const QString middle = u"fecha=05/03/2024&hora=1807&rst=59&x_qslMSG=%1&prop="_qs;
            const QStringList row = Row(u"LU1AA"_qs, u"14.250"_qs, c.mode, c.satellite);
            for (const bool remarks : {false, true})
                QCOMPARE(LdaAddress({u"http://x"_qs, u"yo@x"_qs, u"a&b"_qs}, row, UploadBand().OfLda(row), remarks),
                    head + QString(c.tail).replace(u"|"_qs, middle.arg(remarks ? u"doce letras!"_qs : QString())));
        }
    }

    void RowsForEqsl()
    {
        const QString head = u"Tordillo Compact Ver 2.1.34<EOH><STATION_CALLSIGN:6>LU9ZZZ<CALL:5>LU1AA<BAND:3>20m"_qs;
        const QString when = u"<QSO_DATE:8>20240305<TIME_ON:4>1807"_qs, end = u"<EOR><EOF>"_qs;
        const QString comment = u"<COMMENT:12>doce letras!"_qs;
        QCOMPARE(EqslDocument(Row(u"LU1AA"_qs), u"20m"_qs, false), head + u"<MODE:3>SSB" + when + comment + end);
        QCOMPARE(EqslDocument(Row(u"LU1AA"_qs), u"20m"_qs, true),
            head + u"<MODE:3>SSB" + when + comment + u"<QSLMSG:12>doce letras!" + end);
        QCOMPARE(EqslDocument(Row(u"LU1AA"_qs, {}, u"Echo IP"_qs, u"AO-7"_qs, {}), u"20m"_qs, true),
            head + u"<MODE:2>FM" + when + u"<PROP_MODE:3>ECH<PROP_MODE:3>SAT<SAT_NAME:4>AO-7" + end);
        QCOMPARE(EqslDocument(Row(u"LU1AA"_qs, {}, u"DVoice"_qs, {}, {}), u"20m"_qs, true),
            head + u"<MODE:12>DIGITALVOICE" + when + end);
    }

    void RepliesHaveAllTheirEffects()
    {
        const auto effects = [](std::initializer_list<bool Effects::*> set, int ldaErrors = 0) {
            Effects made;
            made.ldaErrors = ldaErrors;
            for (bool Effects::*one : set)
                made.*one = true;
            return made;
        };
        using E = Effects;
        const std::pair<QString, Effects> rows[] = {{u"nada"_qs, {}}, {u"OK!"_qs, effects({&E::ldaLoaded})},
            {u"Error de Contraseña!"_qs, effects({&E::red, &E::stop})},
            {u"NO existe en LdA!"_qs, effects({&E::red, &E::stop})},
            {u"Error: x duplicado!"_qs, effects({&E::red, &E::eqslError, &E::ldaDuplicate}, 1)},
            {u"ni Call ni Alias"_qs, effects({&E::red}, 1)},
            {u"Error: Call ni Alias registrado"_qs, effects({&E::red, &E::eqslError}, 2)},
            {u"Result: 1 out"_qs, effects({&E::eqslLoaded})},
            {u"Duplicate OK!"_qs, effects({&E::eqslDuplicate, &E::ldaLoaded})}};
        for (const auto &[reply, expected] : rows)
            QVERIFY2(Judge(reply) == expected, qPrintable(reply));
    }

    void EveryRowIsSentInOrder()
    {
        Online online;
        ListUpload::Errors errors;
        online.server.answer = [](const LocalServer::Request &request) -> LocalServer::Answer {
            const QString call = request.Value(u"sucall"_qs);
            if (call == u"LU3AA")
                return Manner::Hangup;
            return call == u"LU0AA" ? "<b>QSO OK!</b>" : call == u"LU2AA" ? "QSO duplicado!" : "mmm";
        };
        const auto ran = Whole(online, Target::Lda, 5, errors);
        QCOMPARE(*ran->end, ListUpload::End::Complete);
        QCOMPARE(ran->lines, QStringList({u"gQSO OK!"_qs, u"rQSO duplicado!"_qs, u"gmmm"_qs}));
        QCOMPARE(ran->counts.loaded * 100 + ran->counts.duplicates * 10 + ran->counts.unanswered, 111);
        QCOMPARE(online.server.requests.first().Value(u"sucall"_qs) + online.server.requests.last().Value(u"sucall"_qs),
            u"LU0AALU4AA"_qs);
        QCOMPARE(online.server.requests.first().Value(u"pass"_qs), u"a&b%c+d#ñ"_qs);
        QCOMPARE(UploadTexts::Remainder(ran->counts, ran->cause),
            u"Cargados: 1, duplicados: 1.\nQuedaron sin enviar 1 de 5 QSOs.\n1 QSOs no tuvieron respuesta."_qs);
    }

    void EqslShowsWhatItSendsWithoutThePassword()
    {
        Online online;
        ListUpload::Errors errors;
        online.server.Always("<html><body>Result: 1 out of 1 records added<br>Warning: Duplicate</body></html>");
        const auto ran = Whole(online, Target::Eqsl, 1, errors);
        QCOMPARE(ran->lines.first(),
            QString(u'a'
                + QString(online.server.Base() + u"/qslcard/importADIF.cfm?ADIFData=Tordillo Compact Ver 2.1.34")
                      .left(75)
                + u" ..."));
        QCOMPARE(ran->lines.last(), u"gResult: 1 out of 1 records added\nWarning: Duplicate"_qs);
        QCOMPARE(ran->counts.loaded + ran->counts.duplicates, 2);
        const LocalServer::Request &request = online.server.requests.first();
        QCOMPARE(request.Value(u"ADIFData"_qs), EqslDocument(Row(u"LU0AA"_qs), u"20m"_qs, true));
        QCOMPARE(request.Value(u"EQSL_USER"_qs) + u' ' + request.Value(u"EQSL_PSWD"_qs), u"yo@x a&b%c+d#ñ"_qs);
    }

    void ThreeErrorsOrAWrongPasswordEndTheRun()
    {
        Online online;
        ListUpload::Errors errors;
        online.server.Always("Error: malo");
        auto ran = Whole(online, Target::Eqsl, 2, errors);
        QCOMPARE(*ran->end, ListUpload::End::Complete);
        QCOMPARE(errors.lda * 10 + errors.eqsl, 11);
        // Those of an earlier run count, and LdA's count with eQSL's.
        ran = Whole(online, Target::Eqsl, 9, errors);
        QCOMPARE(*ran->end, ListUpload::End::Errors);
        QCOMPARE(ran->counts.sent, 2);
        QCOMPARE(errors.lda * 10 + errors.eqsl, 30);
        online.server.Always("OK!");
        ran = Whole(online, Target::Lda, 9, errors);
        QCOMPARE(*ran->end, ListUpload::End::Errors);
        QCOMPARE(ran->counts.sent * 10 + errors.lda, 10);
        online.server.Always("Error: Call ni Alias registrado"); // two errors in one
        errors = {};
        ran = Whole(online, Target::Lda, 9, errors);
        QCOMPARE(*ran->end, ListUpload::End::Errors);
        QCOMPARE(ran->counts.sent, 2);
        errors = {};
        online.server.Always("Error de Contraseña!");
        ran = Whole(online, Target::Lda, 9, errors);
        QCOMPARE(*ran->end, ListUpload::End::Refused);
        QCOMPARE(ran->counts.sent, 1);
    }

    void ASlowAnswerIsLeftBehind()
    {
        Online online;
        ListUpload::Errors errors;
        online.server.InTurn({Manner::Silent, "OK!"});
        const auto ran = Begin(online, Target::Lda, 3, errors);
        QVERIFY(online.Until([&] { return online.server.requests.size() == 1; }));
        online.scheduler.Advance(4999);
        QCOMPARE(online.server.requests.size(), 1);
        online.scheduler.Advance(1);
        QVERIFY(online.Until([&] { return ran->end.has_value(); }));
        QCOMPARE(ran->counts.unanswered * 10 + ran->counts.loaded, 11);
    }

    void ClosingTexts()
    {
        ListUpload::Counts counts;
        counts.loaded = 12;
        counts.duplicates = 3;
        const QString line(28, u'-');
        QCOMPARE(UploadTexts::Closing(Target::Eqsl, counts),
            QString(line + u"\nQSOs   Cargados: 12\nQSOs Duplicados: 3\nDesconectado de eQSL.\n" + line));
        QCOMPARE(UploadTexts::ThreeErrors(Target::Lda),
            u"Se prdujeron 3 Errores en la subida a LdA \nreviste los parámetros"_qs);
        QCOMPARE(UploadTexts::Connecting(Target::Eqsl), QString(u"Conectando con eQSL ...\n"_qs + QString(26, u'-')));
    }
};

TORDILLO_TEST(TestListUpload)
#include "TestListUpload.moc"
