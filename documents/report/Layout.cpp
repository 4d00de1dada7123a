#include "documents/report/Layout.h"

#include "core/base/Words.h"

#include <QFile>
#include <QHash>
#include <QMarginsF>

#include <stdexcept>

// A layout file has one thing a line; # starts a comment. Texts with blanks stand in double quotes.
//   extends NAME                          begin with that layout
//   title TEXT
//   margins LEFT TOP RIGHT BOTTOM         in points
//   section KIND HEIGHT [COLUMN]          report-header, page-header, group-header, detail, page-footer,
//                                         report-footer; the controls that follow belong to it
//   KIND NAME X Y WIDTH HEIGHT [ATTRIBUTE...]    label, text, line, box, check, picture
//   change NAME ATTRIBUTE...
//   drop NAME...
// Attributes: text T, column C, format F, size N, bold, regular, italic, left, center, right, middle,
// color rrggbb, fill rrggbb, wrap, shrink N, flow, hidden, width N, picture FILE, at X Y, extent W H

namespace {

/// The words of a line, taken one after the other.
class Words {
  public:
    explicit Words(const QString& line) : words(SplitWords(line.toStdString())) {}
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
        {"format", [](C& c, Words& w) { c.format = w.take(); }},
        {"size", [](C& c, Words& w) { c.style.size = w.number(); }},
        {"bold", [](C& c, Words&) { c.style.bold = true; }},
        {"regular", [](C& c, Words&) { c.style.bold = false; }},
        {"italic", [](C& c, Words&) { c.style.italic = true; }},
        {"left", [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignLeft; }},
        {"center",
         [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignHCenter; }},
        {"right", [](C& c, Words&) { c.style.alignment = (c.style.alignment & vertical) | Qt::AlignRight; }},
        {"middle",
         [](C& c, Words&) { c.style.alignment = (c.style.alignment & horizontal) | Qt::AlignVCenter; }},
        {"color", [](C& c, Words& w) { c.style.color = QColor(u'#' + w.take()); }},
        {"fill", [](C& c, Words& w) { c.fill = QColor(u'#' + w.take()); }},
        {"wrap", [](C& c, Words&) { c.wrap = true; }},
        {"shrink", [](C& c, Words& w) { c.smallest = w.number(); }},
        {"flow", [](C& c, Words&) { c.flow = true; }},
        {"hidden", [](C& c, Words&) { c.visible = false; }},
        {"width", [](C& c, Words& w) { c.lineWidth = w.number(); }},
        {"picture", [](C& c, Words& w) { c.picture = w.take(); }},
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

void applyAttributes(ReportControl& control, Words& words) {
    while (words.more())
        named(attributes(), words.take())(control, words);
}

class Reader {
  public:
    explicit Reader(Layout& target) : layout(target) {}

    void line(const QString& text) {
        Words words(text);
        if (!words.more())
            return;
        const QString first = words.take();
        if (first == "extends")
            layout = Layout::load(words.take());
        else if (first == "title")
            layout.title = words.take();
        else if (first == "margins")
            margins(words);
        else if (first == "section")
            section(words);
        else if (first == "change")
            applyAttributes(existing(words.take()), words);
        else if (first == "drop")
            while (words.more())
                drop(words.take());
        else
            control(first, words);
    }

  private:
    void margins(Words& words) {
        const double left = words.number();
        const double top = words.number();
        const double right = words.number();
        layout.margins = {left, top, right, words.number()};
    }

    void section(Words& words) {
        using Kind = ReportSection::Kind;
        static const QHash<QString, Kind> kinds = {
            {"report-header", Kind::ReportHeader}, {"page-header", Kind::PageHeader},
            {"group-header", Kind::GroupHeader},   {"detail", Kind::Detail},
            {"page-footer", Kind::PageFooter},     {"report-footer", Kind::ReportFooter}};
        const Kind kind = named(kinds, words.take());
        current = layout.section(kind);
        if (!current) {
            layout.sections.append({kind, {}, 0, {}});
            current = &layout.sections.last();
        }
        current->height = words.number();
        if (words.more())
            current->groupColumn = words.take();
    }

    void control(const QString& kindName, Words& words) {
        using Kind = ReportControl::Kind;
        static const QHash<QString, Kind> kinds = {{"label", Kind::Label}, {"text", Kind::Text},
                                                   {"line", Kind::Line},   {"box", Kind::Box},
                                                   {"check", Kind::Check}, {"picture", Kind::Picture}};
        ReportControl added;
        added.kind = named(kinds, kindName);
        added.name = words.take();
        if (!current)
            throw std::runtime_error("a control stands outside of a section");
        if (layout.control(added.name))
            throw std::runtime_error("there are two " + added.name.toStdString());
        if (added.kind == Kind::Text)
            added.text = added.name;
        const double x = words.number();
        const double y = words.number();
        const double width = words.number();
        added.place = {x, y, width, words.number()};
        applyAttributes(added, words);
        current->controls.append(added);
    }

    ReportControl& existing(const QString& name) {
        ReportControl* found = layout.control(name);
        if (!found)
            throw std::runtime_error("there is no " + name.toStdString());
        return *found;
    }

    void drop(const QString& name) {
        existing(name);
        for (ReportSection& section : layout.sections)
            section.controls.removeIf([&](const ReportControl& c) { return c.name == name; });
    }

    Layout& layout;
    ReportSection* current = nullptr;
};

} // namespace

Layout Layout::load(const QString& name) {
    QFile file(":/layouts/" + name + ".layout");
    if (!file.open(QIODevice::ReadOnly))
        throw std::runtime_error("There is no layout " + name.toStdString());
    return parse(name, QString::fromUtf8(file.readAll()));
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

ReportSection* Layout::section(ReportSection::Kind kind) {
    for (ReportSection& section : sections)
        if (section.kind == kind)
            return &section;
    return nullptr;
}

const ReportSection* Layout::section(ReportSection::Kind kind) const {
    return const_cast<Layout*>(this)->section(kind);
}

ReportControl* Layout::control(const QString& name) {
    for (ReportSection& section : sections)
        for (ReportControl& control : section.controls)
            if (control.name == name)
                return &control;
    return nullptr;
}
