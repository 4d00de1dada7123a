#include "extras/import/ImportText.h"

#include "core/base/DelimitedText.h"
#include "core/base/Fault.h"
#include "core/base/Text.h"
#include "extras/import/ImportColumns.h"

#include <QStringDecoder>

#include <algorithm>
#include <array>

using ImportColumns::Column;
using ImportColumns::Heading;
using ImportColumns::Quantity;

namespace ImportText {

namespace {

/// What the commas and points of a text's numbers mean, as far as its numbers tell.
struct Notation {
    bool comma = false;      // some number can only have a decimal comma
    bool point = false;      // some number can only have a decimal point
    bool semicolons = false; // the separator of systems whose numbers have commas
};

/// A number with comma and point exchanged.
QString exchanged(QString text) {
    for (QChar& each : text)
        each = each == u',' ? QChar(u'.') : each == u'.' ? QChar(u',') : each;
    return text;
}

std::optional<double> numberIn(const QString& text) {
    return parseNumber(text.toStdString());
}

void learn(Notation& notation, const QString& text) {
    const bool asPoint = numberIn(text).has_value();
    const bool asComma = numberIn(exchanged(text)).has_value();
    notation.comma = notation.comma || (asComma && !asPoint);
    notation.point = notation.point || (asPoint && !asComma);
}

/// A number with a decimal point; nothing if it could be two numbers. What is no number stays as it is, for
/// the rules of its box to refuse.
std::optional<QString> withPoint(const QString& text, const Notation& notation) {
    const auto asPoint = numberIn(text);
    const auto asComma = numberIn(exchanged(text));
    if (!asPoint && !asComma)
        return text;
    if (asPoint && asComma && *asPoint == *asComma)
        return text;
    if (notation.comma && notation.point)
        return asPoint && asComma ? std::nullopt : asPoint ? std::optional(text) : exchanged(text);
    if (notation.comma)
        return exchanged(text);
    const bool unclear = !notation.point && (text.contains(u',') || notation.semicolons);
    return asPoint && asComma && unclear ? std::nullopt : std::optional(text);
}

/// What users call the applications, in lower case, between bars; without "tank", which may follow.
constexpr std::pair<Application, const char*> applicationNames[] = {
    {Application::Expansion, "|expansion|exp|expn|hvac|hvacexpansion|hvacexp|"},
    {Application::Thermal, "|thermal|therm|thm|thermalexpansion|thermalexp|thermexp|potablethermalexpansion|"
                           "potablehotwaterthermalexpansion|"},
    {Application::Hydropneumatic, "|hydropneumatic|hydro|hyd|hydropneu|potablewaterhydropneumatic|"},
    {Application::Shock,
     "|shock|shk|shockarrestor|shockarrester|arrestor|arrester|waterhammer|hammer|waterhammerarrestor|"
     "waterhammerarrester|waterhammershock|waterhammershockarrestor|waterhammershockarrester|wha|"}};

std::optional<Application> applicationIn(const QString& text) {
    QString letters;
    for (const QChar each : text.toLower())
        if (each.isLetter())
            letters += each;
    if (letters.endsWith("tanks"))
        letters.chop(1);
    if (letters.endsWith("tank"))
        letters.chop(4);
    for (const auto& [application, names] : applicationNames)
        if (!letters.isEmpty() && QString::fromUtf8(names).contains(u'|' + letters + u'|'))
            return application;
    return std::nullopt;
}

constexpr int longestShown = 40; // characters of a cell in a message

/// Reads the records of a text below its headings.
class TableReader {
  public:
    explicit TableReader(const std::vector<DelimitedRecord>& read, char separator) : records(read) {
        notation.semicolons = separator == ';';
        readHeadings();
        if (!table.problems.isEmpty())
            return;
        learnNotation();
        for (std::size_t i = 1; i < records.size(); ++i)
            addLine(records[i]);
        reportMissing();
    }

    Table table;

  private:
    static QString textOf(const std::string& field) { return QString::fromStdString(field).trimmed(); }

    void readHeadings() {
        for (const std::string& field : records.front().fields) {
            const QString text = textOf(field);
            Heading heading;
            if (!text.isEmpty())
                heading = ImportColumns::readHeading(text);
            const bool twice = heading.column && has(heading.column->box);
            if (twice)
                heading.problem =
                    QStringLiteral("The column \"%1\" is there twice.").arg(heading.column->name);
            if (!heading.problem.isEmpty())
                table.problems.append(heading.problem);
            headings.push_back(heading);
        }
        if (!has("Application"))
            table.problems.append(missing("Application"));
    }

    static QString missing(const QString& box) {
        return QStringLiteral("The column \"%1\" is missing.").arg(nameOf(box));
    }

    bool has(const QString& box) const {
        return std::ranges::any_of(
            headings, [&](const Heading& each) { return each.column && box == each.column->box; });
    }

    void learnNotation() {
        for (std::size_t i = 1; i < records.size(); ++i)
            for (std::size_t at = 0; at < std::min(headings.size(), records[i].fields.size()); ++at)
                if (headings[at].column && headings[at].column->quantity != Quantity::Text)
                    learn(notation, textOf(records[i].fields[at]));
    }

    void addLine(const DelimitedRecord& record) {
        if (std::ranges::all_of(record.fields,
                                [](const std::string& each) { return textOf(each).isEmpty(); }))
            return;
        Line line{.number = record.line};
        for (std::size_t at = 0; at < record.fields.size(); ++at) {
            const QString text = textOf(record.fields[at]);
            if (text.isEmpty())
                continue;
            if (at >= headings.size() || !headings[at].column)
                line.problems.append(
                    QStringLiteral("\"%1\" is below no heading.").arg(text.left(longestShown)));
            else
                take(line, headings[at], text);
        }
        if (!line.application && line.problems.isEmpty())
            line.problems.append("Application: Please enter a valid value!");
        leaveOutUnused(line);
        table.lines.push_back(std::move(line));
    }

    void take(Line& line, const Heading& heading, const QString& text) {
        const QString box = heading.column->box;
        if (box == "Tag") {
            line.tag = text;
        } else if (box == "Series") {
            line.series = text;
        } else if (box == "Application") {
            line.application = applicationIn(text);
            if (!line.application)
                line.problems.append(
                    QStringLiteral("There is no application \"%1\" (Expansion, Thermal Expansion, "
                                   "Hydropneumatic, Shock Arrestor).")
                        .arg(text));
        } else if (heading.column->quantity == Quantity::Text) {
            line.boxes[box] = text;
        } else {
            line.boxes[box] = valueOf(line, heading, text);
        }
    }

    /// The text of a box in U.S. units.
    QString valueOf(Line& line, const Heading& heading, const QString& text) const {
        const auto number = withPoint(text, notation);
        if (!number) {
            line.problems.append(
                QStringLiteral("%1: \"%2\" can be read as two numbers. Please write it without "
                               "thousands separators.")
                    .arg(heading.column->name, text));
            return text;
        }
        const auto value = numberIn(*number);
        if (!heading.unit || !value)
            return *number;
        try {
            return shownNumber(heading.unit->convert(*value * heading.unit->toMetric));
        } catch (const Fault& fault) {
            line.problems.append(QStringLiteral("%1: %2").arg(heading.column->name, fault.what()));
            return text;
        }
    }

    static void leaveOutUnused(Line& line) {
        if (!line.application)
            return;
        const QStringList used = boxesOf(*line.application);
        for (const Column& column : ImportColumns::all())
            if (!used.contains(column.box) && line.boxes.remove(column.box))
                line.notes.append(QStringLiteral("%1 is not used.").arg(column.name));
    }

    /// Says once which column is missing, not in each line.
    void reportMissing() {
        for (const Line& line : table.lines)
            for (const QString& box : line.application ? boxesOf(*line.application) : QStringList())
                if (!mayBeEmpty(box) && !has(box) && !table.problems.contains(missing(box)))
                    table.problems.append(missing(box));
        if (table.lines.empty() && table.problems.isEmpty())
            table.problems.append("There is no line below the headings.");
    }

    const std::vector<DelimitedRecord>& records;
    std::vector<Heading> headings;
    Notation notation;
};

} // namespace

Table read(const QString& text) {
    const std::string bytes = text.toStdString();
    const char separator = separatorOf(bytes);
    try {
        const std::vector<DelimitedRecord> records = readDelimited(bytes, separator);
        if (records.empty())
            return {.problems = {"There is no text to import."}};
        if (records.front().fields.size() > mostColumns)
            return {
                .problems = {QStringLiteral("More than %1 columns cannot be imported.").arg(mostColumns)}};
        if (records.size() > mostLines + 1)
            return {.problems = {
                        QStringLiteral("More than %1 lines cannot be imported at once.").arg(mostLines)}};
        return TableReader(records, separator).table;
    } catch (const std::runtime_error& unended) {
        QString what = unended.what();
        what[0] = what[0].toUpper();
        return {.problems = {what + "."}};
    }
}

QString decoded(const QByteArray& file) {
    if (const auto marked = QStringDecoder::encodingForData(file))
        return QStringDecoder(*marked)(file);
    QStringDecoder utf8(QStringDecoder::Utf8);
    QString text = utf8(file);
    return utf8.hasError() ? QString::fromLatin1(file) : text;
}

QString nameOf(const QString& box) {
    const Column* column = ImportColumns::named(box);
    return column ? column->name : box;
}

QStringList boxesOf(Application application) {
    switch (application) {
    case Application::Expansion:
    case Application::Thermal:
        return {"cmboFluidType", "txtTotSysFluid", "txtSOTMin",     "txtSOTMax",
                "txtSOPMin",     "txtSOPMax",      "txtAtmPressure"};
    case Application::Hydropneumatic:
        return {"txtTotSysFluid", "txtSOPMin", "txtSOPMax", "txtAtmPressure"};
    case Application::Shock:
        return {"PipeIndex", "PipeLength", "FlowRate", "FlowPressure", "StaticPressure", "ShockPressure"};
    case Application::Package:
        break;
    }
    return {};
}

bool mayBeEmpty(const QString& box) {
    return box == "cmboFluidType" || box == "txtAtmPressure";
}

QByteArray sample() {
    std::vector<std::string> headings;
    for (const Column& column : ImportColumns::all())
        headings.push_back(ImportColumns::headingOf(column).toStdString());
    const std::vector<std::string> examples[] = {
        {"ET-1", "Expansion", "RCB", "Water", "500", "40", "180", "12", "30", "14.7", "", "", "", "", "", ""},
        {"TX-1", "Thermal Expansion", "GWB", "Water", "120", "60", "140", "60", "125", "14.7", "", "", "", "",
         "", ""},
        {"HP-1", "Hydropneumatic", "JWB", "", "30", "", "", "40", "60", "14.7", "", "", "", "", "", ""},
        {"SA-1", "Shock Arrestor", "", "", "", "", "", "", "", "", "2 in Sch 40", "100", "50", "40", "60",
         "150"}};
    std::string text = "\xEF\xBB\xBF" + delimited(headings, ',') + "\r\n"; // the mark tells spreadsheets
    for (const auto& example : examples)
        text += delimited(example, ',') + "\r\n";
    return QByteArray::fromStdString(text);
}

} // namespace ImportText
