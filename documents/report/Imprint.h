#pragma once

#include <QString>

/// What the documents say of who made them.
namespace Imprint {

/// The author of a document for which there is no representative's company.
inline constexpr char maker[] = "Ordwick Company";

/// The program, its version and today's date.
QString madeLine();

} // namespace Imprint
