// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QObject>
#include <functional>
#include <memory>

// Collects the test classes of one test program. In a test file: TORDILLO_TEST(TestConversions) behind the class.
namespace TestRegistry {
using Factory = std::function<std::unique_ptr<QObject>()>;
bool Add(const char *name, Factory factory);
// Runs all classes, or those whose names stand first on the command line; gives the number of failures.
int Run(int argc, char **argv);
} // namespace TestRegistry

#define TORDILLO_TEST(Class)                                                                                           \
    static const bool registered##Class = TestRegistry::Add(#Class, [] { return std::make_unique<Class>(); });
