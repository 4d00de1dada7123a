#pragma once

#include <QApplication>

/// The application object. Before the focus leaves a field by mouse, Tab or shortcut it runs the field's
/// check, and drops the event when the check fails: Qt's own focus events come too late for a veto.
class Application : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};

/// The one look of the program: palette and style.
namespace Appearance {
enum class Scheme { Light, Dark };
/// The scheme of the desktop.
Scheme systemScheme();
void apply(Scheme scheme);
} // namespace Appearance
