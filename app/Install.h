#pragma once

#include <QString>

/// The install step for one user. Creates the session store's key and, if no folder is stored yet, the
/// default folder and the two databases. A folder already stored, for the user or the machine, is never
/// rewritten, whatever it holds; if it cannot be reached, the program asks for it at the next start. Its
/// catalogue is replaced if it differs from the shipped one; a user file is never touched. Throws Fault 53
/// when a shipped file is missing or cannot be copied and 75 when the session cannot be stored.
void installForUser(const QString& shippedFolder, const QString& defaultDataFolder);

/// Replaces the user's catalogue with the shipped one, whatever state it is in. Returns its path. Throws
/// Fault 76 when the stored folder, or the default one if none is stored, holds none of the program's data,
/// and 53 when the catalogue cannot be copied.
QString restoreCatalogue(const QString& shippedFolder, const QString& defaultDataFolder);
