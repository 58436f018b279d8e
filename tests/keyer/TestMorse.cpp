// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "keyer/Morse.h"
#include "support/TestRegistry.h"

#include <QTest>

namespace {

constexpr qint64 millisecond = 1000;

// "60- 45 180- 45 | 60": each element with "-" behind its milliseconds, then the pause; behind the bar what is left of
// the character.
QString Written(const CwChar &sent)
{
    QStringList parts;
    qint64 at = 0;
    for (const LineChange &change : sent.changes) {
        if (change.at > at || !change.on)
            parts << QString::number((change.at - at) / millisecond) + (change.on ? u""_qs : u"-"_qs);
        at = change.at;
    }
    return parts.join(u' ') + u" | " + QString::number((sent.duration - at) / millisecond);
}

} // namespace

class TestMorse : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void SpeedTable()
    {
        const QHash<int, int> units{{10, 120}, {11, 110}, {12, 102}, {13, 94}, {14, 86}, {15, 80}, {16, 75}, {17, 71},
            {18, 67}, {19, 63}, {20, 60}, {21, 56}, {22, 53}, {23, 51}, {24, 49}, {25, 48}, {26, 46}, {27, 45},
            {28, 44}, {29, 42}, {30, 40}, {31, 39}, {32, 38}, {33, 36}, {34, 35}, {35, 34}, {36, 33}, {37, 32},
            {38, 31}, {39, 31}, {40, 30}};
        for (int speed = 10; speed <= 40; ++speed)
            QCOMPARE(CwDelayOfSpeed(speed) + 50, units.value(speed));
    }

    void Patterns()
    {
        // In the order of the alphabet, so that a shifted row shows.
        const QString characters = u"0123456789abcdefghijklmnopqrstuvwxyz,./\\=?:()'*@&%~"_qs;
        const QStringList patterns = QString::fromLatin1(
            "----- .---- ..--- ...-- ....- ..... -.... --... ---.. ----. .- -... -.-. -.. . ..-. --. .... .. .--- -.- "
            ".-.. -- -. --- .--. --.- .-. ... - ..- ...- .-- -..- -.-- --.. --..-- .-.-.- -..-. -..-. -...- ..--.. "
            "---... -.--.- -.--.- .-..-. .-... -.--. .-.-. ...-. -...-.-")
                                         .split(u' ');
        QCOMPARE(characters.size(), patterns.size());
        for (qsizetype i = 0; i < patterns.size(); ++i) {
            QCOMPARE(MorsePattern(characters[i]), patterns[i]);
            QCOMPARE(MorsePattern(characters[i].toUpper()), patterns[i]);
        }
        for (const QChar silent : u" +-ñ\r#"_qs)
            QVERIFY(MorsePattern(silent).isEmpty());
    }

    void Elements()
    {
        QCOMPARE(Written(CwSendChar(u'A', {20, {}})), u"60- 45 180- | 105"_qs);
        // The pause inside a character goes to the even number of milliseconds: 22.5, 26.25, 28.5 and 55.5.
        QCOMPARE(Written(CwSendChar(u'i', {40, {}})), u"30- 22 30- | 52"_qs);
        QCOMPARE(Written(CwSendChar(u'i', {34, {}})), u"35- 26 35- | 61"_qs);
        QCOMPARE(Written(CwSendChar(u'i', {32, {}})), u"38- 28 38- | 66"_qs);
        QCOMPARE(Written(CwSendChar(u'i', {16, {}})), u"75- 56 75- | 131"_qs);
    }

    // Blanks and unknown signs pause as long as the last pattern was slow, whatever the speed is now.
    void Pauses()
    {
        CwState state{20, {}};
        QCOMPARE(CwSendChar(u' ', state).duration, 60 * millisecond);
        state = CwSendChar(u'E', state).after;
        state.speed = 40;
        for (const QChar silent : u" +ñ\r"_qs) {
            const CwChar sent = CwSendChar(silent, state);
            QCOMPARE(sent.duration, 60 * millisecond);
            QVERIFY(sent.changes.isEmpty() && sent.endsOnStop);
        }
        QCOMPARE(CwSendChar(u'E', state).duration, (30 + 22 + 30) * millisecond);
        for (const QChar timeless : u"\n\""_qs)
            QVERIFY(CwSendChar(timeless, state).duration == 0 && CwSendChar(timeless, state).changes.isEmpty());
    }

    void SpeedMarks()
    {
        const QList<std::tuple<QChar, int, int>> marks{{u'>', 20, 24}, {u'>', 36, 40}, {u'>', 38, 40}, {u'>', 35, 39},
            {u'<', 20, 16}, {u'<', 15, 11}, {u'<', 14, 10}, {u'<', 12, 10}};
        for (const auto &[mark, before, after] : marks) {
            const CwChar sent = CwSendChar(mark, {before, {}});
            QCOMPARE(sent.after.speed, after);
            QVERIFY(sent.isMark && !sent.endsOnStop && sent.duration == 0 && sent.changes.isEmpty());
        }
    }
};

TORDILLO_TEST(TestMorse)
#include "TestMorse.moc"
