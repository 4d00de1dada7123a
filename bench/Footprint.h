#pragma once

#include <QStringList>

/// What a program has used once its window is up and it is idle.
struct Footprint {
    double processorTime; // milliseconds
    double memory;        // MB at its peak
};

/// Starts a program without a display, on user data past its first start, waits until it is idle, and ends
/// it. Returns the mean of several runs.
Footprint footprintOf(const QString& program, const QStringList& arguments = {});
