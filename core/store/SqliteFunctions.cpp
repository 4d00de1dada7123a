#include "core/store/SqliteFunctions.h"

#include "core/base/Numbers.h"

#include <sqlite3.h>

#include <cmath>
#include <cstdint>
#include <string>
#include <tuple>

namespace SqliteFunctions {

namespace {

bool isNull(sqlite3_value* value) {
    return sqlite3_value_type(value) == SQLITE_NULL;
}

/// The result of an arithmetic function; null if an argument is null.
void arithmetic(sqlite3_context* context, sqlite3_value** arguments, double (*function)(double, double)) {
    if (isNull(arguments[0]) || isNull(arguments[1]))
        return sqlite3_result_null(context);
    const double result = function(sqlite3_value_double(arguments[0]), sqlite3_value_double(arguments[1]));
    if (std::isfinite(result))
        sqlite3_result_double(context, result);
    else
        sqlite3_result_error(context, overflow, -1);
}

void power(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    arithmetic(context, arguments, [](double base, double exponent) { return std::pow(base, exponent); });
}

void quotient(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    if (!isNull(arguments[0]) && !isNull(arguments[1]) && sqlite3_value_double(arguments[1]) == 0)
        return sqlite3_result_error(context, divisionByZero, -1);
    arithmetic(context, arguments,
               [](double numerator, double denominator) { return numerator / denominator; });
}

void join(sqlite3_context* context, int /*count*/, sqlite3_value** arguments) {
    if (isNull(arguments[0]) && isNull(arguments[1]))
        return sqlite3_result_null(context);
    std::string text;
    for (sqlite3_value* part : {arguments[0], arguments[1]}) {
        if (sqlite3_value_type(part) == SQLITE_FLOAT)
            text += shownNumberText(sqlite3_value_double(part));
        else if (const auto* characters = reinterpret_cast<const char*>(sqlite3_value_text(part)))
            text += characters;
    }
    sqlite3_result_text(context, text.c_str(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

/// Hashes types and values (FNV-1a), to tell different rows apart. 40 bits, so that a sum over all rows of a
/// file does not overflow.
void digest(sqlite3_context* context, int count, sqlite3_value** arguments) {
    std::uint64_t hash = 0xCBF29CE484222325ULL;
    const auto take = [&hash](const void* bytes, int size) {
        const auto* byte = static_cast<const unsigned char*>(bytes);
        for (int i = 0; i < size; ++i)
            hash = (hash ^ byte[i]) * 0x100000001B3ULL;
    };
    for (int i = 0; i < count; ++i) {
        const int type = sqlite3_value_type(arguments[i]);
        take(&type, sizeof type);
        if (type == SQLITE_FLOAT) { // its text would lack the last digits
            const double number = sqlite3_value_double(arguments[i]);
            take(&number, sizeof number);
        } else if (const void* bytes = sqlite3_value_blob(arguments[i])) { // whole numbers as text
            take(bytes, sqlite3_value_bytes(arguments[i]));
        }
    }
    sqlite3_result_int64(context, static_cast<sqlite3_int64>((hash ^ (hash >> 40)) & 0xFFFFFFFFFFULL));
}

} // namespace

void add(sqlite3* handle) {
    using Function = void (*)(sqlite3_context*, int, sqlite3_value**);
    for (const auto& [name, arguments, function] :
         {std::tuple<const char*, int, Function>{"JetPower", 2, power},
          {"JetQuotient", 2, quotient},
          {"JetJoin", 2, join},
          {"RowDigest", -1, digest}})
        sqlite3_create_function_v2(handle, name, arguments, SQLITE_UTF8 | SQLITE_DETERMINISTIC, nullptr,
                                   function, nullptr, nullptr, nullptr);
}

} // namespace SqliteFunctions
