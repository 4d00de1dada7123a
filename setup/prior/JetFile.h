#pragma once

#include "setup/prior/JetText.h"

#include <glib.h> // before the library, whose header would include it inside extern "C"
#include <iconv.h>
#include <mdbtools.h>

#include <cstdint>
#include <memory>
#include <set>
#include <string>

namespace Jet {

/// A page of the file, in one of the library's two buffers, valid until that reads the next.
class Page {
  public:
    Page(Bytes content, size_t placeOfRowCount) : bytes(content), rowCountAt(placeOfRowCount) {}

    /// The kind of page, given by its first byte.
    enum Kind : unsigned char { Data = 1, TableDefinition = 2 };
    Kind kind() const { return static_cast<Kind>(bytes[0]); }

    unsigned byte(size_t at) const { return range(at, 1)[0]; }
    unsigned word(size_t at) const { return byte(at) | byte(at + 1) << 8U; }
    std::uint32_t number(size_t at) const { return word(at) | word(at + 2) << 16U; }
    /// Throws Damaged for anything not within the page.
    Bytes range(size_t begin, size_t size) const;

    struct Row {
        size_t begin = 0;
        size_t size = 0;
        bool isElsewhere = false; // deleted, or moved to a different place
    };
    unsigned rowCount() const { return word(rowCountAt); }
    /// Throws Damaged if there is no such row, or if it extends beyond the page's row area.
    Row row(unsigned index) const;

  private:
    Bytes bytes;
    size_t rowCountAt;
};

/// The file, opened for reading.
class File {
  public:
    /// Throws Damaged for a file that is not plain, not of this kind or not complete, and DatabaseFault for
    /// one with a password.
    explicit File(const char* path);

    MdbHandle& handle() const { return *library; }
    bool isVersion3() const { return library->f->jet_version == MDB_VER_JET3; }

    /// The page that the library read last.
    Page currentPage() const { return page(library->pg_buf); }
    /// Reads a page without replacing the current one.
    Page pageBeside(std::uint32_t number) const;

    /// A piece of a long text, given by its page and, in the lowest byte, its row there. Throws Damaged if
    /// the piece has been read before: chains of pieces neither loop nor meet.
    Bytes pieceOfText(std::uint32_t place);

    /// A stored text in UTF-8.
    std::string text(Bytes stored) const;

  private:
    Page page(const unsigned char* buffer) const;
    bool hasPassword() const;

    struct Close {
        void operator()(MdbHandle* file) const { mdb_close(file); }
    };
    std::unique_ptr<MdbHandle, Close> library;
    std::set<std::uint32_t> taken; // pieces of text that have been read
};

} // namespace Jet
