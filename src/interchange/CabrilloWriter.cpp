// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/CabrilloWriter.h"

#include "core/CodePage.h"
#include "core/Conversions.h"
#include "core/Logbook.h"
#include "core/TextFile.h"

#include <algorithm>
#include <tuple>

namespace CabrilloWriter {

namespace {

constexpr QStringView lineEnd = u"\r\n";
// A damaged file must not fill a field with megabytes.
constexpr qsizetype longestField = 1000;

constexpr QString Header::*personalFields[] = {
    &Header::name, &Header::address1, &Header::address2, &Header::address3, &Header::email};

// A pasted line break would make two lines of one.
QString OneLine(QString text) { return text.replace(u'\r', u' ').replace(u'\n', u' '); }

bool IsPhone(const QsoRow &row) { return row.Modo == u"SSB" || row.Modo == u"FM"; }

} // namespace

const Choices &HeaderChoices()
{
    static const Choices choices{
        {{u"SINGLE-OP"_qs, u"MULTI-OP"_qs, u"CHECKLOG"_qs}, u"SINGLE-OP"_qs},
        {{u"HIGH"_qs, u"LOW"_qs, u"QRP"_qs}, u"LOW"_qs},
        {{u"ALL"_qs, u"160m"_qs, u"80m"_qs, u"40m"_qs, u"20m"_qs, u"15m"_qs, u"10m"_qs, u"6m"_qs, u"2m"_qs}, u"ALL"_qs},
        {{u"CW"_qs, u"DIGI"_qs, u"FM"_qs, u"RTTY"_qs, u"SSB"_qs, u"MIXED"_qs}, u"SSB"_qs},
        {{u"CLASSIC"_qs, u"ROOKIE"_qs, u"YOUTH"_qs, u"TB-WIRES"_qs, u"NOVICE-TECH"_qs, u"YL"_qs}, u"CLASSIC"_qs},
    };
    return choices;
}

bool HasOperators(QStringView category) { return category == u"MULTI-OP"; }

void LoadPersonalData(const FileSystem &files, const QString &path, Header &header)
{
    const QStringList lines = TextFile::ReadLines(files, path).value_or(QStringList());
    qsizetype line = 0;
    for (const auto field : personalFields)
        header.*field = OneLine(lines.value(line++).left(longestField));
}

Result<void> SavePersonalData(FileSystem &files, const QString &path, const Header &header)
{
    QStringList lines;
    for (const auto field : personalFields)
        lines << OneLine(header.*field);
    return TextFile::WriteLines(files, path, lines, FileSystem::Sync::No);
}

std::optional<Missing> FirstMissing(const Header &header)
{
    if (header.callsign.isEmpty())
        return Missing{&Header::callsign, u"Falta su Señal Distintiva!"_qs};
    if (header.name.isEmpty())
        return Missing{&Header::name, u"Falta su Nombre!"_qs};
    return std::nullopt;
}

QString HeaderText(const Header &header)
{
    QString text;
    const auto add = [&](QStringView key, const QString &value) { text += key + u": " + OneLine(value) + lineEnd; };
    add(u"START-OF-LOG", u"3.0"_qs);
    add(u"CALLSIGN", header.callsign);
    add(u"CONTEST", header.contest);
    add(u"CATEGORY-OPERATOR", header.category);
    add(u"CATEGORY-POWER", header.power);
    add(u"CATEGORY-BAND", header.band);
    add(u"CATEGORY-MODE", header.mode);
    add(u"CATEGORY-OVERLAY", header.overlay);
    add(u"OPERATORS", header.operators);
    add(u"NAME", header.name);
    add(u"ADDRESS", header.address1);
    add(u"ADDRESS", header.address2);
    add(u"ADDRESS", header.address3);
    add(u"EMAIL", header.email);
    add(u"CREATED-BY", u"TORDILLO COMPACT "_qs + Logbook::AppVersion);
    return text;
}

QString KilohertzOfBand(QStringView band)
{
    static const QHash<QStringView, QString> kilohertz{
        {u"160m", u"1820"_qs},
        {u"80m", u"3500"_qs},
        {u"40m", u"7000"_qs},
        {u"20m", u"14000"_qs},
        {u"15m", u"21000"_qs},
        {u"10m", u"28000"_qs},
        {u"6m", u"52000"_qs},
        {u"2m", u"144000"_qs},
    };
    return kilohertz.value(band);
}

QList<QsoRow> QsosInOrder(QList<QsoRow> rows)
{
    rows.removeIf([](const QsoRow &row) { return row.Modo.isEmpty(); });
    std::sort(rows.begin(), rows.end(), [](const QsoRow &a, const QsoRow &b) {
        return std::tie(a.Fecha, a.Hora, a.id) < std::tie(b.Fecha, b.Hora, b.id);
    });
    return rows;
}

QString QsoLine(const QsoRow &row)
{
    const QString kilohertz = KilohertzOfBand(row.Banda);
    const QString report = (IsPhone(row) ? u"59"_qs : u"599"_qs).rightJustified(3);
    const QString date = QStringView(row.Fecha).left(4) + u'-' + QStringView(row.Fecha).mid(4, 2) + u'-'
        + QStringView(row.Fecha).right(2);
    QString line = u"QSO:" + (kilohertz.isEmpty() ? row.Banda : kilohertz).rightJustified(6) + u' ';
    line += (IsPhone(row) ? u"PH"_qs : row.Modo) + u' ' + date + u' ' + row.Hora + u' ';
    // Padding here ends with the blank that parts a field from the next.
    line += Conversions::PadRight(row.MyCall, 13) + report + u' ' + Conversions::PadRight(row.RSE, 6);
    line += Conversions::PadRight(row.Estacion, 13) + report + u' ' + row.RSR.leftJustified(6);
    return OneLine(line);
}

QsoLines BuildLines(const QList<QsoRow> &rows, const QString &ownCall)
{
    QsoLines lines;
    lines.rows = QsosInOrder(rows);
    for (const QsoRow &row : std::as_const(lines.rows)) {
        if (row.MyCall != ownCall)
            return {{}, {}, QsoLines::Refusal{u"Error!\nEn el log distinta Señal Distintiva"_qs, true}};
        lines.text += QsoLine(row) + lineEnd;
    }
    if (lines.rows.isEmpty())
        lines.refusal = QsoLines::Refusal{u"No hay ningún QSO para exportar a Cabrillo!"_qs, false};
    return lines;
}

QString HeaderTitle(const QString &contest, qsizetype count)
{
    return u"Encabezado de "_qs + contest + u" con " + QString::number(count) + u" QSO(s)";
}

QString FileText(const QString &text)
{
    QString lines = text;
    lines.replace(lineEnd.toString(), u"\n"_qs).replace(u'\r', u'\n');
    // The operator may have taken away the end of the last line, and the closing line must not hang on a QSO.
    if (!lines.isEmpty() && !lines.endsWith(u'\n'))
        lines += u'\n';
    lines += u"END-OF-LOG:\n"_qs;
    return lines.replace(u'\n', lineEnd.toString());
}

Result<void> WriteFile(FileSystem &files, const QString &path, const QString &fileText)
{
    return files.Replace(path, CodePage::FromText(fileText), FileSystem::Sync::Yes);
}

} // namespace CabrilloWriter
