// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/CodePage.h"
#include "core/Logbook.h"
#include "core/TextFile.h"
#include "support/FixedClock.h"
#include "support/MemoryFiles.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>

// What the fuzz targets share.

// Ends the run when a promise of a header does not hold; the input is kept then.
inline void Require(bool holds, const char *what)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", what);
    std::abort();
}

inline QByteArray BytesOf(const uint8_t *data, size_t size)
{
    return {reinterpret_cast<const char *>(data), qsizetype(size)};
}

// What a text is once it has been in one of our files.
inline QString Filed(const QString &text) { return CodePage::ToText(CodePage::FromText(text)); }
inline bool SurvivesFile(const QString &text) { return Filed(text) == text; }

// A program folder in memory.
struct MemoryFolder {
    MemoryFiles files;
    FixedClock clock;
    Logbook logbook{u"/carpeta-en-memoria"_qs, files, clock};

    QByteArray &File(const QString &name) { return files.content[logbook.PathOf(name)]; }
    QStringList Lines(const QString &name) const
    {
        return TextFile::ReadLines(files, logbook.PathOf(name)).value_or(QStringList());
    }
};
