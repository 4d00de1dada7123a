#pragma once

#include "core/shell/BrennovalMain.h"
#include "core/shell/Screen.h"
#include "tests/runner/Stage.h"

#include <QtWidgets>

/// Finds what the lines of a scenario name. Everything throws Failure.
namespace Controls {

[[noreturn]] void fail(const QString& what);
inline void require(bool holds, const QString& otherwise) {
    if (!holds)
        fail(otherwise);
}

/// An open screen.
Screen* screen(const QString& name);

/// A control, by its window and name with a point between.
template<typename Control = QWidget>
Control* control(const QString& path) {
    const QString window = path.section('.', 0, 0);
    const QWidget* owner =
        window == "BrennovalMain" ? static_cast<QWidget*>(BrennovalMain::instance()) : screen(window);
    auto* found = owner->findChild<Control*>(path.section('.', 1));
    if (!found)
        fail("there is no control " + path);
    return found;
}

/// A command of the menu.
QAction* command(const QString& name);
/// The window of a screen: its frame in the main window, or the screen itself.
QWidget* windowOf(const QString& name);
/// Presses a control at a point of it as a user does.
void press(QWidget* target, const QPoint& point, bool twice = false);
/// A row of a list, counted from 1.
QModelIndex rowOf(const QAbstractItemView* list, const QString& number, int column = 0);
/// Scrolls to a row and returns its place in the list.
QRect placeOf(QAbstractItemView* list, const QString& number);
/// The column of a heading. A list box has one column without a heading.
int columnOf(const QAbstractItemView* list, const QString& heading);
/// A caption as displayed, without mnemonic markers.
QString shown(QString caption);
/// What a control shows.
QString textOf(QWidget* widget);

} // namespace Controls
