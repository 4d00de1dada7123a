#pragma once

#include "core/store/TankLine.h"

#include <QString>

/// A unit of a tank line has a tag of two parts, such as "AHU-1". A line has room for those of its first ten
/// units.
namespace UnitTags {

/// Whether a stored text is a tag: a hyphen alone is two empty parts, and none.
bool IsGiven(const std::optional<QString>& tag);
/// What a unit, from 1, goes by: its tag, or that of its tank and its number. Throws DatabaseFault 3265 for a
/// unit that the tank line has no room for.
QString TagOf(const TankLine& tank, int unit, int room = TankLine::mostTags);

/// The two parts of a tag, on the sides of its first hyphen.
struct Parts {
    QString prefix;
    QString suffix;
};
/// A tag without a hyphen, of data from before there were two parts, is split behind its fifth character.
/// Throws Fault 5 for one that has fewer.
Parts Split(const QString& tag);

} // namespace UnitTags
