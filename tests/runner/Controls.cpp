#include "tests/runner/Controls.h"

#include "core/shell/Commands.h"
#include "core/shell/Fields.h"
#include "setup/pages/PageView.h"
#include "tests/support/Driver.h"

#include <algorithm>

namespace Controls {

[[noreturn]] void fail(const QString& what) {
    throw Failure{what};
}

Screen* screen(const QString& name) {
    Screen* found = Screens::find(name);
    if (!found)
        fail("the screen " + name + " is not open; open are: " + Screens::loaded().join(", "));
    return found;
}

QAction* command(const QString& name) {
    QAction* action = Commands::action(name);
    if (!action)
        fail("there is no command " + name);
    return action;
}

/// The window of a screen: its frame in the main window, or the screen itself.
QWidget* windowOf(const QString& name) {
    if (name == "BrennovalMain")
        return BrennovalMain::instance();
    QWidget* frame = screen(name)->parentWidget();
    return frame ? frame : screen(name);
}

void press(QWidget* target, const QPoint& point, bool twice) {
    if (const QString why = Driver::pressAt(target, point, twice); !why.isEmpty())
        fail(why);
}

/// A row of a list, counted from 1.
QModelIndex rowOf(const QAbstractItemView* list, const QString& number, int column) {
    const QModelIndex found = list->model()->index(number.toInt() - 1, column);
    require(found.isValid(), QString("the list has %1 rows").arg(list->model()->rowCount()));
    return found;
}

/// Scrolls to a row and returns its place in the list.
QRect placeOf(QAbstractItemView* list, const QString& number) {
    const QModelIndex row = rowOf(list, number);
    list->scrollTo(row);
    return list->visualRect(row);
}

/// The column of a heading. A list box has one column without a heading.
int columnOf(const QAbstractItemView* list, const QString& heading) {
    for (int column = 0; column < list->model()->columnCount(); ++column)
        if (dynamic_cast<const QListView*>(list) ||
            list->model()->headerData(column, Qt::Horizontal).toString() == heading)
            return column;
    fail("the list has no column " + heading);
}

/// A caption as displayed, without mnemonic markers.
QString shown(QString caption) {
    return caption.replace("&&", QString(QChar(1))).remove('&').replace(QChar(1), '&');
}

QString textOf(QWidget* widget) {
    if (auto* label = dynamic_cast<QLabel*>(widget))
        return label->buddy() ? shown(label->text()) : label->text();
    if (auto* check = dynamic_cast<QCheckBox*>(widget))
        return check->isChecked() ? "checked" : "clear";
    if (auto* button = dynamic_cast<QAbstractButton*>(widget))
        return shown(button->text());
    if (auto* group = dynamic_cast<QGroupBox*>(widget))
        return shown(group->title());
    if (auto* spin = dynamic_cast<QAbstractSpinBox*>(widget))
        return spin->text();
    if (auto* pages = dynamic_cast<PageView*>(widget))
        return pages->plainText();
    return Fields::fieldText(widget);
}

} // namespace Controls
