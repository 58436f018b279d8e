// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "logging/EntryRules.h"

#include "core/Conversions.h"

#include <algorithm>

namespace EntryRules {

namespace {

bool IsDigit(QChar c) { return c >= u'0' && c <= u'9'; }
bool IsLetter(QChar c) { return c >= u'A' && c <= u'Z'; }

// The digit at a place of the text; 0 for any other character and behind the end.
int DigitAt(QStringView text, qsizetype place)
{
    return place >= 0 && place < text.size() && IsDigit(text[place]) ? text[place].unicode() - u'0' : 0;
}

bool StartsLikeAReport(QStringView text) { return DigitAt(text, 0) >= 1 && DigitAt(text, 0) <= 5; }
bool EndsLikeAReport(QStringView text) { return DigitAt(text, text.size() - 1) >= 1; }

bool ReportPassesTheWalk(QStringView text, QStringView mode)
{
    return text.size() == ReportForMode(mode).size() && StartsLikeAReport(text) && EndsLikeAReport(text);
}

constexpr const char16_t *noCall = u"Falta el Corresponsal!";
constexpr const char16_t *badReceived = u"Reporte Recibido no válido!";
constexpr const char16_t *badSent = u"Reporte Enviado no válido!";

QString Text(const char16_t *text) { return QStringView(text).toString(); }

EntryFocus FieldBehind(QStringView message)
{
    if (message == QStringView(badReceived))
        return EntryFocus::Rsr;
    return message == QStringView(badSent) ? EntryFocus::Rse : EntryFocus::Corresponsal;
}

// "dd/mm/yyyy" by its characters, and a day that exists.
bool IsShownDate(QStringView text)
{
    constexpr QStringView pattern = u"##/##/####";
    const bool fits = std::equal(pattern.begin(), pattern.end(), text.begin(), text.end(),
        [](QChar wanted, QChar c) { return wanted == u'#' ? IsDigit(c) : wanted == c; });
    // Day and month are tested by themselves because ParseDate would take "02/25/2026" with the month first.
    return fits && Conversions::LeadingInteger(text.first(2)) <= 31
        && Conversions::LeadingInteger(text.sliced(3, 2)) <= 12 && Conversions::ParseDate(text);
}

// The separator or sign that a field takes besides letters, digits and "?".
QChar SignOf(KeyFilter filter)
{
    switch (filter) {
    case KeyFilter::Callsign:
    case KeyFilter::Date:
        return u'/';
    case KeyFilter::Time:
        return u':';
    case KeyFilter::UtcOffset:
        return u'-';
    case KeyFilter::Grid:
    case KeyFilter::Digits:
        break;
    }
    return u'?';
}

} // namespace

QString ReportForMode(QStringView mode) { return mode == u"CW" || mode == u"Sat CW" ? u"599"_qs : u"59"_qs; }

int ValidateReport(QStringView text, QStringView mode)
{
    const qsizetype expected = ReportForMode(mode).size();
    if (text.size() != expected || !EndsLikeAReport(text))
        return 1;
    const bool good = expected == 2 ? StartsLikeAReport(text) : DigitAt(text, 1) >= 1;
    return good ? 0 : 1;
}

QString BadReportMessage(QStringView text) { return u"el Reporte " + text + u" no es válido!"; }

QString ValidateEntry(const EntryFields &fields)
{
    if (fields.corresponsal.isEmpty())
        return Text(noCall);
    if (!ReportPassesTheWalk(fields.rsr, fields.modo))
        return Text(badReceived);
    if (!ReportPassesTheWalk(fields.rse, fields.modo))
        return Text(badSent);
    return {};
}

std::optional<WalkRefusal> RefuseWalk(const EntryFields &fields)
{
    using Icon = WalkRefusal::Icon;
    if (const QString message = ValidateEntry(fields); !message.isEmpty())
        return WalkRefusal{message, Icon::Exclamation, FieldBehind(message)};
    if (fields.viaSatellite && fields.satellite.isEmpty())
        return WalkRefusal{u"Elija un satélite!"_qs, Icon::Exclamation, EntryFocus::Satellite};
    if (fields.corresponsal == fields.station)
        return WalkRefusal{u"QSO con la propia estación???"_qs, Icon::Critical, EntryFocus::Corresponsal};
    if (fields.corresponsal == fields.operatorCall)
        return WalkRefusal{u"QSO con el Operador???"_qs, Icon::Critical, EntryFocus::Corresponsal};
    return std::nullopt;
}

std::optional<EntryFocus> NextEntryField(int entryField, bool qtrManual, bool viaSatellite)
{
    switch (entryField) {
    case 1:
        return qtrManual ? EntryFocus::Fecha : EntryFocus::Rse;
    case 2:
        return EntryFocus::Hora;
    case 3:
        return EntryFocus::Rse;
    case 4:
        return EntryFocus::Rsr;
    case 5:
        return viaSatellite ? EntryFocus::Grid : EntryFocus::Kilohertz;
    case 6:
        return EntryFocus::Grid;
    case 7:
        return EntryFocus::Obs;
    default:
        return std::nullopt;
    }
}

FieldCheck CheckFecha(QStringView text)
{
    const auto refused = [](QStringView date) -> QString {
        return u"la Fecha " + date + u" no es válida!\nFormato: dd/mm/aaaa";
    };
    if (text.isEmpty())
        return {QString(), refused(text)};
    QString date = text.toString();
    if (Conversions::LeadingNumber(text.mid(6, 4)) == 0)
        date = text.left(6) + u"2000";
    if (IsShownDate(date))
        return {date, QString()};
    const QString message = refused(date);
    return {date.replace(u'-', u'/'), message};
}

FieldCheck CheckHora(QStringView text)
{
    if (const std::optional<QTime> time = Conversions::ParseTime(text))
        return {Conversions::TimeText(*time), QString()};
    return {text.toString(), u"la Hora " + text + u" no es válida!\nFormato: hh:mm"};
}

QString CutBadGridCharacter(QStringView text)
{
    const qsizetype length = text.size();
    if (length == 0)
        return {};
    const bool letterExpected = length <= 2 || length == 5 || length == 6;
    const bool good = letterExpected ? IsLetter(text.back()) : IsDigit(text.back());
    return text.left(good ? length : length - 1).toString();
}

QString TidyGrid(QStringView text, QStringView before)
{
    const auto changed = std::mismatch(text.begin(), text.end(), before.begin(), before.end());
    const auto rest = std::mismatch(std::reverse_iterator(text.end()), std::reverse_iterator(changed.first),
        std::reverse_iterator(before.end()), std::reverse_iterator(changed.second));
    if (rest.first.base() - changed.first <= 1)
        return CutBadGridCharacter(text);
    QString typed;
    for (const QChar c : text)
        typed = CutBadGridCharacter(QString(typed + c));
    return typed;
}

bool GridLengthAllowed(qsizetype length, GridOf kind)
{
    return length == 0 || length == 6 || (length == 4 && kind == GridOf::Correspondent);
}

QString BadGridMessage() { return u"Grilla incorrecta!"_qs; }

std::optional<QChar> FilterKey(QChar key, KeyFilter filter)
{
    const bool letters = filter == KeyFilter::Callsign || filter == KeyFilter::Grid;
    // Only "a" to "z": what else has a capital ("ñ", "ı") is no letter of a call, whatever its capital is.
    const QChar c = letters && key >= u'a' && key <= u'z' ? key.toUpper() : key;
    if (IsDigit(c) || c == u'?' || (letters && IsLetter(c)) || c == SignOf(filter))
        return c;
    return std::nullopt;
}

} // namespace EntryRules
