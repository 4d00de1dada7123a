#pragma once

#include "core/store/Database.h"

#include <QHash>
#include <QVariant>

#include <optional>
#include <vector>

/// The rows of a report, one at a time, whether a statement or a start routine supplies them.
class ReportRows {
  public:
    ReportRows() = default;
    virtual ~ReportRows() = default;
    ReportRows(const ReportRows&) = delete;
    ReportRows& operator=(const ReportRows&) = delete;

    virtual bool atEnd() const = 0;
    virtual void moveNext() = 0;
    /// A column of the current row as text; nothing for null.
    virtual std::optional<QString> text(const QString& column) = 0;
    /// The same as a number. Throws Fault 13 if it is none.
    virtual std::optional<double> number(const QString& column) = 0;
    virtual bool flag(const QString& column) = 0;
};

/// The rows of a statement or a table. The recordset must outlive the object.
class StatementRows : public ReportRows {
  public:
    explicit StatementRows(Recordset& rows) : recordset(rows) {}
    bool atEnd() const override { return recordset.atEnd(); }
    void moveNext() override { recordset.moveNext(); }
    std::optional<QString> text(const QString& column) override {
        const Recordset::Field field = recordset[column];
        return field.isNull() ? std::nullopt : std::optional(field.text());
    }
    std::optional<double> number(const QString& column) override {
        const Recordset::Field field = recordset[column];
        return field.isNull() ? std::nullopt : std::optional(field.number());
    }
    bool flag(const QString& column) override { return recordset[column].boolean(); }

  private:
    Recordset& recordset;
};

/// A row made by a start routine: texts and numbers by column. A column that it lacks is null.
using ReportRow = QHash<QString, QVariant>;

class ListedRows : public ReportRows {
  public:
    explicit ListedRows(std::vector<ReportRow> rows) : all(std::move(rows)) {}
    bool atEnd() const override { return at >= all.size(); }
    void moveNext() override { ++at; }
    std::optional<QString> text(const QString& column) override {
        const QVariant value = all[at].value(column);
        return value.isValid() ? std::optional(value.toString()) : std::nullopt;
    }
    std::optional<double> number(const QString& column) override {
        const QVariant value = all[at].value(column);
        return value.isValid() ? std::optional(value.toDouble()) : std::nullopt;
    }
    bool flag(const QString& column) override { return all[at].value(column).toBool(); }

  private:
    std::vector<ReportRow> all;
    std::size_t at = 0;
};
