#pragma once

#include "core/shell/Screen.h"
#include "extras/import/ImportSizing.h"
#include "ui_frmImport.h"

#include <optional>

/// Conditions of many systems, read from a file or the clipboard, and shown as they will be stored. Nothing
/// is stored before OK.
class frmImport : public Screen, private Ui::frmImport {
  public:
    frmImport();
    Subject subject() const override { return Subject::None; } // the job is chosen here
    bool fillsWindow() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    QWidget* firstField() const override { return cmdFile; }
    /// Reads a text in place of the one before.
    void take(const QString& text, const QString& origin);

  private:
    void Load() override;
    void showChanges() override {}
    bool QueryUnload() override;
    void fillSeries();
    void openFile();
    void paste();
    void saveTemplate();
    void begin();
    void work();
    void workOn();
    void finish();
    void fillTable();
    void showChosen();
    void showState();
    bool isReady() const;
    ImportSizing::ChosenSeries chosenSeries() const;
    void store();

    std::optional<ImportText::Table> table;
    std::optional<ImportSizing> sizing;
    std::vector<ImportedLine> lines; // those of the table that are sized
    bool halted = false;             // the sizing, by a fault
    int round = 0;                   // counts the beginnings, so that a slice of an earlier one does nothing
};
