// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "online/UploadRules.h"

#include "core/Conversions.h"
#include "core/Logbook.h"
#include "online/WebText.h"

#include <algorithm>

namespace UploadRules {

namespace {

// Sub-items of the list.
enum Item {
    call = 2,
    frequency = 4,
    mode = 5,
    reportSent = 6,
    date = 8,
    time = 9,
    myCall = 10,
    remarks = 12,
    satellite = 16
};

struct Megahertz {
    int first, last;
    const char16_t *band;
};

// Narrower than the band plan of the program, as the services want it: 60 m and 1.25 m are missing.
constexpr Megahertz megahertzTable[] = {{1, 1, u"160m"}, {3, 3, u"80m"}, {7, 7, u"40m"}, {10, 10, u"30m"},
    {14, 14, u"20m"}, {18, 18, u"17m"}, {21, 21, u"15m"}, {24, 24, u"12m"}, {28, 29, u"10m"}, {50, 55, u"6m"},
    {144, 148, u"2m"}, {430, 450, u"70cm"}};

bool IsInternet(const QString &rowMode) { return rowMode == u"DV IP" || rowMode == u"Echo IP"; }

QString FourDigits(const QString &shownTime) { return shownTime.right(5).remove(u':'); }

QString Field(const char16_t *tag, const QString &value)
{
    return u'<' + QString::fromUtf16(tag) + u':' + QString::number(value.size()) + u'>' + value;
}

} // namespace

QString UploadBand::Of(const QStringList &row)
{
    const QString text = row.value(frequency).replace(u',', u'.');
    const int megahertz = int(std::clamp(Conversions::LeadingNumber(text), 0.0, 1e6));
    for (const Megahertz &entry : megahertzTable)
        if (megahertz >= entry.first && megahertz <= entry.last)
            band_ = QString::fromUtf16(entry.band);
    return band_;
}

QString UploadBand::OfLda(const QStringList &row)
{
    Of(row);
    if (IsInternet(row.value(mode)))
        band_ = u"2m"_qs;
    return band_;
}

QString LdaAddress(const Account &account, const QStringList &row, const QString &band, bool remarksAsQslMessage)
{
    QString sentMode = row.value(mode), prop = row.value(satellite).isEmpty() ? u""_qs : u"SAT"_qs;
    if (IsInternet(sentMode)) {
        sentMode = sentMode == u"DV IP" ? u"DV"_qs : u"ECHO"_qs;
        prop = u"INTERNET"_qs;
    } else if (sentMode == u"Echo") {
        sentMode = u"ECHO"_qs;
    } else if (sentMode == u"DVoice") {
        sentMode = u"DV"_qs;
    }
    return account.base + u"/php/tordillo2Compact.php?user=" + account.user + u"&pass="
        + WebText::PercentEncode(account.password) + u"&micall=" + row.value(myCall) + u"&sucall=" + row.value(call)
        + u"&banda=" + band + u"&modo=" + sentMode + u"&fecha=" + row.value(date).replace(u' ', u'/') + u"&hora="
        + FourDigits(row.value(time)) + u"&rst=" + row.value(reportSent) + u"&x_qslMSG="
        + (remarksAsQslMessage ? row.value(remarks) : QString()) + u"&prop=" + prop;
}

QString EqslDocument(const QStringList &row, const QString &band, bool remarksAsQslMessage)
{
    const QString rowMode = row.value(mode);
    const bool echo = rowMode == u"Echo" || rowMode == u"Echo IP";
    const bool voice = rowMode == u"DV IP" || rowMode == u"DVoice";
    const auto day = Conversions::ParseDate(row.value(date));
    QString document = u"Tordillo Compact Ver "_qs + Logbook::AppVersion + u"<EOH>";
    document += Field(u"STATION_CALLSIGN", row.value(myCall));
    document += Field(u"CALL", row.value(call));
    document += Field(u"BAND", band);
    document += Field(u"MODE", echo ? u"FM"_qs : voice ? u"DIGITALVOICE"_qs : rowMode);
    document += Field(u"QSO_DATE", day ? day->toString(u"yyyyMMdd") : QString());
    document += Field(u"TIME_ON", FourDigits(row.value(time)));
    if (echo)
        document += Field(u"PROP_MODE", u"ECH"_qs);
    if (!row.value(satellite).isEmpty())
        document += Field(u"PROP_MODE", u"SAT"_qs) + Field(u"SAT_NAME", row.value(satellite));
    if (!row.value(remarks).isEmpty()) {
        document += Field(u"COMMENT", row.value(remarks));
        if (remarksAsQslMessage)
            document += Field(u"QSLMSG", row.value(remarks));
    }
    return document + u"<EOR><EOF>";
}

QString EqslAddress(const Account &account, const QString &document)
{
    return account.base + u"/qslcard/importADIF.cfm?ADIFData=" + document + u"&EQSL_USER=" + account.user
        + u"&EQSL_PSWD=" + WebText::PercentEncode(account.password);
}

Effects Judge(const QString &reply)
{
    Effects effects;
    const auto has = [&reply](const char16_t *words) { return reply.contains(QStringView(words)); };
    effects.stop = has(u"Error de Contraseña!") || has(u"NO existe en LdA!");
    effects.ldaDuplicate = has(u"duplicado!");
    effects.eqslError = has(u"Error:");
    effects.ldaErrors = int(effects.eqslError) + int(has(u"Call ni Alias"));
    effects.red = effects.stop || effects.ldaDuplicate || effects.ldaErrors > 0;
    effects.ldaLoaded = has(u"OK!");
    effects.eqslDuplicate = has(u"Duplicate");
    effects.eqslLoaded = has(u"Result: 1");
    return effects;
}

} // namespace UploadRules
