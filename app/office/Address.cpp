#include "app/office/Address.h"

#include "core/base/Fault.h"
#include "core/base/ServerAddress.h"

#include <QUrl>

#include <libpq-fe.h>

#include <memory>

namespace OfficeAddress {

namespace {

/// A part of an address, such as "dbname"; empty if it has none.
QString partOf(const QString& address, const char* keyword) {
    if (!ServerAddress::isServer(address))
        throw DatabaseFault(
            DatabaseFault::Unspecified,
            "The address of the office must be one such as postgresql://admin@server/brennoval.");
    char* text = nullptr;
    const std::unique_ptr<PQconninfoOption, void (*)(PQconninfoOption*)> options(
        PQconninfoParse(address.toUtf8().constData(), &text), PQconninfoFree);
    const std::unique_ptr<char, void (*)(void*)> error(text, PQfreemem);
    if (!options)
        throw DatabaseFault( // libpq's words may hold all of the address
            DatabaseFault::Unspecified,
            "The address of the office cannot be understood: " +
                ServerAddress::withoutPassword(error ? error.get() : "no memory").trimmed().toStdString());
    for (const PQconninfoOption* option = options.get(); option->keyword; ++option)
        if (qstrcmp(option->keyword, keyword) == 0)
            return QString::fromUtf8(option->val);
    return {};
}

} // namespace

QString databaseOf(const QString& address) {
    return partOf(address, "dbname");
}

bool holdsPassword(const QString& address) {
    return !partOf(address, "password").isEmpty() || !partOf(address, "sslpassword").isEmpty();
}

QString withDatabase(const QString& address, const QString& database) {
    // Of two databases that an address names, the later one counts.
    return address + (address.contains(u'?') ? u'&' : u'?') + QStringLiteral("dbname=") +
           QString::fromLatin1(QUrl::toPercentEncoding(database));
}

} // namespace OfficeAddress
