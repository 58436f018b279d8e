// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/Services.h"

#include "core/OptionFile.h"

namespace {

struct Entry {
    Service service;
    const char16_t *key;
    const char16_t *preset;
};

constexpr Entry entries[] = {
    {Service::Lda, u"lda", u"https://lda.example"},
    {Service::LdaSecure1, u"lda_segura_1", u"https://segura1.lda.example"},
    {Service::LdaSecure2, u"lda_segura_2", u"https://segura2.lda.example"},
    {Service::LdaDefault, u"lda_predeterminada", u"https://lda.example"},
    {Service::Qrz, u"qrz", u"https://xmldata.qrz.com"},
    {Service::QrzPlain, u"qrz_plano", u"http://xmldata.qrz.com"},
    {Service::HamQth, u"hamqth", u"https://www.hamqth.com"},
    {Service::Eqsl, u"eqsl", u"https://www.eqsl.cc"},
    {Service::Web, u"web", u"https://tordillo.example"},
    {Service::Passes, u"pases", u"https://pases.tordillo.example"},
    {Service::LdaSite, u"lda_sitio", u"https://lda.example"},
};

} // namespace

QString ServiceAddress(const Logbook &logbook, Service service)
{
    const OptionFile file(logbook, u"servicios.ini"_qs, u"servicios"_qs);
    for (const Entry &entry : entries) {
        if (entry.service != service)
            continue;
        QString address = file.Value(QString::fromUtf16(entry.key));
        while (address.endsWith(u'/'))
            address = address.chopped(1).trimmed();
        return address.isEmpty() ? QString::fromUtf16(entry.preset) : address;
    }
    return {};
}
