#include "documents/drawings/Drawings.h"

#include "core/base/Fault.h"
#include "core/base/Numbers.h"
#include "core/base/Program.h"
#include "core/shell/Dialogs.h"
#include "core/shell/ErrorReport.h"
#include "core/shell/Hourglass.h"
#include "core/store/Catalogue.h"
#include "documents/report/Picture.h"

#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>
#include <cerrno>

using namespace Catalogue;
using namespace Faults;

PictureFrame fitPicture(double x, double y, const PictureFrame& area) {
    const bool widthLimits =
        x >= y ? Divide(x, y) * area.height > area.width : Divide(y, x) * area.width <= area.height;
    PictureFrame fitted = area;
    if (widthLimits) {
        fitted.height = Divide(y, x) * area.width;
        fitted.top = area.height / 2 + area.top - fitted.height / 2;
    } else {
        fitted.width = Divide(x, y) * area.height;
        fitted.left = area.width / 2 + area.left - fitted.width / 2;
    }
    return fitted;
}

QString drawingPath(const QString& name, const QString& ending) {
    const QString file = name + u'.' + ending;
    const bool plain = std::none_of(file.begin(), file.end(), [](QChar c) {
        return c == u'/' || c == u'\\' || c == u':' || c.unicode() < u' ';
    });
    if (!plain || name.startsWith(u'.'))
        throw Fault(Fault::FileNotFound, "File not found: " + file.toStdString());
    return Program::dataFolder() + "/Drawings/" + file;
}

namespace Drawings {

namespace {

/// Drawings are black on white; on a dark screen the paper is dimmed to avoid glare.
constexpr QColor dimPaper(0xb4, 0xbd, 0xc6);

} // namespace

QPixmap onPaper(const QByteArray& svg, const QSize& size, double scale) {
    QSvgRenderer renderer(svg);
    QPixmap pixmap(size * scale);
    pixmap.fill(Qt::white);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    if (QGuiApplication::palette().color(QPalette::Window).lightness() < 128) {
        painter.setCompositionMode(QPainter::CompositionMode_Multiply);
        painter.fillRect(pixmap.rect(), dimPaper);
    }
    painter.end();
    pixmap.setDevicePixelRatio(scale);
    return pixmap;
}

void showQuietly(QLabel* box, const QString& drawing) {
    box->clear();
    try {
        if (const auto known = findDrawing(drawing); known && known->width > 0 && known->height > 0) {
            const QSize size =
                QSizeF(known->width, known->height).scaled(box->size(), Qt::KeepAspectRatio).toSize();
            box->setPixmap(
                onPaper(readPicture(drawingPath(drawing, known->ending)), size, box->devicePixelRatioF()));
        }
    } catch (const Fault&) { // it is only an addition
    }
}

bool LoadDrawing(QLabel* box, int areaWidth, int areaHeight, const QString& drawing, QString& path) {
    const Hourglass hourglass;
    try {
        const auto known = findDrawing(drawing);
        if (!known) {
            Dialogs::current().beep();
            return false;
        }
        const double x = ToInt16(known->width);
        const double y = ToInt16(known->height);
        const QString file = drawingPath(drawing, known->ending);
        const PictureFrame frame =
            fitPicture(x, y, {double(box->x()), double(box->y()), double(areaWidth), double(areaHeight)});
        const QRect place = QRectF(frame.left, frame.top, frame.width, frame.height).toRect();
        box->setPixmap(onPaper(readPicture(file), place.size(), box->devicePixelRatioF()));
        box->setGeometry(place);
        path = file;
        return true;
    } catch (const Fault& fault) {
        showErrorText(QString("Error Loading Picture%1\n%2\n%3\n%4\n")
                          .arg(fault.number())
                          .arg(QString::fromUtf8(fault.what()))
                          .arg(errno)
                          .arg(QString::fromStdString(fault.source())));
        return false;
    }
}

void showTankDrawing(QLabel* box, QLineEdit* nameBox, const QString& drawing) {
    QString path;
    const bool loaded = LoadDrawing(box, box->width(), box->height(), drawing, path);
    if (!loaded && drawing.isEmpty())
        return;
    box->setVisible(loaded);
    nameBox->setText(drawing);
    nameBox->setVisible(!loaded);
}

} // namespace Drawings
