// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CodePage.h"
#include "core/TextFile.h"
#include "support/FailingDevice.h"
#include "support/TestRegistry.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

// A huge file without a huge file: `size` bytes of the pattern, over and over.
class EndlessDevice : public QIODevice {
public:
    EndlessDevice(QByteArray pattern, qint64 size)
        : pattern_(std::move(pattern))
        , left_(size)
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 size = std::min({maxSize, left_, qint64(pattern_.size() - place_)});
        std::copy_n(pattern_.constData() + place_, size, data);
        place_ = (place_ + size) % pattern_.size();
        left_ -= size;
        return size;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray pattern_;
    qint64 left_;
    qsizetype place_ = 0;
};

class OneDeviceFileSystem : public FileSystem {
public:
    explicit OneDeviceFileSystem(std::function<std::unique_ptr<QIODevice>()> make)
        : make_(std::move(make))
    {
    }
    std::unique_ptr<QIODevice> OpenForReading(const QString &) const override { return make_(); }

private:
    std::function<std::unique_ptr<QIODevice>()> make_;
};

QStringList Lines(const QByteArray &content)
{
    QByteArray bytes = content;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    LineReader reader(buffer);
    QStringList lines;
    while (const auto line = reader.Next()) {
        lines << *line;
        if (reader.LineNumber() != lines.size() || reader.WasCut())
            return {u"wrong number or cut"_qs};
    }
    return lines;
}

// No write of this process gets past `bytes` while it lives: what a full disk does, without one.
class FileSizeLimit {
public:
#ifdef Q_OS_UNIX
    explicit FileSizeLimit(rlim_t bytes)
    {
        std::signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &before_);
        const rlimit limit{bytes, before_.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() { setrlimit(RLIMIT_FSIZE, &before_); }

private:
    rlimit before_;
#endif
};

} // namespace

class TestTextFiles : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        folder_ = std::make_unique<QTemporaryDir>();
        path_ = folder_->filePath(u"a.txt"_qs);
    }

    void WhereLinesEnd_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("lines");
        QTest::newRow("empty file") << QByteArray() << QStringList();
        QTest::newRow("CR LF") << QByteArray("a\r\nb\r\n") << QStringList{u"a"_qs, u"b"_qs};
        QTest::newRow("CR") << QByteArray("a\rb\r") << QStringList{u"a"_qs, u"b"_qs};
        QTest::newRow("no end") << QByteArray("a\r\nb") << QStringList{u"a"_qs, u"b"_qs};
        QTest::newRow("LF ends nothing") << QByteArray("a\nb\r\n") << QStringList{u"a\nb"_qs};
        QTest::newRow("LF CR LF") << QByteArray("a\n\r\nb") << QStringList{u"a\n"_qs, u"b"_qs};
        QTest::newRow("empty lines") << QByteArray("\r\n\r\r\n") << QStringList{QString(), QString(), QString()};
        QTest::newRow("a second LF begins a line") << QByteArray("a\r\n\n") << QStringList{u"a"_qs, u"\n"_qs};
        const QByteArray chunk(65536 - 1, 'x');
        const QString text = QString::fromLatin1(chunk);
        QTest::newRow("CR LF over the edge of a read") << QByteArray(chunk + "\r\nb\r\n") << QStringList{text, u"b"_qs};
        QTest::newRow("CR at the edge of a read") << QByteArray(chunk + "\rb\r\n") << QStringList{text, u"b"_qs};
        QTest::newRow("CR ends read and file") << QByteArray(chunk + "\r") << QStringList{text};
    }
    void WhereLinesEnd()
    {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, lines);
        QCOMPARE(Lines(content), lines);
    }

    void AHugeLineIsCutAndPassedOver()
    {
        EndlessDevice device(QByteArray(1 << 20, 'x') + QByteArray(50 << 20, 'y') + "\r\nnext\r\n", 51 * (1 << 20) + 8);
        LineReader reader(device);
        QCOMPARE(reader.Next(), QString(1 << 20, u'x'));
        QVERIFY(reader.WasCut());
        QCOMPARE(reader.Next(), u"next"_qs);
        QVERIFY(!reader.WasCut());
        QCOMPARE(reader.LineNumber(), 2);
        QVERIFY(!reader.Next());
    }

    void AHugeFileDoesNotFillTheMemory_data()
    {
        QTest::addColumn<QByteArray>("pattern");
        QTest::newRow("of line ends") << QByteArray(100000, '\r');
        QTest::newRow("of one line") << QByteArray(100000, 'x');
        QTest::newRow("of long lines") << QByteArray(QByteArray(500000, 'x') + '\r');
    }
    void AHugeFileDoesNotFillTheMemory()
    {
        QFETCH(QByteArray, pattern);
        const OneDeviceFileSystem files([&] { return std::make_unique<EndlessDevice>(pattern, 100 << 20); });
        const auto lines = TextFile::ReadLines(files, path_);
        qint64 memory = 0;
        for (const QString &line : *lines)
            memory += 2 * line.size() + qint64(sizeof(QString));
        QVERIFY(!lines->isEmpty());
        QVERIFY2(memory < (64 << 20), qPrintable(QString::number(memory)));
    }

    void AReadErrorEndsTheFile()
    {
        QByteArray content = "one\r\ntwo\r\nthree\r\n";
        QBuffer buffer(&content);
        const OneDeviceFileSystem files([&] {
            auto device = std::make_unique<FailingDevice>(buffer, 7, FailingDevice::Trouble::ReadError);
            device->open(QIODevice::ReadOnly);
            return device;
        });
        QCOMPARE(*TextFile::ReadLines(files, path_), (QStringList{u"one"_qs, u"tw"_qs}));
    }

    void EveryByteSurvives()
    {
        QByteArray all;
        for (int code = 0; code < 256; ++code) {
            all += static_cast<char>(code);
            QCOMPARE(CodePage::CodeOf(CodePage::CharacterOf(static_cast<unsigned char>(code))), code);
        }
        QCOMPARE(CodePage::FromText(CodePage::ToText(all)), all);
        QCOMPARE(CodePage::ToText("\x80\x8D\x9F\xD1\xFF"), u"\u20AC\u008D\u0178Ññ"_qs.left(4) + u'ÿ');
        QCOMPARE(CodePage::FromText(u"Ω€Ñ\U0001F4FBĀ"), QByteArray("?\x80\xD1??"));
        QCOMPARE(CodePage::CodeOf(u'\u0080'), -1);

        all.remove('\r', 1);
        const QStringList lines{CodePage::ToText(all), u"Ñandú"_qs, QString()};
        QVERIFY(TextFile::WriteLines(files_, path_, lines, FileSystem::Sync::Yes));
        QCOMPARE(*TextFile::ReadLines(files_, path_), lines);
        QCOMPARE(*files_.ReadWhole(path_),
            QByteArray(all
                + "\r\n\xD1"
                  "and\xFA\r\n\r\n"));
    }

    void ReplacingIsAtomic()
    {
        for (const auto sync : {FileSystem::Sync::No, FileSystem::Sync::Yes}) {
            QVERIFY(files_.Replace(path_, "old", sync));
#ifdef Q_OS_UNIX
            {
                const FileSizeLimit full(4096);
                const Result<void> replaced = files_.Replace(path_, QByteArray(100000, 'n'), sync);
                QVERIFY(!replaced);
                QCOMPARE(replaced.failure().kind, Failure::Kind::Full);
                QVERIFY(replaced.failure().text.contains(path_));
            }
            QCOMPARE(*files_.ReadWhole(path_), QByteArray("old"));
#endif
            QVERIFY(files_.Replace(path_, QByteArray(100000, 'n'), sync));
            QCOMPARE(files_.ReadWhole(path_)->size(), 100000);
            QCOMPARE(QDir(folder_->path()).entryList(QDir::Files | QDir::Hidden), QStringList{u"a.txt"_qs});
        }
    }

    void PlacesThatCannotBeWrittenAreToldSo()
    {
        QVERIFY(QDir(folder_->path()).mkdir(u"folder"_qs));
        for (const QString &name : {u"folder"_qs, u"none/a.txt"_qs}) {
            const QString path = folder_->filePath(name);
            const Failure replaced = files_.Replace(path, "x", FileSystem::Sync::No).failure();
            const Failure opened = files_.OpenForWriting(path).failure();
            for (const Failure &failure : {replaced, opened}) {
                QCOMPARE(failure.kind, Failure::Kind::ReadOnly);
                QVERIFY(failure.text.contains(path));
            }
        }
    }

    void WhatCountsAsAFile()
    {
        QVERIFY(QDir(folder_->path()).mkdir(u"config.ini"_qs));
        QVERIFY(!files_.Exists(folder_->filePath(u"config.ini"_qs)));
        QVERIFY(!files_.OpenForReading(folder_->filePath(u"config.ini"_qs)));
        QVERIFY(!TextFile::ReadLines(files_, path_));
        QCOMPARE(files_.ReadWhole(path_).failure().kind, Failure::Kind::Missing);
        QVERIFY(files_.Replace(path_, "12345", FileSystem::Sync::No));
        QCOMPARE(*files_.ReadWhole(path_, 5), QByteArray("12345"));
        QCOMPARE(files_.ReadWhole(path_, 4).failure().kind, Failure::Kind::Damaged);
        QVERIFY(files_.Remove(path_));
        QVERIFY(!files_.Exists(path_));
    }

private:
    std::unique_ptr<QTemporaryDir> folder_;
    QString path_;
    FileSystem files_;
};

TORDILLO_TEST(TestTextFiles)
#include "TestTextFiles.moc"
