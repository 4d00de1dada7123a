#pragma once

#include "core/store/JetTokens.h"

namespace JetTokens {

/// Rewrites a statement on one group so that it can use an index; any other stays as it is.
///
/// GROUP BY column HAVING column = literal becomes a WHERE on the same rows: a group has the value in all its
/// rows or in none. The minimum of a column in that group becomes the first row in the order of the column,
/// at which the engine stops.
Tokens groupedToOrdered(const Tokens& tokens);

/// Says in each ORDER BY that nulls come before all values, for an engine that has them behind. What says it
/// itself stays as it is.
Tokens withNullsFirst(const Tokens& tokens);

} // namespace JetTokens
