#include "documents/submittals/SubmittalRoom.h"

#include "documents/report/PictureLabels.h"
#include "documents/report/TextFit.h"

#include <QSvgRenderer>

#include <algorithm>

namespace {

// All lengths are points.
constexpr double edge = 5;            // between a drawing and its frame
constexpr double gap = 12;            // between the blocks and the frame
constexpr double widestFrame = 290;   // beside the blocks, which keep enough for their values
constexpr double largestLetters = 10; // of the specification
constexpr double smallestLetters = 7; // of it, for the sake of the drawing's
constexpr double step = .5;           // of its letters
constexpr double mostStretch = 1.3;   // of the blocks
constexpr double largestValues = 9;   // letters in the blocks

/// How high the specification is in letters of a size.
double heightOf(const ReportControl& text, double size) {
    constexpr int most = 1000; // lines
    TextStyle style = text.style;
    style.size = size;
    const QString clean = QString(text.text).remove(u'\r');
    return TextFit::wrapped(clean, style, text.place.width(), most).lines * TextFit::lineHeight(style);
}

/// The height at which the smallest label of a picture can still be read; 0 if it has none.
double legibleHeight(const QByteArray& svg) {
    constexpr double legible = 6; // letters
    double height = 0;
    for (const PictureLabel& label : labelledPicture(svg).labels)
        height = std::max(height, QSvgRenderer(svg).defaultSize().height() * legible / label.style.size);
    return height;
}

/// Spreads the blocks beside the frame over its height and up to its left side.
void stretchBlocks(Layout& layout, const QRectF& before, const QRectF& frame) {
    const double stretch = std::clamp(frame.height() / before.height(), 1., mostStretch);
    for (ReportControl& control : layout.section(Section::Detail)->controls) {
        QRectF& place = control.place;
        const bool drawing = control.name == u"boxDrawing" || control.name == u"imgDrawing";
        if (drawing || place.top() < before.top() || place.top() >= before.bottom() ||
            place.left() >= before.left())
            continue;
        place.moveTop(before.top() + (place.top() - before.top()) * stretch);
        const bool value = control.kind == ReportControl::Kind::Text;
        if (value || control.kind == ReportControl::Kind::Box)
            place.setRight(frame.left() - gap - (value ? edge : 0));
        if (value && stretch > 1)
            control.style.size = largestValues;
    }
}

} // namespace

void shareRoom(Layout& layout) {
    ReportControl* text = layout.control("txtTypSpecs");
    ReportControl* drawing = layout.control("imgDrawing");
    ReportControl* box = layout.control("boxDrawing");
    if (!text || !drawing || !box || drawing->svg.isEmpty())
        return;
    const QRectF before = box->place;
    const double needed = legibleHeight(drawing->svg) + 2 * edge - before.height();
    const auto spareNow = [text] { return text->place.height() - heightOf(*text, text->style.size); };
    const double asked = text->style.size;
    while (spareNow() < needed && text->style.size - step >= smallestLetters)
        text->style.size -= step;
    if (spareNow() < needed) // which even then does not do
        text->style.size = asked;
    const double spare = spareNow();
    if (spare <= 0)
        return;
    const bool beside = before.left() > 0;
    const double right = before.right();
    QSizeF picture = QSvgRenderer(drawing->svg).defaultSize();
    picture.scale((beside ? widestFrame : before.width()) - 2 * edge, before.height() + spare - 2 * edge,
                  Qt::KeepAspectRatio);
    QRectF frame(before.topLeft(), picture + QSizeF(2 * edge, 2 * edge));
    if (beside)
        frame.moveRight(right);
    else
        frame.moveLeft((right - frame.width()) / 2);
    box->place = frame;
    drawing->place = frame.adjusted(edge, edge, -edge, -edge);
    if (beside)
        stretchBlocks(layout, before, frame);
    const double moved = std::max(0., frame.height() - before.height());
    for (const char* name : {"boxTypSpecs", "lblTypSpecs", "txtTypSpecs"})
        layout.control(name)->place.translate(0, moved);
    text->place.setHeight(text->place.height() - moved);
    while (text->style.size + step <= largestLetters &&
           heightOf(*text, text->style.size + step) <= text->place.height())
        text->style.size += step;
}
