// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Reading.h"
#include "support/FailingDevice.h"
#include "support/LargeFile.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
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
    void FilesOfAllKinds()
    {
        struct Case {
            const char16_t *file;
            int lines;
            QString recordLines;
            QStringList contacts, reports;
        };
        const QStringList both{first, second}, capitals{first.toUpper(), second.toUpper()};
        const QString third = u"LU3XX|25/11/2026|00:01|80m|3.600|SSB|59|59|LU9ZZZ|solo"_qs, fiveSix = u"5 6"_qs;
        const Case cases[] = {{u"crlf", 6, fiveSix, both, {}}, {u"cr", 6, fiveSix, both, {}},
            {u"lf", 6, fiveSix, capitals, {}}, {u"field-a-line", 27, u"15 27"_qs, both, {}},
            {u"blank-lines", 13, u"9 11"_qs, both, {}}, {u"cut-lines", 9, u"7 9"_qs, both, {}},
            {u"lower-case-tags", 6, fiveSix, both, {}}, {u"type-indicators", 6, fiveSix, both, {}},
            {u"no-header", 2, u"1 2"_qs, both, {}}, {u"bom", 2, u"1 2"_qs, both, {}},
            {u"header-with-tags", 4, u"3 4"_qs, both, {}}, {u"comments", 8, u"5 7"_qs, both, {}},
            {u"last-without-end", 7, fiveSix, both, {u"7: El último registro no termina en <EOR>: no se tomó."_qs}},
            {u"two-a-line", 6, fiveSix, {first, third}, {}}, {u"one-line", 1, u"1"_qs, {first.toUpper()}, {}},
            {u"one-line-ended", 1, u"1"_qs,
                {u"LU1ABC|24/11/2026|21:15|20M|14.250|DVoice|59|57|LU9ZZZ|MUCHAS GRACIAS"_qs}, {}},
            {u"signs-in-values", 6, fiveSix,
                {QString(first).replace(u"Muchas gracias"_qs, u"a<b>c <EOR> d"_qs),
                    QString(second).replace(u"73 y DX"_qs, u"<CALL:3>XXX"_qs)},
                {}},
            {u"zero-lengths", 6, fiveSix, {u"LU1ABC|24/11/2026|21:15|20m|14.100|SSB|59|59|LU9ZZZ|"_qs}, {}},
            {u"absurd-lengths", 8, u"5 6 7 8"_qs,
                {u"LU1ABC|24/11/2026|21:15|20m|14.|SSB|59|59|LU9ZZZ|hasta el fin<EOR>"_qs,
                    u"LU2ABC|24/11/2026|21:15||||599|599|LU9ZZZ|"_qs},
                {}},
            {u"empty", 0, {}, {}, {}}, {u"random.bin", 276, {}, {}, {}}};
        for (const Case &one : cases) {
            const QString name = QString::fromUtf16(one.file);
            const Reading reading = ReadAdif(TestFile(name.contains(u'.') ? name : name + u".adi"_qs));
            QVERIFY(!reading.failure);
            QCOMPARE(reading.repaired.lines, one.lines);
            QCOMPARE(Taken(reading), one.contacts);
            QCOMPARE(reading.reports, one.reports);
            QStringList recordLines;
            for (const qint64 line : reading.records.lines)
                recordLines << QString::number(line);
            QCOMPARE(recordLines.join(u' '), one.recordLines);
            QCOMPARE(reading.records.records.size(), recordLines.size());
        }
    }

    void Encodings()
    {
        const QString expected = u"Peña – ñandú ½|Muñoz|Ñuñoa|GF05AB"_qs;
        for (const QString &file : {u"utf8-bytes.adi"_qs, u"utf8-characters.adi"_qs, u"windows-1252.adi"_qs}) {
            QByteArray content = TestFile(file);
            const auto values = [](const Reading &reading) {
                const QsoRow &row = reading.contacts.first().row;
                return QStringList{row.Obs, row.Operador, row.Nombre_Sat, row.SuGrid}.join(u'|');
            };
            QCOMPARE(values(ReadAdif(content)), expected);
            QCOMPARE(values(ReadAdif(content.replace("\r\n", "\n"))), expected.toUpper());
        }
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
        QCOMPARE(ReadAdif("<PROGRAMID:4>Otro<EOH>\r\n<programid:3>LdA" + Record("LU1ABC") + "\r\n").repaired.program,
            u"LdA"_qs);
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

    void CapitalsKeepTheLengths()
    {
        // windows-1252; UTF-8, whose capitals may be shorter or longer, or beyond 16 bits.
        const std::pair<QByteArray, QByteArray> values[] = {
            {"\xF1\xE1\xFF\xB5\xDF\x9A\xF7", "\xD1\xC1\x9F\xB5\xDF\x8A\xF7"}, {"ñáÿ", "ÑÁŸ"}, {"ßıɐﬁ", "ßıɐﬁ"},
            {"\U00010428\U0001F600", "\U00010400\U0001F600"}};
        for (const auto &[value, capitals] : values) {
            MemoryFiles files;
            files.content[chosenPath] = Field("comment", value) + "<eor>";
            static_cast<void>(ReadAdif(files));
            QCOMPARE(files.content[copyPath], Field("COMMENT", capitals) + "<EOR>");
        }
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
    void MemoryIsBounded()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer keeps what is freed");
#endif
        const QByteArray large = "<APP_LARGE:90000>" + QByteArray(90000, 'x');
        const std::tuple<QByteArray, int, int> rows[] = {{Line("LU1ABC"), 60, -1}, // megabytes, records; -1: too many
            {large + Line("LU1ABC"), 60, 60000000 / 90135},
            {QByteArray(large + "\r\n").repeated(10) + Line("LU1ABC"), 60, 60000000 / 900308},
            {"<CALL:6>LU1ABC x", 40, 0}, {"<BAND:3>20m\n", 20, 0}, {"\r\n", 20, 0},
            {"<STATION_CALLSIGN:6>LU9ZZZ<EOR>\r\n", 20, 0}};
        for (const auto &[pattern, megabytes, records] : rows) {
            FilesWithOneOf files(
                [&, &bytes = pattern, size = megabytes] { return std::make_unique<LargeFile>(bytes, size * 1000000); });
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

    void AFileThatCannotBeRead()
    {
        MemoryFiles files;
        const Reading reading = ReadAdif(files);
        QCOMPARE(reading.failure->kind, Failure::Kind::Missing);
        QCOMPARE(reading.failure->text, u"No se puede leer el archivo\n/archivo.adi"_qs);
        QVERIFY(files.content.empty());
    }

    void ReadingThatBreaksOffIsNoShortFile()
    {
        const QByteArray record = Line("LU1ABC"), oneLine = QByteArray(record).replace("\r", "");
        const std::pair<QString, QByteArray> rows[] = {{chosenPath, record.repeated(20000)},
            {chosenPath, oneLine.repeated(20000)}, {repairedPath, record.repeated(9000)}};
        for (const auto &[path, content] : rows)
            for (const int blocks : {0, 1, 3}) {
                SpoiledFiles files;
                files.content[chosenPath] = content;
                files.path = path;
                files.trouble = FailingDevice::Trouble::ReadError;
                files.limit = 262144 * blocks;
                const QString told = ReadAdif(files).failure.value_or(Failure{}).text;
                QVERIFY2(
                    told.startsWith(u"El archivo\n" + path + u"\nno se pudo leer hasta el final."), qPrintable(told));
            }
    }

    void AFullDiskIsTold()
    {
        for (const QString &path : {copyPath, repairedPath})
            for (const qint64 limit : {0, 100, 300000}) {
                SpoiledFiles files;
                files.content[chosenPath] = Line("LU1ABC", "\n").repeated(4000);
                files.path = path;
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

    void EveryStepCanBeStopped()
    {
        for (const QByteArray &content : {Line("LU1ABC", "\n").repeated(5000), Line("LU1ABC").repeated(12)}) {
            MemoryFiles files;
            files.content[chosenPath] = content;
            const auto read = [&](int stopAt, int &steps) {
                Runs runs;
                const auto pump = [&] {
                    if (++steps == stopAt)
                        runs.CancelAll();
                };
                Run run(runs, pump, {}, 0);
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
