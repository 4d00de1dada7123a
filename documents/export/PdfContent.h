#pragma once

#include "documents/export/PdfFonts.h"

/// The drawing instructions of a page: what comes from a Page in points from its top left corner, as the
/// operators of a PDF, which count from the lower left corner.
class PdfContent {
  public:
    PdfContent(PdfFonts& used, double pageHeight) : fonts(used), height(pageHeight) {
        constexpr qsizetype usual = 65536; // bytes of a full page
        bytes.reserve(usual);
    }

    void box(const QRectF& place, double lineWidth, const QColor& fill);
    void line(const QPointF& from, const QPointF& to, double width);
    void polyline(const QList<QPointF>& points, double width);
    /// A line of text, its left end and baseline at a point.
    void text(QStringView line, const TextStyle& style, const QPointF& at);
    /// The same, but only for those who search, copy or listen.
    void unseenText(QStringView line, const TextStyle& style, const QPointF& at);
    /// Paints a picture that was written before, its upper left corner at a point.
    void picture(const QByteArray& name, const QPointF& at, double scale);

    /// Instructions between these belong to a structure element under a number, or are none of the text.
    void beginMarked(const char* kind, int number);
    void beginArtifact();
    void beginFurniture(); // headers and footers
    void endMarked() { bytes += "EMC\n"; }

    QByteArray bytes;

  private:
    double up(double y) const { return height - y; }
    void lineWidth(double width);
    void fillColor(const QColor& color);
    void letters(const TextStyle& style);
    void weight(bool added, double size, const QColor& color);

    PdfFonts& fonts;
    double height;
    double currentWidth = -1;
    QRgb currentFill = qRgb(0, 0, 0); // what a page begins with
    int currentFont = -1;
    double currentSize = 0;
    PdfShape shape; // kept for its memory
};
