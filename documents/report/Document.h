#pragma once

#include "documents/report/Page.h"

/// What a report is about: models of the catalogue, or a record of the user's.
enum class ReportOf { Catalogue, Job, TankLine };

/// A place that an outline names and a contents list leads to.
struct Bookmark {
    QString title;
    int depth = 0; // 0 for the top level
    int page = 0;  // counted from 0
    int text = 0;  // on the page
};

/// A text that leads to another page.
struct PageLink {
    int page = 0; // counted from 0
    QRectF place; // on it
    int target = 0;
};

/// A finished report: its pages and the description that goes into a file of them.
struct Document {
    QString title;
    QString author;
    QString fileName; // the suggested name, without an extension
    Pages pages;
    bool table = false; // the details are the rows of one table, which a workbook can filter
    ReportOf of = ReportOf::Catalogue;
    QList<Bookmark> bookmarks{}; // of a document that is put together from several reports
    QList<PageLink> links{};
    QStringList pageLabels{}; // what a reader's page box says for each page; none for plain numbers
};

/// The places that an outline of a document leads to: its bookmarks, or else the headings of its groups.
QList<Bookmark> outlineOf(const Document& document);

/// A document of some pages, counted from 0, in the order given. What leads to a page that is left out goes;
/// a title in the outline stays for the sake of those below it.
Document selectionOf(const Document& document, const QList<int>& pages);

/// The document on other paper, in points, which lies as each page does. Where it is smaller than a page, the
/// page is made smaller, never cut; no page is made larger.
Document onPaper(Document document, const QSizeF& paper);
