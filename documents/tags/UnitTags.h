#pragma once

#include "core/store/TankLine.h"

#include <QString>

/// Each unit of a tank line has a two-part tag such as "AHU-1". A line has room for the tags of its first ten
/// units.
namespace UnitTags {

/// Whether a stored text is a tag: a hyphen alone is two empty parts and therefore none.
bool isGiven(const std::optional<QString>& tag);
/// What a unit, counted from 1, is called: its tag, or its tank's tag and its number. Throws DatabaseFault
/// 3265 for a unit that the tank line has no room for.
QString tagOf(const TankLine& tank, int unit, int room = TankLine::MostTags);

/// The parts on either side of a tag's first hyphen.
struct Parts {
    QString prefix;
    QString suffix;
};
/// Splits a tag. One without a hyphen, from data that predate the two parts, is split after its fifth
/// character. Throws Fault 5 if it has fewer.
Parts split(const QString& tag);

} // namespace UnitTags
