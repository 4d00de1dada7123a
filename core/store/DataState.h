#pragma once

#include <QString>

#include <optional>

namespace Gateway {

/// What a screen needs to know about the data when it comes to the front.
struct DataState {
    quint32 version = 0; // changes with each write
    bool jobExists = false;
    bool tankExists = false;
};

/// The state of a job and a tank line; nothing if the data cannot be read right now.
std::optional<DataState> readDataState(const QString& jobID, const QString& tankID);

} // namespace Gateway
