#pragma once

#include "app/office/Office.h"

#include <functional>
#include <optional>

/// The users of an office: roles that may log in, members of the office's role, each with a schema of the
/// same name for the user's own tables. Everything throws DatabaseFault and then changes nothing.
namespace Office {

/// What a new role gets to log in with; nothing where the server lets its users in by other means.
using NewPassword = std::function<std::optional<QString>()>;

/// Lets a user in. Asks for a password only if the role is new. A user who lacks something is completed.
Report addUser(const QString& address, const QString& user, const NewPassword& password, Mode mode);

/// Takes a user out, with the user's own tables, and the role with them unless it is in use elsewhere.
Report removeUser(const QString& address, const QString& user, Mode mode);

/// A line for each user.
Report listUsers(const QString& address);

} // namespace Office
