// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/AdifExport.h"

#include "interchange/AdifWriter.h"
#include "ui/Dialogs.h"
#include "ui/Program.h"
#include "ui/TextViewer.h"

#include <QFileDevice>
#include <QFileInfo>

std::optional<QString> AdifExport::ChooseFile()
{
    auto path =
        program_.dialogs.SaveFile(owner_, u"Exportar a ADIF ..."_qs, u"ADIF (*.adi)"_qs, program_.logbook.Folder());
    if (!path || path->isEmpty())
        return std::nullopt;
    if (QFileInfo(*path).suffix().isEmpty())
        *path += u".adi"_qs;
    const QString question = u"El archivo \n"_qs + *path + u"\nya existe!\n\nsobregraba?"_qs;
    if (program_.logbook.Files().Exists(*path)
        && !program_.dialogs.Ask(owner_, question, Dialogs::Icon::Question, Dialogs::Button::No))
        return std::nullopt;
    return path;
}

bool AdifExport::Write(const QString &path, const Next &next, bool lastLine, const std::function<bool()> &step)
{
    bool opened = false;
    const auto write = [&]() -> Result<void> {
        auto device = program_.logbook.Files().OpenForWriting(path);
        if (!device)
            return device.failure();
        opened = true;
        const auto put = [&](const QByteArray &bytes) { return AdifWriter::Write(**device, bytes, path); };
        if (const Result<void> header = put(AdifWriter::Header(program_.logbook.ClockInUse().Now())); !header)
            return header;
        while (true) {
            const Result<QByteArray> block = next();
            if (!block)
                return block.failure();
            if (block->isEmpty())
                break;
            if (const Result<void> written = put(*block); !written)
                return written;
            if (!step())
                return Failure{u"Fue detenido."_qs, Failure::Kind::Cancelled};
        }
        if (lastLine)
            if (const Result<void> end = put(AdifWriter::End()); !end)
                return end;
        auto *file = qobject_cast<QFileDevice *>(device->get());
        if (file && !file->flush())
            return Failure{u"No se pudo terminar de escribir el archivo\n%1\n%2"_qs.arg(path, file->errorString()),
                Failure::Kind::Full};
        return {};
    };
    const Result<void> written = write();
    if (!written)
        program_.dialogs.Message(owner_,
            (opened ? u"El ADIF no está completo.\n\n"_qs : u"El ADIF no se pudo crear.\n\n"_qs)
                + written.failure().text,
            Dialogs::Icon::Critical);
    return bool(written);
}

void AdifExport::AskToView(const QString &path)
{
    const QString question = path + u"\nGuardado!\n\nDesea verlo?"_qs;
    if (program_.dialogs.Ask(owner_, question, Dialogs::Icon::Exclamation, Dialogs::Button::No))
        ShowTextFile(program_, owner_, path);
}
