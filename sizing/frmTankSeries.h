#pragma once

#include "core/base/Applications.h"
#include "core/shell/Screen.h"
#include "core/store/TankLine.h"
#include "ui_frmTankSeries.h"

/// The choice of the series. Its Next computes the tank line's required sizes.
class frmTankSeries : public Screen, private Ui::frmTankSeries {
  public:
    frmTankSeries();

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    void showChanges() override;
    bool QueryUnload() override;
    QWidget* frameOf(Application application) const;
    void showFrame(std::optional<Application> application);
    void preselect(const QString& stored);
    bool storeSizes();
    bool chooseByArrow(QObject* option, int key);
    void goOnWith(QAbstractButton* option);
    void Next();
    void Previous();
    void Cancel();

    std::optional<TankLine> asRead;
    std::optional<Application> shownApplication;
};
