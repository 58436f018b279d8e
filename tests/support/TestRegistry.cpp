// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/TestRegistry.h"

#include <QStringList>
#include <QTest>
#include <cstdio>
#include <map>

namespace TestRegistry {

namespace {
std::map<QString, Factory> &Factories()
{
    static std::map<QString, Factory> factories;
    return factories;
}
} // namespace

bool Add(const char *name, Factory factory)
{
    Factories().emplace(QString::fromLatin1(name), std::move(factory));
    return true;
}

int Run(int argc, char **argv)
{
    // Qt would attach a debugger to a crashed test and wait for it.
    QStringList names, arguments{QString::fromLocal8Bit(argv[0]), u"-nocrashhandler"_qs};
    for (int i = 1; i < argc; ++i) {
        const QString argument = QString::fromLocal8Bit(argv[i]);
        (Factories().count(argument) ? names : arguments) << argument;
    }
    int failures = 0;
    for (const auto &[name, factory] : Factories())
        if (names.isEmpty() || names.contains(name))
            failures += QTest::qExec(factory().get(), arguments);
    std::printf("%s: %d failures in all\n", argv[0], failures);
    return failures == 0 ? 0 : 1;
}

} // namespace TestRegistry
