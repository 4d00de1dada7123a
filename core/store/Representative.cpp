#include "core/store/Representative.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"

using namespace Gateway;

using Record::column;

std::span<const Record::Column<Representative>> Representative::columns() {
    static constexpr Record::Column<Representative> all[] = {
        column<&Representative::userPostalCode>("UserPostalCode"),
        column<&Representative::companyName>("CompanyName"),
        column<&Representative::address1>("Address1"),
        column<&Representative::address2>("Address2"),
        column<&Representative::phoneNo>("PhoneNo"),
        column<&Representative::faxNo>("FAXNo"),
    };
    return all;
}

namespace Records {

std::optional<Representative> findRepresentative(const QString& zip) {
    Rows joined("Sys",
                "SELECT * FROM tblPostalCodes INNER JOIN tblRepMaster ON tblPostalCodes.RepID = "
                "tblRepMaster.RepID WHERE tblPostalCodes.PostalCode = ?",
                {zip});
    if (joined.atEnd())
        return std::nullopt;
    // Both tables have a PostalCode, and the joined row returns the user's; the address needs the other.
    Rows own("Sys", "SELECT * FROM tblRepMaster WHERE RepID = ?", {joined["RepID"].text()});
    return Representative{.userPostalCode = zip,
                          .companyName = own["CompanyName"].text(),
                          .address1 = own["Address1"].text(),
                          .address2 = own["City"].text() + ", " + own["State"].text() + "  " +
                                      own["PostalCode"].text(),
                          .phoneNo = own["PhoneNo"].text(),
                          .faxNo = own["FAXNo"].text()};
}

QString directoryCompany(const QString& postalCode) {
    Rows code("Sys", "SELECT * FROM tblPostalCodes WHERE PostalCode = '" + postalCode + "'");
    if (code.atEnd() || code["RepID"].text().isEmpty())
        return {};
    Rows representative("Sys", "SELECT * FROM tblRepMaster WHERE RepID = ?", {code["RepID"].text()});
    return representative.atEnd() ? QString() : representative["CompanyName"].text();
}

std::vector<Representative> ownRepresentatives() {
    Rows own("User", "SELECT * FROM tblRepMaster");
    return Record::readAll(*own, Representative::columns());
}

std::optional<Representative> ownRepresentative(const QString& zip) {
    Rows own("User", "SELECT * FROM tblRepMaster WHERE UserPostalCode = ?", {zip});
    return own.atEnd() ? std::nullopt : std::optional(Record::read(*own, Representative::columns()));
}

void saveDefaultRepresentative(const Representative& representative) {
    Rows own("User", "tblRepMaster", CursorType::Keyset, CommandType::Table);
    if (own.atEnd())
        own->AddNew();
    Record::write(*own, representative, Representative::columns());
    own["Default"] = true;
    own->Update();
}

int representativeTextSize(const QString& column) {
    return Rows("User", "tblRepMaster", CursorType::ForwardOnly, CommandType::Table)[column].DefinedSize();
}

void TransferRepInfoToUser(const QString& zip) {
    underName("TransferRepInfoToUser", [&] {
        const auto found = findRepresentative(zip);
        if (!found || found->companyName->isEmpty())
            return;
        Rows user("User", "tblRepMaster", CursorType::Keyset, CommandType::Table);
        user->AddNew();
        Record::write(*user, *found, Representative::columns());
        user->Update();
    });
}

void deleteDirectory() {
    execute("Sys", "DELETE * FROM tblRepMaster");
}

} // namespace Records
