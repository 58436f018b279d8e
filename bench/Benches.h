// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Harness.h"

// The subjects, each adding its rows to the table. They know nothing of each other; a new one is a file of its own, a
// line here and one in the list of Main.cpp.

// Storing a QSO until it is durable, and what a QSO takes in the file.
void BenchStore(const BenchSetting &setting, ResultTable &table);
// Pages of the log at its ends and in the middle.
void BenchPages(const BenchSetting &setting, ResultTable &table);
// What is looked up while a call is typed and stored, and the look at the schema when the program starts.
void BenchCalls(const BenchSetting &setting, ResultTable &table);
// The country of a call.
void BenchCountry(const BenchSetting &setting, ResultTable &table);
// From the start of the process to the first page of the log.
void BenchStart(const BenchSetting &setting, ResultTable &table);

// The list of all logs with their counts.
void BenchLogs(const BenchSetting &setting, ResultTable &table);
// The checked copy of the database.
void BenchCopy(const BenchSetting &setting, ResultTable &table);
// The search window over a whole log: filling, looking for remarks, sorting.
void BenchSearch(const BenchSetting &setting, ResultTable &table);
// The table of provinces and grids.
void BenchProvinces(const BenchSetting &setting, ResultTable &table);
// ADIF: parsing, a whole import, a whole export.
void BenchAdif(const BenchSetting &setting, ResultTable &table);
// The contest: storing, the key stroke in the call, the list of calls, opening, the analysis.
void BenchContest(const BenchSetting &setting, ResultTable &table);
// The Morse keyer on a recorded line: edges, drift, processor, keys typed meanwhile.
void BenchKeyer(const BenchSetting &setting, ResultTable &table);

// The services of the web, played by a local server: a run of confirmations, a lookup until its window stands.
void BenchOnline(const BenchSetting &setting, ResultTable &table);

inline constexpr qint64 smallLog = 1000;
inline constexpr qint64 middleLog = 20020;
inline constexpr qint64 largeLog = 1000000;
