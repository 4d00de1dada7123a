#pragma once

#include "core/shell/Lists.h"
#include "core/shell/Screen.h"
#include "core/store/TankLine.h"
#include "sizing/ModelSearch.h"
#include "ui_frmtankselection.h"

/// Searches the catalogue for the models and quantities that fit and stores the user's choice.
class frmtankselection : public Screen, private Ui::frmtankselection {
  public:
    frmtankselection();

    bool growsWithWindow() const override { return true; }
    bool loadsAfresh() const override { return true; }

  private:
    /// What the tank line requires, in gallons.
    struct Requirement {
        QString series;
        double volume;
        double acceptance;
    };
    void Load() override;
    void showChanges() override;
    bool QueryUnload() override;
    void FindOtherTanks();
    void FindConvertedTanks();
    void FindSHKTanks();
    Requirement readRequirement();
    bool beginSearch(const QStringList& headings);
    void showTanks(const std::vector<TankOption>& options);
    void showOptions(ListRows rows);
    void showResults();
    bool SaveRecord();
    void Next();
    void Previous();
    void Cancel();

    std::optional<TankLine> asRead;
    QString SearchFamily;
    QStringList headings_;
    bool severalTanks = false; // no single tank is enough
};
