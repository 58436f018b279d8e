// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"
#include "RawSqlite.h"

#include "core/Run.h"
#include "interchange/AdifFile.h"
#include "interchange/AdifImport.h"
#include "interchange/AdifRecord.h"
#include "interchange/AdifStaging.h"
#include "interchange/AdifWriter.h"

#include <QDate>
#include <QFile>
#include <cstring>

namespace {

constexpr int parseRounds = 15, importRounds = 4, exportRounds = 5;
constexpr int records = 10000;
volatile qsizetype sink = 0;

// Records as other programs write them. Each `year` gives other dates, so that no two files repeat each other.
QByteArray MakeFile(int count, int year)
{
    QByteArray file = "<ADIF_VER:5>3.1.0\r\n<EOH>\r\n";
    QsoMaker maker(count, quint32(year));
    for (int i = 0; i < count; ++i) {
        QsoRow row = maker.Next();
        row.Fecha = QDate(year, 1, 1).addDays(i / 100).toString(u"yyyy-MM-dd");
        file += AdifWriter::BackupRecord(row);
    }
    return file;
}

void Parsing(ResultTable &table)
{
    const auto parse = [](const QList<QByteArray> &lines) {
        return Clocked([&lines](int) {
            for (const QByteArray &line : lines)
                sink = sink + AdifRecord(line).Has(AdifTag::Call);
        });
    };
    const QByteArray large = MakeFile(10 * records, 2001), small = MakeFile(records, 2001);
    const QList<QByteArray> largeLines = large.split('\n'), smallLines = small.split('\n');
    const Timed scan = Clocked([&large](int) {
        const char *at = large.constData(), *end = at + large.size();
        while ((at = static_cast<const char *>(std::memchr(at, '<', size_t(end - at))))) {
            sink = sink + 1;
            ++at;
        }
    });
    const std::vector<double> medians = Alternate({parse(largeLines), scan, parse(smallLines)}, parseRounds);
    table.AddRatio(u"ADIF, parsing / memchr for \"<\""_qs, SizeText(10 * records), medians[0], medians[1], 10);
    table.AddRatio(u"ADIF, parsing 100,000 / 10,000 records"_qs, SizeText(10 * records), medians[0], medians[2], 11);
}

QString FileOf(const BenchSetting &setting, int year)
{
    const QString path = setting.workFolder + u"/import-"_qs + QString::number(year) + u".adi"_qs;
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(MakeFile(records, year)) < 0)
        GiveUp(u"cannot write "_qs + path);
    return path;
}

// The whole import as the program does it, without its window.
void Import(LogStore &store, const QString &path)
{
    FileSystem files;
    Runs runs;
    Run run(runs, {});
    const auto show = [](const QString &) {};
    if (!AdifStaging::ClearStaging(store))
        GiveUp(u"cannot clear the staging table"_qs);
    const auto split = AdifFile::SplitSingleLineFile(files, path, path + u"_copy"_qs, run, show);
    const auto repaired =
        AdifFile::JoinRecordLines(files, path, path + u"_joined"_qs, run, show, [](qint64, const QString &) {});
    const auto read = repaired ? AdifFile::ReadRecords(files, *repaired, run, show) : repaired.failure();
    if (!split || !read || read->records.size() != records)
        GiveUp(u"the file does not read"_qs);
    QList<AdifStaging::Staged> staged;
    for (const QByteArray &record : read->records) {
        const AdifImport::Contact contact = AdifImport::ParseRecord(record, {});
        const auto prepared = AdifStaging::Prepare(store, madeLogName, contact.row);
        if (!prepared)
            GiveUp(prepared.failure().text);
        staged << *prepared;
    }
    if (!AdifStaging::StageRows(store, staged))
        GiveUp(u"cannot stage"_qs);
    const auto rows = AdifStaging::StagedRows(store);
    const auto loaded = rows ? AdifStaging::LoadRows(store, madeLogName, *rows, rows->size(), false) : rows.failure();
    if (!loaded || loaded->inserted != records)
        GiveUp(u"cannot load"_qs);
}

// The values of a record by plain search, in the order of the columns that are bound below.
QList<QByteArray> PlainValues(const QByteArray &line)
{
    static constexpr const char *tags[] = {"MODE", "BAND", "STATION_CALLSIGN", "CALL", "QSO_DATE", "TIME_ON",
        "RST_SENT", "RST_RCVD", "COMMENT", "OPERATOR", "FREQ", "MY_GRIDSQUARE", "GRIDSQUARE", "SAT_NAME", "SOTA_REF",
        "SIG_INFO"};
    QList<QByteArray> values;
    for (const char *tag : tags) {
        const qsizetype at = line.indexOf(QByteArray(QByteArray("<") + tag + ':'));
        const qsizetype close = at < 0 ? -1 : line.indexOf('>', at);
        const qsizetype head = at + 2 + qsizetype(std::strlen(tag));
        values << (close < 0 ? QByteArray() : line.mid(close + 1, line.mid(head, close - head).toInt()));
    }
    QByteArray &date = values[4], &time = values[5];
    date = date.left(4) + '-' + date.mid(4, 2) + '-' + date.mid(6, 2);
    time = time.left(2) + ':' + time.mid(2, 2) + ":00";
    return values;
}

// The same work on the bare interface: read, look for repeats, stage, load, all in one transaction.
void Floor(RawDatabase &database, const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        GiveUp(u"cannot read "_qs + path);
    const QList<QByteArray> lines = file.readAll().split('\n');
    const QString columns = u"(Modo,Banda,MyCall,Estacion,Fecha,Hora,RSE,RSR,Obs,Operador,Frecuencia,MiGrid,SuGrid,"
                            "Nombre_Sat,SOTA,POTA,\"Nombre Log\")"_qs;
    const QString marks = u" VALUES (?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,'Log inicial')"_qs;
    database.Execute("BEGIN IMMEDIATE");
    database.Execute("DELETE FROM Tabla3");
    RawStatement repeats(database,
        u"SELECT id, Fecha, Hora FROM Tabla1 WHERE Estacion=? AND \"Nombre Log\"='Log inicial' "
        "AND Modo=? AND Banda=? AND MyCall=? ORDER BY id"_qs);
    RawStatement stage(database, u"INSERT INTO Tabla3 "_qs + columns + marks);
    RawStatement load(database, u"INSERT INTO Tabla1 "_qs + columns + marks);
    for (const QByteArray &line : lines) {
        if (!line.contains("<CALL:"))
            continue;
        const QList<QByteArray> values = PlainValues(line);
        repeats.Bind(1, values[3]);
        repeats.Bind(2, values[0]);
        repeats.Bind(3, values[1]);
        repeats.Bind(4, values[2]);
        repeats.TakeAll();
        for (RawStatement *insert : {&stage, &load}) {
            for (int i = 0; i < values.size(); ++i)
                insert->Bind(i + 1, values[i]);
            insert->Step();
            insert->Reset();
        }
    }
    RawStatement staged(database, u"SELECT * FROM Tabla3 ORDER BY Fecha DESC, Hora DESC"_qs);
    staged.TakeAll();
    database.Execute("COMMIT");
}

double Importing(const BenchSetting &setting, ResultTable &table, qint64 size)
{
    const QString ours = setting.workFolder + u"/ours.mdb"_qs, floor = setting.workFolder + u"/floor.mdb"_qs;
    QFile::remove(ours);
    QFile::remove(floor);
    CopyMadeLog(setting.cacheFolder, size, ours);
    CopyMadeLog(setting.cacheFolder, size, floor);
    LogStore store(ours);
    RawDatabase raw(floor);
    QStringList files;
    for (int i = 0; i < 2 * importRounds; ++i)
        files << FileOf(setting, 1950 + i);
    int mine = 0, theirs = 0;
    const std::vector<double> medians = Alternate(
        {Clocked([&](int) { Import(store, files[mine++]); }), Clocked([&](int) { Floor(raw, files[theirs++]); })},
        importRounds, 1);
    table.AddRatio(u"ADIF, import of 10,000 / floor in C"_qs, SizeText(size), medians[0], medians[1], 2);
    return medians[0];
}

void Exporting(const BenchSetting &setting, ResultTable &table)
{
    const QString path = MadeLog(setting.cacheFolder, 10 * records), target = setting.workFolder + u"/out.adi"_qs;
    LogStore store(path);
    RawDatabase raw(path);
    const Timed ours = Clocked([&](int) {
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly))
            GiveUp(u"cannot write"_qs);
        qint64 last = 0;
        for (bool more = true; more;) {
            const auto block = store.Read([&](Session &session) {
                Query query = session.Prepare(u"SELECT " + QsoColumns::SelectList()
                    + u" FROM Tabla1 WHERE id>? AND MyCall<>'' ORDER BY id LIMIT 500");
                query.Bind(1, last);
                QByteArray bytes;
                while (query.Next()) {
                    const QsoRow row = query.Row();
                    last = row.id;
                    bytes += AdifWriter::BackupRecord(row);
                }
                return bytes;
            });
            if (!block)
                GiveUp(block.failure().text);
            more = !block->isEmpty();
            file.write(*block);
        }
    });
    const Timed reference = Clocked([&](int) {
        QFile file(target);
        if (!file.open(QIODevice::WriteOnly))
            GiveUp(u"cannot write"_qs);
        static constexpr const char *tags[] = {"STATION_CALLSIGN", "CALL", "MODE", "BAND", "FREQ", "QSO_DATE",
            "TIME_ON", "RST_SENT", "RST_RCVD", "OPERATOR", "COMMENT", "MY_GRIDSQUARE", "GRIDSQUARE", "LOG_NAME"};
        RawStatement rows(raw,
            u"SELECT MyCall,Estacion,Modo,Banda,Frecuencia,Fecha,Hora,RSE,RSR,Operador,Obs,MiGrid,"
            "SuGrid,\"Nombre Log\" FROM Tabla1 WHERE MyCall<>''"_qs);
        QByteArray block;
        while (rows.Step()) {
            for (int i = 0; i < int(std::size(tags)); ++i) {
                const QByteArray value = rows.Text(i).toLatin1();
                block += '<';
                block += tags[i];
                block += ':';
                block += QByteArray::number(value.size());
                block += '>';
                block += value;
            }
            block += "<EOR>\r\n";
            if (block.size() > 1 << 18) {
                file.write(block);
                block.clear();
            }
        }
        file.write(block);
    });
    const std::vector<double> medians = Alternate({ours, reference}, exportRounds);
    table.AddRatio(u"ADIF, export of 100,000 / loop in C"_qs, SizeText(10 * records), medians[0], medians[1], 2.5);
}

} // namespace

void BenchAdif(const BenchSetting &setting, ResultTable &table)
{
    Parsing(table);
    const double small = Importing(setting, table, smallLog), large = Importing(setting, table, largeLog);
    table.AddRatio(u"ADIF, import into the large log / the small one"_qs, SizeText(largeLog), large, small, 7);
    Exporting(setting, table);
}
