#pragma once

#include "documents/report/Document.h"

/// Makes a document part by part, so that its first pages can be read while the others are made.
class DocumentMaker {
  public:
    DocumentMaker() = default;
    virtual ~DocumentMaker() = default;
    DocumentMaker(const DocumentMaker&) = delete;
    DocumentMaker& operator=(const DocumentMaker&) = delete;

    /// What a number says that only the whole document tells.
    static constexpr QChar Unknown{0x2026};

    /// The document so far. Pages and bookmarks keep their places while more follow, unless it is begun anew;
    /// numbers of what is yet to be made are Unknown.
    const Document& document() const { return made; }
    /// How often it has been begun.
    int beginnings() const { return begun; }
    /// How many of the parts are made.
    virtual int partsMade() const = 0;
    virtual int parts() const = 0;
    bool isDone() const { return partsMade() == parts(); }

    /// Makes the next part, which is some milliseconds of work. Begins anew when what was read has changed
    /// since. Throws Fault; then the document cannot be made.
    virtual void makeNext() = 0;

  protected:
    Document made;
    int begun = 0;
};
