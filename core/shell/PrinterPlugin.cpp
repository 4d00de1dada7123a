// Prints. A plugin: Qt's library for printing would take its time at every start, and few starts print.

#include "core/shell/Printer.h"

#include <QPrintDialog>
#include <QPrinter>

#include <cstring>

namespace {

class QtPrinter : public Printer {
  public:
    QPagedPaintDevice& paper() override { return printer; }
    void useWholePaper() override { printer.setFullPage(true); }

    void announce(const QString& document, int pages) override {
        printer.setDocName(document);
        if (pages > 0)
            printer.setFromTo(1, pages);
        printer.setPrintRange(QPrinter::AllPages);
    }

    bool ask(QWidget* window) override { return QPrintDialog(&printer, window).exec() == QDialog::Accepted; }

    Choice choice() const override {
        const bool range = printer.printRange() == QPrinter::PageRange;
        return {.first = range ? std::max(1, printer.fromPage()) : 0,
                .last = range ? printer.toPage() : 0,
                .copies = printer.supportsMultipleCopies() ? 1 : printer.copyCount(),
                .collated = printer.collateCopies(),
                .lastPageFirst = printer.pageOrder() == QPrinter::LastPageFirst,
                .file = printer.outputFormat() == QPrinter::PdfFormat ? printer.outputFileName() : QString()};
    }

    void choose(const Choice& choice) override {
        if (!choice.file.isEmpty())
            printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(choice.file);
        if (choice.first > 0) {
            printer.setFromTo(choice.first, choice.last);
            printer.setPrintRange(QPrinter::PageRange);
        }
        if (choice.lastPageFirst)
            printer.setPageOrder(QPrinter::LastPageFirst);
    }

    void abort() override { printer.abort(); }
    bool hasFailed() const override { return printer.printerState() == QPrinter::Error; }

  private:
    QPrinter printer{QPrinter::HighResolution};
};

} // namespace

extern "C" Q_DECL_EXPORT Printer* newPrinter(const char* programVersion) {
    return std::strcmp(programVersion, BRENNOVAL_VERSION) == 0 ? new QtPrinter : nullptr;
}
