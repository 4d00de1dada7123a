#include "setup/prior/JetFile.h"

#include "core/base/Fault.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace Jet {

namespace {

/// The library mistakes an empty file, among others, for an old version.
void requireHeader(const char* path) {
    constexpr std::string_view identity = "Standard Jet DB";
    constexpr size_t identityAt = 4;
    if (!std::filesystem::is_regular_file(path)) // opening it could block forever
        throw Damaged("it is no plain file");
    constexpr std::uintmax_t largest = std::uintmax_t{2} << 30; // bytes, the maximum for any such file
    if (std::filesystem::file_size(path) > largest)
        throw Damaged("it is larger than any");
    std::array<char, 2048> page{}; // the smallest page size
    std::ifstream file(path, std::ios::binary);
    if (!file.read(page.data(), page.size()) ||
        std::string_view(page.data(), page.size()).substr(identityAt, identity.size()) != identity)
        throw Damaged("the file begins as none of its kind");
}

} // namespace

Bytes Page::range(size_t begin, size_t size) const {
    if (begin > bytes.size() || size > bytes.size() - begin)
        throw Damaged("a value outside of its page");
    return bytes.subspan(begin, size);
}

Page::Row Page::row(unsigned index) const {
    constexpr unsigned offset = 0x1fff;
    constexpr unsigned elsewhere = 0x4000;
    constexpr unsigned unknown = 0x2000;
    const size_t rowsBegin = rowCountAt + 2 + size_t{2} * rowCount();
    if (index >= rowCount())
        throw Damaged("a row that is not there");
    const unsigned place = word(rowCountAt + 2 + size_t{2} * index);
    const size_t begin = place & offset;
    const size_t end = index == 0 ? bytes.size() : word(rowCountAt + size_t{2} * index) & offset;
    if ((place & unknown) != 0 || begin < rowsBegin || begin > end || end > bytes.size())
        throw Damaged("a row outside of its page");
    return {.begin = begin, .size = end - begin, .isElsewhere = (place & elsewhere) != 0};
}

File::File(const char* path) {
    requireHeader(path);
    library.reset(mdb_open(path, MDB_NOFLAGS));
    if (!library)
        throw Damaged("the file cannot be opened");
    if (library->f->jet_version != MDB_VER_JET3 && library->f->jet_version != MDB_VER_JET4)
        throw Damaged("the file is of another version");
    if (std::filesystem::file_size(path) % static_cast<size_t>(library->fmt->pg_size) != 0)
        throw Damaged("the file is cut short");
    if (hasPassword())
        throw DatabaseFault(DatabaseFault::NoDataSource, "Not a valid password.");
}

/// Whether the file has a password. Just after opening, the library's page buffer holds the deciphered
/// header.
bool File::hasPassword() const {
    constexpr int passwordAt = 0x42;
    constexpr int dateAt = 0x72; // the creation date; from version 4 on its day masks the password
    const int length = isVersion3() ? 20 : 40;
    const auto day = isVersion3() ? 0
                                  : static_cast<std::uint32_t>(static_cast<std::int64_t>(
                                        std::clamp(mdb_get_double(library->pg_buf, dateAt), 0.0, 4e9)));
    for (int i = 0; i < length; ++i)
        if (library->pg_buf[passwordAt + i] != static_cast<unsigned char>(day >> (i % 4 * 8)))
            return true;
    return false;
}

Page File::page(const unsigned char* buffer) const {
    return {{buffer, static_cast<size_t>(library->fmt->pg_size)}, library->fmt->row_count_offset};
}

Page File::pageBeside(std::uint32_t number) const {
    if (mdb_read_alt_pg(library.get(), number) != library->fmt->pg_size)
        throw Damaged("a page that is not there");
    return page(library->alt_pg_buf);
}

Bytes File::pieceOfText(std::uint32_t place) {
    constexpr std::uint32_t ownerOfTexts = 0x4c41564c; // "LVAL"
    constexpr size_t ownerAt = 4;
    if (!taken.insert(place).second)
        throw Damaged("a chain that leads back");
    const Page found = pageBeside(place >> 8U);
    if (found.kind() != Page::Data || found.number(ownerAt) != ownerOfTexts)
        throw Damaged("a text on a page for other things");
    const Page::Row row = found.row(place & 0xffU);
    if (row.isElsewhere)
        throw Damaged("a text that is deleted");
    return found.range(row.begin, row.size);
}

std::string File::text(Bytes stored) const {
    if (!isVersion3())
        return textOf(stored);
    std::string text(stored.size() * 3 + 16, '\0'); // at most three bytes per character
    const int length = mdb_unicode2ascii(library.get(), reinterpret_cast<const char*>(stored.data()),
                                         stored.size(), text.data(), text.size());
    text.resize(length < 0 ? 0 : static_cast<size_t>(length));
    if (text.find('\0') != std::string::npos)
        throw Damaged("a text of NULs");
    return text;
}

} // namespace Jet
