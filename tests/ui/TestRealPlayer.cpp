// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"
#include "ui/RealPlayer.h"

#include <QDataStream>
#include <QElapsedTimer>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QtMath>
#ifdef Q_OS_UNIX
#include <sys/stat.h>
#endif
#include <thread>

// The player on Qt's own audio, which needs no sound card.
class TestRealPlayer : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;

    static QByteArray Wav(int milliseconds)
    {
        constexpr int rate = 8000, sampleSize = 2;
        const int bytes = rate * milliseconds / 1000 * sampleSize;
        QByteArray wav;
        QDataStream out(&wav, QIODevice::WriteOnly);
        out.setByteOrder(QDataStream::LittleEndian);
        out.writeRawData("RIFF", 4);
        out << quint32(36 + bytes);
        out.writeRawData("WAVEfmt ", 8);
        out << quint32(16) << quint16(1) << quint16(1) << quint32(rate) << quint32(rate * sampleSize)
            << quint16(sampleSize) << quint16(8 * sampleSize);
        out.writeRawData("data", 4);
        out << quint32(bytes);
        for (int i = 0; i < bytes / sampleSize; ++i)
            out << qint16(8000 * qSin(2 * M_PI * 700 * i / rate));
        return wav;
    }
    QString Written(const QString &name, const QByteArray &content) const
    {
        QFile file(folder_.filePath(name));
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write");
        return file.fileName();
    }
    // Whether it can be played.
    static bool Open(RealPlayer &player, const QString &path)
    {
        QSignalSpy opened(&player, &AudioPlayer::Opened);
        player.SetFile(path);
        player.Open();
        const bool early = opened.count() > 0;
        return opened.wait(10000) && !early && player.Error().isEmpty()
            && player.CurrentMode() == AudioPlayer::Mode::Stopped;
    }

private Q_SLOTS:
    void PlaysToTheEndAndTellsHowFarItIs_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("WAV") << Written(u"señal cq.wav"_qs, Wav(600));
        QTest::newRow("MP3") << QFINDTESTDATA("files/tono.mp3");
    }
    void PlaysToTheEndAndTellsHowFarItIs()
    {
        QFETCH(QString, path);
        RealPlayer player;
        QSignalSpy done(&player, &AudioPlayer::Done);
        QVERIFY(Open(player, path));
        QList<qint64> positions;
        connect(&player, &AudioPlayer::StatusUpdate, this, [&] { positions << player.Position(); });
        QElapsedTimer clock;
        clock.start();
        player.Play();
        QVERIFY(done.wait(5000));
        QVERIFY(clock.elapsed() > 400); // in its own time, though nobody hears it
        QVERIFY(player.Length() >= 500 && player.Length() < 1300);
        QVERIFY(positions.size() >= 3 && std::is_sorted(positions.begin(), positions.end()));
        QVERIFY(positions.last() <= player.Length());
        QVERIFY(player.CurrentMode() == AudioPlayer::Mode::Stopped);
    }

    void WhatIsNoAudioIsRefusedWithAReason_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("none chosen") << QString();
        QTest::newRow("gone") << folder_.filePath(u"no está.wav"_qs);
        QTest::newRow("folder") << folder_.path();
        QTest::newRow("empty") << Written(u"vacío.wav"_qs, {});
        QTest::newRow("text") << Written(u"texto.mp3"_qs, QByteArray(5000, 'a'));
        QTest::newRow("noise") << Written(u"ruido.mp3"_qs, QByteArray::fromHex("00ff10fa8801").repeated(3000));
        QTest::newRow("picture") << QFINDTESTDATA("../../src/ui/icons/tordillo.svg");
        QTest::newRow("only the head") << Written(u"cortado.wav"_qs, Wav(600).left(30));
    }
    void WhatIsNoAudioIsRefusedWithAReason()
    {
        QFETCH(QString, path);
        RealPlayer player;
        QVERIFY(!Open(player, path));
        QVERIFY(!player.Error().isEmpty());
        player.Play();
        player.Stop();
        player.Rewind();
        QVERIFY(Open(player, Written(u"bueno.wav"_qs, Wav(100)))); // the next one is not harmed by it
    }

    void StoppingTellsTheEndClosingTellsNothing()
    {
        const QString path = Written(u"largo.wav"_qs, Wav(20000));
        RealPlayer player;
        QSignalSpy done(&player, &AudioPlayer::Done), opened(&player, &AudioPlayer::Opened);
        for (const bool close : {false, true}) {
            QVERIFY(Open(player, path));
            player.Play();
            QSignalSpy(&player, &AudioPlayer::StatusUpdate).wait(2000);
            QVERIFY(player.Position() > 0);
            player.Stop();
            QCOMPARE(done.count(), 0);
            if (close)
                player.Close();
            QTest::qWait(50);
            QCOMPARE(done.count(), close ? 0 : 1);
            done.clear();
        }
        opened.clear();
        player.SetFile(path);
        player.Open();
        player.Close();
        QTest::qWait(200);
        QCOMPARE(opened.count(), 0);
    }

    // A pipe is a disk that answers when the test likes.
    void ASlowDiskHoldsNobody()
    {
#ifdef Q_OS_UNIX
        const QString path = folder_.filePath(u"lento.wav"_qs);
        QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
        const QByteArray content = Wav(100);
        const auto feed = [&path](const QByteArray &bytes) {
            QFile pipe(path);
            if (pipe.open(QIODevice::WriteOnly | QIODevice::Unbuffered))
                pipe.write(bytes);
        };
        RealPlayer player;
        player.SetFile(path);
        QSignalSpy opened(&player, &AudioPlayer::Opened);
        QElapsedTimer clock;
        clock.start();
        player.Open();
        QTest::qWait(30);
        QVERIFY(clock.elapsed() < 500);
        QCOMPARE(opened.count(), 0);
        feed(content);
        QVERIFY(opened.wait(5000));
        QCOMPARE(player.Error(), QString());
        // Given up while the disk still thinks: its answer belongs to nobody, even when the player is gone.
        opened.clear();
        {
            RealPlayer gone;
            gone.SetFile(path);
            gone.Open();
        }
        player.Open();
        player.Close();
        std::thread(feed, content).join();
        QTest::qWait(100);
        QCOMPARE(opened.count(), 0);
#endif
    }
};

TORDILLO_TEST(TestRealPlayer)
#include "TestRealPlayer.moc"
