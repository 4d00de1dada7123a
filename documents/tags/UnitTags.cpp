#include "documents/tags/UnitTags.h"

#include "core/base/Fault.h"

namespace UnitTags {

bool isGiven(const std::optional<QString>& tag) {
    return tag && *tag != u"-";
}

QString tagOf(const TankLine& tank, int unit, int room) {
    if (unit > room)
        throw DatabaseFault(DatabaseFault::NoSuchColumn,
                            "Item cannot be found in the collection: TagID0" + std::to_string(unit));
    const auto& tag = tank.tags[std::size_t(unit - 1)];
    return isGiven(tag) ? *tag : tank.tankID.value_or(QString()) + u'.' + QString::number(unit);
}

Parts split(const QString& tag) {
    if (const qsizetype hyphen = tag.indexOf(u'-'); hyphen >= 0)
        return {tag.left(hyphen), tag.mid(hyphen + 1)};
    constexpr qsizetype prefixLength = 5;
    constexpr std::int32_t invalidCall = 5;
    if (tag.size() < prefixLength)
        throw Fault(invalidCall, "Invalid procedure call or argument");
    return {tag.left(prefixLength), tag.mid(prefixLength)};
}

} // namespace UnitTags
