#pragma once

#include <QByteArray>
#include <QString>

/// A compound file (the container of binary office documents, version 3 with sectors of 512 bytes) that holds
/// one stream.
QByteArray CompoundFileOf(const QString& streamName, const QByteArray& stream);
