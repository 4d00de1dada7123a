#pragma once

#include "core/store/Engine.h"

#include <functional>

/// How to reach an office's database.
struct OfficeOptions {
    QString address;
    QString password; // empty if the address needs none
    int busyMilliseconds = 0;
    QString connectionString; // reported as the source of faults
};

/// Makes engines on the databases of offices. The connections to the servers live on between them. Part of a
/// plugin, so that the program loads libpq only for an office.
class OfficeEngines {
  public:
    virtual ~OfficeEngines() = default;
    OfficeEngines() = default;
    OfficeEngines(const OfficeEngines&) = delete;
    OfficeEngines& operator=(const OfficeEngines&) = delete;

    /// Throws PasswordNeeded and DatabaseFault.
    virtual std::unique_ptr<Engine> open(const OfficeOptions& options) = 0;
    /// Closes the connections that no engine uses.
    virtual void closeIdle() = 0;
};

/// What the plugin exports as "officeEngines"; null for a program of another version.
using OfficeEnginesFactory = OfficeEngines* (*)(const char* programVersion);

namespace Gateway {

/// Asks the user for the password of an address; nothing if they give none. `why` says what was wrong with
/// the last.
using PasswordAsker = std::function<QString(const QString& address, const QString& why)>;
/// Sets who is asked. Only the thread that sets it asks.
void onPasswordNeeded(PasswordAsker asker);

/// Opens an office's database, loading the plugin at first use. A password that was typed is kept in memory
/// until the program ends. Throws RefusedData without a plugin or a password, and DatabaseFault.
std::unique_ptr<Engine> openOffice(OfficeOptions options);

/// Closes the connections to offices that are not in use, and forgets the passwords.
void leaveOffices();

} // namespace Gateway
