#pragma once

#include <QString>

#include <memory>

class QPagedPaintDevice;
class QWidget;

/// A printer, as far as the program uses one: what the plugin `brennoval-printing` offers. It brings Qt's
/// library for printing, at the first use.
class Printer {
  public:
    /// What its dialog asks for.
    struct Choice {
        int first = 0;  // page, from 1; 0 for all pages
        int last = 0;   // page; 0 for the end
        int copies = 1; // for the program to make, if the printer cannot
        bool collated = false;
        bool lastPageFirst = false;
        QString file = {}; // of a PDF to write; empty for paper
    };

    virtual ~Printer() = default;
    Printer() = default;
    Printer(const Printer&) = delete;
    Printer& operator=(const Printer&) = delete;

    /// What is painted on. Its layout is the dialog's paper.
    virtual QPagedPaintDevice& paper() = 0;
    /// Makes the paper's margins part of what is painted on.
    virtual void useWholePaper() = 0;
    /// The name of the print, which the dialog proposes for a file, and its number of pages, 0 if unknown.
    virtual void announce(const QString& document, int pages) = 0;
    /// Shows the dialog; false if the user cancels.
    virtual bool ask(QWidget* window) = 0;
    virtual Choice choice() const = 0;
    /// Chooses as the user would: the pages, the order if it is not the usual one, and a file.
    virtual void choose(const Choice& choice) = 0;
    /// Stops what the printer has not taken yet.
    virtual void abort() = 0;
    virtual bool hasFailed() const = 0;
};

/// The plugin's function `newPrinter`: a printer that the caller owns; null for a program of another version.
using PrinterFactory = Printer* (*)(const char* programVersion);

/// The system's printer. Throws Fault 482 if the plugin is missing.
std::unique_ptr<Printer> newPrinter();
