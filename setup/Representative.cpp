#include "setup/Representative.h"

#include "core/base/Fault.h"
#include "core/store/Gateway.h"
#include "core/store/SqlText.h"

namespace UtilityFunctions {

std::optional<Representative> FindRepresentative(const QString& zip) {
    Rows joined("Sys", "SELECT * FROM tblPostalCodes INNER JOIN tblRepMaster ON tblPostalCodes.RepID = "
                       "tblRepMaster.RepID WHERE tblPostalCodes.PostalCode = '" +
                           SqlEscape(zip) + "'");
    if (joined.AtEnd())
        return std::nullopt;
    // Both tables have a PostalCode, and the joined row gives the user's; the address needs the other.
    Rows own("Sys", "SELECT * FROM tblRepMaster WHERE RepID = '" + SqlEscape(joined["RepID"].text()) + "'");
    return Representative{.companyName = own["CompanyName"].text(),
                          .address1 = own["Address1"].text(),
                          .address2 = own["City"].text() + ", " + own["State"].text() + "  " +
                                      own["PostalCode"].text(),
                          .phoneNo = own["PhoneNo"].text(),
                          .faxNo = own["FAXNo"].text()};
}

void TransferRepInfoToUser(const QString& zip) {
    Named("TransferRepInfoToUser", [&] {
        const auto found = FindRepresentative(zip);
        if (!found || found->companyName.isEmpty())
            return;
        Rows user("User", "tblRepMaster", CursorType::Keyset, CommandType::Table);
        user->AddNew();
        user["UserPostalCode"] = zip;
        user["CompanyName"] = found->companyName;
        user["Address1"] = found->address1;
        user["Address2"] = found->address2;
        user["PhoneNo"] = found->phoneNo;
        user["FaxNo"] = found->faxNo;
        user->Update();
    });
}

void DeleteDirectory() {
    Rows("Sys", "DELETE * FROM tblRepMaster");
}

} // namespace UtilityFunctions
