#pragma once

#include <QString>

class QWidget;

namespace NameLookup {

/// Opens the look-up on a table of names, "tblEngineer" or "tblContractor". The tag says who asks and thereby
/// which box takes the name; this routine returns at once, before there is one. Throws DatabaseFault.
void FillListView(const QWidget* field, const QString& table, const QString& tag);

} // namespace NameLookup
