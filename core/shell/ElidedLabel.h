#pragma once

#include <QLabel>

/// One line of text that gives way to its neighbours: what does not fit ends in an ellipsis, and the tool tip
/// says it whole.
class ElidedLabel : public QLabel {
  public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;
    bool isElided() const;

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};
