// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifFile.h"

#include "interchange/AdifCapitals.h"
#include "interchange/AdifRecord.h"
#include "interchange/AdifWriter.h"

#include <QFileDevice>
#include <cstring>

namespace AdifFile {

namespace {

constexpr qint64 chunk = 256 * 1024;
constexpr qsizetype mostOtherTags = 500;
constexpr qsizetype slimRecord = 2048; // is kept as it is

const Failure &Stopped()
{
    static const Failure failure{u"Detenido."_qs, Failure::Kind::Cancelled};
    return failure;
}

Failure Unreadable(const QString &path)
{
    return {u"No se puede leer el archivo\n%1"_qs.arg(path), Failure::Kind::Missing};
}

Failure BrokenOff(const QString &path, const QIODevice &device)
{
    return {u"El archivo\n%1\nno se pudo leer hasta el final.\n%2"_qs.arg(path, device.errorString()),
        Failure::Kind::Other};
}

// Empty at the end of the file, and where it cannot be read any further.
QByteArray ReadBlock(QIODevice &device, bool &broken)
{
    QByteArray block(chunk, Qt::Uninitialized);
    const qint64 got = device.read(block.data(), chunk);
    broken = broken || got < 0;
    block.truncate(std::max<qint64>(0, got));
    return block;
}

// Lines as bytes: a line ends at CR or CR LF, a lone LF is part of it. A line beyond the longest record is cut.
class ByteLines {
public:
    explicit ByteLines(QIODevice &device)
        : device_(device)
    {
        Fill();
    }

    bool Next(QByteArray &line)
    {
        line.clear();
        cut_ = restEndsRecord_ = false;
        restTail_.clear();
        if (at_ >= block_.size())
            return false;
        while (at_ < block_.size()) {
            const auto *end =
                static_cast<const char *>(std::memchr(block_.constData() + at_, '\r', size_t(block_.size() - at_)));
            const qsizetype stop = end ? end - block_.constData() : block_.size();
            const qsizetype room = longestRecord - line.size();
            cut_ = cut_ || stop - at_ > room;
            line += QByteArrayView(block_).sliced(at_, std::min(stop - at_, room));
            if (stop - at_ > room)
                LookIntoRest(QByteArrayView(block_).sliced(at_ + room, stop - at_ - room));
            at_ = stop;
            if (end) {
                // The end of a record must not be lost with the rest, or the next record would be glued to it.
                if (restEndsRecord_)
                    line += "<EOR>";
                ++at_;
                if (at_ >= block_.size())
                    Fill();
                if (at_ < block_.size() && block_[at_] == '\n')
                    ++at_;
                if (at_ >= block_.size())
                    Fill();
                return true;
            }
            Fill();
        }
        return true;
    }
    bool WasCut() const { return cut_; }
    // Ended where the device failed, not where the file does.
    bool IsBroken() const { return broken_; }
    qint64 BytesRead() const { return bytesRead_; }

private:
    void LookIntoRest(QByteArrayView rest)
    {
        // A tag can stand across two blocks.
        restTail_ += rest;
        restEndsRecord_ = restEndsRecord_ || Adif::Holds(restTail_, "<EOR>");
        restTail_ = restTail_.last(std::min<qsizetype>(4, restTail_.size()));
    }
    void Fill()
    {
        block_ = ReadBlock(device_, broken_);
        bytesRead_ += block_.size();
        at_ = 0;
    }

    QIODevice &device_;
    QByteArray block_;
    qsizetype at_ = 0;
    qint64 bytesRead_ = 0;
    bool cut_ = false;
    bool restEndsRecord_ = false; // what was cut off the line held an <EOR>
    QByteArray restTail_;
    bool broken_ = false;
};

// Writes in blocks, and tells a disk that takes no more.
class Writer {
public:
    Writer(FileSystem &files, const QString &path)
        : path_(path)
        , opened_(files.OpenForWriting(path))
    {
    }

    Result<void> Put(QByteArrayView bytes)
    {
        if (!opened_)
            return opened_.failure();
        buffer_ += bytes;
        return buffer_.size() < chunk ? Result<void>() : Flush();
    }
    Result<void> Flush()
    {
        if (!opened_)
            return opened_.failure();
        const Result<void> written = AdifWriter::Write(**opened_, buffer_, path_);
        buffer_.clear();
        if (auto *file = qobject_cast<QFileDevice *>(opened_->get()); written && file && !file->flush())
            return Failure{u"No se pudo terminar de escribir el archivo\n%1\n%2"_qs.arg(path_, file->errorString()),
                Failure::Kind::Full};
        return written;
    }

private:
    QString path_;
    Result<std::unique_ptr<QIODevice>> opened_;
    QByteArray buffer_;
};

bool IsContact(QByteArrayView record)
{
    return Adif::Holds(record, "<CALL:") && Adif::Holds(record, "<EOR>") && record.contains('>');
}

// A file whose first line is its only one; its own line end may be there or not.
Result<bool> IsSingleLine(FileSystem &files, const QString &path, Run &run, const Show &show)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return Unreadable(path);
    bool ended = false, broken = false;
    qint64 blocks = 0, behind = 0;
    for (QByteArray block = ReadBlock(*device, broken); !block.isEmpty(); block = ReadBlock(*device, broken)) {
        const qsizetype end = ended ? -1 : block.indexOf('\r');
        if (ended || end >= 0) {
            behind += block.size() - end - 1;
            if (behind > 1 || (behind == 1 && !block.endsWith('\n')))
                return false;
        }
        ended = ended || end >= 0;
        show(u"Multi renglón ... "_qs + QString::number(++blocks));
        if (!run.Step(blocks))
            return Stopped();
    }
    if (broken)
        return BrokenOff(path, *device);
    return blocks > 0;
}

// A letter of several bytes must not be cut where two blocks meet. A line end is the natural place; where a line is too
// long to wait for its end, the beginning of a letter.
qsizetype PlaceToCut(const QByteArray &bytes)
{
    const qsizetype line = bytes.lastIndexOf('\n') + 1;
    if (line > 0 || bytes.size() <= longestRecord)
        return line;
    qsizetype end = bytes.size() - 1;
    while (end > bytes.size() - 4 && (bytes[end] & 0xC0) == 0x80)
        --end;
    return end;
}

QString ProgramOf(const QByteArray &line) { return AdifRecord(line).Value(AdifTag::ProgramId); }

// Puts the lines of each record together and writes it.
class Joiner {
public:
    Joiner(Writer &writer, Repaired &repaired, const Report &report)
        : writer_(writer)
        , repaired_(repaired)
        , report_(report)
    {
    }

    Result<void> Take(const QByteArray &line)
    {
        if (Adif::Holds(line, "<PROGRAMID:"))
            repaired_.program = ProgramOf(line);
        if (line.contains("eQSL.cc"))
            repaired_.program = u"eQSL"_qs;
        if (Adif::Holds(line, "<EOH>"))
            record_.clear();
        if (Adif::Holds(line, "<EOR>"))
            return End(line);
        if (!line.isEmpty() && line.toUpper() != "<EOH>")
            record_ += line.first(std::min(line.size(), longestRecord - record_.size()));
        return {};
    }
    bool HasUnendedContact() const { return Adif::Holds(record_, "<CALL:"); }

private:
    Result<void> End(const QByteArray &line)
    {
        QByteArray record;
        record.swap(record_);
        record += line;
        if (record.size() > longestRecord)
            report_(repaired_.lines, u"Registro demasiado largo: no se tomó."_qs);
        if (record.size() > longestRecord || repaired_.recordLines.size() > mostRecords)
            return {};
        if (IsContact(record))
            repaired_.recordLines << repaired_.lines;
        record += "\r\n";
        return writer_.Put(record);
    }

    Writer &writer_;
    Repaired &repaired_;
    const Report &report_;
    QByteArray record_;
};

} // namespace

Result<bool> SplitSingleLineFile(
    FileSystem &files, const QString &path, const QString &copyPath, Run &run, const Show &show)
{
    const Result<bool> single = IsSingleLine(files, path, run, show);
    if (!single || !*single)
        return single;
    const auto device = files.OpenForReading(path);
    if (!device)
        return Unreadable(path);
    Writer writer(files, copyPath);
    QByteArray rest;
    bool broken = false, atEnd = false;
    for (qint64 blocks = 0; !atEnd; ++blocks) {
        const QByteArray block = ReadBlock(*device, broken);
        atEnd = block.isEmpty();
        rest += block;
        const qsizetype end = atEnd ? rest.size() : PlaceToCut(rest);
        QByteArray lines = Capitals(rest.first(end));
        if (const Result<void> put = writer.Put(lines.replace("\r", "").replace("\n", "\r\n")); !put)
            return put.failure();
        rest = rest.sliced(end);
        if (!run.Step(blocks))
            return Stopped();
    }
    if (broken)
        return BrokenOff(path, *device);
    if (const Result<void> flushed = writer.Flush(); !flushed)
        return flushed.failure();
    return true;
}

Result<Repaired> JoinRecordLines(
    FileSystem &files, const QString &path, const QString &target, Run &run, const Show &show, const Report &report)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return Unreadable(path);
    Repaired repaired;
    repaired.path = target;
    const qint64 size = device->size();
    Writer writer(files, target);
    Joiner joiner(writer, repaired, report);
    ByteLines lines(*device);
    QByteArray line;
    while (lines.Next(line)) {
        ++repaired.lines;
        if (lines.WasCut())
            report(repaired.lines, u"Línea demasiado larga: se tomó su principio."_qs);
        if (const Result<void> taken = joiner.Take(line); !taken)
            return taken.failure();
        if (!run.Step(repaired.lines))
            return Stopped();
        if (repaired.lines % 500 == 0)
            show(u"Lineas ... "_qs + QString::number(repaired.lines));
    }
    if (lines.IsBroken())
        return BrokenOff(path, *device);
    if (lines.BytesRead() != size)
        report(0, u"El archivo cambió mientras se leía: se tomó lo que había."_qs);
    if (joiner.HasUnendedContact())
        report(repaired.lines, u"El último registro no termina en <EOR>: no se tomó."_qs);
    if (const Result<void> put = writer.Put("\r\n"); !put)
        return put.failure();
    if (const Result<void> flushed = writer.Flush(); !flushed)
        return flushed.failure();
    return repaired;
}

Result<void> RejoinRecords(FileSystem &files, const QString &path, const QString &target)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return Unreadable(path);
    Writer writer(files, target);
    ByteLines lines(*device);
    QByteArray line, record;
    while (lines.Next(line)) {
        record += line.first(std::min(line.size(), longestRecord - record.size()));
        if (!Adif::Holds(line, "<EOR>"))
            continue;
        record += "\r\n";
        if (const Result<void> put = writer.Put(record); !put)
            return put;
        record.clear();
    }
    return writer.Flush();
}

Result<Records> ReadRecords(FileSystem &files, const Repaired &repaired, Run &run, const Show &show)
{
    const auto device = files.OpenForReading(repaired.path);
    if (!device)
        return Unreadable(repaired.path);
    Records found;
    ByteLines lines(*device);
    QByteArray line;
    for (qint64 number = 0; lines.Next(line); ++number) {
        if (Adif::Holds(line, "<STATION_CALLSIGN:"))
            if (const QString station = AdifRecord(line).Value(AdifTag::StationCallsign);
                !station.isEmpty() && !found.stations.contains(station))
                found.stations << station;
        if (!Adif::Holds(line, "<CALL:"))
            continue;
        ++found.withCall;
        if (IsContact(line)) {
            found.lines << repaired.recordLines.value(found.records.size());
            AdifRecord::OtherTags(line, [&found](QByteArrayView tag) {
                // Real files have some dozens of other tags; a damaged one could have any number.
                const QByteArray name = tag.toByteArray().toUpper();
                if (found.otherTags.size() < mostOtherTags || found.otherTags.contains(name))
                    ++found.otherTags[name];
            });
            found.records << (line.size() > slimRecord ? AdifRecord(line).Essence() : line);
        }
        if (number % 200 == 0)
            show(u"Midiendo ..."_qs + QString::number(found.records.size()));
        if (!run.Step(number))
            return Stopped();
    }
    if (lines.IsBroken())
        return BrokenOff(repaired.path, *device);
    if (found.records.size() > mostRecords) {
        found.records.clear();
        found.tooMany = true;
    }
    return found;
}

} // namespace AdifFile
