// SPDX-FileCopyrightText: 2026 The Tordillo Compact authors
// SPDX-License-Identifier: GPL-3.0-or-later
#include "interchange/CabrilloCheck.h"

#include "core/Conversions.h"
#include "interchange/CabrilloReader.h"
#include "interchange/CabrilloWriter.h"

#include <QRegularExpression>
#include <algorithm>
#include <array>
#include <optional>

namespace CabrilloCheck {

namespace {

// A whole line: "QSO:", frequency, mode, date, time, own call, report, exchange, call, report, exchange.
constexpr qsizetype wordsOfLine = 11;
constexpr QStringView mark = u"QSO:";

struct Line {
    int number = 0;
    QString text;
    QStringList words; // with frequency and "QSO:" apart, also where the line has them glued together
    bool glued = false;
    bool excluded = false; // "X-QSO:"
    bool IsWhole() const { return words.size() == wordsOfLine; }
};

// Nothing for lines that are no QSO lines.
std::optional<Line> ParseLine(int number, const QString &text)
{
    Line line{number, text, text.simplified().split(u' '), false, false};
    QString &first = line.words.first();
    line.excluded = first.startsWith(u"X-QSO:", Qt::CaseInsensitive);
    if (line.excluded)
        first.remove(0, 2);
    if (!first.startsWith(mark, Qt::CaseInsensitive))
        return std::nullopt;
    line.glued = first.size() > mark.size();
    if (line.glued)
        line.words.insert(1, first.mid(mark.size()));
    return line;
}

// Bands of the log by kilohertz, and the names that the format has for the two above 30 MHz.
QString BandOf(const QString &frequency)
{
    struct Range {
        double low, high;
        QStringView band;
    };
    static constexpr Range ranges[] = {{1800, 2000, u"160m"}, {3500, 4000, u"80m"}, {7000, 7300, u"40m"},
        {14000, 14350, u"20m"}, {21000, 21450, u"15m"}, {28000, 29700, u"10m"}, {50000, 54000, u"6m"},
        {144000, 148000, u"2m"}, {50, 50, u"6m"}, {144, 144, u"2m"}};
    static const QRegularExpression number(u"^[0-9]+(\\.[0-9]+)?$"_qs);
    if (!number.match(frequency).hasMatch())
        return {};
    const double kilohertz = Conversions::LeadingNumber(frequency);
    for (const Range &range : ranges)
        if (kilohertz >= range.low && kilohertz <= range.high)
            return range.band.toString();
    return {};
}

QString ModeInFile(const QString &mode) { return mode == u"SSB" || mode == u"FM" ? u"PH"_qs : mode; }

QString DateInFile(const QString &date) { return date.left(4) + u'-' + date.mid(4, 2) + u'-' + date.mid(6); }

void CheckBand(const QString &frequency, const QsoRow &row, QStringList &reasons)
{
    if (CabrilloWriter::KilohertzOfBand(row.Banda).isEmpty())
        reasons << u"el formato no conoce la banda «%1»"_qs.arg(row.Banda);
    else if (BandOf(frequency) != row.Banda)
        reasons << u"la frecuencia %1 no es de la banda %2 del log"_qs.arg(frequency, row.Banda);
}

void CheckMode(const QString &mode, const QsoRow &row, QStringList &reasons)
{
    static const QStringList known{u"CW"_qs, u"PH"_qs, u"FM"_qs, u"RY"_qs, u"DG"_qs};
    if (!known.contains(mode))
        reasons << u"el formato no conoce el modo %1"_qs.arg(mode);
    if (mode != ModeInFile(row.Modo) && mode != row.Modo)
        reasons << u"modo: %1 en el archivo, %2 en el log"_qs.arg(mode, row.Modo);
}

void CheckFields(const QStringList &words, const QsoRow &row, QStringList &reasons)
{
    CheckBand(words[1], row, reasons);
    CheckMode(words[2], row, reasons);
    if (row.Fecha.isEmpty())
        reasons << u"falta la fecha"_qs;
    const struct {
        QString name;
        int word;
        QString logged;
    } fields[] = {
        {u"fecha"_qs, 3, DateInFile(row.Fecha)},
        {u"hora"_qs, 4, row.Hora},
        {u"señal propia"_qs, 5, row.MyCall},
        {u"enviado"_qs, 7, row.RSE},
        {u"corresponsal"_qs, 8, row.Estacion},
        {u"recibido"_qs, 10, row.RSR},
    };
    for (const auto &field : fields)
        if (words[field.word] != field.logged)
            reasons << u"%1: %2 en el archivo, %3 en el log"_qs.arg(field.name, words[field.word], field.logged);
}

// Why a line has not the number of words that it should.
void CheckShape(const Line &line, const QsoRow &row, QStringList &reasons)
{
    const std::pair<QString, QString> needed[] = {
        {row.RSE, u"falta lo enviado"_qs},
        {row.RSR, u"falta lo recibido"_qs},
        {row.Estacion, u"falta el corresponsal"_qs},
        {row.MyCall, u"falta la señal propia"_qs},
        {row.Banda, u"falta la banda"_qs},
        {row.Hora, u"falta la hora"_qs},
    };
    for (const auto &[value, reason] : needed)
        if (value.trimmed().isEmpty())
            reasons << reason;
    if (reasons.isEmpty())
        reasons << u"la línea tiene %1 palabras y debe tener %2"_qs.arg(line.words.size()).arg(wordsOfLine);
}

// The first word that stands in another column than its own.
void CheckColumns(const Line &line, QStringList &reasons)
{
    struct Place {
        qsizetype column;
        bool end; // where the word ends, for those that stand at the right of their field
    };
    static constexpr std::array<Place, wordsOfLine> places{{{0, false}, {10, true}, {11, false}, {14, false},
        {25, false}, {30, false}, {47, true}, {48, false}, {55, false}, {72, true}, {73, false}}};
    qsizetype from = 0;
    for (size_t number = 0; number < places.size(); ++number) {
        const QString &word = line.words[qsizetype(number)];
        const qsizetype start = line.text.indexOf(word, from);
        from = start + word.size();
        if ((places[number].end ? from : start) == places[number].column)
            continue;
        reasons << u"las columnas están corridas desde «%1»"_qs.arg(word);
        return;
    }
}

// Finds for each line the QSO that it tells: the one that gives this very line, else the one that shares most of what
// tells a QSO apart.
class Pairing {
public:
    Pairing(const QList<Line> &lines, const QList<QsoRow> &rows)
        : lines_(lines)
        , rows_(rows)
        , rowOfLine_(lines.size(), -1)
        , taken_(rows.size(), false)
    {
        PairBy([](const Line &line) { return line.text.trimmed(); },
            [](const QsoRow &row) { return CabrilloWriter::QsoLine(row).trimmed(); });
        PairBy(
            [](const Line &line) {
                return OfWords(line, {8, 3, 4});
            },
            [](const QsoRow &row) {
                return Key({row.Estacion, DateInFile(row.Fecha), row.Hora});
            });
        PairBy(
            [](const Line &line) { return OfWords(line, {8}); }, [](const QsoRow &row) { return Key({row.Estacion}); });
        PairBy(
            [](const Line &line) {
                return OfWords(line, {3, 4, 7});
            },
            [](const QsoRow &row) {
                return Key({DateInFile(row.Fecha), row.Hora, row.RSE});
            });
    }

    qsizetype RowOfLine(qsizetype line) const { return rowOfLine_[line]; } // -1: none
    bool HasLine(qsizetype row) const { return taken_[row]; }

private:
    static QString Key(const QStringList &parts) { return parts.join(u' '); }
    static QString OfWords(const Line &line, std::initializer_list<int> numbers)
    {
        QStringList parts;
        for (const int number : numbers)
            parts << line.words.value(number);
        return line.IsWhole() ? Key(parts) : QString();
    }

    template <typename OfLine, typename OfRow>
    void PairBy(OfLine ofLine, OfRow ofRow)
    {
        QHash<QString, QList<qsizetype>> rowsOfKey; // first row last
        for (qsizetype row = rows_.size() - 1; row >= 0; --row)
            if (!taken_[row])
                rowsOfKey[ofRow(rows_[row])] << row;
        for (qsizetype line = 0; line < lines_.size(); ++line) {
            if (rowOfLine_[line] >= 0)
                continue;
            const auto rows = rowsOfKey.find(ofLine(lines_[line]));
            if (rows == rowsOfKey.end() || rows->isEmpty())
                continue;
            rowOfLine_[line] = rows->takeLast();
            taken_[rowOfLine_[line]] = true;
        }
    }

    const QList<Line> &lines_;
    const QList<QsoRow> &rows_;
    QList<qsizetype> rowOfLine_;
    QList<bool> taken_;
};

QString LookAt(const Line &line, const QsoRow *row)
{
    QStringList reasons;
    if (line.excluded)
        reasons << u"X-QSO: no cuenta para el concurso"_qs;
    if (line.glued)
        reasons << u"la frecuencia está pegada a «QSO:» y la línea se corre una palabra"_qs;
    if (!row)
        reasons << u"ningún QSO del log es el de esta línea"_qs;
    else if (!line.IsWhole())
        CheckShape(line, *row, reasons);
    else
        CheckFields(line.words, *row, reasons);
    if (line.IsWhole() && !line.glued && !line.excluded)
        CheckColumns(line, reasons);
    return reasons.join(u"; "_qs);
}

void CheckFrame(const QStringList &fileLines, const QString &ownCall, QList<Finding> &findings)
{
    int starts = 0, ends = 0, lastLine = 0, endLine = 0;
    for (int number = 1; number <= fileLines.size(); ++number) {
        const QString line = fileLines[number - 1].trimmed();
        if (line.isEmpty())
            continue;
        lastLine = number;
        if (line.startsWith(u"START-OF-LOG:") && ++starts > 1)
            findings << Finding{number, u"el encabezado está repetido"_qs, line};
        if (line.startsWith(u"END-OF-LOG:")) {
            endLine = number;
            if (++ends > 1)
                findings << Finding{number, u"el final está repetido"_qs, line};
        }
        if (line.startsWith(u"CALLSIGN:") && !ownCall.isEmpty() && line.mid(9).trimmed() != ownCall)
            findings << Finding{number, u"la señal de los QSOs es %1"_qs.arg(ownCall), line};
    }
    if (starts == 0)
        findings << Finding{0, u"falta el encabezado"_qs, u"START-OF-LOG: 3.0"_qs};
    if (ends == 0 || endLine != lastLine)
        findings << Finding{0, u"falta el final"_qs, u"END-OF-LOG:"_qs};
}

} // namespace

Report Compare(const QStringList &fileLines, const QList<QsoRow> &rows)
{
    const QList<QsoRow> qsos = CabrilloWriter::QsosInOrder(rows);
    QList<Line> lines;
    for (int number = 1; number <= fileLines.size(); ++number)
        if (const auto line = ParseLine(number, fileLines[number - 1]))
            lines << *line;

    Report report;
    report.inLog = qsos.size();
    report.inFile = lines.size();
    CheckFrame(fileLines, qsos.isEmpty() ? QString() : qsos.first().MyCall, report.findings);
    const Pairing pairing(lines, qsos);
    for (qsizetype line = 0; line < lines.size(); ++line) {
        const qsizetype row = pairing.RowOfLine(line);
        const QString reason = LookAt(lines[line], row < 0 ? nullptr : &qsos[row]);
        if (!reason.isEmpty())
            report.findings << Finding{lines[line].number, reason, lines[line].text.trimmed()};
    }
    for (qsizetype row = 0; row < qsos.size(); ++row)
        if (!pairing.HasLine(row))
            report.findings << Finding{0, u"falta en el archivo"_qs, CabrilloWriter::QsoLine(qsos[row]).trimmed()};
    const auto place = [](const Finding &finding) { return finding.line == 0 ? INT_MAX : finding.line; };
    std::stable_sort(report.findings.begin(), report.findings.end(),
        [&](const Finding &a, const Finding &b) { return place(a) < place(b); });
    return report;
}

Result<Report> CheckFile(const FileSystem &files, const QString &path, const QList<QsoRow> &rows)
{
    const Result<QStringList> lines = CabrilloReader::ReadLines(files, path);
    if (!lines)
        return lines.failure();
    return Compare(*lines, rows);
}

QString Report::Text(qsizetype most) const
{
    if (Agrees())
        return {};
    QString text = u"El log tiene %1 QSO(s) y el archivo %2. No coincide:\n"_qs.arg(inLog).arg(inFile);
    for (const Finding &finding : findings.first(std::min(most, findings.size()))) {
        const QString where = finding.line == 0 ? QString() : u"Línea %1: "_qs.arg(finding.line);
        text += u'\n' + where + finding.reason + u":\n" + finding.text + u'\n';
    }
    if (findings.size() > most)
        text += u"\n... y %1 más."_qs.arg(findings.size() - most);
    return text;
}

} // namespace CabrilloCheck
