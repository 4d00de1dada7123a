#pragma once

#include <QByteArray>
#include <QString>

/// A compound file (the container of binary office documents, version 3 with 512-byte sectors) that holds one
/// stream.
QByteArray compoundFileOf(const QString& streamName, const QByteArray& stream);
