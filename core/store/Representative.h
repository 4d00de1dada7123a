#pragma once

#include "core/store/Record.h"

/// The maker's representative, whom submittals and specifications name.
struct Representative {
    std::optional<QString> userPostalCode;
    std::optional<QString> companyName;
    std::optional<QString> address1;
    std::optional<QString> address2; // city, state and ZIP
    std::optional<QString> phoneNo;
    std::optional<QString> faxNo;

    static std::span<const Record::Column<Representative>> columns();
};

namespace Records {

/// The representative whom the catalogue's directory gives for a ZIP code. Throws DatabaseFault, like all of
/// these.
std::optional<Representative> FindRepresentative(const QString& zip);

/// The company of the directory's representative for a postal code, which goes into the statement as it
/// stands; an empty text when there is none.
QString DirectoryCompany(const QString& postalCode);

/// The user's own representatives, in the order of the table.
std::vector<Representative> OwnRepresentatives();
/// The user's own for a ZIP code.
std::optional<Representative> OwnRepresentative(const QString& zip);
/// Makes a representative the user's default, in the first row.
void SaveDefaultRepresentative(const Representative& representative);
/// The longest text of a column, as declared.
int RepresentativeTextSize(const QString& column);

/// Adds the representative of a ZIP code to the user's own; nothing is written when there is none.
void TransferRepInfoToUser(const QString& zip);

/// Empties the catalogue's directory. Where the user may not write the catalogue that fails.
void DeleteDirectory();

} // namespace Records
