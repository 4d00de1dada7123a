// Feeds any text to the number parser, the number writer and the display formats.

#include "core/base/Fault.h"
#include "core/base/Format.h"
#include "core/base/Numbers.h"

#include <cstddef>

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const char* data, std::size_t size) {
    const std::string_view text(data, size);
    const auto line = text.find('\n');
    const auto value = parseNumber(text.substr(0, line));
    if (!value)
        return 0;
    if (parseNumber(NumberText(*value)) != value) // what is written reads back the same
        __builtin_trap();
    Round(*value, 4);
    try {
        ToInt16(*value);
        Divide(1, *value);
    } catch (const Fault&) {
    }
    if (line != std::string_view::npos)
        formatted(*value, text.substr(line + 1)); // the rest of the input as a pattern
    return 0;
}
