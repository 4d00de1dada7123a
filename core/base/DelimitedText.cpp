#include "core/base/DelimitedText.h"

#include <stdexcept>

namespace {

/// Reads field by field.
class Reader {
  public:
    Reader(std::string_view source, char fieldSeparator) : text(source), separator(fieldSeparator) {}

    std::vector<DelimitedRecord> records() {
        std::vector<DelimitedRecord> all;
        while (at < text.size()) {
            DelimitedRecord record{line, {}};
            do
                record.fields.push_back(field());
            while (passed(separator));
            passLineEnd();
            if (record.fields.size() > 1 || !record.fields.front().empty())
                all.push_back(std::move(record));
        }
        return all;
    }

  private:
    bool passed(char wanted) {
        const bool is = at < text.size() && text[at] == wanted;
        at += is ? 1 : 0;
        return is;
    }

    void passLineEnd() {
        const bool carriage = passed('\r');
        if (passed('\n') || carriage)
            ++line;
    }

    std::string field() {
        std::string found;
        if (passed('"'))
            readQuoted(found);
        while (at < text.size() && text[at] != separator && text[at] != '\n' && text[at] != '\r')
            found += text[at++];
        return found;
    }

    void readQuoted(std::string& found) {
        const int start = line;
        for (; at < text.size(); ++at) {
            if (text[at] == '"' && text.substr(at + 1, 1) != "\"") {
                ++at;
                return;
            }
            if (text[at] == '"')
                ++at;
            line += text[at] == '\n' ? 1 : 0;
            found += text[at];
        }
        throw std::runtime_error("line " + std::to_string(start) + ": a quoted field does not end");
    }

    std::string_view text;
    char separator;
    std::size_t at = 0;
    int line = 1;
};

} // namespace

std::vector<DelimitedRecord> readDelimited(std::string_view text, char separator) {
    return Reader(text, separator).records();
}

char separatorOf(std::string_view text) {
    bool quoted = false;
    bool semicolon = false;
    bool begun = false;
    for (const char c : text) {
        if (c == '"')
            quoted = !quoted;
        if (quoted)
            continue;
        if ((c == '\n' || c == '\r') && begun)
            break;
        if (c == '\t')
            return c;
        semicolon = semicolon || c == ';';
        begun = begun || (c != '\n' && c != '\r');
    }
    return semicolon ? ';' : ',';
}

std::string delimited(const std::vector<std::string>& fields, char separator) {
    std::string line;
    for (const std::string& field : fields) {
        if (&field != &fields.front())
            line += separator;
        if (field.find_first_of(std::string("\"\r\n") + separator) == std::string::npos) {
            line += field;
            continue;
        }
        line += '"';
        for (const char c : field)
            line += c == '"' ? std::string("\"\"") : std::string(1, c);
        line += '"';
    }
    return line;
}
