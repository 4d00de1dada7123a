#pragma once

#include <QString>

/// The address of a database on a server, as libpq understands it.
namespace ServerAddress {

/// Whether a text is such an address rather than the path of a file.
bool isServer(const QString& address);

/// An address, or a message that holds one, with any password masked.
QString withoutPassword(const QString& address);

} // namespace ServerAddress
