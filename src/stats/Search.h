// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/LogStore.h"
#include "core/QsoRow.h"

#include <QString>
#include <QStringList>
#include <optional>
#include <vector>

// What the search window's controls hold. Texts are patterns ("*" any run, "?" one character, case does not count)
// over the whole column, except `remarks`, which is looked for inside the column. Empty texts filter nothing.
struct SearchFilters {
    enum class Lda { NotUploaded, Uploaded, Confirmed, All };

    QString from, to; // dates, both inclusive
    QString myCall, operatorCall, call, mode, band, remarks;
    bool satellite = false;
    bool argentinesOnly = false;
    Lda lda = Lda::All; // acts only together with argentinesOnly
    bool POTA = false, IOTA = false, SOTA = false, MYSOTA = false;
    bool S2S = false, P2P = false;
};

// The statement of a search as the window shows it, values in place. What runs has its values bound.
QString SearchStatement(const QString &logName, const SearchFilters &filters);
// The statement of the first, unfiltered list.
QString ListStatement(const QString &logName);

// "40" becomes "40M": what the band field becomes when it is left.
QString TidyBandFilter(const QString &text);
// The message for a date field that is left with something that is no date; empty when all is well.
QString CheckSearchDate(const QString &text);

// Where the slices of a log end, as one search has found them for those that follow. Contacts that come or go meanwhile
// make slices longer or shorter, no search wrong; so it is to be made anew once in a while, as with each window.
class SearchSlices {
public:
    SearchSlices() = default;

private:
    friend class SearchCursor;
    // A row, by the order of the list; and how many rows of its date are not older.
    struct End {
        QString date, time;
        qint64 id = 0;
        qint64 ofItsDate = 0;
    };
    SearchSlices(QString logName, std::vector<End> ends)
        : logName_(std::move(logName))
        , ends_(std::move(ends))
    {
    }

    QString logName_;
    std::vector<End> ends_;
};

// A search over one log, newest first, in slices short enough for the window to live between them. Nothing is open
// between two slices; contacts stored meanwhile that belong before the place reached are not seen.
class SearchCursor {
public:
    // Contacts that one slice looks at, whether they are kept or not: some 20 ms of reading.
    static constexpr int sliceRows = 20000;

    // `slices`, which must outlive the cursor, spares the next search the counting.
    SearchCursor(LogStore &store, QString logName, SearchFilters filters, SearchSlices *slices = nullptr);

    enum class BadDate { None, From, To };
    // A date that cannot be read stops the search as soon as there is a contact to compare with it.
    BadDate badDate() const { return badDate_; }
    bool AtEnd() const { return atEnd_; }

    // Looks at the next contacts and appends the ids of those that are kept. A failure leaves the cursor where it was.
    Result<void> Next(std::vector<qint64> &ids);

private:
    using Key = SearchSlices::End;
    struct Statement;
    Statement SelectDates(const QString &columns, const QString &oldest) const;
    QString KeptColumns() const;
    void AddFilters(Statement &select) const;
    std::optional<Key> KnownEnd() const;
    std::optional<Key> SliceEnd(Session &session) const;
    void ReadSlice(Session &session, const std::optional<Key> &end, std::vector<qint64> &ids) const;
    void ReadUndated(Session &session, std::vector<qint64> &ids) const;
    void Keep(Query query, std::vector<qint64> &ids) const;
    bool HasAnyRow(Session &session) const;

    LogStore &store_;
    QString logName_;
    SearchFilters filters_;
    QStringList conditions_; // of the filters, without those on dates
    QStringList values_; // and what is bound to them
    std::optional<QString> from_, to_; // stored dates
    SearchSlices *slices_;
    std::optional<std::vector<Key>> known_; // ends of the slices
    std::vector<Key> passed_; // ends of those that have been looked at
    std::optional<Key> last_; // the last of them
    BadDate badDate_ = BadDate::None;
    bool checked_ = false;
    bool atEnd_ = false;
};
