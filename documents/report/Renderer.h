#pragma once

#include "documents/report/Layout.h"

class Recordset;

/// Lays out the rows of a recordset on pages as its layout says: the report header above the page header on
/// the first page; page header and footer on every page; detail rows on as many pages as they need; a group
/// header at each new value of its column and again on each page, never last on a page. Texts shrink to fit,
/// then wrap, then flow onto pages of their own under their heading; nothing is cut. Throws DatabaseFault.
Pages renderPages(const Layout& layout, Recordset& rows);

/// Formats a number by a display pattern. The pattern "General", with any suffix, shows the number as stored.
QString shownNumber(double number, const QString& pattern);
