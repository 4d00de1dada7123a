#pragma once

#include "core/shell/Screen.h"
#include "core/store/Representative.h"
#include "setup/OwnDetailsBox.h"
#include "ui_frmUserInput.h"

/// The user's defaults for new jobs, and their representative, which follows from the ZIP code.
class frmUserInput : public Screen, private Ui::frmUserInput {
  public:
    frmUserInput();
    Subject subject() const override { return Subject::None; }
    bool followsData() const override { return true; }
    void showChanges() override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void Load() override;
    void Activate() override;
    QWidget* firstField() const override { return txtPostalCode; }
    bool QueryUnload() override;
    bool markNoPressure();
    void fillDefaults();
    void GetRepInfo(const QString& sender);
    void LookupRepInDb(const QString& source, const QString& zip);
    void showRepresentative(bool visible);
    void offerRepresentatives();
    void takeRepresentative();
    void ValidateforNewEntry(QLineEdit* field, const QString& table);
    bool SaveRecord();
    void changeRepresentative();

    OwnDetailsBox ownDetails{*this};
    bool Dirty = false;            // whether the ZIP code has changed
    Representative representative; // last one shown
    // The ZIP code when its box got the focus and when it lost it; they start out different.
    QString zipAtFocus = "X";
    QString zipAtLeaving = "Y";
};
