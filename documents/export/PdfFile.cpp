#include "documents/export/PdfFile.h"

#include "core/base/Fault.h"

#include <QCryptographicHash>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <utility>

namespace {

constexpr int most = 200; // objects in a stream of objects

/// The same bytes in less room, without the length that Qt puts before them.
QByteArray compressed(const QByteArray& data) {
    constexpr int lengthOfLength = 4;
    constexpr int quick = 4; // the text operators of a list shrink as well as with more effort
    QByteArray packed = qCompress(data, quick);
    packed.remove(0, lengthOfLength);
    return packed;
}

} // namespace

PdfFile::PdfFile(QIODevice& written) : file(written), table(1) {
    put("%PDF-1.7\n%\xe2\xe3\xcf\xd3\n");
}

int PdfFile::reserve() {
    table.emplace_back();
    return int(table.size()) - 1;
}

void PdfFile::write(int number, const QByteArray& object) {
    if (count == 0)
        holder = reserve();
    table[std::size_t(number)] = {2, std::uint32_t(holder), std::uint16_t(count)};
    PdfWords::integer(places, number);
    places += ' ';
    PdfWords::integer(places, int(waiting.size()));
    places += ' ';
    waiting += object;
    waiting += '\n';
    if (++count == most)
        flush();
}

int PdfFile::add(const QByteArray& object) {
    const int number = reserve();
    write(number, object);
    return number;
}

void PdfFile::stream(int number, const QByteArray& entries, const QByteArray& data) {
    if (data.isEmpty()) // no bytes at all are not compressed data
        raw(number, entries, data);
    else
        raw(number, entries + "/Filter/FlateDecode", compressed(data));
}

int PdfFile::addStream(const QByteArray& entries, const QByteArray& data) {
    const int number = reserve();
    stream(number, entries, data);
    return number;
}

void PdfFile::raw(int number, const QByteArray& entries, const QByteArray& data) {
    table[std::size_t(number)] = {1, length, 0};
    put(QByteArray::number(number) + " 0 obj\n<<" + entries + "/Length " + QByteArray::number(data.size()) +
        ">>stream\n");
    put(data);
    put("\nendstream\nendobj\n");
}

void PdfFile::flush() {
    if (count == 0)
        return;
    stream(holder,
           "/Type/ObjStm/N " + QByteArray::number(count) + "/First " + QByteArray::number(places.size()),
           places + waiting);
    places.resize(0); // and keep the memory for the next
    waiting.resize(0);
    count = 0;
}

void PdfFile::finish(int catalog, int info) {
    flush();
    const int own = reserve();
    table[std::size_t(own)] = {1, length, 0};
    QByteArray entries;
    entries.reserve(qsizetype(table.size()) * 7);
    const auto bytes = [&entries](std::uint32_t value, int size) {
        for (int i = size - 1; i >= 0; --i)
            entries += char(value >> (8 * i));
    };
    for (const Entry& entry : table) {
        bytes(entry.kind, 1);
        bytes(entry.place, 4);
        bytes(entry.index, 2);
    }
    const QByteArray name = QCryptographicHash::hash(entries, QCryptographicHash::Md5).toHex();
    const std::uint32_t start = length;
    stream(own,
           "/Type/XRef/W[1 4 2]/Size " + QByteArray::number(qsizetype(table.size())) + "/Root " +
               PdfWords::reference(catalog) + "/Info " + PdfWords::reference(info) + "/ID[<" + name + "><" +
               name + ">]",
           entries);
    put("startxref\n" + QByteArray::number(start) + "\n%%EOF\n");
}

void PdfFile::put(const QByteArray& bytes) {
    constexpr qsizetype most = std::numeric_limits<std::uint32_t>::max(); // that the table of objects can say
    if (bytes.size() > most - qsizetype(length))
        throw Fault(Fault::PathFileAccess, "The document is too large for a PDF file of 4 GB.");
    file.write(bytes);
    length += std::uint32_t(bytes.size());
}

void PdfWords::number(QByteArray& target, double value) {
    constexpr std::int64_t parts = 1000;
    std::array<char, 32> digits{};
    char* end = digits.data();
    std::int64_t whole = std::llround(value * double(parts));
    if (whole < 0) {
        *end++ = '-';
        whole = -whole;
    }
    end = std::to_chars(end, digits.data() + digits.size(), whole / parts).ptr;
    if (std::int64_t rest = whole % parts; rest != 0) {
        *end++ = '.';
        for (std::int64_t place = parts / 10; rest > 0; rest %= place, place /= 10)
            *end++ = char('0' + rest / place);
    }
    target.append(digits.data(), end - digits.data());
}

void PdfWords::numbers(QByteArray& target, std::initializer_list<double> values) {
    for (const double value : values) {
        number(target, value);
        target += ' ';
    }
}

QByteArray PdfWords::reference(int object) {
    return QByteArray::number(object) + " 0 R";
}

void PdfWords::integer(QByteArray& target, int value) {
    std::array<char, 16> digits{};
    const char* end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    target.append(digits.data(), end - digits.data());
}

void PdfWords::reference(QByteArray& target, int object) {
    integer(target, object);
    target += " 0 R";
}
