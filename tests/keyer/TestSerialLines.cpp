// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"
#include "keyer/PortDevice.h"
#include "keyer/SerialLines.h"
#include "support/FixedClock.h"
#include "support/RecordingPorts.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using User = SerialLines::User;

class TestSerialLines : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void PortNames()
    {
        const QTemporaryDir folder;
        FileSystem files;
        const FixedClock clock;
        const Logbook logbook(folder.path(), files, clock);
        const auto devices = [&] {
            QStringList list;
            for (const QString &com : {u"COM1"_qs, u"COM4"_qs, u"COM5"_qs, u"COM12"_qs, u"COM13"_qs, u"COM20"_qs})
                list << PortDevice(logbook, com);
            return list.join(u' ');
        };
        QCOMPARE(devices(), u"/dev/ttyS0 /dev/ttyS3 /dev/ttyUSB0 /dev/ttyUSB7 /dev/ttyACM0 /dev/ttyACM7"_qs);
        for (const QString &none : {u"Ninguno"_qs, u"NINGUNO"_qs, QString(), u"COM0"_qs, u"COM21"_qs, u"COMx"_qs})
            QCOMPARE(PortDevice(logbook, none), QString());
        QFile own(folder.filePath(u"puertos.ini"_qs));
        QVERIFY(own.open(QIODevice::WriteOnly));
        own.write("[puertos]\r\nCOM5=/dev/serial/by-id/radio\r\n");
        own.close();
        QVERIFY(devices().contains(u"ttyS3 /dev/serial/by-id/radio /dev/ttyUSB7"));
    }

    // Keyer and caller on the same port: one device, and neither takes a line from the other.
    void SharedPort()
    {
        const QTemporaryDir folder;
        FileSystem files;
        const FixedClock clock;
        const Logbook logbook(folder.path(), files, clock);
        RecordingPorts ports;
        const auto record = [&ports] {
            QString text = ports.Taken().join(u", "_qs);
            return text.remove(u"/dev/"_qs);
        };
        SerialLines lines(logbook, ports);
        QVERIFY(lines.Open(User::Caller, u"COM1"_qs));
        QVERIFY(lines.Set(User::Caller, ModemLine::RTS, true));
        QVERIFY(lines.Open(User::Keyer, u"COM1"_qs));
        QVERIFY(lines.Set(User::Keyer, ModemLine::DTR, true));
        QCOMPARE(record(), u"open ttyS0, ttyS0 RTS 1, ttyS0 DTR 1"_qs);
        lines.Close(User::Keyer);
        QCOMPARE(record(), u"ttyS0 DTR 0"_qs);
        QVERIFY(lines.Set(User::Keyer, ModemLine::DTR, true)); // nobody there: nothing happens
        QVERIFY(lines.Open(User::Keyer, u"COM1"_qs));
        lines.Close(User::Caller);
        QCOMPARE(record(), u"ttyS0 RTS 0"_qs);
        QVERIFY(lines.Set(User::Keyer, ModemLine::RTS, true));
        QVERIFY(lines.Open(User::Keyer, u"COM2"_qs)); // another port: the old one is left low
        QCOMPARE(record(), u"ttyS0 RTS 1, ttyS0 RTS 0, close ttyS0, open ttyS1"_qs);
        ports.refused[u"/dev/ttyS2"_qs] = {u"ocupado"_qs};
        QVERIFY(!lines.Open(User::Keyer, u"COM3"_qs));
        QVERIFY(!lines.IsOpen(User::Keyer));
        QCOMPARE(record(), u"close ttyS1"_qs);

        // What the other one holds is not lowered, and a device that failed is opened anew for both.
        QVERIFY(lines.Open(User::Caller, u"COM1"_qs) && lines.Open(User::Keyer, u"COM1"_qs));
        QVERIFY(lines.Set(User::Caller, ModemLine::RTS, true) && lines.Set(User::Keyer, ModemLine::RTS, false));
        lines.ForceLow(User::Keyer, ModemLine::DTR);
        QCOMPARE(record(), u"open ttyS0, ttyS0 RTS 1, ttyS0 DTR low"_qs);
        ports.gone << u"/dev/ttyS0"_qs;
        QVERIFY(!lines.Set(User::Keyer, ModemLine::DTR, true));
        ports.gone.clear();
        record();
        QVERIFY(lines.Open(User::Keyer, u"COM1"_qs));
        QVERIFY(lines.Set(User::Caller, ModemLine::RTS, true) && lines.Set(User::Keyer, ModemLine::DTR, true));
        QCOMPARE(record(), u"close ttyS0, open ttyS0, ttyS0 RTS 1, ttyS0 DTR 1"_qs);
        ports.deafToOff = true; // a line that nobody holds any more does not stay up beside the other user's
        lines.Close(User::Keyer);
        QCOMPARE(record(), u"ttyS0 RTS low, ttyS0 DTR low"_qs);
    }
};

TORDILLO_TEST(TestSerialLines)
#include "TestSerialLines.moc"
