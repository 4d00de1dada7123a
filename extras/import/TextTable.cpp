#include "extras/import/TextTable.h"

#include <QStringDecoder>

#include <algorithm>

namespace {

/// Takes one row after the other from a text.
class Reader {
  public:
    explicit Reader(const QString& whole) : text(whole), separator(separatorOf(whole)) {}

    bool atEnd() const { return place >= text.size(); }

    TextTable::Row row() {
        TextTable::Row taken{.number = line};
        do {
            taken.cells.append(cell());
        } while (!atEnd() && text[place++] == separator); // what is not a separator ends the line
        ++line;
        return taken;
    }

    QChar separatedBy() const { return separator; }
    bool isUnfinished() const { return unfinished; }

  private:
    /// The most frequent of the separators in the first line that is not empty, a tab before the others.
    static QChar separatorOf(const QString& whole) {
        const QString headings = whole.trimmed().section(u'\n', 0, 0);
        if (headings.contains(u'\t'))
            return u'\t';
        return headings.count(u';') > headings.count(u',') ? u';' : u',';
    }

    bool atCellEnd() const { return atEnd() || text[place] == separator || text[place] == u'\n'; }

    QString cell() {
        while (!atCellEnd() && text[place].isSpace())
            ++place;
        if (atEnd() || text[place] != u'"')
            return plain().trimmed();
        ++place;
        QString quoted = inQuotes();
        return quoted + plain().trimmed();
    }

    QString plain() {
        const qsizetype start = place;
        while (!atCellEnd())
            ++place;
        return text.mid(start, place - start);
    }

    QString inQuotes() {
        QString quoted;
        for (; !atEnd(); ++place) {
            if (text[place] == u'\n')
                ++line;
            if (text[place] != u'"') {
                quoted += text[place];
                continue;
            }
            if (place + 1 >= text.size() || text[place + 1] != u'"') {
                ++place;
                return quoted;
            }
            quoted += text[++place]; // two stand for one
        }
        unfinished = true;
        return quoted;
    }

    QString text;
    QChar separator;
    qsizetype place = 0;
    int line = 1;
    bool unfinished = false; // a quoted cell
};

} // namespace

TextTable TextTable::read(const QString& text) {
    QString lines = text;
    lines.remove(QChar::ByteOrderMark).replace("\r\n", "\n").replace(u'\r', u'\n');
    TextTable table;
    Reader reader(lines);
    table.decimalCommas = reader.separatedBy() == u';';
    while (!reader.atEnd()) {
        Row row = reader.row();
        if (std::ranges::all_of(row.cells, &QString::isEmpty))
            continue;
        if (table.headings.isEmpty())
            table.headings = row.cells;
        else
            table.rows.push_back(row);
    }
    table.unfinishedQuotes = reader.isUnfinished();
    return table;
}

QString decoded(const QByteArray& bytes) {
    const auto marked = QStringConverter::encodingForData(bytes);
    QStringDecoder decoder(marked.value_or(QStringConverter::Utf8));
    const QString text = decoder(bytes);
    return decoder.hasError() && !marked ? QString::fromLatin1(bytes) : text;
}
