#pragma once

struct sqlite3;

/// The functions that the translated statements call on each SQLite handle: JetPower, JetQuotient and
/// JetJoin, and RowDigest, by which rows of two files are compared.
namespace SqliteFunctions {

/// What a statement fails with that divides by zero, or whose result no double holds.
inline constexpr const char* divisionByZero = "Division by zero";
inline constexpr const char* overflow = "Overflow";

/// Registers all with a handle.
void add(sqlite3* handle);

} // namespace SqliteFunctions
