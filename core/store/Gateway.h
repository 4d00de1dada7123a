#pragma once

#include "core/store/Database.h"

namespace Gateway {

/// A closed connection to the user database ("User") or the catalogue (any other name), in the folder that
/// the session store gives. Without a folder its Open fails with 0x80040E4D.
/// Throws NoDatabaseFile when the folder has no such file or cannot be seen.
Connection dbConnection(const QString& databaseName);

/// An open connection. Throws as above, and DatabaseFault.
Connection openDatabase(const QString& databaseName);

/// The file of a database in a folder, whose name is taken without regard to case and whose separators may be
/// of either kind; an empty text when there is none.
QString FindDatabaseFile(const QString& folder, const QString& databaseName);

/// The name of a database's file as it is shipped.
QString DatabaseFileName(const QString& databaseName);

/// The password among the connection parameters. The files have none; it is kept for the error report's
/// mask and for databases of earlier versions.
QString DatabasePassword();

/// The rows of a statement, with the connection that they come over. Both close with the object.
class Rows {
  public:
    /// Throws as openDatabase.
    Rows(const QString& databaseName, const QString& statement, CursorType cursor = CursorType::ForwardOnly,
         CommandType command = CommandType::Text);
    /// The rows of a statement with a value for each of its ?. Throws as openDatabase.
    Rows(const QString& databaseName, const QString& statement, const QVariantList& parameters,
         CursorType cursor = CursorType::ForwardOnly);

    bool AtEnd() const { return recordset->AtEnd(); }
    Recordset::Field operator[](const QString& column) { return (*recordset)[column]; }
    Recordset* operator->() { return recordset.get(); }
    Recordset& operator*() { return *recordset; }

  private:
    std::unique_ptr<Connection> connection;
    std::unique_ptr<Recordset> recordset; // goes first
};

/// Runs a statement that gives no rows. Throws as openDatabase.
void Execute(const QString& databaseName, const QString& statement, const QVariantList& parameters = {});

} // namespace Gateway
