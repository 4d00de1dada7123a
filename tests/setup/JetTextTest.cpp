// Texts in the earlier program's files, in both encodings, and bytes that no writer produces.

#include "setup/prior/JetText.h"

#include <gtest/gtest.h>

#include <string>

using namespace std::string_literals;

namespace {

std::string textOf(const std::string& stored) {
    return Jet::textOf({reinterpret_cast<const unsigned char*>(stored.data()), stored.size()});
}

} // namespace

TEST(JetText, IsReadToTheLastCharacter) {
    const struct {
        std::string stored;
        std::string text;
    } cases[] = {
        {"", ""},
        {"A\0B\0"s, "AB"},
        {"\xff\xfe", ""},
        {"\xff\xfeWater", "Water"},
        {"\xff\xfe"s + "caf\xe9", "caf\u00e9"},
        {"\xff\xfe"s + "7-\0\x34\x6c\0-9"s, "7-\u6c34-9"},
        {"\xff\xfe\0\x34\x6c\0-9"s, "\u6c34-9"},
        {"\xff\xfe"s + "7-\0\x34\x6c\x53\x90"s, "7-\u6c34\u9053"},
        {"\x34\x6c\x53\x90", "\u6c34\u9053"},
        {"\x3d\xd8\x4d\xdc", "\U0001f44d"},
        {"\x6c\x51\x08\xff\xfe\x4e", "\u516c\uff08\u4efe"}, // the marker between two characters
    };
    for (const auto& row : cases)
        EXPECT_EQ(textOf(row.stored), row.text);
}

TEST(JetText, IsRefusedWhenNoWriterProducesIt) {
    const std::pair<const char*, std::string> cases[] = {
        {"NULs", "\0\0\0\0"s},
        {"a NUL among characters", "A\0\0\0B\0"s},
        {"changes to nothing", "\xff\xfe\0\0\0\0"s},
        {"a change at the end", "\xff\xfe"s + "A\0"s},
        {"a change back at the end", "\xff\xfe"s + "A\0\x34\x6c\0"s},
        {"half a character", "A\0B"s},
        {"half a character behind a change", "\xff\xfe"s + "A\0\x34"s},
        {"half of a pair", "\x3d\xd8\x41\0"s},
        {"another text behind it", "\xff\xfe"s + "Alder\xff\xfeOkafor"},
        {"the end of another ahead of it", "er\xff\xfeOkafor"},
        {"an odd end of another ahead of it", "r\xff\xfeOkafo"},
        {"a mark with nothing ahead but a change", "A\0\xff\xfe"s},
    };
    for (const auto& [name, stored] : cases)
        EXPECT_THROW(textOf(stored), Jet::Damaged) << name;
}
