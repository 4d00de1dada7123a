#include "documents/export/PdfPictures.h"

#include <QImage>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>
#include <QSvgRenderer>

#include <algorithm>
#include <cmath>
#include <cstring>

using PdfWords::number;
using PdfWords::numbers;
using PdfWords::reference;

namespace {

/// Takes down what a painter paints as the operators of a PDF.
class Engine : public QPaintEngine {
  public:
    explicit Engine(PdfFile& written)
        : QPaintEngine(PrimitiveTransform | PainterPaths | AlphaBlend | Antialiasing | ConstantOpacity |
                       PaintOutsidePaintEvent),
          file(written) {}

    bool begin(QPaintDevice*) override { return true; }
    bool end() override { return true; }
    Type type() const override { return User; }
    void updateState(const QPaintEngineState&) override {} // each instruction brings its own

    void drawPath(const QPainterPath& path) override {
        const bool filled = state->brush().style() != Qt::NoBrush;
        const bool stroked = state->pen().style() != Qt::NoPen;
        if (path.isEmpty() || !(filled || stroked))
            return;
        begin();
        if (filled)
            color(state->brush().color(), "rg");
        if (stroked)
            pen();
        outline(path);
        const bool evenOdd = path.fillRule() == Qt::OddEvenFill;
        content += filled && stroked ? (evenOdd ? "B*" : "B") : stroked ? "S" : evenOdd ? "f*" : "f";
        content += " Q\n";
    }

    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override {
        QPainterPath path;
        path.addPolygon(QPolygonF(QList<QPointF>(points, points + count)));
        if (mode != PolylineMode)
            path.closeSubpath();
        path.setFillRule(mode == WindingMode ? Qt::WindingFill : Qt::OddEvenFill);
        drawPath(path);
    }

    void drawPixmap(const QRectF& place, const QPixmap& pixmap, const QRectF& part) override {
        drawImage(place, pixmap.toImage(), part, Qt::AutoColor);
    }

    void drawImage(const QRectF& place, const QImage& image, const QRectF& part,
                   Qt::ImageConversionFlags) override {
        const QImage whole = image.copy(part.toAlignedRect()).convertToFormat(QImage::Format_RGBA8888);
        begin();
        numbers(content, {place.width(), 0, 0, -place.height(), place.left(), place.bottom()});
        const QByteArray name = "I" + QByteArray::number(file.reserve());
        images += '/' + name + ' ' + reference(imageObject(whole));
        content += "cm /" + name + " Do Q\n";
    }

    /// The names and objects that the content refers to.
    QByteArray resources() const {
        return "/Resources<</ExtGState<<" + alphas + ">>/XObject<<" + images + ">>>>";
    }

    QByteArray content;

  private:
    using QPaintEngine::begin;

    void begin() {
        content += "q ";
        if (painter()->hasClipping()) {
            outline(painter()->transform().map(painter()->clipPath()));
            content += "W n ";
        }
        const QTransform t = state->transform();
        numbers(content, {t.m11(), t.m12(), t.m21(), t.m22(), t.dx(), t.dy()});
        content += "cm ";
    }

    void color(const QColor& value, const char* command) {
        numbers(content, {value.redF(), value.greenF(), value.blueF()});
        content += command;
        content += ' ';
        const double alpha = value.alphaF() * state->opacity();
        if (alpha > .999)
            return;
        const QByteArray name = (command[0] == 'r' ? "f" : "s") + QByteArray::number(int(alpha * 1000));
        if (!alphas.contains('/' + name + '<')) {
            alphas += '/' + name + (command[0] == 'r' ? "<</ca " : "<</CA ");
            number(alphas, alpha);
            alphas += ">>";
        }
        content += '/' + name + " gs ";
    }

    void pen() {
        const QPen pen = state->pen();
        color(pen.color(), "RG");
        numbers(content, {pen.widthF()});
        content += "w ";
        content += pen.capStyle() == Qt::RoundCap    ? "1 J "
                   : pen.capStyle() == Qt::SquareCap ? "2 J "
                                                     : "0 J ";
        content += pen.joinStyle() == Qt::RoundJoin   ? "1 j "
                   : pen.joinStyle() == Qt::BevelJoin ? "2 j "
                                                      : "0 j ";
        numbers(content, {std::max(1., pen.miterLimit())});
        content += "M ";
        if (pen.style() == Qt::SolidLine)
            return;
        content += '[';
        for (const double length : pen.dashPattern())
            numbers(content, {length * pen.widthF()});
        content += "] ";
        numbers(content, {pen.dashOffset() * pen.widthF()});
        content += "d ";
    }

    void outline(const QPainterPath& path) {
        QPointF start;
        for (int i = 0; i < path.elementCount(); ++i) {
            const QPainterPath::Element element = path.elementAt(i);
            if (element.isMoveTo()) {
                start = element;
                numbers(content, {element.x, element.y});
                content += "m ";
            } else if (element.isLineTo()) {
                numbers(content, {element.x, element.y});
                content += "l ";
            } else {
                for (int part = 0; part < 3; ++part)
                    numbers(content, {path.elementAt(i + part).x, path.elementAt(i + part).y});
                content += "c ";
                i += 2;
            }
            const bool last = i + 1 == path.elementCount() || path.elementAt(i + 1).isMoveTo();
            if (last && !element.isMoveTo() && QPointF(path.elementAt(i)) == start)
                content += "h ";
        }
    }

    int imageObject(const QImage& image) {
        QByteArray colors;
        QByteArray cover;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const uchar* pixel = image.constScanLine(y) + qsizetype(x) * 4;
                colors.append(reinterpret_cast<const char*>(pixel), 3);
                cover += char(pixel[3]);
            }
        const QByteArray common = "/Type/XObject/Subtype/Image/BitsPerComponent 8/Width " +
                                  QByteArray::number(image.width()) + "/Height " +
                                  QByteArray::number(image.height());
        const int mask = file.addStream(common + "/ColorSpace/DeviceGray", cover);
        return file.addStream(common + "/ColorSpace/DeviceRGB/SMask " + reference(mask), colors);
    }

    PdfFile& file;
    QByteArray alphas;
    QByteArray images;
};

/// As large as any picture, a point a dot.
class Device : public QPaintDevice {
  public:
    explicit Device(Engine& used) : engine(used) {}
    QPaintEngine* paintEngine() const override { return &engine; }

  protected:
    int metric(PaintDeviceMetric kind) const override {
        constexpr int large = 100000;
        constexpr int perInch = 72;
        constexpr int depth = 32;
        switch (kind) {
        case PdmWidth:
        case PdmHeight:
            return large;
        case PdmDpiX:
        case PdmDpiY:
        case PdmPhysicalDpiX:
        case PdmPhysicalDpiY:
            return perInch;
        case PdmDepth:
            return depth;
        case PdmDevicePixelRatio:
            return 1;
        case PdmDevicePixelRatioScaled:
            return int(devicePixelRatioFScale());
        default:
            return 0;
        }
    }

  private:
    Engine& engine;
};

} // namespace

const PdfPictures::Picture& PdfPictures::picture(const QByteArray& svg) {
    const auto found = known.constFind(svg);
    if (found != known.cend())
        return *found;
    const LabelledPicture parts = labelledPicture(svg);
    QSvgRenderer renderer(parts.svg);
    Engine engine(file);
    Device device(engine);
    const QRectF view = renderer.viewBoxF();
    {
        QPainter painter(&device);
        painter.scale(1, -1); // a PDF counts from below
        renderer.render(&painter, QRectF(QPointF(), view.size()));
    }
    QByteArray entries = "/Type/XObject/Subtype/Form/BBox[";
    numbers(entries, {0, -view.height(), view.width(), 0});
    const int object = file.addStream(entries + ']' + engine.resources(), engine.content);
    const QByteArray name = "P" + QByteArray::number(known.size());
    resources += '/' + name + ' ' + reference(object);
    return *known.insert(svg, {name, renderer.defaultSize(), view, parts.labels});
}
