// Writes the formulas as SVG pictures for the manual, one file each: formula-NAME.svg.
// Usage: brennoval-draw-formulas FOLDER

#include "calculation/Formulas.h"
#include "documents/report/Formula.h"

#include <QFile>
#include <QGuiApplication>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    constexpr double fontSize = 12; // points
    constexpr double widest = 600;
    for (const Formulas::Row& row : Formulas::all()) {
        QFile file(QString::fromLocal8Bit(argv[1]) + "/formula-" + row.name + ".svg");
        const QByteArray svg = Formula::picture(QString::fromUtf8(row.text), fontSize, widest).svg;
        if (!file.open(QIODevice::WriteOnly) || file.write(svg) != svg.size()) {
            std::fprintf(stderr, "%s cannot be written\n", qPrintable(file.fileName()));
            return 1;
        }
    }
    return 0;
}
