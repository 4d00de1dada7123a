#pragma once

#include <QByteArray>

namespace Ui {
class frmUserInput;
}

/// The page of the user setup with what the user's own documents say of them. What was typed or chosen there
/// is stored when the setup is saved or closed.
class OwnDetailsBox {
  public:
    explicit OwnDetailsBox(Ui::frmUserInput& shown) : ui(shown) {}

    /// Fills the page from what is stored. Throws DatabaseFault.
    void fill();
    /// Stores the page if it differs from what is stored. Throws DatabaseFault.
    void save() const;
    /// Lets the user choose a picture, which is kept; one that cannot be read is told and changes nothing.
    /// True if one was chosen.
    bool chooseLogo();
    void removeLogo() { showLogo({}); }

  private:
    void showLogo(const QByteArray& picture);

    Ui::frmUserInput& ui;
    QByteArray logo; // empty for none
};
