#pragma once

#include "setup/prior/JetText.h"

#include <glib.h> // ahead of the library, whose header would take it into its extern "C"
#include <iconv.h>
#include <mdbtools.h>

#include <cstdint>
#include <memory>
#include <set>
#include <string>

namespace Jet {

/// A page of the file, in one of the library's two buffers, until the next is read there.
class Page {
  public:
    Page(Bytes content, size_t placeOfRowCount) : bytes(content), rowCountAt(placeOfRowCount) {}

    /// What the page holds, as its first byte tells.
    enum Kind : unsigned char { Data = 1, TableDefinition = 2 };
    Kind kind() const { return static_cast<Kind>(bytes[0]); }

    unsigned byte(size_t at) const { return range(at, 1)[0]; }
    unsigned word(size_t at) const { return byte(at) | byte(at + 1) << 8U; }
    std::uint32_t number(size_t at) const { return word(at) | word(at + 2) << 16U; }
    /// Throws Damaged for what does not lie within the page.
    Bytes range(size_t begin, size_t size) const;

    struct Row {
        size_t begin = 0;
        size_t size = 0;
        bool isElsewhere = false; // deleted, or moved and to be found there
    };
    unsigned rowCount() const { return word(rowCountAt); }
    /// Throws Damaged when there is no such row, or when it reaches out of the room that the page has for
    /// rows.
    Row row(unsigned index) const;

  private:
    Bytes bytes;
    size_t rowCountAt;
};

/// The file, opened for reading.
class File {
  public:
    /// Throws Damaged for one that is no plain file, is none of its kind or is not whole, and DatabaseFault
    /// for one under a password.
    explicit File(const char* path);

    MdbHandle& handle() const { return *library; }
    bool isVersion3() const { return library->f->jet_version == MDB_VER_JET3; }

    /// The page that the library read last.
    Page currentPage() const { return page(library->pg_buf); }
    /// Reads a page beside the current one.
    Page pageBeside(std::uint32_t number) const;

    /// A piece of a long text, by its page and, in the lowest byte, its row there. Throws Damaged for one
    /// that another text has: no chain of pieces leads back, and no two meet.
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
    std::set<std::uint32_t> taken; // the pieces of texts that have been read
};

} // namespace Jet
