#pragma once

class QLabel;
class QLineEdit;

/// Shows the temperatures in °F that a box takes, as its hint and in words beside it.
void showTemperatureRange(QLineEdit* box, QLabel* beside, double low, double high);
