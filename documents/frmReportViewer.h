#pragma once

#include "core/shell/Screen.h"
#include "documents/report/Page.h"
#include "ui_frmReportViewer.h"

/// Shows the pages of one report at a time.
class frmReportViewer : public Screen, private Ui::frmReportViewer {
  public:
    frmReportViewer();
    bool fillsWindow() const override { return true; }
    Subject subject() const override { return Subject::None; }
    QWidget* firstField() const override { return ARViewer21; }
    void setReport(const Pages& pages, const QString& title);
    const Pages& pages() const { return ARViewer21->pages(); }
    const QString& reportTitle() const { return title; }

  private:
    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    void ShowPage();
    void Find();

    QString title;
};

/// Shows pages in the viewer, in place of what it showed before.
void ShowPages(const Pages& pages, const QString& title);

/// Prints pages, after the printer dialog.
void PrintPages(const Pages& pages, const QString& title);

/// The commands Print, Preview and Export of the main window.
void registerReportCommands();
