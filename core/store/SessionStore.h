#pragma once

#include "core/base/Applications.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>

/// The blackboard that the screens share: named text values that persist between runs. On Windows this is the
/// registry, elsewhere an ini file for the user and one for the machine, with the registry's rules: names
/// ignore case, and a write below a missing key is silently lost.
namespace Registry {

enum class RegistryRoot : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

enum class RegistryType : std::uint32_t { Text = 1, Number = 4 };

RegistryRoot HKeyCurrentUser();
RegistryRoot HKeyLocalMachine();
/// The path of the program's own key.
QString AppRegistryKey();
/// The name of the value with the folder of the two databases.
QString DatabaseDirectoryValue();

/// Reads a value. False, with an empty text, if the key or the value is absent or the text has 1,024
/// characters or more. A number is returned as decimal text; a value of any other type leaves the text
/// unchanged.
bool GetRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName, QString& text);

/// Writes a value below the user's root. Does nothing if the key does not exist.
void SetRegValue(const QString& keyPath, const QString& valueName, const QVariant& value, RegistryType type);

/// A key that is open for writing.
struct RegistryKey {
    RegistryRoot root;
    QString path;
};

/// Writes one value of an open key. Returns 0 if it was written or its type is unknown, otherwise an error
/// code.
long SetValueEx(const RegistryKey& openKey, const QString& valueName, RegistryType type,
                const QVariant& value);

/// Removes a value; does nothing if it is absent.
void removeRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName);

/// Creates a key if it is absent. Returns 0 if it exists and is writable, otherwise an error code. Only the
/// install step and the database path dialog call this.
long createRegistryKey(RegistryRoot root, const QString& keyPath);

/// One named value of the program's own key under the user's root.
class SessionValue {
  public:
    explicit constexpr SessionValue(const char* valueName) : name(valueName) {}
    bool read(QString& text) const;
    /// The text; empty if the value cannot be read.
    QString text() const;
    void write(const QString& text) const;

  private:
    const char* name;
};

} // namespace Registry

/// The values that the screens share.
namespace Session {
inline constexpr Registry::SessionValue Mode{"Mode"};
inline constexpr Registry::SessionValue JobID{"JobID"};
inline constexpr Registry::SessionValue TankID{"TankID"};
inline constexpr Registry::SessionValue TankClass{"TankClass"};
inline constexpr Registry::SessionValue TankType{"TankType"};

/// The possible modes.
namespace Modes {
inline constexpr QLatin1String New{"New"};
inline constexpr QLatin1String Edit{"Edit"};
inline constexpr QLatin1String Delete{"Delete"};
inline constexpr QLatin1String Convert{"Convert"};
inline constexpr QLatin1String Engineers{"Engineers"};
inline constexpr QLatin1String Contractors{"Contractors"};
} // namespace Modes

/// The session's tank line; empty for a new one.
QString tankLine();
/// The application named by the session's TankClass; nothing if absent or unknown.
std::optional<Application> application();
} // namespace Session
