// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QComboBox;
class QString;

// Combo boxes into which the operator may type what the list does not hold.
namespace Choice {

// From now on `activated` means that an entry was taken from the list. Qt would also emit it when the field is left
// with a text that happens to be listed. No completion either: a short text must not grow into a listed one.
void OnlyByClick(QComboBox *combo);

// Shows the text, as the chosen entry where it is listed, so that the arrow keys go on from there. Nothing is emitted
// as activated.
void Show(QComboBox *combo, const QString &text);

} // namespace Choice
