#pragma once

#include "core/shell/Screen.h"
#include "extras/compare/Comparison.h"
#include "extras/import/ConditionTable.h"
#include "ui_frmImport.h"

#include <map>

/// Takes the conditions of many systems from a table into a job, each with the first model of a series.
/// Nothing is stored before OK.
class frmImport : public Screen, private Ui::frmImport {
  public:
    frmImport();
    bool fillsWindow() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    QWidget* firstField() const override { return cmdFile; }

  private:
    void Load() override;
    void showChanges() override {}
    void openFile();
    void saveTemplate();
    void read(const QString& text, const QString& origin);
    bool chooseModels();
    void chooseModel(ImportedTank& tank);
    QString seriesFor(const ImportedTank& tank) const;
    void showTanks();
    void showState();
    std::vector<TankLine> goodLines() const;
    void store();

    QString source; // the text that was read; null before
    QString sourceName;
    ConditionTable::Systems systems;
    std::map<Application, Comparison> comparisons; // of the applications met so far
};
