#pragma once

#include "core/store/Gateway.h"

#include <cstdint>
#include <functional>

namespace UtilityFunctions {

/// The tank line of a key. Throws DatabaseFault.
Rows ReadTankLine(const QString& tankID, CursorType cursor = CursorType::ForwardOnly);

/// The next free tank number of the session's job. Throws DatabaseFault, and Fault 6 past 32,767.
std::int16_t GetNextNumber();

/// Stores a tank line in one write: in the mode "New" a new one with its number, key and owner, else that of
/// the session's TankID. The function sets the values; it is told whether the line is new. The session gets
/// the key once the line is stored. False when the mode, or the key in another mode, cannot be read: then
/// nothing is saved. Throws DatabaseFault, and Fault 13 for a text that a number column cannot take.
bool SaveTankLine(const QString& ownerJobID, const QString& keyPrefix, const QDateTime& created,
                  const std::function<void(Recordset& tank, bool isNew)>& setValues);

/// Deletes the header of a job that has no tank lines. Throws DatabaseFault.
void CancelJobInput(const QString& jobID);

} // namespace UtilityFunctions
