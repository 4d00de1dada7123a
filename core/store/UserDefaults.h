#pragma once

#include "core/store/Record.h"

/// The user's defaults, copied to every new job.
struct UserDefaults {
    std::optional<QString> postalCode; // or CAN, or HOME
    std::optional<QString> firstPostalCode;
    std::optional<QString> defaultEngineer;
    std::optional<QString> defaultContractor;
    std::optional<double> defaultPSIa; // atmospheric pressure in psia

    /// The atmosphere at sea level in psia.
    static constexpr double StandardAtmosphere = 14.7;

    /// Maximum lengths, as declared, of what the user types.
    struct Sizes {
        int postalCode;
        int defaultEngineer;
        int defaultContractor;
        int defaultPSIa;
    };
};

namespace Records {

/// The user's defaults; nothing if there are none. Throws DatabaseFault.
std::optional<UserDefaults> readUserDefaults();

/// Throws DatabaseFault.
UserDefaults::Sizes userDefaultsSizes();

/// Stores the user's defaults in their only row, adding it if missing. Throws DatabaseFault.
void saveUserDefaults(const UserDefaults& defaults);

/// Whether a first-start flag is set: "FirstTime" or "Convert"; nothing if there are no flags. Throws
/// DatabaseFault.
std::optional<double> readFirstTimeFlag(const QString& flag);
/// Throws DatabaseFault.
void saveFirstTimeFlag(const QString& flag, bool set);

} // namespace Records
