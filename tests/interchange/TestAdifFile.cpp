// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reading.h"
#include "support/FailingDevice.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>
#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

const QString first = u"LU1ABC|24/11/2026|21:15|20m|14.250|SSB|59|57|LU9ZZZ|Muchas gracias"_qs;
const QString second = u"CX2DE|24/11/2026|21:18|40m|7.090|CW|599|589|LU9ZZZ|73 y DX"_qs;

QByteArray Line(const QByteArray &call, const char *end = "\r\n") { return Record(call) + end; }

QByteArray TestFile(const QString &name)
{
    QFile file(QFINDTESTDATA(QString(u"files/" + name)));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(missing)");
}

QStringList Taken(const Reading &reading)
{
    QStringList taken;
    for (const AdifImport::Contact &contact : reading.contacts) {
        const QsoRow &row = contact.row;
        if (!contact.dropped)
            taken << QStringList{row.Estacion, row.Fecha, row.Hora, row.Banda, row.Frecuencia, row.Modo, row.RSE,
                row.RSR, row.MyCall, row.Obs}
                         .join(u'|');
    }
    return taken;
}

// Stands for a file of `size` bytes that nobody wrote: the pattern over and over.
class LargeFile : public QIODevice {
public:
    LargeFile(QByteArray pattern, qint64 size)
        : pattern_(std::move(pattern))
        , size_(size)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    qint64 size() const override { return size_; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        qint64 done = 0;
        for (qint64 at = pos(); done < maxSize && at + done < size_;) {
            const qint64 place = (at + done) % pattern_.size();
            const qint64 part = std::min({maxSize - done, pattern_.size() - place, size_ - at - done});
            std::copy_n(pattern_.constData() + place, part, data + done);
            done += part;
        }
        return done;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray pattern_;
    qint64 size_;
};

// The chosen file comes from `make`, helper files are real.
class FilesWithOneOf : public FileSystem {
public:
    explicit FilesWithOneOf(std::function<std::unique_ptr<QIODevice>()> make)
        : make_(std::move(make))
    {
    }
    std::unique_ptr<QIODevice> OpenForReading(const QString &path) const override
    {
        return path == chosenPath ? make_() : FileSystem::OpenForReading(folder_.filePath(path.mid(1)));
    }
    Result<std::unique_ptr<QIODevice>> OpenForWriting(const QString &path) override
    {
        return FileSystem::OpenForWriting(folder_.filePath(path.mid(1)));
    }

private:
    std::function<std::unique_ptr<QIODevice>()> make_;
    QTemporaryDir folder_;
};

// Memory files of which some are spoiled: reading breaks off, or the disk is full.
class SpoiledFiles : public MemoryFiles {
public:
    QString path;
    qint64 limit = 0;
    FailingDevice::Trouble trouble = FailingDevice::Trouble::DiskFull;

    std::unique_ptr<QIODevice> OpenForReading(const QString &wanted) const override
    {
        return Spoil(wanted, MemoryFiles::OpenForReading(wanted), QIODevice::ReadOnly);
    }
    Result<std::unique_ptr<QIODevice>> OpenForWriting(const QString &wanted) override
    {
        return Spoil(wanted, *MemoryFiles::OpenForWriting(wanted), QIODevice::WriteOnly);
    }

private:
    std::unique_ptr<QIODevice> Spoil(
        const QString &wanted, std::unique_ptr<QIODevice> device, QIODevice::OpenMode mode) const
    {
        if (wanted != path || !device)
            return device;
        auto failing = std::make_unique<FailingDevice>(*device, limit, trouble);
        failing->open(mode);
        behind_.push_back(std::move(device));
        return failing;
    }
    mutable std::vector<std::unique_ptr<QIODevice>> behind_;
};

// Kilobytes of memory, by its name in the system's account of this process; -1 where there is none.
qint64 Memory(const char *name)
{
    QFile status(u"/proc/self/status"_qs);
    if (!status.open(QIODevice::ReadOnly))
        return -1;
    const QByteArray text = status.readAll();
    const qsizetype at = text.indexOf(name);
    return at < 0 ? -1 : text.mid(at + qsizetype(strlen(name)) + 1, 24).simplified().split(' ').first().toLongLong();
}

// Gives back what earlier tests have left, and lets the peak begin anew.
bool ForgetPeak()
{
#ifdef __GLIBC__
    malloc_trim(0);
#endif
    QFile file(u"/proc/self/clear_refs"_qs);
    return file.open(QIODevice::WriteOnly | QIODevice::Unbuffered) && file.write("5") == 1;
}

} // namespace

class TestAdifFile : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void FilesOfAllKinds_data()
    {
        QTest::addColumn<int>("lines");
        QTest::addColumn<QString>("recordLines");
        QTest::addColumn<QStringList>("contacts");
        QTest::addColumn<QStringList>("reports");
        const auto row = [](const char *file, int lines, const char16_t *recordLines, const QStringList &contacts,
                             const QStringList &reports = {}) {
            QTest::newRow(file) << lines << QString::fromUtf16(recordLines) << contacts << reports;
        };
        const QStringList both{first, second}, capitals{first.toUpper(), second.toUpper()};
        const QString third = u"LU3XX|25/11/2026|00:01|80m|3.600|SSB|59|59|LU9ZZZ|solo"_qs;
        row("crlf.adi", 6, u"5 6", both);
        row("cr.adi", 6, u"5 6", both);
        row("lf.adi", 6, u"5 6", capitals);
        row("field-a-line.adi", 27, u"15 27", both);
        row("blank-lines.adi", 13, u"9 11", both);
        row("cut-lines.adi", 9, u"7 9", both);
        row("lower-case-tags.adi", 6, u"5 6", both);
        row("type-indicators.adi", 6, u"5 6", both);
        row("no-header.adi", 2, u"1 2", both);
        row("bom.adi", 2, u"1 2", both);
        row("header-with-tags.adi", 4, u"3 4", both);
        row("comments.adi", 8, u"5 7", both);
        row("last-without-end.adi", 7, u"5 6", both, {u"7: El último registro no termina en <EOR>: no se tomó."_qs});
        row("two-a-line.adi", 6, u"5 6", {first, third});
        row("one-line.adi", 1, u"1", {first.toUpper()});
        row("one-line-ended.adi", 1, u"1",
            {u"LU1ABC|24/11/2026|21:15|20M|14.250|DVoice|59|57|LU9ZZZ|MUCHAS GRACIAS"_qs});
        row("signs-in-values.adi", 6, u"5 6",
            {QString(first).replace(u"Muchas gracias"_qs, u"a<b>c <EOR> d"_qs),
                QString(second).replace(u"73 y DX"_qs, u"<CALL:3>XXX"_qs)});
        row("zero-lengths.adi", 6, u"5 6", {u"LU1ABC|24/11/2026|21:15|20m|14.100|SSB|59|59|LU9ZZZ|"_qs});
        row("absurd-lengths.adi", 8, u"5 6 7 8",
            {u"LU1ABC|24/11/2026|21:15|20m|14.|SSB|59|59|LU9ZZZ|hasta el fin<EOR>"_qs,
                u"LU2ABC|24/11/2026|21:15||||599|599|LU9ZZZ|"_qs});
        row("empty.adi", 0, u"", {});
        row("random.bin", 276, u"", {});
    }
    void FilesOfAllKinds()
    {
        const Reading reading = ReadAdif(TestFile(QString::fromLatin1(QTest::currentDataTag())));
        QVERIFY(!reading.failure);
        QTEST(int(reading.repaired.lines), "lines");
        QTEST(Taken(reading), "contacts");
        QTEST(reading.reports, "reports");
        QStringList recordLines;
        for (const qint64 line : reading.records.lines)
            recordLines << QString::number(line);
        QTEST(recordLines.join(u' '), "recordLines");
        QCOMPARE(reading.records.records.size(), recordLines.size());
    }

    void Encodings_data()
    {
        QTest::addColumn<QString>("file");
        for (const QString &file : {u"utf8-bytes.adi"_qs, u"utf8-characters.adi"_qs, u"windows-1252.adi"_qs})
            QTest::newRow(qPrintable(file)) << file;
    }
    void Encodings()
    {
        QFETCH(QString, file);
        QByteArray content = TestFile(file);
        const auto values = [](const Reading &reading) {
            const QsoRow &row = reading.contacts.first().row;
            return QStringList{row.Obs, row.Operador, row.Nombre_Sat, row.SuGrid}.join(u'|');
        };
        const QString expected = u"Peña – ñandú ½|Muñoz|Ñuñoa|GF05AB"_qs;
        QCOMPARE(values(ReadAdif(content)), expected);
        QCOMPARE(values(ReadAdif(content.replace("\r\n", "\n"))), expected.toUpper());
    }

    void WhoWroteTheFile()
    {
        const auto program = [](const char16_t *file) {
            return ReadAdif(TestFile(QString::fromUtf16(file))).repaired.program;
        };
        QCOMPARE(program(u"crlf.adi"), u"OtroLibro"_qs);
        QCOMPARE(program(u"lf.adi"), u"OTROLIBRO"_qs);
        QCOMPARE(program(u"header-with-tags.adi"), u"OtroLibro"_qs);
        QCOMPARE(program(u"no-header.adi"), QString());
        QCOMPARE(program(u"eqsl.adi"), u"una tarjeta cualquiera"_qs.left(21));
        QCOMPARE(ReadAdif("www.eQSL.cc\r\n<EOH>\r\n" + Record("LU1ABC") + "\r\n").repaired.program, u"eQSL"_qs);
    }

    void StatesComeFromTheServiceOnly()
    {
        const auto states = [](const QByteArray &content) {
            QStringList found;
            for (const AdifImport::Contact &contact : ReadAdif(content).contacts)
                found << contact.row.LdA + u'/' + contact.row.Modo;
            return found.join(u' ');
        };
        QByteArray content = TestFile(u"lda.adi"_qs);
        QCOMPARE(states(content), u"2/SSB 1/CW /FM"_qs);
        QCOMPARE(states(content.replace("<PROGRAMID:3>LdA", "<PROGRAMID:3>XdX")), u"/SSB /CW /FM"_qs);
    }

    void StationsAndTagsThatAreNotTaken()
    {
        const QByteArray content = Record("LU1ABC", "2115", "<DXCC:3>100<app_x:2>ab") + "\r\n"
            + Record("LU2ABC", "2116", "<dxcc:3>100") + "\r\n"
            + Record("LU3ABC").replace("LU9ZZZ", "LU8YYY").replace("<CALL:6>", "<CALLE:6>")
            + "\r\n<EOR>\r\n"; // without a call: its station counts, the record does not
        const Reading reading = ReadAdif(content);
        QCOMPARE(reading.records.stations.join(u' '), u"LU9ZZZ LU8YYY"_qs);
        QCOMPARE(reading.records.withCall, 2);
        QCOMPARE(reading.records.records.size(), 2);
        QCOMPARE(reading.records.otherTags, (QMap<QByteArray, int>{{"DXCC", 2}, {"APP_X", 1}}));
        QCOMPARE(ReadAdif(TestFile(u"no-station.adi"_qs)).records.stations, QStringList());
    }

    void ErrorsByKind()
    {
        const Reading reading = ReadAdif(TestFile(u"errors.adi"_qs));
        QCOMPARE(Taken(reading).join(u'\n').count(u"LU"), 2 * 2); // with their own call each
        QCOMPARE(AdifImport::TroubleLines(reading.troubles),
            (QStringList{u"> 3 error(es) Fecha"_qs, u"> 2 error(es) QTR"_qs, u"> 2 error(es) Banda/Frec."_qs,
                u"> 3 error(es) ADIF."_qs}));
    }

    // --- The helper files

    void TheRepairedFileHoldsARecordALine()
    {
        MemoryFiles files;
        files.content[chosenPath] = TestFile(u"cut-lines.adi"_qs) + "<EOF>\r\nlo de atrás";
        static_cast<void>(ReadAdif(files));
        const QByteArray plain = TestFile(u"no-header.adi"_qs);
        QCOMPARE(files.content[repairedPath], plain + "\r\n");
        QVERIFY(!files.Exists(copyPath));
        QCOMPARE(files.content.size(), 2u);

        files.content[chosenPath] = QByteArray(plain).replace("\r\n", "\n");
        static_cast<void>(ReadAdif(files));
        QCOMPARE(files.content[copyPath], plain.toUpper());

        const std::pair<const char *, bool> behindTheFirstCr[] = {
            {"", true}, {"\n", true}, {"\r", false}, {"x", false}, {"\nx", false}, {"\n\r\n", false}};
        for (const auto &[behind, onlyLine] : behindTheFirstCr) {
            files.content[chosenPath] = QByteArray("<call:2>lu<eor>\r") + behind;
            QCOMPARE(ReadAdif(files).copied, onlyLine);
        }
    }

    void CapitalsKeepTheLengths_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<QByteArray>("capitals");
        QTest::newRow("windows-1252") << QByteArray("\xF1\xE1\xFF\xB5\xDF\x9A\xF7")
                                      << QByteArray("\xD1\xC1\x9F\xB5\xDF\x8A\xF7");
        QTest::newRow("UTF-8") << u"ñáÿ"_qs.toUtf8() << u"ÑÁŸ"_qs.toUtf8();
        QTest::newRow("UTF-8 whose capitals are shorter or longer") << u"ßıɐﬁ"_qs.toUtf8() << u"ßıɐﬁ"_qs.toUtf8();
        QTest::newRow("UTF-8 beyond 16 bits")
            << u"\U00010428\U0001F600"_qs.toUtf8() << u"\U00010400\U0001F600"_qs.toUtf8();
    }
    void CapitalsKeepTheLengths()
    {
        QFETCH(QByteArray, value);
        QFETCH(QByteArray, capitals);
        MemoryFiles files;
        files.content[chosenPath] = Field("comment", value) + "<eor>";
        static_cast<void>(ReadAdif(files));
        QCOMPARE(files.content[copyPath], Field("COMMENT", capitals) + "<EOR>");
    }

    void ALongLineIsNotCutWithinALetter()
    {
        MemoryFiles files;
        for (const char *shift : {"", "x", "xx"}) {
            files.content[chosenPath] = shift + u"ñ€"_qs.toUtf8().repeated(220000) + "<eor>";
            Runs runs;
            Run run(runs, {});
            QVERIFY(*AdifFile::SplitSingleLineFile(files, chosenPath, copyPath, run, [](const QString &) {}));
            QVERIFY(files.content[copyPath] == QString::fromUtf8(files.content[chosenPath]).toUpper().toUtf8());
        }
    }

    void RejoiningWritesARecordALine()
    {
        MemoryFiles files;
        files.content[chosenPath] = "cabeza\r\n<CALL:2>\r\nLU<eor>\r\n<CALL:2>CX<EOR> x\r\nsuelto\r\n";
        QVERIFY(AdifFile::RejoinRecords(files, chosenPath, copyPath));
        QCOMPARE(files.content[copyPath], QByteArray("cabeza<CALL:2>LU<eor>\r\n<CALL:2>CX<EOR> x\r\n"));
        QVERIFY(!AdifFile::RejoinRecords(files, u"/no está"_qs, copyPath));
    }

    void WhatIsGoingOnIsShown()
    {
        QByteArray content;
        for (int i = 0; i < 1000; ++i)
            content += Record("LU1ABC") + '\n';
        const QStringList shown = ReadAdif(content).shown;
        QCOMPARE(shown.first(), u"Multi renglón ... 1"_qs);
        QVERIFY(shown.contains(u"Lineas ... 500"_qs));
        QVERIFY(shown.contains(u"Midiendo ...1"_qs));
        QVERIFY(shown.contains(u"Midiendo ...801"_qs));
    }

    // --- Size

    void TenThousandRecordsAndOneMore()
    {
        const QByteArray record = Line("LU1ABC");
        Reading reading = ReadAdif("x<EOH>\r\n" + record.repeated(10000));
        QVERIFY(!reading.records.tooMany);
        QCOMPARE(reading.contacts.size(), 10000);
        QCOMPARE(reading.records.lines.last(), 10001);
        reading = ReadAdif("x<EOH>\r\n" + record.repeated(10001));
        QVERIFY(reading.records.tooMany);
        QVERIFY(reading.records.records.isEmpty());
        QCOMPARE(reading.repaired.lines, 10002);
        // Records without a call are no contacts and do not count.
        reading = ReadAdif(QByteArray("<BAND:3>20m<EOR>\r\n").repeated(3000) + record.repeated(10000));
        QCOMPARE(reading.contacts.size(), 10000);
    }

    // A large file takes a few megabytes of memory, whatever it holds.
    void MemoryIsBounded_data()
    {
        QTest::addColumn<QByteArray>("pattern");
        QTest::addColumn<int>("megabytes");
        QTest::addColumn<int>("records"); // -1: too many
        const QByteArray large = "<APP_LARGE:90000>" + QByteArray(90000, 'x');
        QTest::newRow("many records") << Line("LU1ABC") << 60 << -1;
        QTest::newRow("large records") << large + Line("LU1ABC") << 60 << 60000000 / 90135;
        QTest::newRow("large records of many lines")
            << QByteArray(large + "\r\n").repeated(10) + Line("LU1ABC") << 60 << 60000000 / 900308;
        QTest::newRow("one line") << QByteArray("<CALL:6>LU1ABC x") << 40 << 0;
        QTest::newRow("LF only, no records") << QByteArray("<BAND:3>20m\n") << 20 << 0;
        QTest::newRow("empty lines") << QByteArray("\r\n") << 20 << 0;
        QTest::newRow("records without a call") << QByteArray("<STATION_CALLSIGN:6>LU9ZZZ<EOR>\r\n") << 20 << 0;
    }
    void MemoryIsBounded()
    {
        QFETCH(QByteArray, pattern);
        QFETCH(int, megabytes);
        QFETCH(int, records);
        FilesWithOneOf files([&] { return std::make_unique<LargeFile>(pattern, megabytes * 1000000); });
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer keeps what is freed");
#endif
        if (!ForgetPeak())
            QSKIP("no account of the memory");
        const qint64 before = Memory("VmRSS:");
        Runs runs;
        Run run(runs, {});
        const auto quiet = [](const QString &) {};
        const auto split = AdifFile::SplitSingleLineFile(files, chosenPath, copyPath, run, quiet);
        QVERIFY(split);
        const auto repaired = AdifFile::JoinRecordLines(
            files, *split ? copyPath : chosenPath, repairedPath, run, quiet, [](qint64, const QString &) {});
        QVERIFY(repaired);
        const auto read = AdifFile::ReadRecords(files, *repaired, run, quiet);
        QVERIFY(read);
        const qint64 grown = (Memory("VmHWM:") - before) / 1024;

        QVERIFY2(grown < 12, qPrintable(u"%1 MB"_qs.arg(grown)));
        QCOMPARE(read->tooMany, records < 0);
        QCOMPARE(int(read->records.size()), std::max(0, records));
    }

    void WhatIsBeyondAMegabyteIsToldAndPassedOver()
    {
        const QByteArray record = Line("LU1ABC"), large(700000, 'x');
        const Reading reading = ReadAdif(record + QByteArray(3 << 20, 'x') + "\r\n<EOR>\r\n" + record + large + "\r\n"
            + large + "\r\n" + record + large + Line("LU2ABC"));
        QCOMPARE(reading.reports,
            (QStringList{u"2: Línea demasiado larga: se tomó su principio."_qs,
                u"3: Registro demasiado largo: no se tomó."_qs, u"7: Registro demasiado largo: no se tomó."_qs}));
        QCOMPARE(reading.records.lines, (QList<qint64>{1, 4, 8}));
        QCOMPARE(reading.contacts.last().row.Estacion, u"LU2ABC"_qs);
    }

    // The end of a record that was cut off with its line still ends it, wherever it stood.
    void ALineBeyondAMegabyteTakesNoOtherRecordAlong()
    {
        for (const qsizetype size : {1 << 20, (1 << 20) - 3, (5 << 18) - 2, 3 << 20}) {
            const Reading reading = ReadAdif("<CALL:6>LU0ABC" + QByteArray(size, 'x') + Line("LU1ABC") + Line("LU2ABC")
                + "<CALL:6>LU3ABC" + QByteArray(size, 'x') + Record("LU4ABC"));
            QCOMPARE(reading.contacts.size(), 1);
            QCOMPARE(reading.contacts.first().row.Estacion, u"LU2ABC"_qs);
            QCOMPARE(reading.records.lines, QList<qint64>{2});
            QVERIFY(reading.reports.contains(u"1: Registro demasiado largo: no se tomó."_qs));
            QVERIFY(reading.reports.join(u'\n').contains(u"3: "_qs)); // the last line, which has no end
        }
    }

    // --- What goes wrong

    void AFileThatCannotBeRead()
    {
        MemoryFiles files;
        const Reading reading = ReadAdif(files);
        QCOMPARE(reading.failure->kind, Failure::Kind::Missing);
        QCOMPARE(reading.failure->text, u"No se puede leer el archivo\n/archivo.adi"_qs);
        QVERIFY(files.content.empty());
    }

    void ReadingThatBreaksOffIsNoShortFile_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QByteArray>("content");
        const QByteArray record = Line("LU1ABC");
        QTest::newRow("chosen file, at once") << chosenPath << record.repeated(20000);
        QTest::newRow("chosen file of one line") << chosenPath << QByteArray(record).replace("\r", "").repeated(20000);
        QTest::newRow("repaired file") << repairedPath << record.repeated(9000);
    }
    void ReadingThatBreaksOffIsNoShortFile()
    {
        QFETCH(QString, path);
        SpoiledFiles files;
        files.content[chosenPath] = *static_cast<QByteArray *>(QTest::qData("content", QMetaType::QByteArray));
        files.path = path;
        files.trouble = FailingDevice::Trouble::ReadError;
        for (const int blocks : {0, 1, 3}) {
            files.limit = 262144 * blocks;
            const Reading reading = ReadAdif(files);
            QVERIFY(reading.failure);
            QVERIFY2(reading.failure->text.startsWith(u"El archivo\n" + path + u"\nno se pudo leer hasta el final."),
                qPrintable(reading.failure->text));
        }
    }

    void AFullDiskIsTold_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("copy in capitals") << copyPath;
        QTest::newRow("repaired file") << repairedPath;
    }
    void AFullDiskIsTold()
    {
        QFETCH(QString, path);
        SpoiledFiles files;
        files.content[chosenPath] = Line("LU1ABC", "\n").repeated(4000);
        files.path = path;
        for (const qint64 limit : {0, 100, 300000}) {
            files.limit = limit;
            const Reading reading = ReadAdif(files);
            QVERIFY(reading.failure);
            QCOMPARE(reading.failure->kind, Failure::Kind::Full);
            QVERIFY(reading.failure->text.contains(path));
        }
    }

    void AFileThatChangesWhileItIsRead()
    {
        const QByteArray record = Line("LU1ABC");
        // Cut off by another program after it was opened.
        FilesWithOneOf shorter([&]() -> std::unique_ptr<QIODevice> {
            class Cut : public LargeFile {
            public:
                using LargeFile::LargeFile;
                qint64 size() const override { return LargeFile::size() + 1000; }
            };
            return std::make_unique<Cut>(record, record.size() * 3 - 10);
        });
        const Reading reading = ReadAdif(shorter);
        QVERIFY(!reading.failure);
        QCOMPARE(reading.contacts.size(), 2);
        QCOMPARE(reading.reports,
            (QStringList{u"0: El archivo cambió mientras se leía: se tomó lo que había."_qs,
                u"3: El último registro no termina en <EOR>: no se tomó."_qs}));
        // Gone, or other than it was, between one reading and the next.
        int opened = 0;
        FilesWithOneOf gone([&]() -> std::unique_ptr<QIODevice> {
            return ++opened > 1 ? nullptr : std::make_unique<LargeFile>(QByteArray("x\n"), 2);
        });
        QCOMPARE(ReadAdif(gone).failure->kind, Failure::Kind::Missing);
        opened = 0;
        FilesWithOneOf other([&]() -> std::unique_ptr<QIODevice> {
            const QByteArray now = ++opened > 1 ? record : QByteArray(record).replace("\r\n", "\n");
            return std::make_unique<LargeFile>(now, now.size());
        });
        QCOMPARE(ReadAdif(other).contacts.size(), 1);
    }

    void EveryStepCanBeStopped_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("one line") << Line("LU1ABC", "\n").repeated(5000);
        QTest::newRow("lines") << Line("LU1ABC").repeated(12);
    }
    void EveryStepCanBeStopped()
    {
        QFETCH(QByteArray, content);
        MemoryFiles files;
        files.content[chosenPath] = content;
        const auto read = [&](int stopAt, int &steps) {
            Runs runs;
            Run run(
                runs,
                [&] {
                    if (++steps == stopAt)
                        runs.CancelAll();
                },
                {}, 0);
            return ReadAdif(files, run);
        };
        int all = 0;
        QVERIFY(!read(0, all).failure);
        QVERIFY(all > 20);
        for (int stopAt = 1; stopAt <= all; stopAt += 1 + all / 60) {
            int steps = 0;
            const Reading reading = read(stopAt, steps);
            QVERIFY(reading.failure);
            QCOMPARE(reading.failure->kind, Failure::Kind::Cancelled);
            QCOMPARE(steps, stopAt);
        }
    }

    // Damaged files of every kind: nothing but records with a call comes out, and within the limits.
    void DamagedFiles()
    {
        QRandomGenerator random(20261124);
        const QByteArray sound =
            TestFile(u"field-a-line.adi"_qs) + TestFile(u"utf8-characters.adi"_qs) + TestFile(u"absurd-lengths.adi"_qs);
        for (int round = 0; round < 400; ++round) {
            QByteArray content = sound;
            for (int i = 0; i < round % 40; ++i) {
                const auto at = random.bounded(content.size());
                if (random.bounded(3) == 0)
                    content.remove(at, random.bounded(40));
                else
                    content[at] = "<>:\r\n0123456789EOR\xC3\xB1"[random.bounded(20)];
            }
            const Reading reading = ReadAdif(content);
            QVERIFY(!reading.failure);
            QCOMPARE(reading.records.lines.size(), reading.records.records.size());
            for (const AdifImport::Contact &contact : reading.contacts) {
                const QsoRow &row = contact.row;
                QVERIFY(contact.dropped || (!row.Estacion.isEmpty() && row.Hora.size() == 5));
                QVERIFY(contact.dropped || (row.Estacion.size() <= 20 && row.Obs.size() <= 100));
            }
        }
    }
};

TORDILLO_TEST(TestAdifFile)
#include "TestAdifFile.moc"
