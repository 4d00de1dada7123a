#pragma once

#include "core/shell/DisplayFields.h"
#include "core/store/TankLine.h"
#include "documents/submittals/ResultScreen.h"

/// A screen that shows one finished tank: the session's tank line, its model of the catalogue and the
/// drawing. What is not found keeps the samples of the design.
class FinishedTankScreen : public ResultScreen {
  public:
    bool loadsAfresh() const override { return true; }

  protected:
    using ResultScreen::ResultScreen;

    /// The fields that every such screen has.
    struct Fields {
        QLineEdit* model = nullptr;
        QLabel* picture = nullptr;
        QLineEdit* drawing = nullptr; // its name, in place of a picture that cannot be loaded
        QToolButton* preview = nullptr;
        QToolButton* print = nullptr;
        QToolButton* specification = nullptr;
    };
    /// To be called when the controls stand.
    void shows(const Fields& shownFields);

    virtual void ShowTankLine(const TankLine& tank) = 0;
    virtual void ShowModel(Recordset& model) = 0;
    /// "ASME " or "non-ASME " and the bladder of a model.
    static QString bladderType(Recordset& model);

    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    QString modelText() const override;

  private:
    Fields fields;
};
