// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/ContestCommands.h"

#include "contest/ContestImport.h"
#include "contest/ContestLookup.h"
#include "contest/Transfer.h"
#include "interchange/CabrilloReader.h"
#include "interchange/CabrilloWriter.h"
#include "interchange/ContestAdif.h"
#include "ui/AdifExport.h"
#include "ui/Form1_Main.h"
#include "ui/Form9_CabrilloHeader.h"
#include "ui/Program.h"
#include "ui/Window.h"
#include "ui/Windows.h"

ContestCommands::ContestCommands(Program &program, Window &window)
    : QObject(&window)
    , program_(program)
    , window_(window)
{
}

void ContestCommands::Tell(const QString &failure)
{
    program_.dialogs.Message(&window_, failure, Dialogs::Icon::Critical);
}

void ContestCommands::BuildCabrilloLines(const QString &ownCall)
{
    const Result<QList<QsoRow>> rows = ContestRows(program_.logbook.Store(), name_);
    if (!rows) {
        Tell(rows.failure().text);
        return;
    }
    const CabrilloWriter::QsoLines lines = CabrilloWriter::BuildLines(*rows, ownCall);
    if (lines.refusal)
        program_.dialogs.Message(&window_, lines.refusal->text,
            lines.refusal->critical ? Dialogs::Icon::Critical : Dialogs::Icon::Exclamation);
    else
        program_.windows.CabrilloHeader(window_).ShowHeader(name_, lines, *rows);
}

void ContestCommands::ExportContestAdif(const QString &ownCall)
{
    const Result<QList<QsoRow>> rows = ContestRows(program_.logbook.Store(), name_);
    if (!rows) {
        Tell(rows.failure().text);
        return;
    }
    if (ContestAdif::CountQsos(*rows) == 0) {
        program_.dialogs.Message(&window_, ContestAdif::nothingToExport);
        return;
    }
    AdifExport command(program_, &window_);
    const auto path = command.ChooseFile();
    if (!path)
        return;
    ContestAdif::Records records(name_, ownCall);
    qsizetype place = 0;
    std::optional<Failure> refused;
    // A contact under another own call ends the file where it is, and that is told in its own words.
    const auto next = [&]() -> Result<QByteArray> {
        QByteArray block;
        while (block.isEmpty() && place < rows->size()) {
            const Result<QByteArray> record = records.Next((*rows)[place++]);
            if (!record) {
                refused = record.failure();
                return QByteArray();
            }
            block = *record;
        }
        return block;
    };
    if (!command.Write(*path, next, false, [] { return true; }))
        return;
    if (refused)
        Tell(refused->text);
    else
        command.AskToView(*path);
}

qsizetype ContestCommands::ImportContestCabrillo(const QString &ownCall)
{
    Dialogs &dialogs = program_.dialogs;
    const auto path = dialogs.OpenFile(&window_, u"Incluir Cabrillo ..."_qs,
        u"Cabrillo (*.log *.cbr *.txt *.LOG *.CBR *.TXT)"_qs, program_.logbook.Folder());
    if (!path || path->isEmpty())
        return 0;
    FileSystem &files = program_.logbook.Files();
    const Result<int> normalized = CabrilloReader::NormalizeCabrilloFile(files, *path);
    const auto lines = normalized ? CabrilloReader::ReadLines(files, *path) : normalized.failure();
    if (!lines) {
        Tell(lines.failure().text);
        return 0;
    }
    QStringList notes;
    const auto taken = CabrilloReader::TakeLines(*lines, *path, {name_, type_, ownCall},
        [&](int line, const QString &reason) { notes << u"Renglón %1: %2"_qs.arg(line).arg(reason); });
    if (*normalized > 0)
        notes << u"%1 renglones QSO: del archivo no se pudieron separar y no se leyeron."_qs.arg(*normalized);
    const Result<ImportedContacts> imported = StoreImportedContacts(program_.logbook.Store(), taken.contacts);
    if (!imported) {
        Tell(imported.failure().text);
        return 0;
    }
    const QString title = CabrilloReader::boxTitle;
    if (taken.stop)
        dialogs.Message(&window_, taken.stop->text,
            taken.stop->critical ? Dialogs::Icon::Critical : Dialogs::Icon::Information, title);
    else if (const auto closing = CabrilloReader::ClosingMessage(*path, taken.qsoLines, imported->repeated))
        dialogs.Message(&window_, *closing, Dialogs::Icon::Information, title);
    // What had to be guessed or left out is told in a box of its own.
    constexpr qsizetype shownNotes = 15;
    if (!notes.isEmpty())
        dialogs.Message(&window_,
            notes.first(std::min(shownNotes, notes.size())).join(u'\n')
                + (notes.size() > shownNotes ? u"\n..."_qs : QString()),
            Dialogs::Icon::Information, title);
    if (!imported->stored.isEmpty())
        program_.windows.Main().RememberQso(imported->stored.last().id);
    return imported->stored.size();
}

void ContestCommands::TransferToGeneralLog(qint64 count)
{
    Dialogs &dialogs = program_.dialogs;
    const QString log = program_.logbook.LogInUse;
    if (count == 0) {
        dialogs.Message(&window_, NothingToTransferMessage(name_, log), Dialogs::Icon::Information);
        return;
    }
    if (!dialogs.Ask(&window_, TransferQuestion(name_, count, log), Dialogs::Icon::Question, Dialogs::Button::No))
        return;
    Run run(program_.logbook.LongWork(), program_.processEvents);
    const Result<Transferred> transferred = TransferContest(program_.logbook.Store(), run, name_, log);
    program_.windows.Main().LoadLogPage(1);
    if (transferred && transferred->lastId)
        program_.windows.Main().RememberQso(*transferred->lastId);
    if (!transferred)
        Tell(transferred.failure().text);
    else
        dialogs.Message(&window_, TransferMessage(*transferred), Dialogs::Icon::Information);
    if (transferred && transferred->cancelled)
        dialogs.Message(&window_,
            u"La transferencia fue interrumpida: pasaron %1 de %2 QSOs. Repítala para pasar el resto."_qs
                .arg(transferred->copied + transferred->duplicates)
                .arg(count));
}
