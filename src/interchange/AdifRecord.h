// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArrayView>
#include <QString>
#include <array>

// The ADIF tags that are read, in the order in which they are told apart.
enum class AdifTag {
    MySigInfo,
    SotaRef,
    MySotaRef,
    SigInfo,
    Name,
    Gridsquare,
    MyGridsquare,
    QslRcvd,
    StationCallsign,
    Call,
    QsoDate,
    TimeOn,
    Band,
    Freq,
    RstSent,
    RstRcvd,
    Operator,
    Mode,
    PropMode,
    Comment,
    SatName,
    ProgramId,
    Count
};

// One record, looked at in place: the bytes must outlive it. Tags are found whatever their case, and the first
// occurrence of a tag counts, also inside another field's value. A field ends where its declared length says; a type
// indicator behind the length is passed over. At most 1000 characters behind a tag are looked at.
class AdifRecord {
public:
    explicit AdifRecord(QByteArrayView record);

    bool Has(AdifTag tag) const { return found_[size_t(tag)].data() != nullptr; }
    // The value as text: UTF-8 where it is valid UTF-8, else windows-1252. Lengths that count characters are told from
    // those that count bytes by what follows the value: a tag, or the end. Empty for an absent field, and for lengths
    // that are no number, negative or zero; a length beyond the end takes what there is.
    QString Value(AdifTag tag) const;

    // The record without what is never looked at; its values are the same.
    QByteArray Essence() const;

    // Tags of the record that none of the above are, in capitals and without "<" and ":", are handed to `report`.
    template <typename Report>
    static void OtherTags(QByteArrayView record, Report &&report)
    {
        for (QByteArrayView rest = record; !(rest = NextTag(rest)).isEmpty();) {
            const QByteArrayView name = NameOf(rest);
            if (!name.isEmpty() && !IsKnown(name))
                report(name);
            rest = rest.sliced(1);
        }
    }

private:
    static QByteArrayView NextTag(QByteArrayView text); // from its "<" on, or empty
    static QByteArrayView NameOf(QByteArrayView text); // between "<" and ":", or empty
    static bool IsKnown(QByteArrayView name);

    std::array<QByteArrayView, size_t(AdifTag::Count)> found_; // what stands behind the tag's ":"
};

namespace Adif {

// Text that is valid UTF-8 is read as that, anything else as windows-1252.
QString TextOf(QByteArrayView bytes);

// Whether `line` holds `tag` (in capitals) in any case.
bool Holds(QByteArrayView line, QByteArrayView tag);

} // namespace Adif
