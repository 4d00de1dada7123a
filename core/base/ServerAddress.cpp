#include "core/base/ServerAddress.h"

#include <QRegularExpression>

namespace ServerAddress {

bool isServer(const QString& address) {
    return address.startsWith(QLatin1String("postgresql://"), Qt::CaseInsensitive) ||
           address.startsWith(QLatin1String("postgres://"), Qt::CaseInsensitive);
}

QString withoutPassword(const QString& address) {
    // The last @ before the path ends a password, even where one stands in the password itself.
    static const QRegularExpression inAddress(QStringLiteral("(postgres(?:ql)?://[^:@/?\\s]*):[^/?\\s]*@"),
                                              QRegularExpression::CaseInsensitiveOption);
    static const QRegularExpression inParameter(
        QStringLiteral(R"(\b((?:ssl)?password\s*=\s*)('(?:[^'\\]|\\.)*'|[^\s&;]*))"),
        QRegularExpression::CaseInsensitiveOption);
    return QString(address)
        .replace(inAddress, QStringLiteral("\\1:********@"))
        .replace(inParameter, QStringLiteral("\\1********"));
}

} // namespace ServerAddress
