#include "documents/export/SheetPictures.h"

#include "documents/export/Escher.h"

#include <QCryptographicHash>

#include <cmath>

using namespace Biff;
using namespace Escher;

namespace {

constexpr std::uint8_t png = 6; // the kind of picture

QByteArray imageAtom(const QByteArray& image, int uses) {
    constexpr std::uint8_t noTag = 0xFF;
    const QByteArray name = QCryptographicHash::hash(image, QCryptographicHash::Md5);
    QByteArray body = name;
    put(body, noTag);
    const QByteArray blip = atom(0, 0x6E0, 0xF01E, body + image);
    QByteArray entry;
    put(entry, png);
    put(entry, png);
    entry += name;
    putWords(entry, {noTag});
    entry += words({std::uint32_t(blip.size()), std::uint32_t(uses), 0, 0});
    return atom(2, png, 0xF007, entry + blip);
}

/// The description, for those who do not see the picture.
QByteArray wide(const QString& text) {
    QByteArray bytes;
    for (const QChar c : text)
        put(bytes, std::uint16_t(c.unicode()));
    return bytes + QByteArray(2, 0);
}

QByteArray placeOf(const SheetPictures::Corner& upperLeft, const SheetPictures::Corner& lowerRight) {
    constexpr int acrossParts = 1024;
    constexpr int downParts = 256;
    constexpr int movesWithCells = 2;
    QByteArray place;
    putWords(place, {movesWithCells});
    for (const SheetPictures::Corner& corner : {upperLeft, lowerRight})
        putWords(place, {corner.column, int(std::lround(corner.across * acrossParts)), corner.row,
                         int(std::lround(corner.down * downParts))});
    return place;
}

QByteArray object(int number) {
    constexpr int picture = 8;
    QByteArray body;
    putWords(body, {0x0015, 0x0012, picture, number, 0x6011});
    body += QByteArray(12, 0);
    putWords(body, {0x0007, 2, 0xFFFF, 0x0008, 2, 0x0001, 0, 0});
    return body;
}

} // namespace

void SheetPictures::add(int sheet, const QByteArray& image, const QString& description,
                        const Corner& upperLeft, const Corner& lowerRight) {
    int& number = known[image];
    if (number == 0) {
        images.append(image);
        uses.append(0);
        number = int(images.size());
    }
    ++uses[number - 1];
    placed[sheet].append({number, description, upperLeft, lowerRight});
}

QByteArray SheetPictures::ofWorkbook(int sheets) const {
    QList<int> shapes;
    for (int sheet = 0; sheet < sheets; ++sheet)
        shapes.append(int(placed.value(sheet).size()));
    QByteArray entries;
    for (qsizetype i = 0; i < images.size(); ++i)
        entries += imageAtom(images[i], uses[i]);
    const QByteArray all = drawings(shapes, atom(container, unsigned(images.size()), 0xF001, entries));
    constexpr qsizetype mostRecordBytes = 8224;
    QByteArray stream;
    for (qsizetype from = 0; from < all.size(); from += mostRecordBytes)
        record(stream, from == 0 ? 0x00EB : 0x003C, all.mid(from, mostRecordBytes));
    return stream;
}

QByteArray SheetPictures::ofSheet(int sheet) const {
    const QList<Placed> list = placed.value(sheet);
    const int firstShape = (sheet + 1) * shapesOfASheet;
    QList<QByteArray> shapes;
    qsizetype length = 0;
    for (const Placed& one : list) {
        constexpr unsigned pictureFrame = 75;
        const QByteArray described = wide(one.description);
        shapes.append(atom(
            container, 0, 0xF004,
            atom(2, pictureFrame, 0xF00A, words({std::uint32_t(firstShape + 1 + shapes.size()), 0x0A00})) +
                properties({{0x4104, std::uint32_t(one.image)}, {0x8381, std::uint32_t(described.size())}},
                           described) +
                atom(0, 0, 0xF010, placeOf(one.upperLeft, one.lowerRight)) + atom(0, 0, 0xF011, {})));
        length += shapes.last().size();
    }
    QByteArray stream;
    QByteArray begun = drawing(sheet + 1, int(list.size()), length);
    for (int i = 0; i < shapes.size(); ++i) {
        record(stream, 0x00EC, begun + shapes[i]);
        record(stream, 0x005D, object(i + 1));
        begun.clear();
    }
    return stream;
}
