#pragma once

#include "core/shell/Screen.h"
#include "core/store/Representative.h"
#include "ui_frmValidateRep.h"

#include <array>

/// Shows the representative's record, lets the user correct it, and stores it. With the Tag "UserInput" it
/// then returns to the user setup.
class frmValidateRep : public Screen, private Ui::frmValidateRep {
  public:
    frmValidateRep();
    Subject subject() const override { return Subject::None; }

    /// Fills the boxes.
    void Show(const QString& zip, const Representative& representative);
    /// A record that was found only needs confirming; otherwise the screen says that none was.
    void setFound(bool found);

  private:
    void Load() override;
    QWidget* firstField() const override { return txtPostalCode; }
    bool QueryUnload() override;
    void Save();
    void saveRepresentative();
    void savePostalCode();

    /// A box and the column of the user's tblRepMaster that it shows.
    struct Box {
        QLineEdit* box;
        const char* column;
        std::optional<QString> Representative::*member;
    };
    std::array<Box, 6> boxes() const;

    bool Dirty = false;
};
