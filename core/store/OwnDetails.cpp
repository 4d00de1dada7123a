#include "core/store/OwnDetails.h"

#include "core/store/Gateway.h"

using namespace Gateway;

using Record::column;

namespace {

constexpr auto ownTable = "tblOwn";

constexpr Record::Column<OwnDetails> columns[] = {
    column<&OwnDetails::name>("OwnName"),      column<&OwnDetails::address1>("Address1"),
    column<&OwnDetails::address2>("Address2"), column<&OwnDetails::phoneNo>("PhoneNo"),
    column<&OwnDetails::logo>("Logo"),
};

} // namespace

namespace Records {

OwnDetails readOwnDetails() {
    Connection user = openDatabase("User");
    if (!user.engine().hasTable(ownTable))
        return {};
    Recordset own;
    own.Open(ownTable, user, CursorType::ForwardOnly, CommandType::Table);
    return own.atEnd() ? OwnDetails() : Record::read<OwnDetails>(own, columns);
}

OwnDetails::Sizes ownDetailsSizes() {
    Rows own("User", ownTable, CursorType::ForwardOnly, CommandType::Table);
    return {.name = own["OwnName"].DefinedSize(),
            .address1 = own["Address1"].DefinedSize(),
            .address2 = own["Address2"].DefinedSize(),
            .phoneNo = own["PhoneNo"].DefinedSize()};
}

void saveOwnDetails(const OwnDetails& details) {
    Rows own("User", ownTable, CursorType::Keyset, CommandType::Table);
    if (own.atEnd())
        own->AddNew();
    Record::write<OwnDetails>(*own, details, columns);
    own->Update();
}

} // namespace Records
