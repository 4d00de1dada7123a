#pragma once

#include <QImage>
#include <QLabel>

/// The program's name, in bold, at the size of its font in points. It is a drawing, since every start would
/// load a font for these nine letters; a program built without it shows text in that font.
class ProgramName : public QLabel {
  public:
    using QLabel::QLabel;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    /// What a drawing depends on.
    struct Look {
        int points = 0;
        double pixelsInPoint = 0; // of the display
        QColor color;
        bool operator==(const Look&) const = default;
    };
    /// The drawing in the colour of the text, for a display; none if there is no outline.
    const QImage& drawing(qreal pixelRatio) const;

    mutable Look drawn;
    mutable QImage image; // as `drawn` says
};
