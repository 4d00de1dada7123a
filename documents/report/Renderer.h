#pragma once

#include "documents/report/Layout.h"

class Recordset;
class ReportRows;

/// Lays out rows on pages as their layout says: above the page header the report header on the first page and
/// the running header on all others; page header and footer on every page; detail rows on as many pages as
/// they need; a group header at each new value of its column and again on each page, never last on a page.
/// Texts shrink to fit, then wrap, then flow onto pages of their own under their heading; nothing is cut.
/// Where a section has controls that grow, it becomes as high as their contents need. Throws DatabaseFault.
Pages renderPages(const Layout& layout, ReportRows& rows);
Pages renderPages(const Layout& layout, Recordset& rows);

/// Formats a number by a display pattern. The pattern "General", with any suffix, shows the number as stored.
QString shownNumber(double number, const QString& pattern);
