#pragma once

#include "core/Screen.h"
#include "shock/ShockSizes.h"
#include "sizing/ModelSearch.h"
#include "ui_frmtankselection.h"

class Connection;

/// Searches the catalogue for the models and quantities that fit and stores the user's choice.
class frmtankselection : public Screen, private Ui::frmtankselection {
  public:
    frmtankselection();

  private:
    void Load() override;
    bool QueryUnload() override;
    void FindOtherTanks();
    void FindConvertedTanks();
    void FindSHKTanks();
    bool BeginSearch(const QStringList& headings);
    void FindTanks(const QString& sizeColumn);
    static QList<QStringList> ShockOptions(const ShockConditions& conditions, const QString& series,
                                           double requiredVolume, Connection& catalogue);
    void ShowOptions(const QList<QStringList>& rows);
    void ShowResults(bool severalTanks);
    void SaveRecord();
    void Next();
    void Previous();
    void Cancel();

    QString SearchFamily;
};
