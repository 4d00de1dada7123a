#pragma once

#include <QString>

#include <optional>

namespace Terminal {

/// Asks for a password on the caller's terminal, which does not show it. Nothing if there is no terminal, or
/// if the user ends the input.
std::optional<QString> readPassword(const QString& prompt);

/// A new password: asked for twice on the terminal or, when the standard input is none, its first line.
/// Throws Fault if the two differ, or if there is none.
QString readNewPassword(const QString& role);

} // namespace Terminal
