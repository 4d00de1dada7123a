#pragma once

#include "core/base/EntryRules.h"
#include "core/shell/Screen.h"
#include "extras/compare/Comparison.h"
#include "ui_frmCompare.h"

#include <QHash>
#include <QSet>

/// All models that answer the conditions in its boxes, side by side. Nothing is stored before the user takes
/// one of them.
class frmCompare : public Screen, private Ui::frmCompare {
  public:
    frmCompare();
    bool fillsWindow() const override { return true; }
    bool growsWithWindow() const override { return true; }
    bool closesOnEscape() const override { return true; }
    bool outlivesRecord() const override { return true; }
    void loseRecord() override;
    void Activate() override;
    QWidget* firstField() const override;

    /// What the table shows at present.
    struct Shown {
        Application application = Application::Expansion;
        TankLine conditions{};
        std::vector<const Candidate*> rows{}; // in the order of the table
        const Candidate* chosen = nullptr;
    };
    Shown shown() const;

  protected:
    void changeEvent(QEvent* event) override;

  private:
    void Load() override;
    void showChanges() override {}
    bool QueryUnload() override;
    void prepareBoxes();
    void showLine(const TankLine& line);
    Application application() const;
    void adaptToApplication();
    void showLimits();
    QHash<QString, QString> boxes() const;
    QHash<QString, QString> entries() const;
    void renewAtmosphere();
    void markFilters();
    Objections markWrong();
    void refresh();
    void fillTable();
    CompareFilters filters() const;
    const Candidate* chosen() const;
    void showChosen();
    void openEstimate();
    void openMetric();
    void closePads();
    void use();
    bool store(const Candidate& candidate);

    std::optional<TankLine> asRead; // the line from which this was opened
    std::optional<Application> lineApplication;
    std::optional<Comparison> comparison;
    std::optional<TankLine> compared; // the conditions of the table
    std::vector<Candidate> candidates;
    QStringList ownChoice; // of the user or the line; the table may have to show another one meanwhile
    QSet<QString> touched; // boxes in which something was typed
    QString ownFluid;      // chosen where the application leaves the choice
    QHash<QString, QString> entriesBefore; // as the screen began
    bool fluidChosen = false;              // by the user, not with the application
    double shockAtmosphere = 0;            // psia, of the user
    QString shownDrawing;                  // with which the picture was made
};
