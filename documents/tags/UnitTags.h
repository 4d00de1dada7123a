#pragma once

#include "core/store/Database.h"

#include <QString>

/// A unit of a tank line has a tag of two parts, such as "AHU-1", in a column of the line.
namespace UnitTags {

/// A tank line has a column for each of its first ten units.
constexpr int most = 10;

/// The column of a unit's tag, from 1: "TagID01" to "TagID10". A unit behind the tenth has none.
QString Column(int unit);
/// Whether a column holds a tag: a hyphen alone is two empty parts, and none.
bool IsGiven(const Recordset::Field& tag);
/// What a unit goes by: its tag, or that of its tank and its number. Throws DatabaseFault 3265 for a column
/// that the tank line does not have.
QString TagOf(Recordset& tank, int unit, const QString& column);

/// The two parts of a tag, on the sides of its first hyphen.
struct Parts {
    QString prefix;
    QString suffix;
};
/// A tag without a hyphen, of data from before there were two parts, is split behind its fifth character.
/// Throws Fault 5 for one that has fewer.
Parts Split(const QString& tag);

} // namespace UnitTags
