#pragma once

#include "core/shell/DisplayFields.h"
#include "core/store/Model.h"
#include "core/store/TankLine.h"
#include "documents/submittals/ResultScreen.h"

/// A screen that shows one finished tank: the session's tank line, its catalogue model and the drawing.
/// Whatever is missing keeps the form's sample text.
class FinishedTankScreen : public ResultScreen {
  public:
    bool loadsAfresh() const override { return true; }
    bool closesOnEscape() const override { return true; }

  protected:
    using ResultScreen::ResultScreen;

    /// The fields that every such screen has.
    struct Fields {
        QLineEdit* model = nullptr;
        QLabel* picture = nullptr;
        QLineEdit* drawing = nullptr; // its name, shown when the picture cannot be loaded
        QToolButton* preview = nullptr;
        QToolButton* print = nullptr;
        QToolButton* specification = nullptr;
        QToolButton* calculation = nullptr;
        QLabel* notes = nullptr; // hidden when there are none
    };
    /// Call once the controls exist.
    void shows(const Fields& shownFields);

    virtual void showTankLine(const TankLine& tank) = 0;
    virtual void showModel(const Model& model) = 0;
    /// Adds what the sizing of its application knows about a line: the sizes that its conditions give now,
    /// the connection that its pipe demands. Throws DatabaseFault.
    virtual void addFacts(SizingNotes::Facts& facts, const TankLine& tank) const = 0;
    /// "ASME " or "non-ASME " followed by the model's bladder.
    static QString bladderType(const Model& model);

    void Load() override;
    void Activate() override;
    void Deactivate() override;
    bool QueryUnload() override;
    QString modelText() const override;

  private:
    Fields fields;
};
