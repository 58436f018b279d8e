// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "ui/Launcher.h"

#include <QDesktopServices>
#include <QProcess>
#include <QUrl>
#ifdef Q_OS_WIN
#include <windows.h>

#include <shellapi.h>
#endif

bool Launcher::Start(const QString &program, const QString &argument)
{
    QProcess process;
    process.setProgram(program);
#ifdef Q_OS_WIN
    process.setNativeArguments(argument);
    process.setCreateProcessArgumentsModifier([](QProcess::CreateProcessArguments *arguments) {
        arguments->startupInfo->dwFlags |= STARTF_USESHOWWINDOW;
        arguments->startupInfo->wShowWindow = SW_SHOWMINIMIZED;
    });
#else
    process.setArguments({argument});
#endif
    return process.startDetached();
}

bool Launcher::Open(const QUrl &url)
{
#ifdef Q_OS_WIN
    const std::wstring target = (url.isLocalFile() ? url.toLocalFile() : url.toString()).toStdWString();
    return reinterpret_cast<INT_PTR>(
               ShellExecuteW(nullptr, L"open", target.c_str(), nullptr, nullptr, SW_SHOWMAXIMIZED))
        > 32;
#else
    return QDesktopServices::openUrl(url);
#endif
}
