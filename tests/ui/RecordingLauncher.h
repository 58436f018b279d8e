// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ui/Launcher.h"

#include <QStringList>
#include <QUrl>

// Starts nothing; records what would have been started, "program argument", and the addresses that were opened.
class RecordingLauncher : public Launcher {
public:
    QStringList started, opened;
    bool works = true;

    bool Start(const QString &program, const QString &argument) override
    {
        started << program + u' ' + argument;
        return works;
    }
    bool Open(const QUrl &url) override
    {
        opened << url.toString();
        return works;
    }
};
