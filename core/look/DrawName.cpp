// Draws the program's name into a folder, as an outline and as masks of the sizes that the program begins
// with. Part of the build. Usage: brennoval-draw-name FONT FOLDER

#include "core/look/IconDrawing.h"
#include "core/look/NameDrawing.h"

#include <QDataStream>
#include <QFile>
#include <QGuiApplication>
#include <QRawFont>

#include <cstdio>

namespace {

QPainterPath outlineFrom(const QRawFont& font) {
    QPainterPath outline;
    double at = 0;
    for (const quint32 glyph : font.glyphIndexesForString(QStringLiteral("Brennoval"))) {
        outline.addPath(font.pathForGlyph(glyph).translated(at, 0));
        at += font.advancesForGlyphIndexes({glyph}).value(0).x();
    }
    return outline;
}

bool write(const QString& path, const auto& writing) {
    QFile file(path);
    QDataStream stream(&file);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    writing(stream);
    return stream.status() == QDataStream::Ok;
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QGuiApplication::arguments();
    constexpr double size = 1000;
    const QPainterPath outline = outlineFrom(QRawFont(arguments.value(1), size, QFont::PreferNoHinting));
    const QString folder = arguments.value(2);
    bool written =
        !outline.isEmpty() && write(folder + "/name.path", [&](QDataStream& stream) { stream << outline; });
    for (const int points : Appearance::nameSizes) {
        const QImage image = Appearance::drawnName(outline, points * Appearance::pixelsInPoint, Qt::black);
        written =
            written && write(QString("%1/name-%2.mask").arg(folder).arg(points), [&](QDataStream& stream) {
                stream << image.size() << Appearance::coverageOf(image);
            });
    }
    if (!written)
        std::fprintf(stderr, "brennoval-draw-name: cannot draw the name\n");
    return written ? 0 : 1;
}
