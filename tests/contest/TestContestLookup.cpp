// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "SomeContest.h"
#include "contest/ContestEdit.h"
#include "contest/ContestImport.h"
#include "contest/ContestLookup.h"
#include "support/PowerCut.h"

using namespace SomeContest;

class TestContestLookup : public ContestTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        StoreTest::init();
        QVERIFY(CreateContest(*store_, name, SerieType::Incremental));
    }
    void AnEmptyContestHasNothingToTell()
    {
        QVERIFY(Store({Row({.contest = u"Otro"})}));
        QCOMPARE(*LastContestValue(*store_, name, ContestValue::Mode), QString());
        QCOMPARE(*LastContestSerial(*store_, name, u"SSB"_qs), QString());
        QVERIFY(!*LastContestQso(*store_, name));
        QVERIFY(ContestListLoad(*store_, name)->isEmpty());
        QVERIFY(FindContestDuplicates(*store_, name, u"LU1ABC"_qs, u"SSB"_qs, u"40m"_qs)->isEmpty());
        QVERIFY(FindContestDuplicates(*store_, name, QString(), QString(), QString())->size() == 1); // the header row
    }

    void EachModeHasItsOwnSerial()
    {
        // The last by time is not the last by id.
        QVERIFY(Store(*store_,
            {Row({.mode = u"CW", .time = u"2300", .rse = u"5"}), Row({.mode = u"SSB", .time = u"2200", .rse = u"9"}),
                Row({.mode = u"CW", .time = u"2100", .rse = u"6"}), Row({.rse = u"99", .contest = u"Otro"})}));
        for (const auto &[mode, serial] :
            {std::pair{u"CW", u"6"}, {u"SSB", u"9"}, {u"PH", u"9"}, {u"ssb", u"9"}, {u"FM", u""}})
            QCOMPARE(*LastContestSerial(*store_, name, QString::fromUtf16(mode)), QString::fromUtf16(serial));
        QCOMPARE(*LastContestValue(*store_, name, ContestValue::Mode), u"CW"_qs);
        QCOMPARE((*LastContestQso(*store_, name))->RSE, u"6"_qs);
    }

    void ADuplicateIsCallModeAndBand()
    {
        QVERIFY(Store(*store_,
            {Row({.time = u"2100"}), Row({.time = u"2200"}), Row({.mode = u"CW", .time = u"2300"}),
                Row({.contest = u"Otro"})}));
        const auto times = [this](const QString &call, const QString &mode, const QString &band) {
            return Column(*FindContestDuplicates(*store_, name, call, mode, band), &QsoRow::Hora);
        };
        QCOMPARE(times(u"lu1abc"_qs, u"PH"_qs, u"40M"_qs), u"2200 2100"_qs); // PH is SSB
        QCOMPARE(times(u"LU1ABC"_qs, u"SSB"_qs, u"20m"_qs), QString());
        QCOMPARE(times(u"LU1ABC"_qs, u"CW"_qs, u"40m"_qs), u"2300"_qs);
        QCOMPARE(times(u"LU1AB"_qs, u"SSB"_qs, u"40m"_qs), QString());
        QCOMPARE(times(u"LU1ABC' OR '1'='1"_qs, u"SSB"_qs, u"40m"_qs), QString());
    }

    void AnExactRepeatIsDropped()
    {
        const QsoRow first = Row({.rsr = u"O'H"});
        const auto id = StoreContestQso(*store_, first);
        QVERIFY(id && *id);
        const QsoRow later = RowOf(u"Hora=2359;Frecuencia=7100"_qs, first);
        QVERIFY(*QsoAlreadyStored(*store_, later));
        QVERIFY(!*StoreContestQso(*store_, later));
        for (QString QsoRow::*column : {&QsoRow::Fecha, &QsoRow::RSE, &QsoRow::RSR, &QsoRow::Modo, &QsoRow::Banda,
                 &QsoRow::MyCall, &QsoRow::Estacion, &QsoRow::NombreLog}) {
            QsoRow other = first;
            other.*column += u'2';
            QVERIFY(!*QsoAlreadyStored(*store_, other));
        }
        QCOMPARE(ContestListLoad(*store_, name)->size(), 1);
    }

    void TheListIsNewestEnteredFirst()
    {
        QVERIFY(Store(
            *store_, {Row({u"LU1ABC", u"CW"}), Row({.contest = u"Otro"}), Row({.call = u"LU2ABC", .time = u"0001"})}));
        const QList<QsoRow> rows = *ContestListLoad(*store_, u"cqww"_qs);
        QCOMPARE(rows.size(), 2);
        QsoRow expected = RowOf(u"NombreLog=;Frecuencia="_qs, Row({.call = u"LU2ABC", .time = u"0001"}));
        expected.id = 4;
        QVERIFY(rows.first() == expected);
        QCOMPARE(rows.last().Modo, u"CW"_qs);
    }

    // Counted in pages read, which are few by an index and hundreds without.
    void NothingGrowsWithTheContest()
    {
        QVERIFY(Store(Many(20'000)));
        const auto sparing = [this](auto ask) {
            store_->Close();
            Disk().FailReads(50, 1'000'000);
            const auto answer = ask();
            HealDisk();
            return static_cast<bool>(answer);
        };
        QVERIFY(!sparing([&] { return ContestListLoad(*store_, name); })); // the measure measures
        const QsoRow known = Numbered(777);
        QVERIFY(sparing([&] { return FindContestDuplicates(*store_, name, known.Estacion, known.Modo, known.Banda); }));
        QVERIFY(sparing([&] { return LastContestValue(*store_, name, ContestValue::Band); }));
        QVERIFY(sparing([&] { return LastContestSerial(*store_, name, u"CW"_qs); }));
        QVERIFY(sparing([&] { return LastContestSerial(*store_, name, u"DG"_qs); }));
        QVERIFY(sparing([&] { return LastContestQso(*store_, name); }));
        QVERIFY(sparing([&] { return QsoAlreadyStored(*store_, known); }));
        QVERIFY(sparing([&] { return StoreContestQso(*store_, Numbered(20'001)); }));
        QCOMPARE((*LastContestQso(*store_, name))->RSE, u"20001"_qs);
    }

    void AContactThatWasShownSurvivesAPowerCut()
    {
        constexpr int contacts = 12;
        Disk().SetRecording(true);
        for (int number = 1; number <= contacts; ++number) {
            QVERIFY(*StoreContestQso(*store_, Numbered(number)));
            Disk().Mark(number);
        }
        const std::vector<FaultEvent> recording = Disk().Recording();
        Disk().SetRecording(false);
        const auto check = [](const PowerCut::Cut &cut) -> QString {
            LogStore store(cut.folder + u"/base0.mdb"_qs, "fault");
            if (cut.marks.empty())
                return {}; // the database itself may not be there yet
            if (const auto whole = store.CheckIntegrity(); !whole)
                return whole.failure().text;
            const auto rows = ContestListLoad(store, name);
            return rows && rows->size() >= cut.marks.back() ? QString() : u"a contact was lost"_qs;
        };
        const auto outcome = PowerCut::TryAllCuts(recording, folder_->path(), check);
        QCOMPARE(outcome.failures.join(u'\n'), QString());
        QVERIFY(outcome.states > contacts);
    }

    void AnEditKeepsTheContestOfTheRow()
    {
        QVERIFY(Store({Row({}), Row({.call = u"LU2ABC"})}));
        const QsoRow before = **FindContestQso(*store_, 2);
        ContestEditFields fields = ContestEdit::FromRow(before);
        fields = {2, u"20m"_qs, u"CW"_qs, u"LU9ZZZ/D"_qs, u"LU3O'H"_qs, u"14020"_qs, u"20261125"_qs, u"0001"_qs,
            u"77"_qs, u"88"_qs, name, u"Fija"_qs};
        QVERIFY(*ContestEdit::Update(*store_, fields));
        QVERIFY(ContestEdit::FromRow(**FindContestQso(*store_, 2)) == fields);
        QCOMPARE((*FindContestQso(*store_, 2))->NombreLog, name);
        QCOMPARE((*FindContestQso(*store_, 3))->Estacion, u"LU2ABC"_qs);
        QVERIFY(*ContestEdit::Delete(*store_, 2));
        QVERIFY(!*ContestEdit::Delete(*store_, 2));
        QVERIFY(!*ContestEdit::Update(*store_, fields));
        QCOMPARE(ContestListLoad(*store_, name)->size(), 1);
    }

    void AFileGivesOneContactForCallModeAndBand()
    {
        const auto contact = [](const Contact &of) {
            const QsoRow row = Row(of);
            return CabrilloReader::Contact{row, row.Fecha, 1};
        };
        QVERIFY(Store({Row({})}));
        const auto imported = StoreImportedContacts(*store_,
            {contact({.date = u"20261125"}), contact({.band = u"20m"}), contact({.band = u"20m", .rsr = u"99"}),
                contact({.date = u""})});
        QCOMPARE(imported->repeated, 2);
        QCOMPARE(imported->stored.size(), 2);
        QVERIFY((*LastContestQso(*store_, name))->id == imported->stored.last().id);
    }
};

TORDILLO_TEST(TestContestLookup)
#include "TestContestLookup.moc"
