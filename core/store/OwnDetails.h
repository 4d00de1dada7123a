#pragma once

#include "core/store/Record.h"

/// What the user's own documents say of them.
struct OwnDetails {
    std::optional<QString> name; // of the engineer or office
    std::optional<QString> address1;
    std::optional<QString> address2;
    std::optional<QString> phoneNo;
    std::optional<QString> logo; // the picture itself, as SVG
    bool operator==(const OwnDetails&) const = default;

    /// Maximum lengths, as declared.
    struct Sizes {
        int name;
        int address1;
        int address2;
        int phoneNo;
    };
};

namespace Records {

/// All empty if the user has given none, or if the data wait for their upgrade. Throws DatabaseFault.
OwnDetails readOwnDetails();

/// Throws DatabaseFault.
OwnDetails::Sizes ownDetailsSizes();

/// Stores the details in their only row, adding it if missing. Throws DatabaseFault.
void saveOwnDetails(const OwnDetails& details);

} // namespace Records
