#pragma once

#include <QStringList>

/// The user's name lists, tblEngineer and tblContractor.
namespace NameList {

/// The names of a list in table order. Throws DatabaseFault, like everything here.
QStringList names(const QString& table);
/// The maximum length of a name, as declared.
int longest(const QString& table);
bool has(const QString& table, const QString& name);
void add(const QString& table, const QString& name);
/// Deletes a name from a list. A name with an apostrophe fails, as it always has.
void remove(const QString& table, const QString& name);

} // namespace NameList
