#pragma once

#include "documents/report/Document.h"
#include "documents/report/Layout.h"
#include "documents/report/ReportRows.h"

#include <QVariantList>

class Report;

/// What defines a report: a row of the table of reports.
struct ReportKind {
    const char* name;
    const char* layout;
    const char* database; // that holds its rows: "User" or "Sys"
    void (*start)(Report&);
    ReportOf of; // a screen may ask for its record's report by name; only commands make lists
};

/// A report: its layout, the source of its rows, and the routine that prepares both. A new one is made for
/// every use and takes its parameters from the session store.
class Report {
  public:
    /// Throws std::runtime_error when the report has no layout.
    explicit Report(const ReportKind& reportKind);

    Layout& layout() { return reportLayout; }
    /// A control of the layout. Throws Fault 91 when there is none.
    ReportControl& control(const QString& controlName);

    /// The statement that reads the rows; empty for a report whose start routine lists them.
    QString source;
    /// The values for each ? in it.
    QVariantList parameters;
    std::vector<ReportRow> rows;
    /// The description that goes into a file of the pages; the title starts as the layout's.
    QString title;
    QString author;
    QString fileName;

    /// Runs the start routine, which traps its own failures, and renders the pages with what it has set.
    /// Throws DatabaseFault when the rows cannot be read.
    Document Run();

  private:
    Pages listedPages() const;
    Pages statementPages() const;

    const ReportKind& kind;
    Layout reportLayout;
};
