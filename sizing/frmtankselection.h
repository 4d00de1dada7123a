#pragma once

#include "core/Screen.h"
#include "sizing/ModelSearch.h"
#include "ui_frmtankselection.h"

/// Searches the catalogue for the models and quantities that fit and stores the user's choice.
class frmtankselection : public Screen, private Ui::frmtankselection {
  public:
    frmtankselection();

  private:
    void Load() override;
    bool QueryUnload() override;
    void FindOtherTanks();
    void FindConvertedTanks();
    void FindTanks(const QString& sizeColumn);
    void SaveRecord();
    void Next();
    void Previous();
    void Cancel();

    QString SearchFamily;
};
