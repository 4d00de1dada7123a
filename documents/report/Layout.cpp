#include "documents/report/Layout.h"

#include "core/base/Words.h"

#include <QFile>
#include <QHash>

#include <stdexcept>

// A layout file has one item per line; # starts a comment. Texts with blanks are in double quotes.
//   extends NAME                          starts from that layout
//   title TEXT
//   table                                 the details are rows of a table that a workbook can filter
//   paper letter|legal|a4 [landscape]
//   margins LEFT TOP RIGHT BOTTOM         in points
//   section KIND HEIGHT [COLUMN]          report-header, running-header, page-header, continuation,
//                                         group-header, detail, page-footer, report-footer; the controls that
//                                         follow belong to it
//   band NAME HEIGHT COLUMN               a detail for the rows that have NAME in a column
//   KIND NAME X Y WIDTH HEIGHT [ATTRIBUTE...]    label, text, line, box, check, picture,
//                                         formula
//   field NAME X Y WIDTH HEIGHT LABEL [VALUE [ATTRIBUTE...]]
//                                         a box (boxNAME) with its label (lblNAME) and the text VALUE in it
//   place NAME X Y WIDTH HEIGHT           moves a field with all its parts
//   change NAME ATTRIBUTE...
//   drop NAME...                          controls, or a whole field by its name without lbl or box
// Attributes: text T, column C, format F, size N, bold, regular, italic, left, center, right, middle,
// align T N (with right: puts T, such as ".", N points from the left in every text of a column),
// color rrggbb, fill rrggbb, wrap, grow, shrink N, flow HEADING, hidden, width N, picture FILE, describe T,
// mark, heading N, of FIELD, at X Y, extent W H

namespace {

/// Takes the words of a line one after the other.
class Words {
  public:
    explicit Words(const QString& line) : words(splitWords(line.toStdString())) {}
    bool more() const { return next < words.size(); }
    QString take() {
        if (!more())
            throw std::runtime_error("the line is too short");
        return QString::fromStdString(words[next++]);
    }
    double number() {
        const QString word = take();
        bool good = false;
        const double value = word.toDouble(&good);
        if (!good)
            throw std::runtime_error(word.toStdString() + " is not a number");
        return value;
    }

  private:
    std::vector<std::string> words;
    std::size_t next = 0;
};

template<typename Value>
Value named(const QHash<QString, Value>& names, const QString& word) {
    const auto found = names.constFind(word);
    if (found == names.cend())
        throw std::runtime_error(word.toStdString() + " is not known here");
    return *found;
}

using Setter = void (*)(ReportControl&, Words&);

const QHash<QString, Setter>& attributes() {
    using C = ReportControl;
    constexpr auto vertical = Qt::AlignVertical_Mask;
    constexpr auto horizontal = Qt::AlignHorizontal_Mask;
    static const QHash<QString, Setter> all = {
        {"text", [](C& c, Words& w) { c.text = w.take(); }},
        {"column", [](C& c, Words& w) { c.column = w.take(); }},
        {"format", [](C& c, Words& w) { c.style.pattern = w.take(); }},
        {"size", [](C& c, Words& w) { c.style.size = w.number(); }},
        {"bold", [](C& c, Words&) { c.style.bold = true; }},
        {"regular", [](C& c, Words&) { c.style.bold = false; }},
        {"italic", [](C& c, Words&) { c.style.italic = true; }},
        {"left", [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignLeft; }},
        {"center",
         [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignHCenter; }},
        {"align",
         [](C& c, Words& w) {
             c.style.mark = w.take();
             c.markAt = w.number();
         }},
        {"right", [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignRight; }},
        {"middle",
         [](C& c, Words&) { c.style.alignment = (c.style.alignment & horizontal) | Qt::AlignVCenter; }},
        {"color", [](C& c, Words& w) { c.style.color = QColor(u'#' + w.take()); }},
        {"fill", [](C& c, Words& w) { c.fill = QColor(u'#' + w.take()); }},
        {"wrap", [](C& c, Words&) { c.wrap = true; }},
        {"grow", [](C& c, Words&) { c.wrap = c.grows = true; }},
        {"shrink", [](C& c, Words& w) { c.smallest = w.number(); }},
        {"flow", [](C& c, Words& w) { c.flow = w.take(); }},
        {"hidden", [](C& c, Words&) { c.visible = false; }},
        {"width", [](C& c, Words& w) { c.lineWidth = w.number(); }},
        {"picture", [](C& c, Words& w) { c.picture = w.take(); }},
        {"describe", [](C& c, Words& w) { c.description = w.take(); }},
        {"mark", [](C& c, Words&) { c.mark = true; }},
        {"heading", [](C& c, Words& w) { c.heading = std::uint8_t(w.number()); }},
        {"at",
         [](C& c, Words& w) {
             const double x = w.number();
             c.place.moveTo(x, w.number());
         }},
        {"extent",
         [](C& c, Words& w) {
             const double width = w.number();
             c.place.setSize({width, w.number()});
         }},
    };
    return all;
}

QRectF takePlace(Words& words) {
    const double x = words.number();
    const double y = words.number();
    const double width = words.number();
    return {x, y, width, words.number()};
}

// A boxed field: a small label at the top, the value below.
constexpr double fieldEdge = 4; // points between the box and its texts
constexpr double labelHeight = 9;
constexpr double smallestText = 6; // that everyone reads on paper

QRectF labelPlace(const QRectF& box) {
    return {box.left() + fieldEdge, box.top() + 2, box.width() - 2 * fieldEdge, labelHeight};
}

QRectF valuePlace(const QRectF& box) {
    return box.adjusted(fieldEdge, labelHeight + 1.5, -fieldEdge, -1);
}

class Reader {
  public:
    explicit Reader(Layout& target) : layout(target) {}

    void line(const QString& text) {
        Words words(text);
        if (!words.more())
            return;
        const QString first = words.take();
        using Handler = void (Reader::*)(Words&);
        static const QHash<QString, Handler> handlers = {
            {"extends", &Reader::extends}, {"title", &Reader::title},     {"table", &Reader::table},
            {"paper", &Reader::paper},     {"margins", &Reader::margins}, {"section", &Reader::section},
            {"band", &Reader::band},       {"field", &Reader::field},     {"place", &Reader::place},
            {"change", &Reader::change},   {"drop", &Reader::drop}};
        if (const Handler handler = handlers.value(first))
            (this->*handler)(words);
        else
            control(first, words);
    }

  private:
    void extends(Words& words) { layout = Layout::load(words.take()); }
    void title(Words& words) { layout.title = words.take(); }
    void table(Words& /*words*/) { layout.table = true; }

    void paper(Words& words) {
        static const QHash<QString, QSizeF> papers = {
            {"letter", {612, 792}}, {"legal", {612, 1008}}, {"a4", {595, 842}}};
        layout.paper = named(papers, words.take());
        if (!words.more())
            return;
        if (const QString orientation = words.take(); orientation != "landscape")
            throw std::runtime_error(orientation.toStdString() + " is not known here");
        layout.paper.transpose();
    }

    void margins(Words& words) {
        const double left = words.number();
        const double top = words.number();
        const double right = words.number();
        layout.margins = {left, top, right, words.number()};
    }

    void section(Words& words) {
        static const QHash<QString, Section> kinds = {
            {"report-header", Section::ReportHeader}, {"running-header", Section::RunningHeader},
            {"page-header", Section::PageHeader},     {"continuation", Section::Continuation},
            {"group-header", Section::GroupHeader},   {"detail", Section::Detail},
            {"page-footer", Section::PageFooter},     {"report-footer", Section::ReportFooter}};
        const Section kind = named(kinds, words.take());
        current = layout.section(kind);
        if (!current) {
            layout.sections.append({.kind = kind, .controls = {}});
            current = &layout.sections.last();
        }
        current->height = words.number();
        if (words.more())
            current->column = words.take();
    }

    void band(Words& words) {
        ReportSection added{.kind = Section::Detail, .band = words.take(), .controls = {}};
        added.height = words.number();
        added.column = words.take();
        layout.sections.append(added);
        current = &layout.sections.last();
    }

    void control(const QString& kindName, Words& words) {
        using Kind = ReportControl::Kind;
        static const QHash<QString, Kind> kinds = {
            {"label", Kind::Label}, {"text", Kind::Text},       {"line", Kind::Line},      {"box", Kind::Box},
            {"check", Kind::Check}, {"picture", Kind::Picture}, {"formula", Kind::Formula}};
        ReportControl added;
        added.kind = named(kinds, kindName);
        added.name = words.take();
        added.place = takePlace(words);
        apply(add(added), words);
    }

    void field(Words& words) {
        const QString name = words.take();
        const QRectF place = takePlace(words);
        const int number = layout.fields++;
        addPart(ReportControl::Kind::Box, "box" + name, place, number);
        ReportControl& label = addPart(ReportControl::Kind::Label, "lbl" + name, labelPlace(place), number);
        label.text = words.take();
        label.style.size = 6.5;
        label.style.color = QColor(0x4a, 0x55, 0x60);
        label.smallest = smallestText;
        if (!words.more())
            return;
        ReportControl& value = addPart(ReportControl::Kind::Text, words.take(), valuePlace(place), number);
        value.smallest = smallestText;
        apply(value, words);
    }

    ReportControl& addPart(ReportControl::Kind kind, const QString& name, const QRectF& place, int field) {
        ReportControl part;
        part.kind = kind;
        part.name = name;
        part.place = place;
        part.field = field;
        return add(part);
    }

    void place(Words& words) {
        const QString name = words.take();
        const QRectF box = takePlace(words);
        const int number = existing("box" + name).field;
        if (number < 0)
            throw std::runtime_error(name.toStdString() + " is no field");
        for (ReportSection& one : layout.sections)
            for (ReportControl& part : one.controls)
                if (part.field == number)
                    part.place = part.kind == ReportControl::Kind::Box     ? box
                                 : part.kind == ReportControl::Kind::Label ? labelPlace(box)
                                                                           : valuePlace(box);
    }

    void change(Words& words) { apply(existing(words.take()), words); }

    void drop(Words& words) {
        while (words.more()) {
            const QString name = words.take();
            const ReportControl* box = layout.control("box" + name);
            const int number = box ? box->field : -1;
            if (number < 0)
                existing(name);
            for (ReportSection& one : layout.sections)
                one.controls.removeIf([&](const ReportControl& part) {
                    return part.name == name || (number >= 0 && part.field == number);
                });
        }
    }

    /// Adds a control with a new name to the current section.
    ReportControl& add(ReportControl added) {
        if (!current)
            throw std::runtime_error("a control is outside of a section");
        if (layout.control(added.name))
            throw std::runtime_error("there are two " + added.name.toStdString());
        if (added.kind == ReportControl::Kind::Text)
            added.text = added.name;
        current->controls.append(added);
        return current->controls.last();
    }

    void apply(ReportControl& control, Words& words) {
        while (words.more()) {
            const QString attribute = words.take();
            if (attribute == "of")
                control.field = existing("box" + words.take()).field;
            else
                named(attributes(), attribute)(control, words);
        }
    }

    ReportControl& existing(const QString& name) {
        ReportControl* found = layout.control(name);
        if (!found)
            throw std::runtime_error("there is no " + name.toStdString());
        return *found;
    }

    Layout& layout;
    ReportSection* current = nullptr;
};

} // namespace

Layout Layout::load(const QString& name) {
    static QHash<QString, Layout> known; // the resources never change, and a package loads each many times
    const auto found = known.constFind(name);
    if (found != known.cend())
        return *found;
    QFile file(":/layouts/" + name + ".layout");
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no layout " + name.toStdString());
    return *known.insert(name, parse(name, QString::fromUtf8(file.readAll())));
}

Layout Layout::parse(const QString& name, const QString& text) {
    Layout layout;
    Reader reader(layout);
    int number = 0;
    for (const QString& line : text.split(u'\n')) {
        ++number;
        try {
            reader.line(line);
        } catch (const std::runtime_error& error) {
            throw std::runtime_error(name.toStdString() + ".layout:" + std::to_string(number) + ": " +
                                     error.what());
        }
    }
    return layout;
}

ReportSection* Layout::section(Section kind) {
    for (ReportSection& section : sections)
        if (section.kind == kind)
            return &section;
    return nullptr;
}

const ReportSection* Layout::section(Section kind) const {
    return const_cast<Layout*>(this)->section(kind);
}

ReportControl* Layout::control(const QString& name) {
    for (ReportSection& section : sections)
        for (ReportControl& control : section.controls)
            if (control.name == name)
                return &control;
    return nullptr;
}
