#pragma once

#include "documents/report/Page.h"

#include <QMarginsF>

/// One thing on a report: a label, a field, a line, a box, a check box or a picture.
struct ReportControl {
    enum class Kind : std::uint8_t { Label, Text, Line, Box, Check, Picture };

    Kind kind = Kind::Label;
    QString name;
    QRectF place;        // points, in its section
    QString text;        // of a field: what shows until it is filled; of a label: with {page} and {pages}
    QString column;      // of the data source; empty for a control that the start routine fills
    TextStyle style;     // its pattern "General" and a unit show a number as it is stored
    double markAt = 0;   // points from the left, where the mark of the style stands
    double smallest = 0; // points; the size down to which the text shrinks to its place
    bool wrap = false;   // the text may take several lines
    QString flow;        // what does not fit continues on a page of its own, under this heading
    bool visible = true;
    double lineWidth = .5;
    QColor fill;
    QString picture;     // resource
    QByteArray svg;      // the picture itself, where a start routine gives it
    QString description; // of a picture
    bool mark = false;   // the picture stands for its description
    std::uint8_t heading = 0;
    int field = -1;               // of the boxed field that it belongs to
    std::optional<double> number; // behind the text, where a start routine knows it
};

struct ReportSection {
    Section kind = Section::Detail;
    QString groupColumn; // of a group header
    double height = 0;
    QList<ReportControl> controls;
};

/// A report as its layout file describes it.
class Layout {
  public:
    /// Reads a layout of the program's resources by the report's name. A layout can extend another, and then
    /// adds, changes and drops controls. Throws std::runtime_error that names file and line.
    static Layout load(const QString& name);
    /// The same from a text, for layouts that are not among the resources.
    static Layout parse(const QString& name, const QString& text);

    QString title;
    bool table = false; // the details are the rows of one table
    QSizeF paper{612, 792};
    QMarginsF margins{36, 36, 36, 36};
    QList<ReportSection> sections;
    int fields = 0; // boxed fields so far

    ReportSection* section(Section kind);
    const ReportSection* section(Section kind) const;
    /// Null when no item has that name.
    ReportControl* control(const QString& name);
};
