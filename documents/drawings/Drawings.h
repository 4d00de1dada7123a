#pragma once

#include <QPixmap>
#include <QString>

class QLabel;
class QLineEdit;

/// A rectangle in screen units.
struct PictureFrame {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Fits a picture of proportions x : y into an area without distortion, centred in the direction that has
/// room to spare. Throws Fault 11 when a side of the picture is 0.
PictureFrame fitPicture(double x, double y, const PictureFrame& area);

/// The path of a catalogue drawing. Throws Fault 53 unless name and ending are plain, so no path can leave
/// the drawings folder.
QString drawingPath(const QString& name, const QString& ending);

namespace Drawings {

/// Loads a catalogue drawing into a picture box and fits it into an area whose origin is the box's own.
/// Returns false with a beep when the catalogue has no such drawing, and false with the error dialog when the
/// file cannot be loaded. The path is written only on success.
bool LoadDrawing(QLabel* box, int areaWidth, int areaHeight, const QString& drawing, QString& path);

/// Paints an SVG picture black on white as large as given; on a dark screen the paper is dimmed.
QPixmap onPaper(const QByteArray& svg, const QSize& size, double scale);

/// Shows a model's drawing in a box, and nothing if the catalogue or the disk does not have it, without a
/// word.
void showQuietly(QLabel* box, const QString& drawing);

/// Shows a model's drawing in a result screen's picture box, or its name in the text box if it cannot be
/// loaded. An empty name leaves both unchanged.
void showTankDrawing(QLabel* box, QLineEdit* nameBox, const QString& drawing);

} // namespace Drawings
