// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/MasterCheck.h"
#include "core/Wildcard.h"
#include "support/TestRegistry.h"

#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

namespace {

// The two passes through the whole list.
QList<MasterHit> PlainScan(const QStringList &calls, const QString &text)
{
    QList<MasterHit> hits;
    QStringList shown;
    for (const QString &call : calls)
        if (call.left(text.size()) == text) {
            hits.append({call, true, {}});
            shown << call;
        }
    const QString pattern = text.left(2) + u'?' + text.mid(3) + u'*';
    int near = 0;
    for (const QString &call : calls) {
        if (!Wildcard::Matches(Wildcard::Fold(pattern), Wildcard::Fold(call)) || shown.contains(call))
            continue;
        MasterHit hit{call, false, {}};
        for (qsizetype i = 0; i < call.size(); ++i)
            hit.different << (call.mid(i, 1) != text.mid(i, 1));
        hits << hit;
        shown << call;
        if (++near > 15)
            break;
    }
    return hits;
}

QString Shown(const QList<MasterHit> &hits)
{
    QStringList texts;
    for (const MasterHit &hit : hits) {
        QString text = hit.call;
        for (const bool different : hit.different)
            text += different ? u'!' : u'-';
        texts << text;
    }
    return texts.join(u' ');
}

} // namespace

class TestMasterCheck : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void PrefixesComeFirstThenTheNearOnes_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("hits");
        QTest::newRow("two characters") << u"LU"_qs << QString();
        QTest::newRow("three") << u"LU1"_qs << u"LU1ABC LU1ABD LU1ABC LU7ABC--!!!! LU2XYZ--!!!! LU7--!"_qs;
        QTest::newRow("in full") << u"LU1ABC"_qs << u"LU1ABC LU1ABC LU7ABC--!---"_qs;
        QTest::newRow("small letters") << u"lu7abc"_qs << u"LU7ABC LU7ABC LU1ABC--!---"_qs;
        QTest::newRow("doubtful behind the third") << u"LU1?BD"_qs << u"LU1ABD---!--"_qs;
        QTest::newRow("longer than the key") << u"PY1LONGCALL/P"_qs << u"PY1LONGCALL/P PY2LONGCALL/P--!----------"_qs;
        QTest::newRow("a character of the same low byte") << u"CE1\u0141A"_qs << QString();
    }
    void PrefixesComeFirstThenTheNearOnes()
    {
        QFETCH(QString, text);
        const MasterCheck list({u"LU7ABC"_qs, u"LU1ABC"_qs, u"AA"_qs, u""_qs, u"LU1ABD"_qs, u"LU7ABC"_qs, u"LU2XYZ"_qs,
            u"LU1ABC"_qs, u"LU"_qs, u"LU7"_qs, u"PY1LONGCALL/P"_qs, u"PY2LONGCALL/P"_qs, u"CE1AA"_qs});
        QTEST(Shown(list.Search(text)), "hits");
    }

    void TheIndexFindsWhatAScanFinds()
    {
        QRandomGenerator random(7);
        const QString letters = u"LUPYCE1279AB?/"_qs;
        const auto word = [&](int shortest, int longest) {
            QString made;
            for (int i = random.bounded(shortest, longest + 1); i > 0; --i)
                made += letters[random.bounded(letters.size())];
            return made;
        };
        QStringList calls;
        for (int i = 0; i < 4000; ++i)
            calls << (i % 2 ? word(0, 7) : QString(u"LU"_qs + word(1, 4)));
        const MasterCheck list(calls);
        qsizetype hits = 0, near = 0;
        for (int i = 0; i < 1500; ++i) {
            const QString text = i % 3 ? QString(u"LU"_qs + word(1, 3)) : i % 2 ? word(3, 6) : calls[i].left(5);
            if (text.size() < MasterCheck::shortestSearch)
                continue;
            const QList<MasterHit> found = list.Search(text);
            QVERIFY2(found == PlainScan(calls, text), qPrintable(text));
            hits += found.size();
            near += std::count_if(found.begin(), found.end(), [](const MasterHit &hit) { return !hit.prefix; });
        }
        QVERIFY(near > 1000 && hits > near + 1000);
    }

    void AFileIsReadWhateverItsLineEnds_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("calls");
        QTest::addColumn<QDate>("date");
        const QDate date(2026, 11, 24);
        QTest::newRow("LF CR") << QByteArray("#24/11/2026#\n\r LU1ABC \n\rlu2abc\n\r") << u"LU1ABC LU2ABC"_qs << date;
        QTest::newRow("CR LF") << QByteArray("LU1ABC\r\n\r\n#11/24/2026#\r\nLU2ABC") << u"LU1ABC LU2ABC"_qs << date;
        QTest::newRow("no date") << QByteArray("#hoy#\n\rLU1ABC") << u"LU1ABC"_qs << QDate();
    }
    void AFileIsReadWhateverItsLineEnds()
    {
        QFETCH(QByteArray, content);
        QFETCH(QDate, date);
        QVERIFY(Write(u"master.txt"_qs, content));
        QStringList reports;
        const MasterCheck list = LoadMasterFile(files_, folder_.filePath(u"master.txt"_qs),
            [&](int line, const QString &) { reports << QString::number(line); });
        QTEST(list.Calls().join(u' '), "calls");
        QCOMPARE(list.Date().value_or(QDate()), date);
        QCOMPARE(reports.join(u' '), content.contains("hoy") ? u"1"_qs : QString());
        QVERIFY(LoadMasterFile(files_, folder_.filePath(u"no.txt"_qs)).Calls().isEmpty());
    }

    void DatesOfTheList()
    {
        QCOMPARE(MasterDateOf(u"#2/3/2026#"), QDate(2026, 3, 2)); // the day first, unless there is no such month
        QCOMPARE(MasterDateOf(u"#02/25/2026#"), QDate(2026, 2, 25));
        QCOMPARE(MasterDateOf(u"02/03/2026#"), QDate(2026, 3, 2));
        QVERIFY(!MasterDateOf(u"<html><head") && !MasterDateOf(u"##"));
    }

    void AListIsBuiltOfOldAndNew()
    {
        QVERIFY(Write(u"datos6.txt"_qs, "LU3ABC\r\n\r\nLU1ABC\r\nlu4abc\r\n"));
        const QString output = folder_.filePath(u"master_hoy.txt"_qs);
        const auto build =
            BuildMasterList(files_, folder_.filePath(u"datos6.txt"_qs), {u"LU1ABC"_qs, u"LU2ABC"_qs}, output);
        QVERIFY(build);
        QCOMPARE(MasterBuildTexts(*build).join(u','), u"NUEVO 3,ACTUAL 2,AGREGA 2,QUEDA 4"_qs);
        QFile file(output);
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readAll(), QByteArray("LU1ABC\r\nLU2ABC\r\nLU3ABC\r\nLU4ABC\r\n"));
        QVERIFY(!BuildMasterList(files_, QString(), {}, folder_.filePath(u"no/master.txt"_qs)));
    }

private:
    bool Write(const QString &name, const QByteArray &content)
    {
        QFile file(folder_.filePath(name));
        return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
    }

    QTemporaryDir folder_;
    FileSystem files_;
};

TORDILLO_TEST(TestMasterCheck)
#include "TestMasterCheck.moc"
