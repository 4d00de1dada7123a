#pragma once

#include <QList>
#include <QString>

/// The words that stand for a tank's own numbers in a specification text, in the order in which they are
/// replaced.
namespace Placeholders {

inline const char* const all[] = {"@TankGal@", "@Qty@",        "@TankOD@",    "@TankOAL@", "@SysConn@",
                                  "@ModelNo@", "@WkPressure@", "@Precharge@", "@Rep@",     "@MakeUpCapacity@",
                                  "@Hp@"};

/// A value for each placeholder, in the same order.
struct Values {
    QString tankGal, qty, tankOD, tankOAL, sysConn, modelNo, wkPressure, precharge, rep, makeUpCapacity, hp;
    /// The values as a list, to go with `all`.
    QList<QString> inOrder() const {
        return {tankGal,    qty,       tankOD, tankOAL,        sysConn, modelNo,
                wkPressure, precharge, rep,    makeUpCapacity, hp};
    }
};

/// The text with every placeholder replaced, one after the other.
inline QString replaced(QString text, const Values& values) {
    const QList<QString> inOrder = values.inOrder();
    for (qsizetype i = 0; i < inOrder.size(); ++i)
        text.replace(QLatin1String(all[i]), inOrder[i]);
    return text;
}

} // namespace Placeholders
