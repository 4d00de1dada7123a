#pragma once

#include <QString>

class QLabel;
class QLineEdit;

/// A rectangle in the units of a screen.
struct PictureFrame {
    double left = 0;
    double top = 0;
    double width = 0;
    double height = 0;
};

/// Fits a picture of the proportions x : y into an area without distorting it, centred across the free
/// direction. Throws Fault 11 when a side of the picture is 0.
PictureFrame FitPicture(double x, double y, const PictureFrame& area);

/// Where the program keeps a drawing of the catalogue. Throws Fault 53 unless name and ending are plain: no
/// drawing lies outside the folder.
QString DrawingPath(const QString& name, const QString& ending);

namespace Drawings {

/// Loads a drawing of the catalogue into a picture box and fits it into the area whose origin is the box's
/// own. False with a beep when the catalogue has no such drawing; false with the error dialog when the file
/// cannot be loaded. The path is written on success only.
bool LoadDrawing(QLabel* box, int areaWidth, int areaHeight, const QString& drawing, QString& path);

/// Shows a model's drawing in a result screen's picture box, or its name in the text box when it cannot be
/// loaded. Both stay as they are for an empty name.
void ShowTankDrawing(QLabel* box, QLineEdit* nameBox, const QString& drawing);

} // namespace Drawings
