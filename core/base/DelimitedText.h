#pragma once

#include <string>
#include <string_view>
#include <vector>

/// A record of a delimited text, and the line on which it begins, from 1.
struct DelimitedRecord {
    int line;
    std::vector<std::string> fields;
};

/// The records of a text such as CSV. A field that begins with a double quote ends at the next single one,
/// and may hold separators, line ends and doubled quotes; a quote further on in a field is a character like
/// any other. Lines may end in LF, CR LF or CR; empty ones are left out. Throws std::runtime_error for a
/// quoted field that does not end.
std::vector<DelimitedRecord> readDelimited(std::string_view text, char separator);

/// The character that separates the fields of a text's first record: a tab, else a semicolon, else a comma.
char separatorOf(std::string_view text);

/// A record as a line of a delimited text, without its end; fields are quoted where they must be.
std::string delimited(const std::vector<std::string>& fields, char separator);
