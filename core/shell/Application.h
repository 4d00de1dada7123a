#pragma once

#include <QApplication>

/// The application object. Before the focus leaves a field by mouse, Tab or shortcut it runs the field's
/// check, and drops the event when the check fails: Qt's own focus events come too late for a veto.
class Application : public QApplication {
  public:
    using QApplication::QApplication;
    bool notify(QObject* receiver, QEvent* event) override;
};
