#pragma once

#include "documents/export/PdfFile.h"

#include <QRectF>
#include <QString>

#include <vector>

/// Tells what the parts of a PDF's pages are and in which order they are read: the tree of tags. Elements are
/// written when they end, so a long document needs no memory for them.
class PdfStructure {
  public:
    PdfStructure(PdfFile& written, int ofPages);

    /// Begins an element inside the one begun last. Its entries are those of the format beside its kind.
    void begin(const char* kind, const QByteArray& entries = {});
    void end();
    /// A number for content of the current page that belongs to the element begun last.
    int content();
    /// Makes an annotation, by its number, part of the element begun last; returns its key in the tree.
    int annotation(int object);

    void beginPage(int object);
    void endPage();
    /// Ends all elements and writes the tree; returns its root.
    int finish();

    /// Entries of elements.
    static QByteArray insteadOf(const QString& text); // what a picture shows
    static QByteArray bounds(const QRectF& place, double pageHeight);

  private:
    struct Element {
        int number = 0;
        const char* kind = nullptr;
        QByteArray entries;
        QByteArray parts;
        bool onPage = false; // has content of the current page
    };

    PdfFile& file;
    std::vector<Element> open;
    QByteArray record; // of an element; kept for its memory
    int root = 0;
    int page = 0;
    QList<int> owners;     // of the current page's content
    QByteArray pageOwners; // of all pages
    std::vector<int> annotationOwners;
    int pages = 0;     // so far
    int pageCount = 0; // in all; annotations have keys behind those of the pages
};
