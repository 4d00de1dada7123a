#pragma once

#include <QString>

/// What an installer does for one user: creates the session store's key and the data folder when absent,
/// copies the two databases there when absent, replaces an older catalogue, never touches an existing user
/// file, and stores the folder. A folder that the user has chosen and that holds a user file stays.
/// Throws Fault 53 when a shipped file is missing or cannot be copied.
void InstallForUser(const QString& shippedFolder, const QString& defaultDataFolder);

/// Makes all screens and commands of the program known.
void registerAll();
