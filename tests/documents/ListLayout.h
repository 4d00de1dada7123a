#pragma once

#include "documents/report/Layout.h"

/// A list of postal codes by representative, with every kind of section.
inline Layout listLayout() {
    return Layout::parse("list", R"(title "Postal codes"
section report-header 40
label lblTitle 0 0 400 24 text "Postal codes by representative" size 16 bold
section page-header 18
label lblCode 0 0 100 12 text "Code" bold
label lblRep 120 0 100 12 text "Representative" bold
line lineHead 0 15 540 0
section group-header 20 RepID
label lblGroup 0 4 80 12 text "Representative" italic
text txtGroup 80 4 60 12 column RepID bold
section detail 12
text txtCode 0 0 100 11 column PostalCode size 8
text txtRep 120 0 100 11 column RepID format "#,##0 rep" size 8 right
text txtFixed 240 0 100 11 text "assigned" size 8
section page-footer 16
label lblFoot 0 4 540 10 text "Foot" size 7 center
section report-footer 20
label lblEnd 0 4 540 12 text "End of the list"
)");
}
