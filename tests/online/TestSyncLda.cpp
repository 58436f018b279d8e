// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Online.h"
#include "core/QsoTable.h"
#include "online/SyncLda.h"
#include "support/TestRegistry.h"

#include <QTemporaryDir>

using Manner = LocalServer::Manner;
using Kind = SyncRules::Judgement::Kind;

class TestSyncLda : public QObject {
    Q_OBJECT

    std::unique_ptr<QTemporaryDir> folder_;
    std::unique_ptr<LogStore> store_;
    Runs runs_;

    static QsoRow Qso(const QString &call, int minute, const QString &state = u"1"_qs)
    {
        QsoRow row;
        row.Modo = u"SSB"_qs;
        row.Banda = u"40m"_qs;
        row.MyCall = u"LU9ZZZ"_qs;
        row.Estacion = call;
        row.Fecha = u"2024-03-05"_qs;
        row.Hora = QTime(18, 0).addSecs(60 * minute).toString(u"hh:mm:ss");
        row.RSE = u"59"_qs;
        row.NombreLog = u"Uno"_qs;
        row.LdA = state;
        row.Argento = call.startsWith(u"LU") ? u"Capital"_qs : QString();
        return row;
    }
    void Store(const QList<QsoRow> &rows) const
    {
        QVERIFY(store_->Write([&](Session &session) {
            for (const QsoRow &row : rows)
                QsoTable::Insert(session, row);
        }));
    }
    SyncSelection Select(const QString &log = u"Uno"_qs)
    {
        Run run(runs_, {});
        const auto selection = SelectForSync(*store_, log, run);
        return selection ? *selection : SyncSelection();
    }
    // The states of the log, oldest contact first.
    QString States() const
    {
        return *store_->Read([](Session &session) {
            QStringList states;
            Query query = session.Prepare(u"SELECT LdA FROM Tabla1 ORDER BY Fecha, Hora"_qs);
            while (query.Next())
                states << query.Text(0);
            return states.join(u' ');
        });
    }

    struct Ran {
        QStringList lines, failures;
        SyncLda::Counts counts;
        std::optional<SyncLda::End> end;
        QString cause;
        std::unique_ptr<SyncLda> run;
    };
    std::unique_ptr<Ran> Begin(Online &online)
    {
        auto ran = std::make_unique<Ran>();
        SyncLda::Listener listener;
        listener.listed = [to = ran.get()](Kind, const QString &line, const SyncLda::Counts &) { to->lines << line; };
        listener.storeFailed = [to = ran.get()](const Failure &failure) { to->failures << failure.text; };
        listener.ended = [to = ran.get()](SyncLda::End end, const SyncLda::Counts &counts, const QString &cause) {
            to->end = end;
            to->counts = counts;
            to->cause = cause;
            to->run.reset(); // allowed, so let every test do it
        };
        ran->run = std::make_unique<SyncLda>(online.scheduler, *store_,
            SyncRules::Account{online.server.Base(), u"yo@x"_qs, u"a&b%c+d#ñ"_qs}, Select().qsos, listener);
        ran->run->Start();
        return ran;
    }

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        store_ = std::make_unique<LogStore>(folder_->filePath(u"base0.mdb"_qs));
        QVERIFY(store_->CreateEmpty());
    }
    void cleanup() { store_.reset(); }

    void TheLogIsSorted()
    {
        QsoRow both = Qso(u"LU1AA/MM"_qs, 3, u"2 x"_qs), satellite = Qso(u"LU5AA"_qs, 1, {}),
               dotted = Qso(u"LU6AA"_qs, 2, u"0"_qs);
        satellite.Nombre_Sat = u"AO-7"_qs;
        dotted.Banda = u"14.250.0"_qs;
        dotted.MyCall = u"LU8YYY"_qs;
        QsoRow marker, other = Qso(u"LU7AA"_qs, 0);
        marker.NombreLog = u"Uno"_qs;
        other.NombreLog = u"Dos"_qs;
        Store({both, Qso(u"LU2AA/MA"_qs, 4), Qso(u"CX1AA"_qs, 5), dotted, satellite, marker, other});
        const SyncSelection selection = Select();
        QCOMPARE((QList<qint64>{
                     selection.total, selection.confirmed, selection.mobile, selection.foreign, selection.toSend}),
            (QList<qint64>{5, 1, 1, 1, 2}));
        QStringList sent;
        for (const SyncQso &qso : selection.qsos)
            sent << SyncRules::Address({}, qso).section(u"&micall="_qs, 1);
        QCOMPARE(sent,
            QStringList({u"LU9ZZZ&sucall=LU5AA&banda=40m&modo=Sat&fecha=05/03/2024&hora=1801&rst=59"_qs,
                u"LU8YYY&sucall=LU6AA&banda=20m&modo=SSB&fecha=05/03/2024&hora=1802&rst=59"_qs}));
        QCOMPARE(selection.Question(),
            u"2 Calls: LU9ZZZ LU8YYY\nAquellos Alias de los 2 que no estén registrados en LdA No serán subidos.\n\n"
            "log Uno con 5 QSO(s)\n\nEstaciones NO Argentinas: 1\nEstaciones Móviles: 1\n\n"
            "Sube a LdA el log Uno con 2 QSO(s)?"_qs);
    }

    void NothingToSendIsTold()
    {
        QCOMPARE(Select().Refusal(), u"No hay QSOs en el log Uno"_qs);
        Store({Qso(u"CX1AA"_qs, 1)});
        QCOMPARE(Select().Refusal(), u"No hay estaciones argentinas en\nLog: Uno"_qs);
        Store({Qso(u"LU1AA"_qs, 2, u"2"_qs)});
        QCOMPARE(Select().Refusal(), u"No hay estaciones argentinas que no se hayan subido a LdA en\nLog: Uno"_qs);
        Store({Qso(u"LU1AA"_qs, 3)});
        QCOMPARE(Select().Refusal(), QString());
    }

    // More than one slice of reading, with dates that are missing and times that are equal.
    void ALongLogIsReadWholeAndCut()
    {
        QList<QsoRow> rows;
        for (int i = 0; i < 12000; ++i) {
            rows << Qso(u"LU%1A"_qs.arg(i), i / 4000);
            if (i >= 11990)
                rows.last().Fecha = u""_qs;
        }
        Store(rows);
        QVERIFY(store_->Write(
            [](Session &session) { session.Execute(u"UPDATE Tabla1 SET Fecha=NULL, Hora=NULL WHERE id>11995"_qs); }));
        const SyncSelection selection = Select();
        QCOMPARE(selection.total, 12000);
        QCOMPARE(selection.qsos.size(), 1000);
        QCOMPARE(selection.qsos[10].sucall, u"LU0A"_qs);
        QVERIFY(selection.Question().startsWith(
            u"Call: LU9ZZZ\nSe Tienen 12000 QSOs, se enviarán solo los 1000 primeros\nlog Uno con 12000 QSO(s)\n"));
        QVERIFY(selection.Question().endsWith(u"con 1000 QSO(s)?"));
        Run stopped(runs_, {});
        stopped.Cancel();
        QCOMPARE(SelectForSync(*store_, u"Uno"_qs, stopped).failure().kind, Failure::Kind::Cancelled);
    }

    void RepliesAreJudgedByTheirWords()
    {
        SyncQso qso;
        qso.sucall = u"LU1AA"_qs;
        struct Row {
            QString reply;
            Kind kind;
            QString line, state;
        };
        const QString head = u"LU9ZZZ LU1AA 40m SSB 05/03/2024 1801 "_qs, shown = u"LU9ZZZ>LU1AA 40m/SSB >"_qs;
        const Row rows[] = {{head + u"duplicado!N", Kind::Checked, shown + u"Chequeado, aún no Confirmado!", u"1"_qs},
            {head + u"QSO duplicado!Y", Kind::Confirmed, shown + u"Chequeado, Confirmado!", u"2"_qs},
            {head + u"duplicado!S", Kind::Confirmed, shown + u"Chequeado, Confirmado!", u"2"_qs},
            {head + u" Guardado", Kind::Uploaded, shown + u"Subido!", u"1"_qs},
            {u"Guardado"_qs, Kind::NotUnderstood, u"Guardado"_qs, {}},
            {head + u"duplicado!Y LdA", Kind::Error, head + u"duplicado!Y LdA", {}},
            {u"Error de Contraseña!"_qs, Kind::Error, u"Error de Contraseña!"_qs, {}},
            {u"No es Argentina en LdA"_qs, Kind::Error, u"LU1AA No lo considera LdA"_qs, {}},
            {{}, Kind::NotUnderstood, u"(respuesta vacía)"_qs, {}}};
        for (const Row &row : rows) {
            const SyncRules::Judgement judged = SyncRules::Judge(row.reply, true, qso);
            QVERIFY2(judged.kind == row.kind && judged.line == row.line && judged.newState == row.state,
                qPrintable(row.reply));
            QVERIFY(SyncRules::Judge(row.reply, false, qso).newState.isEmpty());
        }
    }

    void StatesAreWrittenOneByOne()
    {
        Store({Qso(u"LU1AA"_qs, 1), Qso(u"LU2AA"_qs, 2, {}), Qso(u"LU3AA"_qs, 3), Qso(u"LU4AA"_qs, 4, u"0"_qs),
            Qso(u"LU5AA"_qs, 5, u"0"_qs)});
        Online online;
        QStringList before;
        online.server.answer = [&](const LocalServer::Request &request) -> LocalServer::Answer {
            before << States();
            const QString call = request.Value(u"sucall"_qs);
            const QByteArray head = "<p>LU9ZZZ " + call.toLatin1() + " 40m SSB 05/03/2024 1801 ";
            if (call == u"LU1AA")
                return QByteArray(head + "duplicado!Y</p>");
            if (call == u"LU2AA")
                return QByteArray(head + "Guardado</p>");
            if (call == u"LU4AA")
                return {head + "Guardado</p>", 500};
            if (call != u"LU3AA")
                return "<html>Bienvenido al hotel</html>";
            LocalServer::Answer latin("Error de Contrase\xf1"
                                      "a!");
            latin.type = "text/html";
            return latin;
        };
        const auto ran = Begin(online);
        QVERIFY(online.Until([&] { return ran->end.has_value(); }, 2));
        QCOMPARE(*ran->end, SyncLda::End::Complete);
        QCOMPARE(
            before, QStringList({u"1  1 0 0"_qs, u"2  1 0 0"_qs, u"2 1 1 0 0"_qs, u"2 1 1 0 0"_qs, u"2 1 1 0 0"_qs}));
        QCOMPARE(States(), u"2 1 1 0 0"_qs);
        QCOMPARE(ran->lines,
            QStringList({u"1 LU9ZZZ>LU1AA 40m/SSB >Chequeado, Confirmado!"_qs, u"2 LU9ZZZ>LU2AA 40m/SSB >Subido!"_qs,
                u"3 Error de Contraseña!"_qs, u"4 LU9ZZZ LU4AA 40m SSB 05/03/2024 1801 Guardado"_qs,
                u"5 Bienvenido al hotel"_qs}));
        QCOMPARE(SyncRemainder(ran->counts),
            u"En el log quedó el nuevo estado de 2 QSOs.\n2 respuestas no se entendieron: esos QSOs siguen como "
            "estaban."_qs);
        QCOMPARE(online.server.requests.first().Value(u"pass"_qs), u"a&b%c+d#ñ"_qs);
    }

    void ARunThatBreaksOffKeepsWhatItHas()
    {
        Store({Qso(u"LU1AA"_qs, 1, {}), Qso(u"LU2AA"_qs, 2, {}), Qso(u"LU3AA"_qs, 3, {})});
        const LocalServer::Answer good = "LU9ZZZ LU1AA 40m SSB 05/03/2024 1801 duplicado!Y";
        for (const Manner manner : {Manner::Hangup, Manner::Silent}) {
            Online online;
            online.server.InTurn({good, LocalServer::Answer(manner)});
            const auto ran = Begin(online);
            QVERIFY(online.Until([&] { return online.server.requests.size() > 1; }, 2));
            if (manner == Manner::Silent) {
                online.scheduler.Advance(14990);
                QVERIFY(!ran->end);
            }
            QVERIFY(online.Until([&] { return ran->end.has_value(); }, manner == Manner::Silent ? 10 : 0));
            QCOMPARE(*ran->end, SyncLda::End::NoConnection);
            QCOMPARE(ran->counts.done, 1);
            QCOMPARE(online.scheduler.RunningTimers(), 0);
        }
        QCOMPARE(States(), u"2 2 "_qs); // each run confirmed the first that was left
        Online online;
        online.server.Always(Manner::Silent);
        const auto ran = Begin(online);
        ran->run->Cancel();
        QCOMPARE(*ran->end, SyncLda::End::Cancelled);
        QCOMPARE(SyncRemainder(ran->counts),
            u"En el log quedó el nuevo estado de 0 QSOs.\n1 QSO fue enviado y quedó sin respuesta: sigue como estaba."_qs);
    }

    void AStoreThatRefusesIsToldOnceAndCounted()
    {
        Store({Qso(u"LU1AA"_qs, 1, {}), Qso(u"LU2AA"_qs, 2, {})});
        Online online;
        online.server.Always("LU9ZZZ LU1AA 40m SSB 05/03/2024 1801 Guardado");
        const auto ran = Begin(online);
        store_->Close();
        QVERIFY(QFile::rename(folder_->filePath(u"base0.mdb"_qs), folder_->filePath(u"otra"_qs)));
        QVERIFY(online.Until([&] { return ran->end.has_value(); }, 2));
        QCOMPARE(ran->failures.size(), 1);
        QVERIFY(SyncRemainder(ran->counts).startsWith(u"En el log quedó el nuevo estado de 0 QSOs."));
        QVERIFY(SyncRemainder(ran->counts).endsWith(u"El estado de 2 QSOs no se pudo guardar en el log."));
    }
};

TORDILLO_TEST(TestSyncLda)
#include "TestSyncLda.moc"
