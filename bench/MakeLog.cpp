// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "MakeLog.h"

#include "core/Conversions.h"
#include "core/LogStore.h"
#include "core/QsoTable.h"
#include "core/Schema.h"
#include "logging/Provinces.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <cstdio>
#include <cstdlib>

const QString madeLogName = u"Log inicial"_qs;

QString MadeLogName(int log) { return log == 0 ? madeLogName : QString(u"Log "_qs + QString::number(log)); }

namespace {

// Part of the names of cached files; to be raised whenever the maker makes other contacts than before.
constexpr int makerVersion = 1;

constexpr qint64 minutesInAll = qint64(25) * 365 * 24 * 60;
constexpr quint64 burstLength = 20;

struct Allocation {
    QStringView band;
    int megahertz, lowest, width; // in kHz above the megahertz
    quint64 share;
};
constexpr Allocation allocations[] = {{u"40m", 7, 0, 300, 30}, {u"20m", 14, 0, 350, 25}, {u"15m", 21, 0, 450, 10},
    {u"10m", 28, 300, 700, 10}, {u"80m", 3, 500, 300, 10}, {u"2m", 144, 200, 800, 6}, {u"6m", 50, 0, 500, 4},
    {u"70cm", 435, 0, 999, 3}, {u"160m", 1, 800, 200, 2}};

struct ModeShare {
    QStringView mode;
    quint64 share;
};
constexpr ModeShare modes[] = {{u"SSB", 45}, {u"CW", 25}, {u"DG", 20}, {u"FM", 7}, {u"AM", 2}, {u"Echo", 1}};

constexpr QStringView prefixes[] = {u"LU", u"LU", u"LU", u"LW", u"CE", u"PY", u"PY", u"PU", u"CX", u"ZP", u"W", u"K",
    u"N", u"EA", u"EA", u"I", u"IK", u"DL", u"DK", u"F", u"G", u"JA", u"JH", u"UA", u"OH", u"SM", u"SP", u"OK", u"YO",
    u"VK", u"ZL", u"HK", u"YV", u"OA", u"CP", u"HC", u"XE", u"VE", u"9A", u"4X"};

constexpr QStringView remarks[] = {u"Juan, Córdoba", u"TNX QSO 73", u"Carlos. 100 W y dipolo, lluvia en Mendoza",
    u"QSL vía buró", u"José, Rosario, primer QSO en esta banda", u"FT8", u"Concurso", u"María, Bahía Blanca"};

template <typename Table>
const auto &PickByShare(const Table &table, quint64 point)
{
    for (const auto &entry : table) {
        if (point < entry.share)
            return entry;
        point -= entry.share;
    }
    return table[0];
}

// Spreads station numbers over all calls without remembering any.
quint64 Scrambled(quint64 value)
{
    value = (value ^ (value >> 30)) * 0xBF58476D1CE4E5B9;
    value = (value ^ (value >> 27)) * 0x94D049BB133111EB;
    return value ^ (value >> 31);
}

QChar Letter(quint64 value) { return QChar(u'A' + static_cast<char16_t>(value % 26)); }

QString GridOfStation(qint64 number)
{
    const quint64 seed = Scrambled(static_cast<quint64>(number) + 77);
    return QString(QChar(u'A' + static_cast<char16_t>(seed % 18))) + QChar(u'A' + static_cast<char16_t>(seed / 18 % 18))
        + QChar(u'0' + static_cast<char16_t>(seed / 324 % 10)) + QChar(u'0' + static_cast<char16_t>(seed / 3240 % 10))
        + Letter(seed / 32400 % 24) + Letter(seed / 777600 % 24);
}

[[noreturn]] void Fail(const QString &why)
{
    std::fprintf(stderr, "making a log: %s\n", why.toUtf8().constData());
    std::exit(2);
}

void FillLog(const QString &path, qint64 qsos, int logs)
{
    LogStore store(path);
    if (const Result<void> made = store.CreateEmpty(); !made)
        Fail(made.failure().text);
    const Result<void> filled = store.Write([&](Session &session) {
        // Calls arrive in no order, so their whole index has to stay in memory.
        session.Execute(u"PRAGMA cache_size=-400000"_qs);
        for (int log = 0; log < logs; ++log)
            QsoTable::InsertLogMarker(session, MadeLogName(log));
        QsoMaker maker(qsos);
        for (qint64 i = 0; i < qsos; ++i) {
            QsoRow row = maker.Next();
            row.NombreLog = MadeLogName(static_cast<int>(i % logs));
            QsoTable::Insert(session, row);
        }
    });
    if (!filled)
        Fail(filled.failure().text);
}

} // namespace

QsoMaker::QsoMaker(qint64 total, quint32 seed)
    : random_(seed)
    , meanPause_(static_cast<quint64>(minutesInAll / std::max<qint64>(1, total)) * burstLength)
{
}

// The standard distributions differ between libraries, the generators do not.
quint64 QsoMaker::Below(quint64 limit) { return random_() % limit; }

qint64 QsoMaker::NextStation()
{
    if (stations_ == 0 || Below(5) >= 2)
        return stations_++;
    const double place = static_cast<double>(Below(1000000)) / 1000000;
    return static_cast<qint64>(place * place * static_cast<double>(stations_));
}

void QsoMaker::PassTime()
{
    if (OneIn(burstLength))
        minute_ += static_cast<qint64>(Below(2 * meanPause_));
    else
        minute_ += static_cast<qint64>(Below(3));
}

QString QsoMaker::CallOfStation(qint64 number)
{
    quint64 seed = Scrambled(static_cast<quint64>(number) + 1);
    const auto next = [&seed](quint64 limit) {
        const quint64 value = seed % limit;
        seed /= limit;
        return value;
    };
    QString call = prefixes[next(std::size(prefixes))].toString();
    call += QChar(u'0' + static_cast<char16_t>(next(10)));
    for (quint64 letters = next(10) < 7 ? 3 : 2; letters > 0; --letters)
        call += Letter(next(26));
    if (next(25) == 0)
        call += u'/' + QString(Letter(next(26)));
    return call;
}

void QsoMaker::FillFrequency(QsoRow &row)
{
    const Allocation &allocation = PickByShare(allocations, Below(100));
    row.Banda = allocation.band.toString();
    const quint64 kilohertz = static_cast<quint64>(allocation.lowest) + Below(static_cast<quint64>(allocation.width));
    row.Frecuencia =
        QString::number(allocation.megahertz) + u'.' + Conversions::PadZeros(QString::number(kilohertz), 3);
}

void QsoMaker::FillRareFields(QsoRow &row, qint64 station)
{
    if (station % 3 == 0 && !row.Estacion.contains(u'/') && !OneIn(4))
        row.SuGrid = GridOfStation(station);
    if (OneIn(4))
        row.Obs = remarks[Below(std::size(remarks))].toString();
    if (OneIn(50)) {
        row.Nombre_Sat = OneIn(2) ? u"SO-50"_qs : u"AO-91"_qs;
        row.Modo = u"FM"_qs;
    }
    if (OneIn(60))
        row.SOTA = u"LUM/B-"_qs + Conversions::PadZeros(QString::number(Below(200)), 3);
    if (OneIn(30))
        row.POTA = u"AR-"_qs + Conversions::PadZeros(QString::number(Below(600)), 4);
    row.LdA = OneIn(3) ? u"2"_qs : u"1"_qs;
}

QsoRow QsoMaker::Next()
{
    const qint64 station = NextStation();
    PassTime();
    const QDateTime time(
        QDate(2001, 1, 1).addDays(minute_ / 1440), QTime(0, 0).addSecs(static_cast<int>(minute_ % 1440) * 60), Qt::UTC);
    QsoRow row;
    row.Modo = PickByShare(modes, Below(100)).mode.toString();
    FillFrequency(row);
    row.MyCall = u"LU9ZZZ"_qs;
    row.Operador = u"LU1AAA"_qs;
    row.MiGrid = u"GF05AB"_qs;
    row.Estacion = CallOfStation(station);
    row.Fecha = time.date().toString(Qt::ISODate);
    row.Hora = Conversions::LongTimeText(time.time());
    row.RSE = row.RSR = row.Modo == u"CW" ? u"599"_qs : u"59"_qs;
    FillRareFields(row, station);
    row.Argento = ArgentineProvince(row.Estacion);
    return row;
}

NewQso EntryOf(const QsoRow &row)
{
    NewQso qso;
    qso.call = row.Estacion;
    qso.band = row.Banda;
    qso.mode = row.Modo;
    qso.reportSent = row.RSE;
    qso.reportReceived = row.RSR;
    qso.date = Conversions::ShownDate(row.Fecha);
    qso.time = row.Hora;
    qso.station = row.MyCall;
    qso.operatorCall = row.Operador;
    qso.remarks = row.Obs;
    qso.frequency = row.Frecuencia;
    qso.ownGrid = row.MiGrid;
    qso.grid = row.SuGrid;
    qso.satellite = row.Nombre_Sat;
    qso.SOTA = row.SOTA;
    qso.MY_POTA = row.IOTA;
    qso.POTA = row.POTA;
    qso.MYSOTA = row.MYSOTA;
    return qso;
}

QString MadeLog(const QString &cacheFolder, qint64 qsos, int logs)
{
    QStringList schema = Schema::CreateStatements();
    schema.sort(); // they come in no certain order
    const QByteArray print =
        QCryptographicHash::hash(schema.join(u'\n').toUtf8(), QCryptographicHash::Sha256).toHex().left(10);
    const QString stem =
        (logs == 1 ? u"log-"_qs : QString(u"logs"_qs + QString::number(logs) + u'-')) + QString::number(qsos) + u'-';
    const QString name = stem + QString::number(makerVersion) + u'-' + QString::fromLatin1(print) + u".mdb";
    QDir folder(cacheFolder);
    if (folder.exists(name))
        return folder.filePath(name);
    // What an older schema or an interrupted run has left is of no use to anyone.
    for (const QString &old : folder.entryList({stem + u'*'}, QDir::Files))
        folder.remove(old);
    const QString making = folder.filePath(name + u".making");
    FillLog(making, qsos, logs);
    if (!QFile::rename(making, folder.filePath(name)))
        Fail(u"cannot rename "_qs + making);
    return folder.filePath(name);
}

void CopyMadeLog(const QString &cacheFolder, qint64 qsos, const QString &target)
{
    QFile::remove(target);
    if (!QFile::copy(MadeLog(cacheFolder, qsos), target))
        Fail(u"cannot copy to "_qs + target);
}
