#pragma once

#include "documents/report/Layout.h"

class Recordset;

/// Places the rows of a recordset on pages as a layout tells: the report header before the page header on the
/// first page; the page header and footer on each; detail rows over as many pages as they need; a group
/// header with each new value of its column and again on each page, never alone at the foot of one. Texts
/// shrink to their places, wrap and at last flow to pages of their own, with their heading; nothing is cut.
/// Throws DatabaseFault.
Pages RenderPages(const Layout& layout, Recordset& rows);

/// A number in a display pattern; the pattern "General", with what follows it, shows the number as it is
/// stored.
QString ShownNumber(double number, const QString& pattern);
