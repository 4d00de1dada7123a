#include "core/store/UserDefaults.h"

#include "core/store/Gateway.h"

using namespace Gateway;

using Record::column;

namespace {

constexpr Record::Column<UserDefaults> columns[] = {
    column<&UserDefaults::postalCode>("PostalCode"),
    column<&UserDefaults::firstPostalCode>("FirstPostalCode"),
    column<&UserDefaults::defaultEngineer>("DefaultEngineer"),
    column<&UserDefaults::defaultContractor>("DefaultContractor"),
    column<&UserDefaults::defaultPSIa>("DefaultPSIa"),
};

Gateway::Rows table(const char* name, CursorType cursor = CursorType::ForwardOnly) {
    return {"User", name, cursor, CommandType::Table};
}

} // namespace

namespace Records {

std::optional<UserDefaults> readUserDefaults() {
    Rows user = table("tblUser");
    return user.atEnd() ? std::nullopt : std::optional(Record::read<UserDefaults>(*user, columns));
}

UserDefaults::Sizes userDefaultsSizes() {
    Rows user = table("tblUser");
    return {.postalCode = user["PostalCode"].DefinedSize(),
            .defaultEngineer = user["DefaultEngineer"].DefinedSize(),
            .defaultContractor = user["DefaultContractor"].DefinedSize(),
            .defaultPSIa = user["DefaultPSIa"].DefinedSize()};
}

void saveUserDefaults(const UserDefaults& defaults) {
    Rows user = table("tblUser", CursorType::Keyset);
    if (user.atEnd())
        user->AddNew();
    Record::write<UserDefaults>(*user, defaults, columns);
    user->Update();
}

std::optional<double> readFirstTimeFlag(const QString& flag) {
    Rows flags = table("tblFirstTime");
    return flags.atEnd() ? std::nullopt : std::optional(flags[flag].number());
}

void saveFirstTimeFlag(const QString& flag, bool set) {
    Rows flags = table("tblFirstTime", CursorType::Keyset);
    flags[flag] = set;
    flags->Update();
}

} // namespace Records
