// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Logbook.h"

#include "core/QsoTable.h"
#include "core/Services.h"
#include "core/TextFile.h"

const QString Logbook::AppVersion = QStringLiteral(TORDILLO_VERSION);

namespace {

const QString configName = u"config.ini"_qs;

void ShowCaptions(Logbook &logbook)
{
    const Configuration &c = logbook.configuration;
    logbook.captions = {c.Estacion.toUpper(), c.Operador.toUpper(), c.GridLoca, logbook.LogInUse};
}

Result<void> MakeFirstLog(Logbook &logbook, bool firstRun)
{
    if (firstRun && !logbook.Store().Exists())
        if (const Result<void> made = logbook.Store().CreateEmpty(); !made)
            return made;
    const QString name = u"Log inicial"_qs;
    const Result<void> marked =
        logbook.Store().Write([&](Session &session) { QsoTable::InsertLogMarker(session, name); });
    if (marked)
        logbook.LogInUse = name;
    return marked;
}

} // namespace

Logbook::Logbook(QString folder, FileSystem &files, const Clock &clock, QByteArray vfs)
    : folder_(std::move(folder))
    , files_(files)
    , clock_(clock)
    , store_(PathOf(u"base0.mdb"_qs), std::move(vfs))
{
}

bool HasConfig(const Logbook &logbook) { return logbook.Files().Exists(logbook.PathOf(configName)); }

bool LoadConfig(Logbook &logbook)
{
    Configuration &configuration = logbook.configuration;
    configuration.LogenUso = logbook.LogInUse;
    const auto lines = TextFile::ReadLines(logbook.Files(), logbook.PathOf(configName));
    const bool themeTold = ReadConfigLines(lines.value_or(QStringList()), configuration);
    if (configuration.LDAQ_web.isEmpty())
        configuration.LDAQ_web = ServiceAddress(logbook, Service::LdaDefault);
    logbook.Files().KeepPrivate(logbook.PathOf(configName)); // one of an earlier version may lie open
    logbook.LogInUse = configuration.LogenUso;
    ShowCaptions(logbook);
    return themeTold;
}

Result<void> SaveConfig(Logbook &logbook, bool firstRun)
{
    if (logbook.LogInUse.isEmpty())
        if (const Result<void> made = MakeFirstLog(logbook, firstRun); !made)
            return made;
    const QStringList lines = ConfigLines(logbook.configuration, logbook.LogInUse);
    const Result<void> written =
        TextFile::WriteLines(logbook.Files(), logbook.PathOf(configName), lines, FileSystem::Sync::YesOwnerOnly);
    if (written)
        ShowCaptions(logbook);
    return written;
}
