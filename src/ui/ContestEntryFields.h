// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "contest/ContestEntry.h"

#include <QString>

class QWidget;
namespace Ui {
class Form4;
}

// The fields of the contact in progress, in the contest window's layout: what they list and let through, what they
// hold, and what is wrong with one that is left.
class ContestEntryFields {
public:
    explicit ContestEntryFields(Ui::Form4 &ui);

    // As they stand at the start of a contest; the band stays from the contest before.
    void Reset(const QString &ownCall);
    ContestFields Read() const;
    QWidget *FieldOf(ContestFocus focus) const;
    // Normalises a field that was left; gives what is wrong with it, else an empty text.
    QString CheckLeft(QWidget *field);

private:
    void FillLists();
    void AttachFilters();

    Ui::Form4 &ui_;
};
