#pragma once

#include <QString>

namespace Gateway {

/// Doubles each apostrophe, for a quoted text in SQL.
inline QString SqlEscape(const QString& text) {
    return QString(text).replace(u'\'', QStringLiteral("''"));
}

} // namespace Gateway
