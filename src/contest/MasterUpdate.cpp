// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "contest/MasterUpdate.h"

#include "contest/MasterCheck.h"
#include "core/CodePage.h"
#include "core/Conversions.h"

namespace {

const QString listHead = u"Su archivo Master check con fecha "_qs;

std::optional<QDate> DateOf(const QString &text)
{
    const QString first = text.section(u'\n', 0, 0).trimmed();
    return first.contains(u'#') ? MasterDateOf(first) : std::nullopt;
}

QString Shown(std::optional<QDate> date) { return date ? Conversions::DateText(*date) : QString(); }

bool IsNewer(std::optional<QDate> present, QDate fetched) { return !present || *present < fetched; }

} // namespace

Result<MasterUpdate> TakeMasterList(
    FileSystem &files, const QString &folder, std::optional<QDate> present, const QString &text)
{
    QString lines = text;
    lines.replace(u"\r\n"_qs, u"\n"_qs).replace(u"\n\r"_qs, u"\n"_qs).replace(u"\n"_qs, u"\n\r"_qs);
    const QByteArray content = CodePage::FromText(lines);
    if (const Result<void> kept = files.Replace(folder + u"/webomc.txt", content, FileSystem::Sync::No); !kept)
        return kept.failure();
    const std::optional<QDate> fetched = DateOf(text);
    if (!fetched)
        return MasterUpdate{MasterUpdate::Kind::NoList, {}};
    if (!IsNewer(present, *fetched))
        return MasterUpdate{MasterUpdate::Kind::UpToDate, listHead + Shown(present) + u" está acualizado!"};
    if (const Result<void> taken = files.Replace(folder + u"/master.txt", content, FileSystem::Sync::Yes); !taken)
        return taken.failure();
    return MasterUpdate{MasterUpdate::Kind::Replaced,
        listHead + Shown(present) + u" estaba desacualizado!\nen la web tiene fecha: " + Shown(fetched)
            + u"\nYa está actualizado!"};
}

QString MasterUpdateOffer(std::optional<QDate> present, const QString &text)
{
    const std::optional<QDate> fetched = DateOf(text);
    if (!fetched || !IsNewer(present, *fetched))
        return {};
    return listHead + Shown(present) + u" debe actualizarse\nLo hace ahora?";
}
