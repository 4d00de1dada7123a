#include "documents/export/CompoundFile.h"

#include <QList>
#include <QtEndian>

#include <algorithm>
#include <cstdint>

namespace {

constexpr qsizetype sectorSize = 512;
constexpr qsizetype entriesInSector = sectorSize / 4;
constexpr qsizetype tableSectorsInHeader = 109;
constexpr qsizetype smallestStream = 4096; // a shorter stream would go into a mini stream
constexpr std::uint32_t freeSector = 0xFFFFFFFF;
constexpr std::uint32_t endOfChain = 0xFFFFFFFE;
constexpr std::uint32_t tableSector = 0xFFFFFFFD;
constexpr std::uint32_t tableListSector = 0xFFFFFFFC;

template<typename Number>
void put(QByteArray& bytes, Number number) {
    const auto little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

void pad(QByteArray& bytes, qsizetype size, char with = 0) {
    bytes.append(QByteArray(size - bytes.size(), with));
}

qsizetype sectorsFor(qsizetype size, qsizetype unit) {
    return (size + unit - 1) / unit;
}

QByteArray directoryEntry(const QString& name, std::uint8_t type, std::uint32_t child, std::uint32_t start,
                          qsizetype size) {
    QByteArray entry;
    for (const QChar c : name)
        put<std::uint16_t>(entry, c.unicode());
    pad(entry, 64);
    put<std::uint16_t>(entry, name.isEmpty() ? std::uint16_t(0) : std::uint16_t((name.size() + 1) * 2));
    put<std::uint8_t>(entry, type);
    put<std::uint8_t>(entry, 1);           // black
    put<std::uint32_t>(entry, freeSector); // no sibling
    put<std::uint32_t>(entry, freeSector);
    put<std::uint32_t>(entry, child);
    pad(entry, 116); // class, state and times
    put<std::uint32_t>(entry, start);
    put<std::uint32_t>(entry, std::uint32_t(size));
    pad(entry, 128);
    return entry;
}

} // namespace

QByteArray compoundFileOf(const QString& streamName, const QByteArray& content) {
    QByteArray stream = content;
    pad(stream, std::max(smallestStream, sectorsFor(stream.size(), sectorSize) * sectorSize));
    const qsizetype streamSectors = stream.size() / sectorSize;
    // The allocation table covers the stream, the one-sector directory, itself and its own sector list.
    qsizetype tables = 1;
    qsizetype lists = 0;
    for (qsizetype before = 0; before != tables;) {
        before = tables;
        lists = tables > tableSectorsInHeader ? sectorsFor(tables - tableSectorsInHeader, entriesInSector - 1)
                                              : 0;
        tables = sectorsFor(streamSectors + 1 + tables + lists, entriesInSector);
    }
    const qsizetype directory = streamSectors;
    const qsizetype firstTable = directory + 1;
    const qsizetype firstList = firstTable + tables;

    QByteArray header = QByteArray::fromHex("d0cf11e0a1b11ae1");
    pad(header, 24); // class
    put<std::uint16_t>(header, 0x003E);
    put<std::uint16_t>(header, 3);
    put<std::uint16_t>(header, 0xFFFE); // little-endian
    put<std::uint16_t>(header, 9);      // 2^9 bytes per sector
    put<std::uint16_t>(header, 6);
    pad(header, 44);
    put<std::uint32_t>(header, std::uint32_t(tables));
    put<std::uint32_t>(header, std::uint32_t(directory));
    put<std::uint32_t>(header, 0);
    put<std::uint32_t>(header, std::uint32_t(smallestStream));
    put<std::uint32_t>(header, endOfChain); // no mini stream
    put<std::uint32_t>(header, 0);
    put<std::uint32_t>(header, lists > 0 ? std::uint32_t(firstList) : endOfChain);
    put<std::uint32_t>(header, std::uint32_t(lists));
    for (qsizetype i = 0; i < tableSectorsInHeader; ++i)
        put<std::uint32_t>(header, i < tables ? std::uint32_t(firstTable + i) : freeSector);

    QByteArray entries = directoryEntry(QStringLiteral("Root Entry"), 5, 1, endOfChain, 0) +
                         directoryEntry(streamName, 2, freeSector, 0, stream.size()) +
                         directoryEntry({}, 0, freeSector, 0, 0) + directoryEntry({}, 0, freeSector, 0, 0);

    QByteArray table;
    for (qsizetype i = 0; i < streamSectors; ++i)
        put<std::uint32_t>(table, i + 1 < streamSectors ? std::uint32_t(i + 1) : endOfChain);
    put<std::uint32_t>(table, endOfChain); // the directory
    for (qsizetype i = 0; i < tables; ++i)
        put<std::uint32_t>(table, tableSector);
    for (qsizetype i = 0; i < lists; ++i)
        put<std::uint32_t>(table, tableListSector);
    pad(table, tables * sectorSize, char(0xFF));

    QByteArray list;
    for (qsizetype i = 0; i < lists; ++i) {
        for (qsizetype k = 0; k < entriesInSector - 1; ++k) {
            const qsizetype place = tableSectorsInHeader + i * (entriesInSector - 1) + k;
            put<std::uint32_t>(list, place < tables ? std::uint32_t(firstTable + place) : freeSector);
        }
        put<std::uint32_t>(list, i + 1 < lists ? std::uint32_t(firstList + i + 1) : endOfChain);
    }
    return header + stream + entries + table + list;
}
