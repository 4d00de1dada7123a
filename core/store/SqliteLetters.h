#pragma once

#include "core/base/Letters.h"

#include <sqlite3.h>

#include <array>

/// What the user's tables and the statements need on each SQLite handle: the collation LETTERS, and LIKE
/// ignoring the case of letters of any script.
namespace SqliteLetters {

inline std::string_view textOf(sqlite3_value* value) {
    const auto* characters = reinterpret_cast<const char*>(sqlite3_value_text(value));
    return characters ? std::string_view(characters, static_cast<std::size_t>(sqlite3_value_bytes(value)))
                      : std::string_view();
}

inline int compare(void* /*unused*/, int oneSize, const void* one, int otherSize, const void* other) {
    return compareLetters({static_cast<const char*>(one), static_cast<std::size_t>(oneSize)},
                          {static_cast<const char*>(other), static_cast<std::size_t>(otherSize)});
}

/// text LIKE pattern arrives as like(pattern, text), with the escape as third argument.
inline void like(sqlite3_context* context, int count, sqlite3_value** arguments) {
    for (int i = 0; i < count; ++i)
        if (sqlite3_value_type(arguments[i]) == SQLITE_NULL)
            return sqlite3_result_null(context);
    std::optional<char32_t> escape;
    if (count > 2) {
        const std::string_view text = textOf(arguments[2]);
        if (text.empty() || firstLetter(text).bytes != text.size())
            return sqlite3_result_error(context, "ESCAPE expression must be a single character", -1);
        escape = firstLetter(text).code;
    }
    sqlite3_result_int(context, hasForm(textOf(arguments[1]), textOf(arguments[0]), escape) ? 1 : 0);
}

/// Registers both with a handle.
inline void add(sqlite3* handle) {
    sqlite3_create_collation_v2(handle, "LETTERS", SQLITE_UTF8, nullptr, compare, nullptr);
    for (const int arguments : {2, 3})
        sqlite3_create_function_v2(handle, "like", arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   like, nullptr, nullptr, nullptr);
}

} // namespace SqliteLetters
