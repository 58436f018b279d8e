// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Benches.h"
#include "MakeLog.h"

#include "core/TextFile.h"
#include "logging/DxccTable.h"
#include "logging/Provinces.h"

#include <future>
#include <random>
#include <thread>

namespace {

constexpr int madeUpCalls = 100000;
constexpr int timedCalls = 1000;
constexpr int timedRounds = 200;
constexpr int scanRounds = 9;

// The plain search that the table must agree with: rows in the order of the file, one pass for every length.
class RowScan {
public:
    explicit RowScan(const QStringList &lines)
    {
        for (const QString &line : lines) {
            const QString row = line.trimmed();
            if (row.isEmpty() || rows_.size() == DxccTable::searchedRows)
                break;
            if (row.contains(u';'))
                rows_.push_back(row);
        }
        for (const QString &row : rows_)
            prefixes_.push_back(QStringView(row).first(row.indexOf(u';')));
    }

    // Splits each row anew at each comparison, as a table of plain lines has to.
    QString CountryOfCall(QString &call) const
    {
        return Search(call, [this](size_t row) { return QStringView(rows_[row]).first(rows_[row].indexOf(u';')); });
    }
    // The same result from rows split beforehand, quick enough for many calls.
    QString CountryOfCallSplit(QString &call) const
    {
        return Search(call, [this](size_t row) { return prefixes_[row]; });
    }

    const std::vector<QStringView> &Prefixes() const { return prefixes_; }

private:
    template <typename PrefixOf>
    QString Search(QString &call, const PrefixOf &prefixOf) const
    {
        const QString whole = call;
        for (; !call.isEmpty(); call.chop(1)) {
            for (size_t row = 0; row < rows_.size(); ++row)
                if (prefixOf(row) == call)
                    return Shown(rows_[row].sliced(rows_[row].lastIndexOf(u';') + 1).left(100), whole);
            if (call.size() == 1)
                break;
        }
        return {};
    }

    static QString Shown(const QString &country, const QString &call)
    {
        if (country != u"Argentina")
            return country;
        const qsizetype slash = call.indexOf(u'/');
        return ProvinceOfSuffix(slash < 0 ? QStringView(call).mid(3, 10) : QStringView(call).mid(slash + 1, 5));
    }

    std::vector<QString> rows_;
    std::vector<QStringView> prefixes_;
};

// Every kind that comes along: calls as stations have them, listed prefixes with something behind, foreign and
// Argentine calls with a slash, and letters at random.
std::vector<QString> MakeUpCalls(const RowScan &scan)
{
    std::mt19937_64 random(7);
    const auto below = [&random](size_t limit) { return static_cast<size_t>(random() % limit); };
    constexpr QStringView signs = u"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789/?";
    const auto tail = [&](size_t longest) {
        QString text;
        for (size_t length = below(longest + 1); length > 0; --length)
            text += signs[static_cast<qsizetype>(below(static_cast<size_t>(signs.size())))];
        return text;
    };
    std::vector<QString> calls{QString()};
    while (calls.size() < madeUpCalls) {
        const QString station = QsoMaker::CallOfStation(static_cast<qint64>(calls.size()));
        switch (below(4)) {
        case 0:
            calls.push_back(station);
            break;
        case 1:
            calls.push_back(scan.Prefixes()[below(scan.Prefixes().size())] + tail(4));
            break;
        case 2:
            calls.push_back(station + u'/' + tail(3));
            break;
        default:
            calls.push_back(tail(9));
        }
    }
    return calls;
}

// How many of the calls from `first` on, in steps of `step`, the two searches answer differently.
int Differences(
    const DxccTable &table, const RowScan &scan, const std::vector<QString> &calls, size_t first, size_t step)
{
    int differences = 0;
    for (size_t i = first; i < calls.size(); i += step) {
        QString cut = calls[i], scanCut = calls[i];
        const QString country = table.CountryOfCall(cut), scanCountry = scan.CountryOfCallSplit(scanCut);
        if (country != scanCountry || cut != scanCut || table.CountryOf(calls[i]) != scanCountry)
            ++differences;
    }
    return differences;
}

int Differences(const DxccTable &table, const RowScan &scan, const std::vector<QString> &calls)
{
    const size_t workers = std::max(1U, std::thread::hardware_concurrency());
    std::vector<std::future<int>> parts;
    for (size_t worker = 0; worker < workers; ++worker)
        parts.push_back(
            std::async(std::launch::async, [&, worker] { return Differences(table, scan, calls, worker, workers); }));
    int differences = 0;
    for (std::future<int> &part : parts)
        differences += part.get();
    return differences;
}

} // namespace

void BenchCountry(const BenchSetting &setting, ResultTable &table)
{
    const QStringList lines = TextFile::ReadLines(FileSystem(), setting.dxccFile).value_or(QStringList());
    if (lines.isEmpty()) {
        table.AddFailure(u"country of a call"_qs, u"no prefix table"_qs);
        return;
    }
    DxccTable countries;
    for (const QString &line : lines)
        countries.AddLine(line);
    const RowScan scan(lines);
    std::vector<QString> calls;
    for (int i = 0; i < timedCalls; ++i)
        calls.push_back(QsoMaker::CallOfStation(i));

    // One call is too short for the clock and a scan too long for many calls, so both sides take all calls together,
    // but in runs of their own.
    qsizetype letters = 0;
    const Timed ours = Clocked([&](int) {
        for (const QString &call : calls)
            letters += countries.CountryOf(call).size();
    });
    const Timed plain = Clocked([&](int) {
        for (const QString &call : calls) {
            QString cut = call;
            letters += scan.CountryOfCall(cut).size();
        }
    });
    double quick = Alternate({ours}, timedRounds, 3)[0];
    const std::vector<double> medians = Alternate({ours, plain}, scanRounds, 1);
    if (letters == 0)
        GiveUp(u"no call has a country"_qs);
    const QString size = SizeText(countries.Size());
    table.AddLimit(u"country of a call"_qs, size, quick / timedCalls, 0.2, Unit::Microseconds);
    table.AddRatio(
        u"country of a call / scan of the rows"_qs, size, medians[0] / timedCalls, medians[1] / timedCalls, 1.0 / 500);

    std::vector<QString> all = MakeUpCalls(scan);
    for (const QStringView prefix : scan.Prefixes())
        all.push_back(prefix.toString());
    table.AddLimit(u"countries that differ from the scan"_qs, SizeText(static_cast<qint64>(all.size())),
        Differences(countries, scan, all), 0, Unit::Count);
}
