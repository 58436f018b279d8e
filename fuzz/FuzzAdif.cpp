// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "core/Conversions.h"
#include "interchange/AdifRecord.h"
#include "interchange/AdifWriter.h"
#include "interchange/Reading.h"

// Any bytes at all are read as an ADIF file; what comes out must hold what the headers promise.

namespace {

// Whether a text comes back from a file as it was written: other encodings and signs of structure may not.
bool IsPlain(const QString &text)
{
    for (const QChar c : text)
        if (c < u' ' || c > u'~' || c == u'<' || c == u',')
            return false;
    return text == text.trimmed();
}

void CheckContact(const AdifImport::Contact &contact)
{
    QsoRow row = contact.row;
    const auto date = Conversions::ParseDate(row.Fecha);
    const auto time = Conversions::ParseTime(row.Hora);
    Require(date && time, "date and time");
    row.Fecha = Conversions::DateText(*date); // "2/11/2026" is one too
    row.Hora = Conversions::TimeText(*time);
    Require(!row.Estacion.isEmpty() && row.Estacion.size() <= 20 && row.Obs.size() <= 100, "widths");
    bool plain = !row.Modo.isEmpty();
    for (const QsoColumns::Column &column : QsoColumns::all)
        plain = plain && IsPlain(row.*column.field);
    if (!plain)
        return;
    QsoRow again = AdifImport::ParseRecord(AdifWriter::BackupRecord(row), {}).row;
    again.LdA = row.LdA;
    again.IOTA = row.IOTA;
    for (const QsoColumns::Column &column : QsoColumns::all)
        if (again.*column.field != row.*column.field)
            std::fprintf(stderr, "%s: \"%s\" became \"%s\"\n", column.sql, qPrintable(row.*column.field),
                qPrintable(again.*column.field));
    Require(again == row, "a contact that is written and read again");
}

void CheckRecord(const QByteArray &record)
{
    const AdifRecord whole(record);
    const QByteArray essence = whole.Essence();
    const AdifRecord kept(essence);
    for (int tag = 0; tag < int(AdifTag::Count); ++tag)
        Require(kept.Value(AdifTag(tag)) == whole.Value(AdifTag(tag)), "the essence of a record");
    AdifRecord::OtherTags(record, [](QByteArrayView name) { Require(!name.isEmpty(), "names of tags"); });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    MemoryFiles files;
    files.content[chosenPath] = BytesOf(data, size);
    const AdifImport::Settings settings{false, size % 3 ? QString() : u"LU1ZZ"_qs, size % 5 == 0, size % 7 == 0};
    const Reading reading = ReadAdif(files, settings);
    Require(!reading.failure, "readable files are read");
    Require(reading.records.records.size() <= AdifFile::mostRecords, "number of records");
    Require(reading.records.records.size() == reading.records.lines.size(), "a line for each record");
    for (const QByteArray &record : reading.records.records)
        CheckRecord(record);
    for (const AdifImport::Contact &contact : reading.contacts)
        if (!contact.dropped)
            CheckContact(contact);
    Require(bool(AdifFile::RejoinRecords(files, chosenPath, copyPath)), "rejoining");
    return 0;
}
