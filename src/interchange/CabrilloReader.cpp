// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/CabrilloReader.h"

#include "core/CodePage.h"
#include "core/Conversions.h"

#include <algorithm>

namespace CabrilloReader {

namespace {

constexpr qsizetype longestShortLine = 100;
constexpr qsizetype longestWord = 100;
constexpr int firstYear = 100; // below it no text with signs is a date either
constexpr QStringView qsoMark = u"QSO:";

// The pieces between line ends, CR or CR LF.
QList<QByteArray> Lines(QByteArray content)
{
    content.replace("\r\n", "\r");
    if (content.endsWith('\r'))
        content.chop(1);
    return content.isEmpty() ? QList<QByteArray>() : content.split('\r');
}

bool HoldsQso(const QByteArray &line) { return line.toUpper().contains("QSO:"); }

// Only whole kilohertz without a point tell a band.
std::optional<QString> BandOfWord(QStringView frequency)
{
    static constexpr std::pair<QStringView, QStringView> bands[] = {
        {u"1", u"160m"}, {u"3", u"80m"}, {u"7", u"40m"}, {u"14", u"20m"}, {u"21", u"15m"}, {u"28", u"10m"}};
    const auto isDigit = [](QChar c) { return c >= u'0' && c <= u'9'; };
    for (const auto &[megahertz, band] : bands)
        if (frequency.size() == megahertz.size() + 3 && frequency.startsWith(megahertz)
            && std::all_of(frequency.begin(), frequency.end(), isDigit))
            return band.toString();
    return std::nullopt;
}

QString StoredDate(const QString &word)
{
    // "yyyymmdd" first: without signs the digits could be mistaken for another order.
    auto date = QDate::fromString(word, u"yyyyMMdd");
    if (!date.isValid() || date.year() < firstYear)
        date = Conversions::ParseDate(word).value_or(QDate());
    return date.isValid() ? date.toString(u"yyyyMMdd") : QString();
}

QString StoredTime(const QString &word)
{
    auto time = QTime::fromString(word, u"hhmm");
    if (!time.isValid())
        time = Conversions::ParseTime(word).value_or(QTime());
    return time.isValid() ? time.toString(u"hhmm") : QString();
}

QString StoredMode(const QString &word)
{
    if (word == u"PH" || word == u"SSB")
        return u"SSB"_qs;
    return word == u"CW" ? word : u"DG"_qs;
}

// Turns lines into rows one after the other, since a line may lean on the one before.
class LineImport {
public:
    LineImport(const Contest &contest, const Reporter &report)
        : contest_(contest)
        , report_(report)
    {
    }

    Contact Take(const Words &words, int line)
    {
        line_ = line;
        TakeBand(words[Frequency]);
        Contact contact;
        contact.line = line;
        contact.date = QString(words[Date]).remove(u'-');
        contact.row = RowOf(words);
        return contact;
    }

    void Report(int line, const QString &reason) const
    {
        if (report_)
            report_(line, reason);
    }

private:
    void TakeBand(const QString &frequency)
    {
        if (const auto band = BandOfWord(frequency)) {
            band_ = *band;
            return;
        }
        const QString taken = band_.isEmpty() ? u"queda sin banda"_qs : u"se tomó la anterior, "_qs + band_;
        Report(line_, u"La frecuencia %1 no dice la banda: %2"_qs.arg(frequency, taken));
    }

    QsoRow RowOf(const Words &words) const
    {
        QsoRow row;
        row.Modo = StoredMode(words[Mode]);
        row.Banda = band_;
        row.MyCall = words[OwnCall];
        row.Estacion = words[WorkedCall];
        row.Fecha = StoredDate(words[Date]);
        if (row.Fecha.isEmpty())
            Report(line_, words[Date] + u" no es una fecha");
        row.Hora = StoredTime(words[Time]);
        if (row.Hora.isEmpty())
            Report(line_, words[Time] + u" no es una hora");
        row.RSE = words[Sent];
        row.RSR = words[Received];
        row.NombreLog = contest_.name;
        row.LdA = contest_.name;
        row.Nombre_Sat = contest_.seriesType;
        return row;
    }

    const Contest &contest_;
    const Reporter &report_;
    QString band_;
    int line_ = 0;
};

} // namespace

const QString boxTitle = u"Tordillo te informa"_qs;

Words SplitQsoLine(QStringView text)
{
    const QStringList found = text.toString().simplified().split(u' ');
    Words words;
    const qsizetype count = found.size() - 1; // without the one that ends in "QSO:"
    if (count < 8) {
        words[Mark] = u"*"_qs;
        return words;
    }
    const auto word = [&](qsizetype number) { return found.value(number).left(longestWord); };
    if (count >= 10) {
        for (size_t place = Frequency; place < Count; ++place)
            words[place] = word(qsizetype(place));
        return words;
    }
    for (size_t place = Frequency; place <= OwnCall; ++place)
        words[place] = word(qsizetype(place));
    words[ReportSent] = words[ReportReceived] = u"599"_qs;
    words[Sent] = word(6);
    words[WorkedCall] = word(7);
    words[Received] = word(8);
    return words;
}

Result<int> NormalizeCabrilloFile(FileSystem &files, const QString &path)
{
    const Result<QByteArray> content = files.ReadWhole(path);
    if (!content)
        return content.failure();
    const QList<QByteArray> lines = Lines(*content);
    const auto isLong = [](const QByteArray &line) { return line.size() > longestShortLine && line.contains('\n'); };
    const auto last = std::find_if(lines.rbegin(), lines.rend(), isLong);
    if (last == lines.rend())
        return 0;
    int lost = 0;
    for (auto line = lines.rbegin(); line != lines.rend(); ++line)
        if (line != last)
            for (const QByteArray &part : line->split('\n'))
                lost += HoldsQso(part) ? 1 : 0;
    QByteArray split = *last;
    if (!split.endsWith('\n'))
        split += '\n';
    const Result<void> written = files.Replace(path, split.replace("\n", "\r\n"), FileSystem::Sync::Yes);
    if (!written)
        return written.failure();
    return lost;
}

Result<QStringList> ReadLines(const FileSystem &files, const QString &path)
{
    const Result<QByteArray> content = files.ReadWhole(path);
    if (!content)
        return content.failure();
    QStringList lines;
    for (const QByteArray &line : Lines(*content))
        lines << CodePage::ToText(line);
    return lines;
}

QString QsoLinesOf(const QStringList &lines)
{
    QString text;
    for (const QString &line : lines)
        if (line.contains(qsoMark))
            text += line + u"\r\n";
    return text;
}

Taken TakeLines(const QStringList &lines, const QString &path, const Contest &contest, const Reporter &report)
{
    Taken taken;
    LineImport import(contest, report);
    int number = 0;
    for (const QString &line : lines) {
        ++number;
        const QString capitals = line.toUpper();
        if (!capitals.contains(qsoMark))
            continue;
        ++taken.qsoLines;
        const Words words = SplitQsoLine(capitals);
        if (words[OwnCall].isEmpty()) {
            const QString text = u"Al archivo "_qs + path + u"\nle faltan demasiadas columnas!";
            taken.stop = Stop{text, true, number};
            break;
        }
        if (words[OwnCall] != contest.ownCall) {
            const QString text = words[OwnCall] + u" no es la SD " + contest.ownCall;
            taken.stop = Stop{text, false, number};
            break;
        }
        taken.contacts << import.Take(words, number);
        if (const auto blanks = capitals.simplified().count(u' '); blanks != 8 && blanks != 10)
            import.Report(number, u"La línea tiene %1 palabras: lo que sobra no se tomó"_qs.arg(blanks));
    }
    return taken;
}

std::optional<QString> ClosingMessage(const QString &path, int qsoLines, int repeated)
{
    QString text;
    if (qsoLines == 0)
        text = u"No se encontaron QSOs en el archivo "_qs + path + u"\npara incluir!";
    else if (repeated > 0)
        text = u"No se agregaron "_qs + QString::number(repeated) + u" QSOs por estar repetidos en " + path;
    return text.isEmpty() ? std::nullopt : std::optional(text);
}

} // namespace CabrilloReader
