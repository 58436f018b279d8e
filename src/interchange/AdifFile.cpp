// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/AdifFile.h"

#include "interchange/AdifRecord.h"
#include "interchange/AdifWriter.h"

#include <QFileDevice>
#include <cstring>

namespace AdifFile {

namespace {

constexpr qint64 chunk = 256 * 1024;

const Failure &Stopped()
{
    static const Failure failure{u"Detenido."_qs, Failure::Kind::Cancelled};
    return failure;
}

Failure Unreadable(const QString &path)
{
    return {u"No se puede leer el archivo\n%1"_qs.arg(path), Failure::Kind::Missing};
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
        cut_ = false;
        if (at_ >= block_.size())
            return false;
        while (at_ < block_.size()) {
            const auto *end =
                static_cast<const char *>(std::memchr(block_.constData() + at_, '\r', size_t(block_.size() - at_)));
            const qsizetype stop = end ? end - block_.constData() : block_.size();
            const qsizetype room = longestRecord - line.size();
            cut_ = cut_ || stop - at_ > room;
            line += QByteArrayView(block_).sliced(at_, std::min(stop - at_, room));
            at_ = stop;
            if (end) {
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

private:
    void Fill()
    {
        block_ = device_.read(chunk);
        at_ = 0;
    }

    QIODevice &device_;
    QByteArray block_;
    qsizetype at_ = 0;
    bool cut_ = false;
};

QByteArray Capitals(const QByteArray &bytes)
{
    bool ascii = true;
    for (const char c : bytes)
        ascii = ascii && !(c & 0x80);
    if (ascii)
        return bytes.toUpper();
    // Letters whose capital takes another number of bytes stay, or the declared lengths would no longer fit.
    const QString text = QString::fromUtf8(bytes);
    if (text.toUtf8() != bytes)
        return bytes.toUpper();
    QByteArray capitals;
    for (qsizetype at = 0; at < text.size();) {
        const qsizetype units = text[at].isHighSurrogate() && at + 1 < text.size() ? 2 : 1;
        const QString letter = text.mid(at, units);
        const QByteArray plain = letter.toUtf8(), capital = letter.toUpper().toUtf8();
        capitals += capital.size() == plain.size() ? capital : plain;
        at += units;
    }
    return capitals;
}

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

QString ProgramOf(const QByteArray &line) { return AdifRecord(line).Value(AdifTag::ProgramId); }

} // namespace

Result<bool> SplitSingleLineFile(
    FileSystem &files, const QString &path, const QString &copyPath, Run &run, const Show &show)
{
    const auto device = files.OpenForReading(path);
    if (!device)
        return Unreadable(path);
    qint64 blocks = 0;
    for (QByteArray block = device->read(chunk); !block.isEmpty(); block = device->read(chunk)) {
        if (block.contains('\r'))
            return false;
        show(u"Multi renglón ... "_qs + QString::number(++blocks));
        if (!run.Step(blocks))
            return Stopped();
    }
    if (blocks == 0)
        return false;
    const auto again = files.OpenForReading(path);
    Writer writer(files, copyPath);
    QByteArray rest;
    while (again) {
        const QByteArray block = again->read(chunk);
        // A letter of several bytes must not be cut where two blocks meet, and a line is the natural place.
        rest += block;
        const qsizetype end = block.isEmpty() || rest.size() > longestRecord ? rest.size() : rest.lastIndexOf('\n') + 1;
        if (const Result<void> put = writer.Put(Capitals(rest.first(end)).replace("\n", "\r\n")); !put)
            return put.failure();
        rest = rest.sliced(end);
        if (block.isEmpty())
            break;
        if (!run.Step(++blocks))
            return Stopped();
    }
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
    Writer writer(files, target);
    ByteLines lines(*device);
    QByteArray line, record;
    bool inHeader = true;
    while (lines.Next(line)) {
        ++repaired.lines;
        if (lines.WasCut())
            report(repaired.lines, u"Línea demasiado larga: se tomó su principio."_qs);
        if (inHeader && Adif::Holds(line, "<PROGRAMID:"))
            repaired.program = ProgramOf(line);
        if (line.contains("eQSL.cc"))
            repaired.program = u"eQSL"_qs;
        if (Adif::Holds(line, "<EOH>")) {
            inHeader = false;
            record.clear();
        }
        if (Adif::Holds(line, "<EOR>")) {
            record += line;
            if (repaired.recordLines.size() <= mostRecords) {
                if (IsContact(record))
                    repaired.recordLines << repaired.lines;
                record += "\r\n";
                if (const Result<void> put = writer.Put(record); !put)
                    return put.failure();
            }
            record.clear();
        } else if (!line.isEmpty() && line.toUpper() != "<EOH>") {
            record += line.first(std::min(line.size(), longestRecord - record.size()));
        }
        if (!run.Step(repaired.lines))
            return Stopped();
        if (repaired.lines % 500 == 0)
            show(u"Lineas ... "_qs + QString::number(repaired.lines));
    }
    if (!record.trimmed().isEmpty() && Adif::Holds(record, "<CALL:"))
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
            found.records << line;
        }
        if (number % 200 == 0)
            show(u"Midiendo ..."_qs + QString::number(found.records.size()));
        if (!run.Step(number))
            return Stopped();
    }
    if (found.records.size() > mostRecords) {
        found.records.clear();
        found.tooMany = true;
    }
    return found;
}

} // namespace AdifFile
