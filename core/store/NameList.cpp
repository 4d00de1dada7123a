#include "core/store/NameList.h"

#include "core/store/Gateway.h"

using namespace Gateway;

namespace NameList {

namespace {

Rows find(const QString& table, const QString& name) {
    return {"User", "SELECT * FROM " + table + " WHERE fldName = ?", {name}};
}

} // namespace

QStringList names(const QString& table) {
    QStringList listed;
    for (Rows rows("User", table, CursorType::ForwardOnly, CommandType::Table); !rows.atEnd();
         rows->moveNext())
        listed.append(rows["fldName"].text());
    return listed;
}

int longest(const QString& table) {
    return Rows("User", table, CursorType::ForwardOnly, CommandType::Table)["fldName"].DefinedSize();
}

bool has(const QString& table, const QString& name) {
    return !find(table, name).atEnd();
}

void add(const QString& table, const QString& name) {
    Rows rows("User", table, CursorType::Keyset, CommandType::Table);
    rows->AddNew();
    rows["fldName"] = name;
    rows->Update();
}

void remove(const QString& table, const QString& name) {
    Rows rows("User", "SELECT * FROM " + table + " WHERE fldName = '" + name + "'", CursorType::Keyset);
    // A name that reads as an SQL condition must not delete a different name.
    if (!rows.atEnd() && rows["fldName"].text().compare(name, Qt::CaseInsensitive) == 0)
        rows->Delete();
}

} // namespace NameList
