// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "support/FaultVfs.h"

#include <QStringList>
#include <functional>

// What a power cut leaves behind, rebuilt from the recording of a run.
//
// The disk of this model promises as little as real ones do:
// - what was written to a file is safe after the next sync of that file; of later writes and truncations any part may
//   be lost, in any order, and a write may be torn at the sectors of 512 bytes; where a lost write would have made the
//   file longer, there may be nothing, zeros or rubbish;
// - a new or deleted name is safe after the next sync of its folder (the first sync of a new journal, a deletion with
//   sync); until then the name may be there or not, and an older file may stand under it again.
namespace PowerCut {

// One folder as a power cut left it.
struct Cut {
    QString folder; // temporary, gone after the check; the check may open and change the files in it
    qsizetype event = 0; // the cut came just before this event of the recording; its size is the end of the run
    std::vector<qint64> marks; // the numbers that were marked before the cut, in order
};

// Looks at one folder: an empty text is fine, anything else says what is wrong.
using Check = std::function<QString(const Cut &)>;

struct Options {
    int randomStates = 3; // at each point, besides the four extremes: data lost or kept, names lost or kept
    quint32 seed = 1; // the same seed and recording give the same folders
    int stopAfter = 1; // failures
};

struct Outcome {
    int states = 0; // different folders that were checked; 0 means that nothing was recorded
    QStringList failures; // where the cut was and what the check said
};

// Cuts before each sync and each deletion, after each mark and at the end of the run. Files of `source` keep their
// place in the rebuilt folder; recorded files elsewhere, and files never recorded, are not rebuilt.
Outcome TryAllCuts(
    const std::vector<FaultEvent> &recording, const QString &source, const Check &check, const Options &options = {});

} // namespace PowerCut
