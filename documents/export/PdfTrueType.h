#pragma once

#include <QByteArray>
#include <QPainterPath>

#include <vector>

/// The shape of a letter in units of PdfTrueType::em, with y down from the baseline.
struct PdfOutline {
    QPainterPath path;
    double advance = 0;
};

namespace PdfTrueType {

constexpr int em = 2048;

/// A TrueType font of these letters, numbered in their order, with the tables that a PDF asks for. Made from
/// outlines, so that a font of any kind can go into a file.
QByteArray font(const std::vector<PdfOutline>& letters);

} // namespace PdfTrueType
