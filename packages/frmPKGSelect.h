#pragma once

#include "core/store/TankLine.h"
#include "documents/submittals/ResultScreen.h"
#include "ui_frmPKGSelect.h"

#include <QElapsedTimer>

/// Chooses, saves and shows a glycol make-up package. There is no sizing.
class frmPKGSelect : public ResultScreen, private Ui::frmPKGSelect {
  public:
    frmPKGSelect();
    bool growsWithWindow() const override { return true; }
    bool hasEntries() const override { return Dirty; }
    QString nothingToPrint() const override;

  private:
    void Load() override;
    void showChanges() override;
    bool QueryUnload() override;
    bool eventFilter(QObject* object, QEvent* event) override;
    /// Whether a key that is pressed in the quantity walks or searches the list.
    bool goesToList(const QKeyEvent& key);
    QString modelText() const override { return txtModelNo->text(); }
    void selectFamily(const QString& packageClass, const QString& drawing);
    void FillListView(const QString& packageClass);
    void selectModel();
    void SaveRecord();

    std::optional<TankLine> asRead; // nothing for a new line
    bool Dirty = false;
    QString familyDrawing;
    QElapsedTimer lastLetter; // since the last letter typed to find a model
};
