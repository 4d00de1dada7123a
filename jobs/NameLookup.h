#pragma once

#include <QString>

class QWidget;

namespace NameLookup {

/// Opens the look-up on a table of names, "tblEngineer" or "tblContractor". The tag identifies the caller and
/// thereby the box that receives the name. Returns at once, before a name is chosen. Throws DatabaseFault.
void FillListView(const QWidget* field, const QString& table, const QString& tag);

} // namespace NameLookup
