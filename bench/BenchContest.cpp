// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "contest/Analysis.h"
#include "contest/ContestEntry.h"
#include "contest/ContestLogs.h"
#include "contest/ContestLookup.h"
#include "contest/MasterCheck.h"
#include "core/TextFile.h"

#include <QSet>
#include <memory>
#include <sqlite3.h>

namespace {

constexpr int smallContest = 200;
constexpr int largeContest = 20000;
constexpr int storedQsos = 400;
constexpr int markedRows = 200;
constexpr int masterCalls = 90000;
constexpr int typedTexts = 400;
constexpr int scannedTexts = 40;

const QString contestName = u"CONDOR"_qs;

template <typename Value>
Value Got(Result<Value> result)
{
    if (!result)
        GiveUp(result.failure().text);
    if constexpr (!std::is_void_v<Value>)
        return *std::move(result);
}

// One contact a minute. One in five is with a station worked before in the same mode and band.
QsoRow ContestQso(int number)
{
    static const QStringList bands{u"80m"_qs, u"40m"_qs, u"20m"_qs, u"15m"_qs, u"10m"_qs};
    static const QDateTime start(QDate(2026, 1, 1), QTime(0, 0), Qt::UTC);
    const int station = number % 5 == 4 ? number / 2 : number;
    QsoRow row;
    row.Estacion = QsoMaker::CallOfStation(station);
    row.Modo = station % 3 == 0 ? u"CW"_qs : u"SSB"_qs;
    row.Banda = bands[station % 5];
    row.Fecha = start.addSecs(60 * number).toString(u"yyyyMMdd");
    row.Hora = start.addSecs(60 * number).toString(u"hhmm");
    row.MyCall = u"LU9ZZZ"_qs;
    row.RSE = QString::number(number + 1);
    row.RSR = QString::number(number % 977);
    row.Frecuencia = u"3650"_qs;
    row.NombreLog = row.LdA = contestName;
    row.Nombre_Sat = SerieType::Incremental;
    return row;
}

void AddContest(LogStore &store, int qsos)
{
    Got(CreateContest(store, contestName, SerieType::Incremental));
    Got(store.Write([qsos](Session &session) {
        for (int i = 0; i < qsos; ++i)
            ContestTable::Insert(session, ContestQso(i));
    }));
}

// A database with the contest beside a general log of `log` contacts.
QString ContestDatabase(const BenchSetting &setting, const QString &name, int qsos, qint64 log = smallLog)
{
    const QString path = setting.workFolder + u'/' + name;
    CopyMadeLog(setting.cacheFolder, log, path);
    LogStore store(path);
    AddContest(store, qsos);
    return path;
}

DxccTable Countries(const BenchSetting &setting)
{
    DxccTable countries;
    for (const QString &line : TextFile::ReadLines(FileSystem(), setting.dxccFile).value_or(QStringList()))
        countries.AddLine(line);
    return countries;
}

// --- Storing

// The bare insert of the columns that a contest fills, prepared once, each in its own transaction.
class RawContest {
public:
    explicit RawContest(const QString &path)
        : database_(path)
        , insert_(database_,
              u"INSERT INTO Tabla2 (Modo,Banda,MyCall,Estacion,Fecha,Hora,RSE,RSR,Obs,\"Nombre Log\",Frecuencia,LdA,"
              "Nombre_Sat) VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?)"_qs)
    {
    }
    void Insert(const QsoRow &row)
    {
        int parameter = 0;
        QByteArray texts[13];
        for (const QString &text : {row.Modo, row.Banda, row.MyCall, row.Estacion, row.Fecha, row.Hora, row.RSE,
                 row.RSR, row.Obs, row.NombreLog, row.Frecuencia, row.LdA, row.Nombre_Sat}) {
            texts[parameter] = text.toUtf8();
            insert_.Bind(parameter + 1, texts[parameter]);
            ++parameter;
        }
        insert_.Step();
        insert_.Reset();
    }

private:
    RawDatabase database_;
    RawStatement insert_;
};

// What Enter does with the fields, but for what is painted.
void Enter(LogStore &store, int number)
{
    const QsoRow qso = ContestQso(number);
    const ContestFields fields{qso.MyCall,
        QString(qso.Fecha.mid(6) + u'/' + qso.Fecha.mid(4, 2) + u'/' + qso.Fecha.left(4)),
        QString(qso.Hora.left(2) + u':' + qso.Hora.mid(2)), qso.Estacion, qso.Modo, qso.Banda, u"3"_qs, u"650"_qs,
        qso.RSE, qso.RSR, contestName, SerieType::Incremental};
    if (CheckContestEntry(fields) || !Got(StoreContestQso(store, BuildContestRow(fields))))
        GiveUp(u"a contact was not stored"_qs);
}

void BenchStoring(const BenchSetting &setting, ResultTable &table)
{
    LogStore small(ContestDatabase(setting, u"store-small"_qs, smallContest));
    LogStore large(ContestDatabase(setting, u"store-large"_qs, largeContest));
    RawContest raw(ContestDatabase(setting, u"store-raw"_qs, largeContest));
    constexpr int next = largeContest;
    const auto timed = [&](const std::function<void(int)> &store) {
        auto number = std::make_shared<int>(next);
        return Clocked([store, number](int) { store((*number)++); });
    };
    const std::vector<double> medians =
        Alternate({timed([&](int i) { Enter(large, i); }), timed([&](int i) { raw.Insert(ContestQso(i)); }),
                      timed([&](int i) { Enter(small, i); })},
            storedQsos);
    const QString size = SizeText(largeContest);
    table.AddRatio(u"contest: Enter to stored / bare insert"_qs, size, medians[0], medians[1], 1.25);
    table.AddRatio(u"contest: Enter to stored, large contest / small one"_qs, size, medians[0], medians[2], 1.25);
}

// --- The list of calls

// As lists of calls are: sorted.
QStringList MakeMaster()
{
    QSet<QString> calls;
    for (qint64 station = 0; calls.size() < masterCalls; ++station)
        calls.insert(QsoMaker::CallOfStation(station));
    QStringList sorted(calls.begin(), calls.end());
    sorted.sort();
    return sorted;
}

// What an operator types on the way to a call: three characters and more, the third one wrong now and then.
QStringList MakeTyped(const QStringList &master)
{
    QStringList texts;
    for (int i = 0; i < typedTexts; ++i) {
        QString call = master[static_cast<qsizetype>(i) * 7919 % master.size()];
        if (i % 7 == 0)
            call[2] = u"0123456789X"[i % 11];
        texts << call.left(3 + i % 4);
    }
    return texts;
}

// The plain search: the whole list twice, the rules in it as they are told.
QList<MasterHit> Scan(const QStringList &master, const QString &text)
{
    QList<MasterHit> hits;
    for (const QString &call : master)
        if (call.startsWith(text))
            hits.append({call, true, {}});
    const auto agrees = [&text](const QString &call) {
        for (qsizetype i = 0; i < text.size(); ++i)
            if (i != 2 && call[i] != text[i])
                return false;
        return true;
    };
    int near = 0;
    for (const QString &call : master) {
        if (near == MasterCheck::mostNearHits)
            break;
        if (call.size() < text.size() || !agrees(call) || call.startsWith(text))
            continue;
        ++near;
        MasterHit hit{call, false, {}};
        for (qsizetype i = 0; i < call.size(); ++i)
            hit.different << (i >= text.size() || call[i] != text[i]);
        hits << hit;
    }
    return hits;
}

void BenchMaster(const MasterCheck &master, ResultTable &table)
{
    const QStringList texts = MakeTyped(master.Calls());
    qsizetype hits = 0;
    const auto search = [&](int count) {
        return Clocked([&, count](int) {
            for (const QString &text : texts.first(count))
                hits += master.Search(text).size();
        });
    };
    const Timed scan = Clocked([&](int) {
        for (const QString &text : texts.first(scannedTexts))
            hits += Scan(master.Calls(), text).size();
    });
    const double quick = Alternate({search(typedTexts)}, 50)[0] / typedTexts;
    const std::vector<double> medians = Alternate({search(scannedTexts), scan}, 15, 1);
    if (hits == 0)
        GiveUp(u"no call was found"_qs);
    const QString size = SizeText(masterCalls);
    table.AddLimit(u"MasterCheck, one search"_qs, size, quick, 25, Unit::Microseconds);
    table.AddRatio(
        u"MasterCheck / plain scan"_qs, size, medians[0] / scannedTexts, medians[1] / scannedTexts, 1.0 / 15);
    double differences = 0;
    for (const QString &text : texts)
        differences += master.Search(text) == Scan(master.Calls(), text) ? 0 : 1;
    table.AddLimit(
        u"MasterCheck searches that differ from the scan"_qs, SizeText(typedTexts), differences, 0, Unit::Count);
}

// --- Reading

void BenchReading(
    const BenchSetting &setting, const MasterCheck &master, const DxccTable &countries, ResultTable &table)
{
    LogStore store(ContestDatabase(setting, u"reading"_qs, largeContest, largeLog));
    qsizetype found = 0;
    const Timed key = Clocked([&](int round) {
        const QsoRow qso = ContestQso(round * 37);
        const QString call = qso.Estacion.left(3 + round % 4);
        found += Got(FindContestDuplicates(store, contestName, call, qso.Modo, qso.Banda)).size();
        found += countries.CountryOf(call).size() + master.Search(call).size();
    });
    const Timed open = Clocked([&](int) {
        found += Got(ContestListLoad(store, contestName)).size();
        const QString mode = Got(LastContestValue(store, contestName, ContestValue::Mode));
        found += Got(LastContestValue(store, contestName, ContestValue::Band)).size();
        found += Got(LastContestSerial(store, contestName, mode)).size();
    });
    table.AddLimit(u"contest: a key stroke in the call"_qs, SizeText(largeContest) + u" of " + SizeText(largeLog),
        Alternate({key}, 500)[0], 1000, Unit::Microseconds);
    table.AddLimit(u"contest: open, its list read"_qs, SizeText(largeContest), Alternate({open}, 9)[0], 300000,
        Unit::Microseconds);
    if (found == 0)
        GiveUp(u"nothing was found"_qs);
}

// --- The analysis

// A statement for each mark of each row, committed by itself, with a walk of the contest for each band and mode. As all
// of that takes many minutes, the whole is done without waiting for the disk, and its time is reckoned from the time of
// one statement that does wait.
class RowByRow {
public:
    RowByRow(const QString &path, const DxccTable &countries)
        : countries_(countries)
        , database_(path)
    {
    }

    void Analyse()
    {
        database_.Execute("PRAGMA synchronous=OFF");
        database_.Execute("UPDATE Tabla2 SET Perfil='', SOTA='' WHERE \"Nombre Log\"='CONDOR'");
        RawStatement mark(database_, u"UPDATE Tabla2 SET Argento=?, Perfil=? WHERE id=?"_qs);
        marked_ = Rows(u"Modo<>'' ORDER BY Fecha, Hora"_qs);
        for (const QStringList &row : marked_)
            Run(mark, {countries_.CountryOf(row[1]), row[2], row[0]});
        const QList<QStringList> groups =
            Texts(u"SELECT DISTINCT Banda, Modo FROM Tabla2 WHERE \"Nombre Log\"='CONDOR' AND Modo<>''"_qs, 2);
        for (const QStringList &group : groups)
            MarkGroup(group, u"id DESC"_qs, true);
        for (const QStringList &group : groups)
            MarkGroup(group, u"Fecha, Hora"_qs, false);
    }

    int Statements() const { return statements_; }
    // Gives one contact another mark than it has (the engine writes nothing otherwise), and waits for the disk.
    void MarkOne(int number)
    {
        database_.Execute("PRAGMA synchronous=EXTRA");
        RawStatement mark(database_, u"UPDATE Tabla2 SET Perfil=? WHERE id=?"_qs);
        const QStringList &row = marked_[number];
        Run(mark, {QString(row[2] + u"*"), row[0]});
        if (sqlite3_changes(database_.Handle()) != 1)
            GiveUp(u"a contact was not marked"_qs);
    }

private:
    QList<QStringList> Texts(const QString &sql, int columns)
    {
        RawStatement statement(database_, sql);
        QList<QStringList> rows;
        while (statement.Step()) {
            rows.append(QStringList());
            for (int i = 0; i < columns; ++i)
                rows.last() << statement.Text(i);
        }
        return rows;
    }
    QList<QStringList> Rows(const QString &where)
    {
        return Texts(
            QString(u"SELECT id, Estacion, RSR, Argento FROM Tabla2 WHERE \"Nombre Log\"='CONDOR' AND " + where), 4);
    }
    void Run(RawStatement &statement, const QStringList &values)
    {
        QList<QByteArray> texts;
        for (const QString &value : values)
            texts << value.toUtf8();
        for (int i = 0; i < texts.size(); ++i)
            statement.Bind(i + 1, texts[i]);
        statement.Step();
        statement.Reset();
        ++statements_;
    }
    // The newest contact of each value, or every contact of a call but the oldest.
    void MarkGroup(const QStringList &group, const QString &order, bool multipliers)
    {
        RawStatement mark(database_, u"UPDATE Tabla2 SET SOTA=? WHERE id=?"_qs);
        QSet<QString> seen;
        for (const QStringList &row : Rows(QString(
                 u"Banda='" + group[0] + u"' AND Modo='" + group[1] + u"' AND Argento<>'' ORDER BY " + order))) {
            const QString value = multipliers ? row[3] : row[1];
            const bool known = seen.contains(value);
            seen << value;
            if (known != multipliers)
                Run(mark, {multipliers ? value : u"Duplicado"_qs, row[0]});
        }
    }

    const DxccTable &countries_;
    RawDatabase database_;
    QList<QStringList> marked_;
    int statements_ = 0;
};

double DifferentRows(const QString &ours, const QString &theirs)
{
    LogStore left(ours), right(theirs);
    const QList<QsoRow> a = Got(ContestRows(left, contestName)), b = Got(ContestRows(right, contestName));
    double different = std::abs(static_cast<double>(a.size() - b.size()));
    for (qsizetype i = 0; i < std::min(a.size(), b.size()); ++i)
        for (const QsoColumns::Column &column : QsoColumns::all)
            if (a[i].*column.field != b[i].*column.field) {
                ++different;
                break;
            }
    return different;
}

void BenchAnalysis(const BenchSetting &setting, const DxccTable &countries, ResultTable &table)
{
    const QString ours = ContestDatabase(setting, u"analysis"_qs, largeContest);
    const QString theirs = ContestDatabase(setting, u"analysis-rows"_qs, largeContest);
    LogStore store(ours);
    FileSystem files;
    Runs runs;
    const Timed analyse = Clocked([&](int) {
        Run run(runs, {});
        Got(AnalyseContest(store, files, setting.workFolder, countries, contestName, run));
    });
    const double quick = Alternate({analyse}, 5, 1)[0];
    RowByRow rows(theirs, countries);
    rows.Analyse();
    const double different = DifferentRows(ours, theirs);
    const int statements = rows.Statements();
    const double slow = Alternate({Clocked([&](int round) { rows.MarkOne(round); })}, markedRows, 0)[0] * statements;
    table.AddRatio(u"contest: analysis / a statement a row"_qs, SizeText(largeContest), quick, slow, 1.0 / 50);
    table.AddLimit(
        u"contest: rows that the two analyses leave different"_qs, SizeText(largeContest), different, 0, Unit::Count);
}

} // namespace

void BenchContest(const BenchSetting &setting, ResultTable &table)
{
    const DxccTable countries = Countries(setting);
    if (countries.Size() == 0) {
        table.AddFailure(u"contest"_qs, u"no prefix table"_qs);
        return;
    }
    const MasterCheck master(MakeMaster());
    BenchStoring(setting, table);
    BenchMaster(master, table);
    BenchReading(setting, master, countries, table);
    BenchAnalysis(setting, countries, table);
}
