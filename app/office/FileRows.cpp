#include "app/office/FileRows.h"

#include "app/office/Office.h"
#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/store/Schema.h"

#include <QDateTime>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <algorithm>
#include <cmath>

namespace FileRows {

namespace {

using Office::refuse;

/// Why a value cannot be one of its column; empty if it can.
QString objection(const Recordset::Field& column, const QVariant& value) {
    constexpr double largestWhole = 2147483647;
    if (!value.isValid())
        return {};
    if (!column.takesText()) {
        const double number = value.toDouble();
        const bool fits =
            value.typeId() != QMetaType::QString && std::isfinite(number) &&
            (column.takesFractions() || (std::abs(number) <= largestWhole && number == std::trunc(number)));
        return fits ? QString() : QStringLiteral("a number that the column does not take");
    }
    // A text longer than the column declares is no obstacle: prior data may have left it in the file.
    return value.toString().contains(QChar(0)) ? QStringLiteral("a text with a character that is none")
                                               : QString();
}

/// A moment is a text of a column without a size of its own.
QString objectionToMoment(const QVariant& value) {
    return !value.isValid() ||
                   QDateTime::fromString(value.toString(), QStringLiteral("yyyy-MM-dd HH:mm:ss")).isValid()
               ? QString()
               : QStringLiteral("something that is no date");
}

} // namespace

JobCopies::Source open(const QString& file) {
    JobCopies::Source source(file, JobCopies::Origin::Own);
    if (const QString damage = source.data().engine().findDamage(Engine::Check::Thorough); !damage.isEmpty())
        refuse("The file is damaged: " + damage);
    if (const QStringList colliding = Schema::collidingNames(source.data()); !colliding.isEmpty())
        refuse("The file holds numbers that differ only in case: " + colliding.join(", ") +
               ". Please rename one of each in the program first.");
    return source;
}

StoredRows read(const JobCopies::Source& file, const QString& table) {
    Recordset found;
    found.Open(table, file.data(), CursorType::ForwardOnly, CommandType::Table);
    StoredRows all{.table = table, .columns = found.columnNames(), .rows = {}};
    for (; !found.atEnd(); found.moveNext()) {
        QVariantList row;
        for (const QString& name : all.columns) {
            const Recordset::Field column = found[name];
            const QVariant value = column.stored();
            const QString why = name == u"DateCreated" ? objectionToMoment(value) : objection(column, value);
            if (!why.isEmpty())
                refuse(QString("The file holds %1 in the column %2 of %3, row %4 (%5). Nothing was changed.")
                           .arg(why, name, table)
                           .arg(all.rows.size() + 1)
                           .arg(row.isEmpty() ? value.toString() : row.first().toString()));
            row.append(value);
        }
        all.rows.append(row);
    }
    return all;
}

QString folded(const QVariant& text) {
    return text.toString().toCaseFolded();
}

QByteArray json(const StoredRows& rows, qsizetype first, qsizetype count) {
    QJsonArray array;
    for (const QVariantList& row : rows.rows.sliced(first, count)) {
        QJsonObject object;
        for (qsizetype i = 0; i < row.size(); ++i)
            if (row[i].typeId() == QMetaType::Double) // as text, which the server reads to the last bit
                object.insert(rows.columns[i].toLower(),
                              QString::fromStdString(shownNumberText(row[i].toDouble())));
            else if (row[i].isValid())
                object.insert(rows.columns[i].toLower(), row[i].toString());
        array.append(object);
    }
    return QJsonDocument(array).toJson(QJsonDocument::Compact);
}

} // namespace FileRows
