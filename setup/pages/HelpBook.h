#pragma once

#include "core/base/PdfOutline.h"

#include <QImage>
#include <QList>
#include <QSizeF>
#include <QString>
#include <QTextDocument>
#include <QUrl>

#include <memory>
#include <vector>

class QHelpContentItem;
class QHelpEngine;
class QPagedPaintDevice;

/// Pages of the help for paper.
class HelpBook {
  public:
    /// All pages in the order of the contents, behind a table of contents.
    explicit HelpBook(const QHelpEngine& helpEngine);
    /// One page.
    HelpBook(const QHelpEngine& helpEngine, const QUrl& page);

    /// Paints the sheets that the device is set to. False if it cannot be painted on.
    bool paint(QPagedPaintDevice& device);
    /// A PDF with an outline that mirrors the contents.
    QByteArray pdf();

  private:
    /// A place in the contents.
    struct Place {
        QString title;
        int depth = 0;
        QUrl address;
    };
    /// A page and where it begins.
    struct Chapter {
        QUrl address; // empty for the table of contents
        std::unique_ptr<QTextDocument> text;
        int firstSheet = 0;
    };
    /// Where a place is on paper.
    struct Target {
        int sheet = 0;
        double down = 0; // from the upper edge of the text, in pixels
    };

    void collect(const QHelpContentItem* item, int depth);
    void add(const QUrl& page);
    void layOut(const QPagedPaintDevice& device);
    void writeContents();
    Target targetOf(const QUrl& address) const;
    QList<PdfLink> links(double paper) const;
    int sheets() const;
    void paintSheet(QPainter& painter, const Chapter& chapter, int sheet) const;

    const QHelpEngine& engine;
    QImage dots; // gives all layouts the same resolution
    QList<Place> places;
    std::vector<Chapter> chapters;
    QSizeF area; // of a sheet's text, in pixels
};
