// Draws the masks of the icons into a folder. Part of the build.
// Usage: brennoval-draw-masks FOLDER FILE.svg...

#include "core/look/IconDrawing.h"

#include <QFile>
#include <QFileInfo>

#include <cstdio>

namespace {

bool draw(const QString& svgFile, const QString& folder, int size) {
    QFile drawing(svgFile);
    QFile target(QString("%1/%2-%3.mask").arg(folder, QFileInfo(drawing).baseName()).arg(size));
    if (!drawing.open(QIODevice::ReadOnly) || !target.open(QIODevice::WriteOnly))
        return false;
    const QByteArray masks = Appearance::masksOf(drawing.readAll(), size);
    return !masks.isEmpty() && target.write(masks) == masks.size();
}

} // namespace

int main(int argc, char** argv) {
    for (int i = 2; i < argc; ++i)
        for (const int size : Appearance::maskSizes)
            if (!draw(argv[i], argv[1], size)) {
                std::fprintf(stderr, "brennoval-draw-masks: cannot draw %s\n", argv[i]);
                return 1;
            }
    return 0;
}
