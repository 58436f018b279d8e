// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "contest/ContestImport.h"
#include "contest/ContestLogs.h"
#include "contest/ContestLookup.h"
#include "interchange/AdifRecord.h"
#include "interchange/CabrilloCheck.h"
#include "interchange/CabrilloReader.h"
#include "interchange/CabrilloWriter.h"
#include "interchange/ContestAdif.h"
#include "support/FaultVfs.h"

#include <QTemporaryDir>
#include <algorithm>

// Any bytes at all are imported as a Cabrillo file. What was taken goes out again as a Cabrillo file and as ADIF, and,
// now and then, into a database.

namespace {

using CabrilloReader::Contact;
using CabrilloReader::Taken;

const QString path = u"/concurso.log"_qs, written = u"/escrito.log"_qs;

bool HoldsQso(const QString &line) { return line.toUpper().contains(u"QSO:"); }

int CountQsos(QByteArray content)
{
    content = content.toUpper().replace("\r\n", "\n").replace('\r', '\n');
    int count = 0;
    for (const QByteArray &line : content.split('\n'))
        count += line.contains("QSO:") ? 1 : 0;
    return count;
}

QStringList LinesOf(MemoryFiles &files)
{
    const QByteArray before = files.content[path];
    const Result<int> lost = CabrilloReader::NormalizeCabrilloFile(files, path);
    Require(lost && *lost >= 0, "a readable file is brought into shape");
    const QByteArray after = files.content[path];
    Require(before == after ? *lost == 0 : CountQsos(before) == CountQsos(after) + *lost, "lost lines are counted");
    const Result<int> again = CabrilloReader::NormalizeCabrilloFile(files, path);
    Require(again && *again == 0 && files.content[path] == after, "a file in shape is left alone");
    const Result<QStringList> lines = CabrilloReader::ReadLines(files, path);
    Require(bool(lines), "readable files are read");
    return *lines;
}

// Mostly the one of the first line, so that the reading goes on behind it.
QString OwnCallOf(const QStringList &lines, size_t size)
{
    const auto first = std::find_if(lines.begin(), lines.end(), HoldsQso);
    if (first == lines.end() || size % 13 == 0)
        return u"LU9ZZZ"_qs;
    return CabrilloReader::SplitQsoLine(first->toUpper())[CabrilloReader::OwnCall];
}

bool IsDigits(const QString &text, qsizetype size)
{
    return text.isEmpty() || (text.size() == size && std::all_of(text.begin(), text.end(), [](QChar c) {
        return c >= u'0' && c <= u'9';
    }));
}

void CheckRow(const QsoRow &row, const CabrilloReader::Contest &contest)
{
    static const QStringList bands{{}, u"160m"_qs, u"80m"_qs, u"40m"_qs, u"20m"_qs, u"15m"_qs, u"10m"_qs};
    Require(IsDigits(row.Fecha, 8) && IsDigits(row.Hora, 4), "date and time");
    Require(row.Modo == u"SSB" || row.Modo == u"CW" || row.Modo == u"DG", "mode");
    Require(bands.contains(row.Banda), "band");
    Require(row.MyCall == contest.ownCall && row.NombreLog == contest.name && row.LdA == contest.name, "the contest");
    Require(!row.Estacion.isEmpty() && row.Estacion.size() <= 100 && row.RSE.size() <= 100 && row.RSR.size() <= 100,
        "widths");
}

void CheckTaken(const Taken &taken, const QStringList &lines, const CabrilloReader::Contest &contest)
{
    Require(taken.contacts.size() == taken.qsoLines - (taken.stop ? 1 : 0), "a contact for each line");
    int last = 0;
    for (const Contact &contact : taken.contacts) {
        Require(contact.line > last && contact.line <= lines.size(), "numbers of lines");
        last = contact.line;
        Require(HoldsQso(lines[contact.line - 1]), "the line of a contact");
        CheckRow(contact.row, contest);
    }
    if (taken.stop)
        Require(taken.stop->line > last && taken.stop->line <= lines.size() && !taken.stop->text.isEmpty(), "the stop");
    else
        Require(taken.qsoLines == std::count_if(lines.begin(), lines.end(), HoldsQso), "all lines are looked at");
}

// Whether the format can hold a row, and none of its words looks like the mark of a line.
bool IsWritable(const QsoRow &row)
{
    const QString texts = row.MyCall + row.Estacion + row.RSE + row.RSR;
    return !row.Fecha.isEmpty() && !row.Hora.isEmpty() && !row.Banda.isEmpty() && !row.RSR.isEmpty()
        && SurvivesFile(texts) && texts.toUpper() == texts && !texts.contains(u':');
}

bool HasColumns(const QsoRow &row)
{
    return row.MyCall.size() <= 13 && row.Estacion.size() <= 13 && row.RSE.size() <= 6 && row.RSR.size() <= 6;
}

// The file of these rows, read again.
void CheckWriting(MemoryFiles &files, const QList<QsoRow> &rows, const CabrilloReader::Contest &contest)
{
    const CabrilloWriter::QsoLines built = CabrilloWriter::BuildLines(rows, contest.ownCall);
    Require(!built.refusal && built.rows.size() == rows.size(), "rows are written");
    CabrilloWriter::Header header;
    header.callsign = contest.ownCall;
    const QString text = CabrilloWriter::HeaderText(header) + built.text;
    Require(bool(CabrilloWriter::WriteFile(files, written, CabrilloWriter::FileText(text))), "the file is written");
    const Result<QStringList> lines = CabrilloReader::ReadLines(files, written);
    const Taken again = CabrilloReader::TakeLines(*lines, written, contest);
    Require(!again.stop && again.contacts.size() == rows.size(), "as many contacts come back");
    for (qsizetype i = 0; i < again.contacts.size(); ++i) {
        QsoRow row = again.contacts[i].row;
        row.id = built.rows[i].id;
        Require(row == built.rows[i], "a contact that is written and read again");
    }
    const Result<CabrilloCheck::Report> report = CabrilloCheck::CheckFile(files, written, rows);
    Require(report && report->inFile == rows.size() && report->inLog == rows.size(), "the check counts");
    if (std::all_of(rows.begin(), rows.end(), HasColumns))
        Require(report->Agrees(), "our own file agrees with the log");
}

void CheckReport(const QStringList &lines, const QList<QsoRow> &rows)
{
    const CabrilloCheck::Report report = CabrilloCheck::Compare(lines, rows);
    Require(report.inLog == rows.size(), "the check counts the log");
    Require(report.Text().isEmpty() == report.Agrees(), "findings are told");
    int last = 1;
    for (const CabrilloCheck::Finding &finding : report.findings) {
        const int line = finding.line == 0 ? INT_MAX : finding.line;
        Require(line >= last && (finding.line <= lines.size()) && !finding.reason.isEmpty(), "order of findings");
        last = line;
    }
}

void CheckAdif(const QList<QsoRow> &rows, const CabrilloReader::Contest &contest)
{
    ContestAdif::Records records(contest.name, contest.ownCall);
    for (const QsoRow &row : rows) {
        const Result<QByteArray> made = records.Next(row);
        Require(made && made->endsWith("<EOR>\r\n"), "a record for each contact");
        const AdifRecord record(*made);
        const bool plain = !made->contains(QByteArray("\xC2"))
            && std::all_of(made->begin(), made->end(), [](char c) { return c >= ' ' || c == '\r' || c == '\n'; })
            && made->count('<') == 12;
        if (plain)
            Require(record.Value(AdifTag::Call) == row.Estacion && record.Value(AdifTag::StationCallsign) == row.MyCall
                    && record.Value(AdifTag::QsoDate) == row.Fecha && record.Value(AdifTag::TimeOn) == row.Hora,
                "a record that is written and read again");
    }
}

class Database {
public:
    Database()
    {
        FaultVfs &disk = FaultVfs::Instance();
        disk.SetRecording(false);
        disk.SetRealSyncs(false);
        store_ = std::make_unique<LogStore>(folder_.filePath(u"base0.mdb"_qs), "fault");
        Require(bool(store_->CreateEmpty()), "a new database");
    }

    void Check(const Taken &taken, const CabrilloReader::Contest &contest)
    {
        Require(bool(DeleteContest(*store_, contest.name)), "the contest is emptied");
        const Result<ImportedContacts> first = StoreImportedContacts(*store_, taken.contacts);
        Require(first && first->stored.size() + first->repeated == taken.contacts.size(), "stored or repeated");
        const Result<QList<QsoRow>> rows = ContestRows(*store_, contest.name);
        Require(rows && *rows == first->stored, "what was stored stands in the database");
        const Result<ImportedContacts> second = StoreImportedContacts(*store_, taken.contacts);
        const auto undated = std::count_if(taken.contacts.begin(), taken.contacts.end(),
            [](const Contact &contact) { return contact.date.isEmpty(); });
        Require(second && second->stored.size() == undated, "a file that is imported twice");
    }

private:
    QTemporaryDir folder_;
    std::unique_ptr<LogStore> store_;
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    MemoryFiles files;
    files.content[path] = BytesOf(data, size);
    const QStringList lines = LinesOf(files);
    Require(CabrilloReader::QsoLinesOf(lines).count(u"\r\n")
            == std::count_if(lines.begin(), lines.end(), [](const QString &line) { return line.contains(u"QSO:"); }),
        "lines that are shown");
    const CabrilloReader::Contest contest{u"Prueba"_qs, SerieType::Incremental, OwnCallOf(lines, size)};
    const Taken taken = CabrilloReader::TakeLines(lines, path, contest,
        [&](int line, const QString &) { Require(line > 0 && line <= lines.size(), "lines of reports"); });
    CheckTaken(taken, lines, contest);

    QList<QsoRow> rows, writable;
    for (const Contact &contact : taken.contacts) {
        rows << contact.row;
        rows.last().id = rows.size();
        if (IsWritable(rows.last()))
            writable << rows.last();
    }
    CheckReport(lines, rows);
    if (!writable.isEmpty())
        CheckWriting(files, writable, contest);
    CheckAdif(writable, contest);
    if (size % 16 == 0 && !rows.isEmpty()) {
        static Database database;
        database.Check(taken, contest);
    }
    return 0;
}
