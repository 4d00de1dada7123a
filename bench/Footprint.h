#pragma once

#include <QStringList>

/// What a program has used once its window stands and it rests.
struct Footprint {
    double processorTime; // milliseconds
    double memory;        // MB at its peak
};

/// Starts a program without a display, on user data that are not at their first start, waits until it rests,
/// and ends it. The mean of some runs.
Footprint FootprintOf(const QString& program, const QStringList& arguments = {});
