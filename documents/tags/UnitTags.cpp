#include "documents/tags/UnitTags.h"

#include "core/base/Fault.h"

namespace UnitTags {

QString Column(int unit) {
    return QStringLiteral("TagID%1").arg(unit, 2, 10, QChar(u'0'));
}

bool IsGiven(const Recordset::Field& tag) {
    return !tag.isNull() && tag.text() != u"-";
}

QString TagOf(Recordset& tank, int unit, const QString& column) {
    const Recordset::Field tag = tank[column];
    return IsGiven(tag) ? tag.text() : tank["TankID"].text() + u'.' + QString::number(unit);
}

Parts Split(const QString& tag) {
    if (const qsizetype hyphen = tag.indexOf(u'-'); hyphen >= 0)
        return {tag.left(hyphen), tag.mid(hyphen + 1)};
    constexpr qsizetype prefixLength = 5;
    constexpr std::int32_t invalidCall = 5;
    if (tag.size() < prefixLength)
        throw Fault(invalidCall, "Invalid procedure call or argument");
    return {tag.left(prefixLength), tag.mid(prefixLength)};
}

} // namespace UnitTags
