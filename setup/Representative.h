#pragma once

#include <QString>

#include <optional>

/// The maker's representative, whom submittals and specifications name.
struct Representative {
    QString companyName;
    QString address1;
    QString address2; // city, state and ZIP
    QString phoneNo;
    QString faxNo;
};

namespace UtilityFunctions {

/// The representative whom the catalogue's directory gives for a ZIP code. Throws DatabaseFault.
std::optional<Representative> FindRepresentative(const QString& zip);

/// Adds the representative of a ZIP code to the user's own; nothing is written when there is none. Throws
/// DatabaseFault.
void TransferRepInfoToUser(const QString& zip);

/// Empties the catalogue's directory. Where the user may not write the catalogue that fails. Throws
/// DatabaseFault.
void DeleteDirectory();

} // namespace UtilityFunctions
