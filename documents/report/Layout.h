#pragma once

#include "documents/report/Page.h"

#include <QMarginsF>

/// One thing on a report: a label, a field, a line, a box, a check box or a picture.
struct ReportControl {
    enum class Kind : std::uint8_t { Label, Text, Line, Box, Check, Picture, Formula };

    Kind kind = Kind::Label;
    QString name;
    QRectF place;        // points, in its section
    QString text;        // of a field: shown until it is filled; of a label: may hold {page}, {pages}, {date}
    QString column;      // of the data source; empty when the start routine fills the control
    TextStyle style;     // its pattern "General" and a unit show a number as stored
    double markAt = 0;   // points from the left to the style's mark
    double smallest = 0; // points; the smallest size to which the text shrinks to fit
    bool wrap = false;   // the text may take several lines
    bool grows = false;  // the section becomes higher with a column's text or formula
    QString flow;        // what does not fit continues on an extra page under this heading
    bool visible = true;
    double lineWidth = .5;
    QColor fill;
    QString picture;     // resource
    QByteArray svg;      // the picture itself, if a start routine supplies it
    QString description; // of a picture
    bool mark = false;   // the picture replaces its description
    std::uint8_t heading = 0;
    int field = -1;               // the boxed field that it belongs to
    std::optional<double> number; // behind the text, if a start routine knows it
};

struct ReportSection {
    Section kind = Section::Detail;
    QString column{}; // of a group header: whose values make the groups; of a band: that names it
    QString band{};   // of a detail: shown for the rows of this band only; empty for all rows
    double height = 0;
    QList<ReportControl> controls;
};

/// A report as described by its layout file.
class Layout {
  public:
    /// Reads a report's layout from the program's resources. A layout can extend another one and add, change
    /// or drop controls. Throws std::runtime_error naming file and line.
    static Layout load(const QString& name);
    /// The same from a text, for layouts outside the resources.
    static Layout parse(const QString& name, const QString& text);

    QString title;
    bool table = false; // the details are the rows of one table
    QSizeF paper{612, 792};
    QMarginsF margins{36, 36, 36, 36};
    QList<ReportSection> sections;
    int fields = 0; // boxed fields so far

    ReportSection* section(Section kind);
    const ReportSection* section(Section kind) const;
    /// Null when there is no control of that name.
    ReportControl* control(const QString& name);
};
