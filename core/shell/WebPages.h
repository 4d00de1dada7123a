#pragma once

#include "core/shell/Screen.h"

/// A screen that shows pages: of the web, the demonstration or the help.
class PageScreen : public Screen {
  public:
    using Screen::Screen;

    /// The first page, set by whoever opens the screen before it is shown.
    QString StartingAddress;
    /// Opens StartingAddress, if set.
    virtual void Start() = 0;
    Subject subject() const override { return Subject::None; }
};

namespace WebPages {

/// Opens a page screen at an address, or brings it to the front.
void openPage(const QString& screen, const QString& address);

/// The maker's home page.
QString homePage();

/// Opens a page of the maker in the system's browser, or in the program's own if there is none: "TechSupport"
/// is the support page, any other word the home page. Throws Fault 53 if the registered browser cannot be
/// started.
void LaunchInternetExplorer(const QString& page);

/// Opens a page in the folder Demo, below the program's.
void openDemo(const QString& page);

} // namespace WebPages
