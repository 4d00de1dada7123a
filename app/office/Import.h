#pragma once

#include "app/office/Office.h"

namespace Office {

/// What happens to a job whose number another job of the office has.
enum class Collisions { Refuse, Renumber };

/// Takes the data of a user's file over into the office and the user's schema, in one transaction. The file
/// is only read. `user` is the role that connects if empty. Throws DatabaseFault and then changes nothing.
Report import(const QString& address, const QString& file, const QString& user, Collisions collisions,
              Mode mode);

/// Writes a job of the office to a file of the user schema. Throws DatabaseFault, and RecordGone if there is
/// no such job.
Report exportJob(const QString& address, const QString& jobID, const QString& file, Mode mode);

} // namespace Office
