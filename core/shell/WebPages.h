#pragma once

#include "core/shell/Screen.h"

/// A screen that shows pages: of the web, of the demonstration or of the help.
class PageScreen : public Screen {
  public:
    using Screen::Screen;

    /// What it opens first. The one who opens the screen sets it before the screen shows.
    QString StartingAddress;
    /// Opens StartingAddress, if there is one.
    virtual void Start() = 0;
    Subject subject() const override { return Subject::None; }
};

namespace WebPages {

/// Opens a page screen, or brings it to the front, at an address.
void OpenPage(const QString& screen, const QString& address);

/// The maker's home page.
QString HomePage();

/// Opens a page of the maker in the system's browser, or in the program's own where there is none:
/// "TechSupport" the support page, any other word the home page. Throws Fault 53 when the registered browser
/// cannot be started.
void LaunchInternetExplorer(const QString& page);

/// Opens a page of the folder Demo, below the program's.
void OpenDemo(const QString& page);

} // namespace WebPages
