#include "sizing/TemperatureRange.h"

#include <QLabel>
#include <QLineEdit>

void showTemperatureRange(QLineEdit* box, QLabel* beside, double low, double high) {
    box->setToolTip(QString("Range: %1°F - %2°F").arg(low).arg(high));
    beside->setText(QString("%1 to %2").arg(low).arg(high));
}
