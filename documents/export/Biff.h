#pragma once

#include <QByteArray>
#include <QtEndian>

#include <cstdint>
#include <cstring>

/// Records of a binary spreadsheet. All numbers are little-endian.
namespace Biff {

template<typename Number>
void put(QByteArray& bytes, Number number) {
    const auto little = qToLittleEndian(number);
    bytes.append(reinterpret_cast<const char*>(&little), sizeof little);
}

inline void put(QByteArray& bytes, double number) {
    std::uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    put(bytes, bits);
}

/// Several two-byte numbers.
inline void putWords(QByteArray& bytes, std::initializer_list<int> words) {
    for (const int word : words)
        put(bytes, std::uint16_t(word));
}

inline void record(QByteArray& stream, std::uint16_t kind, const QByteArray& body = {}) {
    put(stream, kind);
    put(stream, std::uint16_t(body.size()));
    stream += body;
}

} // namespace Biff
