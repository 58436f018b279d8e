// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/CodePage.h"
#include "core/TextFile.h"
#include "support/FailingDevice.h"
#include "support/Fixtures.h"
#include "support/LargeFile.h"

#include <QBuffer>
#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#endif

namespace {

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

class TestTextFiles : public FolderTest {
    Q_OBJECT

private Q_SLOTS:
    void WhereLinesEnd()
    {
        const QByteArray chunk(65536 - 1, 'x'); // up to the edge of a read
        const QString text = QString::fromLatin1(chunk);
        const std::pair<QByteArray, QStringList> rows[] = {{"", {}}, {"a\r\nb\r\n", {u"a"_qs, u"b"_qs}},
            {"a\rb\r", {u"a"_qs, u"b"_qs}}, {"a\r\nb", {u"a"_qs, u"b"_qs}}, {"a\nb\r\n", {u"a\nb"_qs}},
            {"a\n\r\nb", {u"a\n"_qs, u"b"_qs}}, {"\r\n\r\r\n", {{}, {}, {}}}, {"a\r\n\n", {u"a"_qs, u"\n"_qs}},
            {chunk + "\r\nb\r\n", {text, u"b"_qs}}, {chunk + "\rb\r\n", {text, u"b"_qs}}, {chunk + "\r", {text}}};
        for (const auto &[content, lines] : rows)
            QCOMPARE(Lines(content), lines);
    }

    void AHugeLineIsCutAndPassedOver()
    {
        LargeFile device(QByteArray(1 << 20, 'x') + QByteArray(50 << 20, 'y') + "\r\nnext\r\n", 51 * (1 << 20) + 8);
        LineReader reader(device);
        QCOMPARE(reader.Next(), QString(1 << 20, u'x'));
        QVERIFY(reader.WasCut());
        QCOMPARE(reader.Next(), u"next"_qs);
        QVERIFY(!reader.WasCut());
        QCOMPARE(reader.LineNumber(), 2);
        QVERIFY(!reader.Next());
    }

    void AHugeFileDoesNotFillTheMemory()
    {
        for (const QByteArray &pattern :
            {QByteArray(100000, '\r'), QByteArray(100000, 'x'), QByteArray(QByteArray(500000, 'x') + '\r')}) {
            const OneDeviceFileSystem files([&] { return std::make_unique<LargeFile>(pattern, 100 << 20); });
            const auto lines = TextFile::ReadLines(files, {});
            qint64 memory = 0;
            for (const QString &line : *lines)
                memory += 2 * line.size() + qint64(sizeof(QString));
            QVERIFY(!lines->isEmpty());
            QVERIFY2(memory < (64 << 20), qPrintable(QString::number(memory)));
        }
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
        QCOMPARE(*TextFile::ReadLines(files, {}), (QStringList{u"one"_qs, u"tw"_qs}));
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
        const QString path = Path(u"a.txt"_qs);
        QVERIFY(TextFile::WriteLines(files_, path, lines, FileSystem::Sync::Yes));
        QCOMPARE(*TextFile::ReadLines(files_, path), lines);
        QCOMPARE(*files_.ReadWhole(path),
            QByteArray(all
                + "\r\n\xD1"
                  "and\xFA\r\n\r\n"));
    }

    void ReplacingIsAtomic()
    {
        const QString path = Path(u"a.txt"_qs);
        for (const auto sync : {FileSystem::Sync::No, FileSystem::Sync::Yes}) {
            QVERIFY(files_.Replace(path, "old", sync));
#ifdef Q_OS_UNIX
            {
                const FileSizeLimit full(4096);
                const Result<void> replaced = files_.Replace(path, QByteArray(100000, 'n'), sync);
                QVERIFY(!replaced);
                QCOMPARE(replaced.failure().kind, Failure::Kind::Full);
                QVERIFY(replaced.failure().text.contains(path));
            }
            QCOMPARE(*files_.ReadWhole(path), QByteArray("old"));
#endif
            QVERIFY(files_.Replace(path, QByteArray(100000, 'n'), sync));
            QCOMPARE(files_.ReadWhole(path)->size(), 100000);
            QCOMPARE(Files(), u"a.txt"_qs);
        }
    }

    void PlacesThatCannotBeWrittenAreToldSo()
    {
        QVERIFY(QDir(folder_->path()).mkdir(u"folder"_qs));
        for (const QString &name : {u"folder"_qs, u"none/a.txt"_qs}) {
            const QString path = Path(name);
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
        QVERIFY(!files_.Exists(Path(u"config.ini"_qs)));
        QVERIFY(!files_.OpenForReading(Path(u"config.ini"_qs)));
        const QString path = Path(u"a.txt"_qs);
        QVERIFY(!TextFile::ReadLines(files_, path));
        QCOMPARE(files_.ReadWhole(path).failure().kind, Failure::Kind::Missing);
        QVERIFY(files_.Replace(path, "12345", FileSystem::Sync::No));
        QCOMPARE(*files_.ReadWhole(path, 5), QByteArray("12345"));
        QCOMPARE(files_.ReadWhole(path, 4).failure().kind, Failure::Kind::Damaged);
        QVERIFY(files_.Remove(path));
        QVERIFY(!files_.Exists(path));
    }
};

TORDILLO_TEST(TestTextFiles)
#include "TestTextFiles.moc"
