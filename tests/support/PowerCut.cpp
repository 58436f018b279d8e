// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/PowerCut.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QSet>
#include <QTemporaryDir>
#include <algorithm>
#include <random>

namespace PowerCut {

namespace {

using Kind = FaultEvent::Kind;
constexpr qint64 sectorSize = 512;

// How one state is drawn: the chance of each unsynced change to be kept.
struct Odds {
    double data = 0;
    double names = 0;
    bool rubbish = false;
};

class Dice {
public:
    explicit Dice(quint32 seed)
        : engine_(seed)
    {
    }
    bool Falls(double chance) { return static_cast<double>(engine_()) < chance * 4294967296.0; }
    int Below(int limit) { return static_cast<int>(engine_() % static_cast<quint32>(limit)); }

private:
    std::mt19937 engine_;
};

void Overwrite(QByteArray &content, qint64 offset, const QByteArray &bytes)
{
    const qint64 end = offset + bytes.size();
    if (content.size() < end)
        content.append(QByteArray(static_cast<qsizetype>(end - content.size()), '\0'));
    std::copy(bytes.begin(), bytes.end(), content.begin() + offset);
}

void Apply(QByteArray &content, const FaultEvent &change)
{
    if (change.kind == Kind::Write)
        Overwrite(content, change.number, change.bytes);
    else if (content.size() > change.number)
        content.truncate(static_cast<qsizetype>(change.number));
    else
        content.append(QByteArray(static_cast<qsizetype>(change.number - content.size()), '\0'));
}

// The write arrives sector by sector, each of them or not.
void ApplyTorn(QByteArray &content, const FaultEvent &write, const Odds &odds, Dice &dice)
{
    const qint64 end = write.number + write.bytes.size();
    const qint64 safeSize = content.size();
    for (qint64 from = write.number, to = 0; from < end; from = to) {
        to = std::min(end, (from / sectorSize + 1) * sectorSize);
        if (dice.Falls(odds.data))
            Overwrite(content, from, write.bytes.mid(from - write.number, to - from));
        else if (odds.rubbish && from >= safeSize)
            Overwrite(content, from, QByteArray(static_cast<qsizetype>(to - from), '\xA5'));
    }
}

// What is safe on the disk and what is still on its way, at one point of the recording.
class Disk {
public:
    void Take(const FaultEvent &event);
    QMap<QString, QByteArray> Draw(const Odds &odds, Dice &dice) const;

private:
    static constexpr int nothing = -1;
    struct File {
        QByteArray safe;
        std::vector<FaultEvent> changes;
    };
    struct Name {
        int safe = nothing;
        std::vector<int> changes; // the file that the name stood for after each, or `nothing`
    };

    void SyncFolder(const QString &folder);
    QByteArray Content(const File &file, const Odds &odds, Dice &dice) const;

    std::map<int, File> files_;
    QMap<QString, Name> names_;
};

void Disk::Take(const FaultEvent &event)
{
    File &file = files_[event.file];
    Name &name = names_[event.path];
    switch (event.kind) {
    case Kind::Found:
        file.safe = event.bytes;
        name.safe = event.file;
        break;
    case Kind::Create:
        name.changes.push_back(event.file);
        break;
    case Kind::Delete:
        name.changes.push_back(nothing);
        break;
    case Kind::Write:
    case Kind::Truncate:
        file.changes.push_back(event);
        break;
    case Kind::Sync:
        for (const FaultEvent &change : file.changes)
            Apply(file.safe, change);
        file.changes.clear();
        break;
    case Kind::Mark:
        break;
    }
    if (event.folder)
        SyncFolder(QFileInfo(event.path).path());
}

void Disk::SyncFolder(const QString &folder)
{
    for (auto name = names_.begin(); name != names_.end(); ++name) {
        if (name->changes.empty() || QFileInfo(name.key()).path() != folder)
            continue;
        name->safe = name->changes.back();
        name->changes.clear();
    }
}

QByteArray Disk::Content(const File &file, const Odds &odds, Dice &dice) const
{
    QByteArray content = file.safe;
    for (const FaultEvent &change : file.changes) {
        const int fate = dice.Below(3);
        if (change.kind == Kind::Write && (fate == 0 || odds.rubbish))
            ApplyTorn(content, change, odds, dice);
        else if (dice.Falls(odds.data))
            Apply(content, change);
    }
    return content;
}

QMap<QString, QByteArray> Disk::Draw(const Odds &odds, Dice &dice) const
{
    QMap<QString, QByteArray> folder;
    for (auto name = names_.begin(); name != names_.end(); ++name) {
        int file = name->safe;
        for (const int change : name->changes) {
            if (!dice.Falls(odds.names))
                break;
            file = change;
        }
        if (file > 0)
            folder[name.key()] = Content(files_.at(file), odds, dice);
    }
    return folder;
}

bool WriteFolder(const QMap<QString, QByteArray> &files, const QDir &source, const QString &target)
{
    for (auto file = files.begin(); file != files.end(); ++file) {
        const QString place = source.relativeFilePath(file.key());
        if (place.startsWith(u".."))
            continue;
        const QString path = target + u'/' + place;
        QDir().mkpath(QFileInfo(path).path());
        QFile copy(path);
        if (!copy.open(QIODevice::WriteOnly) || copy.write(file.value()) != file.value().size())
            return false;
    }
    return true;
}

QByteArray Fingerprint(const QMap<QString, QByteArray> &files)
{
    QCryptographicHash hash(QCryptographicHash::Md5);
    for (auto file = files.begin(); file != files.end(); ++file) {
        hash.addData(QByteArray(file.key().toUtf8() + ':' + QByteArray::number(file.value().size())));
        hash.addData(file.value());
    }
    return hash.result();
}

Odds OddsOf(int state, Dice &dice)
{
    constexpr double chances[] = {0.1, 0.5, 0.9};
    if (state < 4)
        return {state & 1 ? 1.0 : 0.0, state & 2 ? 1.0 : 0.0, false};
    return {chances[dice.Below(3)], chances[dice.Below(3)], dice.Below(4) == 0};
}

// One run over a recording: carries the disk forward and tries the states at each point.
class Trial {
public:
    Trial(const QString &source, const Check &check, const Options &options)
        : source_(QFileInfo(source).canonicalFilePath())
        , check_(check)
        , options_(options)
    {
    }

    Outcome Run(const std::vector<FaultEvent> &recording);

private:
    bool Finished() const { return outcome_.failures.size() >= options_.stopAfter; }
    void TryStates(const QString &where);
    void TryState(int state, const QString &where);

    QDir source_;
    const Check &check_;
    const Options &options_;
    Disk disk_;
    Cut cut_;
    QSet<QByteArray> seen_; // states since the last mark: the check would say the same again
    Outcome outcome_;
};

Outcome Trial::Run(const std::vector<FaultEvent> &recording)
{
    for (const FaultEvent &event : recording) {
        if (event.kind == Kind::Sync || event.kind == Kind::Delete)
            TryStates(event.kind == Kind::Sync ? u"before the sync of "_qs + event.path
                                               : u"before the deletion of "_qs + event.path);
        disk_.Take(event);
        ++cut_.event;
        if (event.kind == Kind::Mark) {
            cut_.marks.push_back(event.number);
            seen_.clear();
            TryStates(u"after mark %1"_qs.arg(event.number));
        }
        if (Finished())
            return outcome_;
    }
    if (!recording.empty())
        TryStates(u"at the end"_qs);
    return outcome_;
}

void Trial::TryStates(const QString &where)
{
    for (int state = 0; state < 4 + options_.randomStates && !Finished(); ++state)
        TryState(state, where);
}

void Trial::TryState(int state, const QString &where)
{
    std::seed_seq seeds{options_.seed, static_cast<quint32>(cut_.event), static_cast<quint32>(state)};
    quint32 seed = 0;
    seeds.generate(&seed, &seed + 1);
    Dice dice(seed);
    const auto files = disk_.Draw(OddsOf(state, dice), dice);
    const QByteArray fingerprint = Fingerprint(files);
    if (seen_.contains(fingerprint))
        return;
    seen_.insert(fingerprint);
    const QTemporaryDir folder;
    cut_.folder = folder.path();
    ++outcome_.states;
    const QString complaint =
        WriteFolder(files, source_, folder.path()) ? check_(cut_) : u"the folder could not be rebuilt"_qs;
    if (!complaint.isEmpty())
        outcome_.failures << u"event %1, state %2, %3: %4"_qs.arg(cut_.event).arg(state).arg(where, complaint);
}

} // namespace

Outcome TryAllCuts(
    const std::vector<FaultEvent> &recording, const QString &source, const Check &check, const Options &options)
{
    return Trial(source, check, options).Run(recording);
}

} // namespace PowerCut
