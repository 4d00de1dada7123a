#pragma once

#include <QByteArray>
#include <QIODevice>

#include <cstdint>
#include <string_view>
#include <vector>

/// Writes the objects of a PDF one after the other, so that a long document needs no memory. Small objects
/// are collected into compressed streams.
class PdfFile {
  public:
    explicit PdfFile(QIODevice& written);

    /// The number of an object that is written later.
    int reserve();
    void write(int number, const QByteArray& object);
    /// Writes a stream, compressed; the entries belong to its dictionary.
    void stream(int number, const QByteArray& entries, const QByteArray& data);
    int add(const QByteArray& object);
    int addStream(const QByteArray& entries, const QByteArray& data);
    /// Writes what is left, and the table of objects.
    void finish(int catalog, int info);

  private:
    struct Entry {
        std::uint8_t kind = 0; // 1 for an object of its own, 2 for one in a stream of objects
        std::uint32_t place = 0;
        std::uint16_t index = 0;
    };
    void put(const QByteArray& bytes);
    void raw(int number, const QByteArray& entries, const QByteArray& data);
    void flush();

    QIODevice& file;
    std::uint32_t length = 0;
    std::vector<Entry> table;
    QByteArray waiting; // the objects of the next stream of objects
    QByteArray places;  // and where they are in it
    int count = 0;      // how many
    int holder = 0;     // the number of that stream
};

namespace PdfWords {

/// Appends a number to three decimals.
void number(QByteArray& target, double value);
/// Appends numbers, each followed by a blank.
void numbers(QByteArray& target, std::initializer_list<double> values);
QByteArray reference(int object);
/// Appends a whole number; a reference to an object.
void integer(QByteArray& target, int value);
void reference(QByteArray& target, int object);

} // namespace PdfWords
