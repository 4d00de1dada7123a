#include "documents/viewer/Printing.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Printer.h"
#include "core/shell/Status.h"
#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"
#include "documents/viewer/Written.h"

#include <QCoreApplication>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>
#include <cmath>
#include <numeric>

using StatusBar::setStatusText;

namespace {

Fault printerFault() {
    return {Fault::Printer, "Printer error"};
}

/// Makes the dialog offer the paper of the pages first.
void setPaper(Printer& printer, const QSizeF& size) {
    const bool landscape = size.width() > size.height();
    const QPageSize paper(landscape ? size.transposed() : size, QPageSize::Point);
    printer.paper().setPageLayout(
        QPageLayout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, {}));
    printer.useWholePaper();
}

/// The pages that the dialog asks for, repeated and ordered as they are to be printed.
QList<int> chosenPages(const Printer::Choice& choice, int all) {
    const int first = std::max(1, choice.first);
    const int last = choice.last > 0 ? std::min(all, choice.last) : all;
    QList<int> chosen(std::max(0, last - first + 1));
    std::iota(chosen.begin(), chosen.end(), first - 1);
    QList<int> pages;
    if (choice.collated) {
        for (int copy = 0; copy < choice.copies; ++copy)
            pages += chosen;
    } else {
        for (const int page : chosen)
            pages += QList<int>(choice.copies, page);
    }
    if (choice.lastPageFirst) // which Qt leaves to the program
        std::reverse(pages.begin(), pages.end());
    return pages;
}

/// Paints the pages onto a printer's paper. Throws Export::Stopped.
void paint(QPainter& painter, QPagedPaintDevice& device, const Pages& pages, const Export::GoOn& goOn) {
    if (!painter.begin(&device))
        throw printerFault();
    const QSizeF paper = device.pageLayout().fullRect(QPageLayout::Point).size();
    for (qsizetype i = 0; i < pages.size(); ++i) {
        Export::ask(goOn, i, pages.size());
        if (i > 0 && !device.newPage())
            throw printerFault();
        painter.save();
        painter.scale(device.logicalDpiX() / 72.0, device.logicalDpiY() / 72.0);
        QSizeF room = paper;
        // A page that lies across the paper, as the schedule in a package, is turned.
        if ((pages[i].size.width() > pages[i].size.height()) != (room.width() > room.height())) {
            painter.translate(room.width(), 0);
            painter.rotate(90);
            room.transpose();
        }
        // On paper smaller than its own, a page is scaled down and never cut.
        const double reduced =
            std::min({1.0, room.width() / pages[i].size.width(), room.height() / pages[i].size.height()});
        painter.scale(reduced, reduced);
        paintPage(painter, pages[i]);
        painter.restore();
    }
    if (!painter.end())
        throw printerFault();
}

/// False if the user stopped it: then nothing is printed that the printer has not taken yet.
bool print(Printer& printer, const Pages& pages) {
    const auto progress = Dialogs::current().progress(QCoreApplication::translate("Printing", "Printing..."));
    QPainter painter; // outlives a failure, since its end would print what is there
    try {
        paint(painter, printer.paper(), pages,
              [&](qsizetype done, qsizetype all) { return progress->goesOn(done, all); });
    } catch (const Export::Stopped&) {
        printer.abort();
        return false;
    } catch (const Fault&) {
        printer.abort();
        throw;
    }
    if (printer.hasFailed())
        throw printerFault();
    return true;
}

/// The paper of a printer, in points.
QSizeF paperOf(Printer& printer) {
    return printer.paper().pageLayout().fullRect(QPageLayout::Point).size();
}

/// Printing to a file works like an export: the whole file or none, and errors are reported. The user may
/// have chosen other paper than was offered, or turned it.
bool printToFile(const QString& file, const QSizeF& paper, const QSizeF& offered, const Document& document) {
    constexpr double tolerance = 2; // points; papers are in whole millimetres or in inches
    const QSizeF apart = paper - offered;
    const bool isOther = std::max(std::abs(apart.width()), std::abs(apart.height())) > tolerance;
    return writeFile(Export::format("mnuExportPDF"), isOther ? onPaper(document, paper) : document, file);
}

void sayPrinted(bool printed) {
    setStatusText(printed ? QCoreApplication::translate("Printing", "Printed")
                          : QCoreApplication::translate("Printing", "Printing was stopped"));
}

} // namespace

void printDocument(const Document& document) {
    if (document.pages.isEmpty())
        return;
    const auto printer = newPrinter();
    const auto pages = int(document.pages.size());
    printer->announce(proposedName(document) + ".pdf", pages); // the dialog proposes this name for a file
    const QSizeF offered = document.pages.first().size;
    setPaper(*printer, offered);
    if (!Dialogs::current().printer(*printer))
        return;
    const Hourglass hourglass;
    const Printer::Choice choice = printer->choice();
    const Document chosen = selectionOf(document, chosenPages(choice, pages));
    if (chosen.pages.isEmpty())
        return;
    if (choice.file.isEmpty())
        return sayPrinted(print(*printer, chosen.pages));
    if (printToFile(choice.file, paperOf(*printer), offered, chosen))
        sayWritten(QCoreApplication::translate("Printing", "Printed to %1"), choice.file);
    else
        sayPrinted(false);
}
