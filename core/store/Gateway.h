#pragma once

#include "core/store/Database.h"

namespace Gateway {

/// A closed connection to the user database ("User") or the catalogue (any other name), in the folder given
/// by the session store; the user database is instead an office's if the store holds its address. Without a
/// folder, Open fails with 0x80040E4D. Throws NoDatabaseFile if the folder
/// does not hold the file or cannot be reached.
Connection dbConnection(const QString& databaseName);

/// The address of the office's database that holds the user's data; empty for a file.
QString officeAddress();

/// An open connection. Throws as above, and DatabaseFault.
Connection openDatabase(const QString& databaseName);

/// The path of a database file in a folder, matching its name regardless of case; the folder may use either
/// kind of separator. Empty if there is none.
QString findDatabaseFile(const QString& folder, const QString& databaseName);

/// The file name of a database as shipped.
QString databaseFileName(const QString& databaseName);

/// The password among the connection parameters. Our files have none; it remains for the error report's mask
/// and for databases of earlier versions.
QString databasePassword();

/// The rows of a statement, together with their connection. Both close with the object.
class Rows {
  public:
    /// Throws as openDatabase.
    Rows(const QString& databaseName, const QString& statement, CursorType cursor = CursorType::ForwardOnly,
         CommandType command = CommandType::Text);
    /// The rows of a statement with a value for each ?. Throws as openDatabase.
    Rows(const QString& databaseName, const QString& statement, const QVariantList& parameters,
         CursorType cursor = CursorType::ForwardOnly);

    bool atEnd() { return recordset->atEnd(); }
    Recordset::Field operator[](const QString& column) { return (*recordset)[column]; }
    Recordset* operator->() { return recordset.get(); }
    Recordset& operator*() { return *recordset; }

  private:
    std::unique_ptr<Connection> connection;
    std::unique_ptr<Recordset> recordset; // must be destroyed first
};

/// Runs a statement that returns no rows. Throws as openDatabase.
void execute(const QString& databaseName, const QString& statement, const QVariantList& parameters = {});

} // namespace Gateway
