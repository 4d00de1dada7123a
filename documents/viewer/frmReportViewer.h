#pragma once

#include "core/shell/Screen.h"
#include "documents/report/DocumentMaker.h"
#include "ui_frmReportViewer.h"

#include <QElapsedTimer>
#include <QTimer>

#include <memory>

/// Shows the pages of a report, one report at a time.
class frmReportViewer : public Screen, private Ui::frmReportViewer {
  public:
    frmReportViewer();
    Subject subject() const override { return Subject::None; }
    Subject shownRecord() const override;
    bool fillsWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    QWidget* firstField() const override { return ARViewer21; }
    /// Shows a report in place of the one before, from its first page.
    void setDocument(const Document& shown);
    /// The same for one that is still being made: the other pages follow as they are made.
    void setMaker(std::unique_ptr<DocumentMaker> newMaker);
    /// The document, as far as it is made.
    const Document& document() const { return shownDocument; }
    bool isWhole() const { return !maker; }
    /// Makes the pages that are missing, for what needs all of them. The user sees how far that is and can
    /// stop it: then the result is false, and the pages follow in their own time.
    bool makeWhole();

  private:
    bool hasEntries() const override { return false; } // what is typed leads through the report
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void resizeEvent(QResizeEvent* event) override;
    void makeMore();
    bool tryToMake(const std::function<void()>& make);
    void showMore();
    bool isTyping() const;
    void showContents();
    QString printedNumber(int page) const;
    void fitContents();
    void showPage();
    void showCount();
    void showZoom();
    void goToLast();
    void goToTypedPage();
    void zoomAsTyped();
    void Find(int step);
    void showFound();
    void addShortcuts();
    void showFormats();

    Document shownDocument;
    std::unique_ptr<DocumentMaker> maker; // of the pages that are missing; null for a whole document
    QElapsedTimer lastShown;              // since what it has made was shown
    QTimer making;                        // makes the next of them when nothing else is to be done
    int beginning = 0;                    // of the document that is being made, as shown
    bool waiting = false;                 // for all its pages
    bool growing = false;                 // pages are being added, which leaves what the user types
    QList<TextPlace> contents;            // where each row of the contents points
    int widestTitle = 0;                  // of these rows, in pixels
};
