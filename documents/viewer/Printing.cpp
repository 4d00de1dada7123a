#include "documents/viewer/Printing.h"

#include "core/base/Fault.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Hourglass.h"
#include "core/shell/Status.h"
#include "documents/export/Export.h"
#include "documents/report/PagePainter.h"
#include "documents/viewer/Written.h"

#include <QCoreApplication>
#include <QPainter>
#include <QPdfWriter>
#include <QPrinter>

#include <algorithm>
#include <cmath>

using StatusBar::setStatusText;

namespace {

Fault printerFault() {
    return {Fault::Printer, "Printer error"};
}

/// Makes the dialog offer the paper of the pages first.
void setPaper(QPrinter& printer, const QSizeF& size) {
    const bool landscape = size.width() > size.height();
    const QPageSize paper(landscape ? size.transposed() : size, QPageSize::Point);
    printer.setPageLayout(QPageLayout(paper, landscape ? QPageLayout::Landscape : QPageLayout::Portrait, {}));
    printer.setFullPage(true);
}

/// The pages that the dialog asks for, repeated and ordered as they are to be printed.
Pages chosenPages(const QPrinter& printer, const Pages& all) {
    const bool range = printer.printRange() == QPrinter::PageRange;
    const int first = range ? std::max(1, printer.fromPage()) : 1;
    const int last = range && printer.toPage() > 0 ? printer.toPage() : int(all.size());
    const Pages chosen = all.mid(first - 1, std::max(0, last - first + 1));
    const int copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount();
    Pages pages;
    if (printer.collateCopies()) {
        for (int copy = 0; copy < copies; ++copy)
            pages += chosen;
    } else {
        for (const Page& page : chosen)
            pages += Pages(copies, page);
    }
    return pages;
}

/// Paints the pages onto a printer's or a file's paper. Throws Export::Stopped.
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
bool print(QPrinter& printer, const Pages& pages) {
    const auto progress = Dialogs::current().progress(QCoreApplication::translate("Printing", "Printing..."));
    QPainter painter; // outlives a failure, since its end would print what is there
    try {
        paint(painter, printer, pages,
              [&](qsizetype done, qsizetype all) { return progress->goesOn(done, all); });
    } catch (const Export::Stopped&) {
        printer.abort();
        return false;
    } catch (const Fault&) {
        printer.abort();
        throw;
    }
    if (printer.printerState() == QPrinter::Error)
        throw printerFault();
    return true;
}

/// Whether the user chose other paper than that of the pages, or turned it.
bool isOnOtherPaper(const QPrinter& printer, const Document& document) {
    constexpr double tolerance = 2; // points; papers are in whole millimetres or in inches
    const QSizeF apart =
        printer.pageLayout().fullRect(QPageLayout::Point).size() - document.pages.first().size;
    return std::max(std::abs(apart.width()), std::abs(apart.height())) > tolerance;
}

/// Printing to a file works like an export: the whole file or none, and errors are reported. On other paper
/// the pages are drawn as a printer would draw them, which has no outline and no links.
bool printToFile(const QPrinter& printer, const Document& document) {
    const QString file = printer.outputFileName();
    if (!isOnOtherPaper(printer, document))
        return writeFile(Export::format("mnuExportPDF"), document, file);
    return writeFile(file, [&](QIODevice& device, const Export::GoOn& goOn) {
        QPdfWriter writer(&device);
        writer.setTitle(document.title);
        writer.setPageLayout(printer.pageLayout());
        QPainter painter;
        paint(painter, writer, document.pages, goOn);
    });
}

void sayPrinted(bool printed) {
    setStatusText(printed ? QCoreApplication::translate("Printing", "Printed")
                          : QCoreApplication::translate("Printing", "Printing was stopped"));
}

} // namespace

void printDocument(const Document& document) {
    if (document.pages.isEmpty())
        return;
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(proposedName(document) + ".pdf"); // the dialog proposes this name for a file
    setPaper(printer, document.pages.first().size);
    printer.setFromTo(1, int(document.pages.size()));
    printer.setPrintRange(QPrinter::AllPages);
    if (!Dialogs::current().printer(printer))
        return;
    const Hourglass hourglass;
    Document chosen = document;
    chosen.pages = chosenPages(printer, document.pages);
    if (chosen.pages.isEmpty())
        return;
    const QString file = printer.outputFileName();
    if (printer.outputFormat() != QPrinter::PdfFormat || file.isEmpty())
        return sayPrinted(print(printer, chosen.pages));
    if (printToFile(printer, chosen))
        sayWritten(QCoreApplication::translate("Printing", "Printed to %1"), file);
    else
        sayPrinted(false);
}
