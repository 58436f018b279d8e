// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "PlainScan.h"
#include "support/Fixtures.h"

#include <QRandomGenerator>

namespace {

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

class TestMasterCheck : public FolderTest {
    Q_OBJECT

private Q_SLOTS:
    void PrefixesComeFirstThenTheNearOnes()
    {
        const MasterCheck list({u"LU7ABC"_qs, u"LU1ABC"_qs, u"AA"_qs, u""_qs, u"LU1ABD"_qs, u"LU7ABC"_qs, u"LU2XYZ"_qs,
            u"LU1ABC"_qs, u"LU"_qs, u"LU7"_qs, u"PY1LONGCALL/P"_qs, u"PY2LONGCALL/P"_qs, u"CE1AA"_qs});
        const std::pair<QString, QString> rows[] = {{u"LU"_qs, {}},
            {u"LU1"_qs, u"LU1ABC LU1ABD LU1ABC LU7ABC--!!!! LU2XYZ--!!!! LU7--!"_qs},
            {u"LU1ABC"_qs, u"LU1ABC LU1ABC LU7ABC--!---"_qs}, {u"lu7abc"_qs, u"LU7ABC LU7ABC LU1ABC--!---"_qs},
            {u"LU1?BD"_qs, u"LU1ABD---!--"_qs}, // doubtful behind the third
            {u"PY1LONGCALL/P"_qs, u"PY1LONGCALL/P PY2LONGCALL/P--!----------"_qs}, // longer than the key
            {u"CE1\u0141A"_qs, {}}}; // a character of the same low byte
        for (const auto &[text, hits] : rows)
            QCOMPARE(Shown(list.Search(text)), hits);
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

    void AFileIsReadWhateverItsLineEnds()
    {
        const QDate day(2026, 11, 24);
        const std::tuple<QByteArray, QString, QDate, QString> rows[] = {
            {"#24/11/2026#\n\r LU1ABC \n\rlu2abc\n\r", u"LU1ABC LU2ABC"_qs, day, {}},
            {"LU1ABC\r\n\r\n#11/24/2026#\r\nLU2ABC", u"LU1ABC LU2ABC"_qs, day, {}},
            {"#hoy#\n\rLU1ABC", u"LU1ABC"_qs, {}, u"1"_qs}};
        for (const auto &[content, calls, date, lines] : rows) {
            Put(u"master.txt"_qs, content);
            QStringList reports;
            const MasterCheck list = LoadMasterFile(
                files_, Path(u"master.txt"_qs), [&](int line, const QString &) { reports << QString::number(line); });
            QCOMPARE(list.Calls().join(u' '), calls);
            QCOMPARE(list.Date().value_or(QDate()), date);
            QCOMPARE(reports.join(u' '), lines);
        }
        QVERIFY(LoadMasterFile(files_, Path(u"no.txt"_qs)).Calls().isEmpty());
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
        Put(u"datos6.txt"_qs, "#1/2/2026#\r\nLU3ABC\r\n\r\nLU1ABC\r\nlu4abc\r\n");
        const QString output = Path(u"master_hoy.txt"_qs);
        const auto build = BuildMasterList(files_, Path(u"datos6.txt"_qs), {u"LU1ABC"_qs, u"LU2ABC"_qs}, output);
        QVERIFY(build);
        QCOMPARE(MasterBuildTexts(*build).join(u','), u"NUEVO 4,ACTUAL 2,AGREGA 3,QUEDA 5"_qs);
        QCOMPARE(Content(u"master_hoy.txt"_qs), QByteArray("LU1ABC\r\nLU2ABC\r\n#1/2/2026#\r\nLU3ABC\r\nLU4ABC\r\n"));
        QVERIFY(!BuildMasterList(files_, QString(), {}, Path(u"no/master.txt"_qs)));
    }
};

TORDILLO_TEST(TestMasterCheck)
#include "TestMasterCheck.moc"
