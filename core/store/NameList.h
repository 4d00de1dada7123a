#pragma once

#include <QStringList>

/// The lists of names, tblEngineer and tblContractor, which the user keeps.
namespace NameList {

/// The names of a list in the order of the table. Throws DatabaseFault, like all of these.
QStringList names(const QString& table);
/// The longest name that a list takes, as declared.
int longest(const QString& table);
bool has(const QString& table, const QString& name);
void add(const QString& table, const QString& name);
/// Takes a name out of a list. A name with an apostrophe fails, as it always has.
void remove(const QString& table, const QString& name);

} // namespace NameList
