#pragma once

#include "core/shell/Screen.h"
#include "documents/tags/UnitTags.h"
#include "ui_frmUnitTagData.h"

#include <array>

/// Gives each unit of the session's tank line a two-part tag.
class frmUnitTagData : public Screen, private Ui::frmUnitTagData {
  public:
    frmUnitTagData();
    bool loadsAfresh() const override { return true; }

  private:
    /// The controls of one unit.
    struct Row {
        QLabel* number;
        QLineEdit* prefix;
        QLabel* hyphen;
        QLineEdit* suffix;
    };

    void Load() override;
    bool eventFilter(QObject* object, QEvent* event) override;
    int readTags();
    void showRows(int quantity);
    void Save();

    std::array<Row, TankLine::MostTags> rows;
    std::optional<TankLine> asRead;
};
