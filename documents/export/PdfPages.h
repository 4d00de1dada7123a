#pragma once

#include "documents/export/Export.h"
#include "documents/export/PdfContent.h"
#include "documents/export/PdfPictures.h"
#include "documents/export/PdfReading.h"
#include "documents/export/PdfStructure.h"
#include "documents/report/Document.h"

#include <QMultiHash>

/// Writes the pages of a document, with what their parts are.
class PdfPages {
  public:
    PdfPages(const Document& written, PdfFile& target);

    /// Writes all pages, fonts and pictures; returns the object that lists the pages. Throws Export::Stopped.
    int write(const Export::GoOn& goOn);
    /// The objects of the pages.
    const QList<int>& pages() const { return objects; }
    /// Ends the structure; returns its root.
    int structure() { return tags.finish(); }

  private:
    /// Of the table whose rows are being written.
    struct Column {
        double left = 0;
        double right = 0;
    };

    void writePage(int index, int parent, int resources);
    void areasAndLines(const Page& page);
    void furniture(const Page& page);

    void rows(const QList<PdfReading::Row>& list);
    void beginTable(const PageText& first);
    void sortColumns();
    void endTable();
    void headings(const PdfReading::Row& row);
    void headingCell(const QByteArray& entries, const QList<const PageText*>& list);
    void cells(const PdfReading::Row& row);
    void groupHeading(const PdfReading::Row& row);
    std::pair<int, int> columnsUnder(const PageText& text) const;

    void piece(const PdfReading::Piece& piece);
    void picture(const PagePicture& picture);
    void check(const PageCheck& check);
    void texts(const QList<const PageText*>& list, int heading);
    void text(const PageText& text);
    void mark();
    void draw(const PageText& text);
    void drawBox(const PageCheck& check);
    void link(const PageLink& link, const QString& text);
    void begin(const char* kind, const QByteArray& entries = {});
    void end();

    const Document& document;
    PdfFile& file;
    PdfFonts fonts;
    PdfPictures pictures;
    PdfStructure tags;
    QList<int> objects;
    QMultiHash<int, const PageLink*> linksByPage;
    QList<Column> columns;
    bool inTable = false;
    std::vector<const char*> kinds; // of the open elements

    // Of the current page:
    const Page* page = nullptr;
    int pageIndex = 0;
    std::optional<PdfContent> content;
    QList<const PageLink*> links;
    QByteArray annotations;
};
