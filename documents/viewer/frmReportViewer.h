#pragma once

#include "core/shell/Screen.h"
#include "documents/report/Document.h"
#include "ui_frmReportViewer.h"

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
    const Document& document() const { return shownDocument; }

  private:
    bool hasEntries() const override { return false; } // what is typed leads through the report
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void showContents();
    void showPage();
    void showZoom();
    void goToTypedPage();
    void zoomAsTyped();
    void Find(int step);
    void showFound();
    void addShortcuts();
    void showFormats();

    Document shownDocument;
    QList<TextPlace> contents; // where each row of the contents points
};
