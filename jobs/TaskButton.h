#pragma once

#include <QAbstractButton>

/// A large button for a task, with icon, name and a fainter shortcut. The name may take two lines.
class TaskButton : public QAbstractButton {
  public:
    using QAbstractButton::QAbstractButton;
    void setShortcutText(const QString& text) { shortcutText = text; }
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;
    void enterEvent(QEnterEvent* event) override;
    void leaveEvent(QEvent* event) override;

  private:
    QString shortcutText;
};
