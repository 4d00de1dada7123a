#pragma once

#include "core/base/Applications.h"

#include <QString>
#include <QVariant>

#include <cstdint>
#include <optional>

/// The blackboard between the screens: named text values that outlive the program. On Windows it is the
/// registry, elsewhere an ini file of the user and one of the machine, with the registry's rules: names
/// compare without regard to case, and a write below a key that does not exist is lost without a word.
namespace Registry {

enum class RegistryRoot : std::uint32_t { CurrentUser = 0x80000001, LocalMachine = 0x80000002 };

enum class RegistryType : std::uint32_t { Text = 1, Number = 4 };

RegistryRoot HKeyCurrentUser();
RegistryRoot HKeyLocalMachine();
/// The path of the program's own key.
QString AppRegistryKey();
/// The name of the value that holds the folder of the two databases.
QString DatabaseDirectoryValue();

/// Reads a value. False, with an empty text, when the key or the value is absent or the text has 1,024
/// characters or more. A number is given as decimal text; a value of another type leaves the text alone.
bool GetRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName, QString& text);

/// Writes a value below the user's root. Does nothing when the key does not exist.
void SetRegValue(const QString& keyPath, const QString& valueName, const QVariant& value, RegistryType type);

/// A key that is open for writing.
struct RegistryKey {
    RegistryRoot root;
    QString path;
};

/// Writes one value of an open key; 0 when it was written or its type is unknown, else an error code.
long SetValueEx(const RegistryKey& openKey, const QString& valueName, RegistryType type,
                const QVariant& value);

/// Removes a value; nothing happens when it is absent.
void RemoveRegValue(RegistryRoot root, const QString& keyPath, const QString& valueName);

/// Creates a key when it is absent; 0 when it stands and can be written to, else an error code. Only the
/// install step and the database path dialog do so.
long CreateRegistryKey(RegistryRoot root, const QString& keyPath);

/// One named value of the program's own key under the user's root.
class SessionValue {
  public:
    explicit constexpr SessionValue(const char* valueName) : name(valueName) {}
    bool read(QString& text) const;
    /// The text, or an empty one when the value cannot be read.
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

/// What the mode can be.
namespace Modes {
inline constexpr QLatin1String New{"New"};
inline constexpr QLatin1String Edit{"Edit"};
inline constexpr QLatin1String Delete{"Delete"};
inline constexpr QLatin1String Convert{"Convert"};
inline constexpr QLatin1String Engineers{"Engineers"};
inline constexpr QLatin1String Contractors{"Contractors"};
} // namespace Modes

/// The session's tank line; an empty text for one to come.
QString tankLine();
/// The application that the session's TankClass names; nothing when it is absent or unknown.
std::optional<Application> application();
} // namespace Session
