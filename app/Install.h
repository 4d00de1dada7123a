#pragma once

#include <QString>

/// What an installer does for one user: creates the session store's key, the default folder and the two
/// databases where no folder is stored yet. A stored folder, of the user or of the machine, is never
/// rewritten, whatever stands there; one that cannot be seen is left to the start, which asks for it. Where
/// its catalogue is another than the shipped one it is replaced; a user file is never touched. Throws Fault
/// 53 when a shipped file is missing or cannot be copied and 75 when the session cannot be stored.
void InstallForUser(const QString& shippedFolder, const QString& defaultDataFolder);

/// Puts the shipped catalogue into the place of the user's, whatever has become of that. Returns its name.
/// Throws Fault 76 when the stored folder, or the default one where none is stored, holds no data of the
/// program, and 53 when the catalogue cannot be copied.
QString RestoreCatalogue(const QString& shippedFolder, const QString& defaultDataFolder);
