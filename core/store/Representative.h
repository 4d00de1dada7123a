#pragma once

#include "core/store/Record.h"

/// The maker's representative, named in submittals and specifications.
struct Representative {
    std::optional<QString> userPostalCode;
    std::optional<QString> companyName;
    std::optional<QString> address1;
    std::optional<QString> address2; // city, state and ZIP
    std::optional<QString> phoneNo;
    std::optional<QString> faxNo;

    bool operator==(const Representative&) const = default;

    static std::span<const Record::Column<Representative>> columns();
};

namespace Records {

/// The catalogue directory's representative for a ZIP code. Throws DatabaseFault, like everything here.
std::optional<Representative> findRepresentative(const QString& zip);

/// The company of the directory's representative for a postal code, which is inserted into the statement
/// unescaped; empty if there is none.
QString directoryCompany(const QString& postalCode);

/// The user's own representatives, in table order.
std::vector<Representative> ownRepresentatives();
/// The user's own representative for a ZIP code.
std::optional<Representative> ownRepresentative(const QString& zip);
/// Makes a representative the user's default, in the first row.
void saveDefaultRepresentative(const Representative& representative);
/// The maximum length of a column, as declared.
int representativeTextSize(const QString& column);

/// Copies a ZIP code's representative to the user's own; writes nothing if there is none.
void TransferRepInfoToUser(const QString& zip);

/// Empties the catalogue's directory. Fails if the user may not write the catalogue.
void deleteDirectory();

} // namespace Records
