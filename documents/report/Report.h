#pragma once

#include "documents/report/Document.h"
#include "documents/report/Layout.h"

class Report;

/// What makes a report: a row of the table of reports.
struct ReportKind {
    const char* name;
    const char* layout;
    const char* database; // of its rows: "User" or "Sys"
    void (*start)(Report&);
    ReportOf of; // a screen can ask for a report of its record by name; a list only a command makes
};

/// A report: its layout, where its rows come from, and the routine that prepares both. It is made fresh for
/// every use and takes its parameters from the session store.
class Report {
  public:
    /// Throws std::runtime_error when the report has no layout.
    explicit Report(const ReportKind& reportKind);

    Layout& layout() { return reportLayout; }
    /// A control of the layout. Throws Fault 91 when there is none.
    ReportControl& control(const QString& controlName);

    /// The statement that reads the rows.
    QString source;
    /// What the file of the pages says about itself; the title begins as that of the layout.
    QString title;
    QString author;
    QString fileName;

    /// Runs the start routine, which traps its own failures, and renders the pages with what it has set.
    /// Throws DatabaseFault when the rows cannot be read.
    Document Run();

  private:
    const ReportKind& kind;
    Layout reportLayout;
};
