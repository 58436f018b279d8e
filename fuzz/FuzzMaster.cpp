// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "Fuzzing.h"
#include "contest/MasterCheck.h"
#include "contest/MasterUpdate.h"
#include "contest/PlainScan.h"

// Any bytes at all are read as the list of contest calls, and fetched as a new one.

namespace {

const QString listName = u"master.txt"_qs;

// What an operator would type to come near the calls of the list.
QStringList TypedTexts(const QStringList &calls)
{
    constexpr qsizetype mostCalls = 4;
    QStringList texts{u"LU1"_qs};
    for (const QString &call : calls.mid(0, mostCalls)) {
        texts << call.left(3) << call.left(12) << call.left(2) + u'?' + call.mid(3, 4);
        texts << call.left(2) + u'Z' + call.mid(3, 9) << u'?' + call.mid(1, 3) << call.left(4) + u'*';
    }
    return texts;
}

void CheckList(const MasterCheck &list)
{
    for (const QString &call : list.Calls())
        Require(!call.isEmpty() && call == call.trimmed() && !call.contains(u'\n') && !call.contains(u'\r')
                && !call.contains(u'#'),
            "a call of the list");
    for (const QString &text : TypedTexts(list.Calls())) {
        const QString upper = text.toUpper();
        const QList<MasterHit> hits = list.Search(text);
        if (text.size() < MasterCheck::shortestSearch)
            Require(hits.isEmpty(), "too short a text");
        else
            Require(hits == PlainScan(list.Calls(), upper), "the index finds what a scan finds");
    }
}

void CheckBuilding(MemoryFolder &folder, const MasterCheck &list)
{
    const QStringList present = list.Calls().mid(0, list.Calls().size() / 2) << u"LU1ABC"_qs;
    const QString path = folder.logbook.PathOf(listName), output = folder.logbook.PathOf(u"master_hoy.txt"_qs);
    const Result<MasterBuild> build = BuildMasterList(folder.files, path, present, output);
    Require(build && build->fresh >= list.Calls().size() && build->current == present.size(), "both lists are counted");
    Require(build->total == build->current + build->added && build->added <= build->fresh, "what was added");
    Require(folder.Lines(u"master_hoy.txt"_qs).size() == build->total, "a line for each call");
}

void CheckUpdate(const QString &text, std::optional<QDate> present)
{
    MemoryFolder folder;
    const bool offered = !MasterUpdateOffer(present, text).isEmpty();
    const Result<MasterUpdate> update = TakeMasterList(folder.files, folder.logbook.Folder(), present, text);
    Require(bool(update), "a list is taken");
    const bool replaced = update->kind == MasterUpdate::Kind::Replaced;
    Require(replaced == offered && replaced == folder.files.Exists(folder.logbook.PathOf(listName)), "a newer list");
    Require(update->message.isEmpty() == (update->kind == MasterUpdate::Kind::NoList), "what is told");
    // A list means the last of its lines with "#", the offer its first line, whatever that holds.
    const QStringList lines = QString(text).replace(u'\r', u'\n').split(u'\n');
    if (!replaced || lines.filter(u"#"_qs) != lines.mid(0, 1))
        return;
    const MasterCheck list = LoadMasterFile(folder.files, folder.logbook.PathOf(listName));
    Require(list.Date() && (!present || *list.Date() > *present), "the date of the new list");
    Require(MasterUpdateOffer(list.Date(), text).isEmpty(), "no list is offered twice");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    MemoryFolder folder;
    folder.File(listName) = BytesOf(data, size);
    int last = 0;
    const MasterCheck list =
        LoadMasterFile(folder.files, folder.logbook.PathOf(listName), [&](int line, const QString &reason) {
            Require(line >= last && !reason.isEmpty(), "reports in the order of the lines");
            last = line;
        });
    CheckList(list);
    CheckBuilding(folder, list);
    CheckUpdate(
        CodePage::ToText(BytesOf(data, size)), size % 3 ? std::optional<QDate>() : std::optional(QDate(2026, 11, 24)));
    return 0;
}
