#pragma once

#include "documents/report/Layout.h"

#include <functional>

class Recordset;

/// A report: its layout, where its rows come from, and the routine that prepares both. It is made fresh for
/// every use and takes its parameters from the session store.
class Report {
  public:
    /// Throws std::runtime_error when the report has no layout.
    explicit Report(const QString& name);

    const QString& name() const { return reportName; }
    Layout& layout() { return reportLayout; }
    /// A control of the layout. Throws Fault 91 when there is none.
    ReportControl& control(const QString& controlName);

    /// The rows: a statement on the "User" or the "Sys" database.
    QString database = QStringLiteral("User");
    QString source;

    /// Runs the start routine and renders the pages. Throws DatabaseFault when the rows cannot be read.
    Pages Run();

  private:
    QString reportName;
    Layout reportLayout;
};

/// Places the rows of a recordset on pages as a layout tells: detail rows go over as many pages as they need,
/// with the page header on each; a group header comes with each new value of its column and again on each
/// page, and never stands alone at the foot of one.
Pages RenderPages(const Layout& layout, Recordset& rows);

/// The reports of the program by name. A start routine traps its own failures; the pages are then made with
/// what it has set.
namespace Reports {
using StartRoutine = std::function<void(Report&)>;
void add(const QString& name, const StartRoutine& start);
bool known(const QString& name);
} // namespace Reports
