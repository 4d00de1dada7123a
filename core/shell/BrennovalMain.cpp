#include "core/shell/BrennovalMain.h"
#include "core/base/Text.h"

#include "core/base/Program.h"
#include "core/look/Appearance.h"
#include "core/shell/Commands.h"
#include "core/shell/ElidedLabel.h"
#include "core/shell/Fitting.h"
#include "core/shell/Help.h"
#include "core/shell/Hourglass.h"
#include "core/shell/LockKeys.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "core/shell/WebPages.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDateTime>
#include <QLabel>
#include <QLocale>
#include <QMdiSubWindow>
#include <QMenuBar>
#include <QPaintEvent>
#include <QPainter>
#include <QScrollArea>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QVBoxLayout>

namespace {

/// One entry of the menu tree; depth is the number of menus above it.
struct MenuEntry {
    int depth;
    const char* name;
    const char* caption;
    const char* shortcut;
    int helpContext;
    bool submenu;
};

constexpr MenuEntry menuTree[] = {
    {0, "mnuFile", "&File", "", 0, true},
    {1, "mnuPrint", "&Print", "", 309, false},
    {1, "mnuPrintPreview", "Pre&view", "", 309, false},
    {1, "mnuExport", "&Export", "", 309, true},
    {2, "mnuExportPDF", "&PDF", "", 0, false},
    {2, "mnuExportTIFF", "&TIFF", "", 0, false},
    {2, "mnuExportHTML", "&HTML", "", 0, false},
    {2, "mnuExportExcel", "&Excel", "", 0, false},
    {2, "mnuExportRTF", "&RTF", "", 0, false},
    {2, "mnuExportText", "&Text", "", 0, false},
    {1, "mnuClose", "&Close", "Ctrl+M", 0, false},
    {1, "mnuExit", "E&xit", "Ctrl+X", 0, false},
    {0, "mnuTasks", "&Tasks", "", 0, true},
    {1, "mnuNewJob", "Spec a &new job", "Ctrl+N", 0, false},
    {1, "mnuEditJob", "&Edit an existing job", "Ctrl+E", 0, false},
    {1, "mnuConvert", "&Convert steel tank to bladder tank", "Ctrl+B", 303, false},
    {1, "mnuDeleteJob", "&Delete job", "Ctrl+D", 306, false},
    {0, "mnuMaintain", "&Maintain", "", 0, true},
    {1, "mnuContractors", "&Contractors", "Ctrl+T", 201, false},
    {1, "mnuEngineers", "&Engineers", "Ctrl+G", 202, false},
    {1, "mnuSetup", "&System Setup", "Ctrl+S", 203, false},
    {0, "mnuReports", "&Reports", "", 0, true},
    {1, "mnuRptEXP", "&Expansion Tanks", "", 101, false},
    {1, "mnuTHM", "&Thermal Expansion Tanks", "", 102, false},
    {1, "mnuRptHYD", "&Hydropneumatic Tanks", "", 103, false},
    {1, "mnuRptSHK", "&Shock Arrestor Tanks", "", 104, false},
    {1, "mnuRptPKG", "&Glycol Make-up Packages", "", 105, false},
    {1, "mnuSchedule", "S&chedule", "", 0, false},
    {0, "mnuUtilities", "&Utilities", "", 0, true},
    {1, "mnuMetric", "Convert &Metric to U.S. Standard", "", 0, false},
    {1, "mnuSpecs", "Typical &Specifications", "", 304, false},
    {1, "mnuEstTSFC", "&Estimate Total System Fluid", "", 0, true},
    {2, "mnuEstEXP", "&Expansion Tank", "", 101, false},
    {2, "mnuEstTHM", "&Thermal Expansion Tank", "", 102, false},
    {2, "mnuEstHYD", "&Hydro-pneumatic Tank", "", 103, false},
    {0, "mnuExtras", "E&xtras", "", 0, true},
    {1, "mnuOverview", "Job &overview", "Ctrl+J", 406, false},
    {1, "mnuCompare", "&Compare models...", "", 405, false},
    {1, "mnuCalculation", "C&alculation sheet", "", 404, false},
    {1, "mnuPackage", "Job &package...", "", 408, false},
    {1, "mnuImport", "&Import conditions...", "", 407, false},
    {1, "mnuUndo", "&Undo deletion", "Ctrl+Z", 401, false},
    {1, "mnuBackup", "&Back up now", "", 401, false},
    {1, "mnuRestore", "&Restore...", "", 401, false},
    {1, "mnuExportJob", "&Export job...", "", 402, false},
    {1, "mnuImportJob", "Import &job...", "", 402, false},
    {1, "mnuPriorData", "&Take over prior data...", "", 403, false},
    {0, "mnuWindows", "&Windows", "", 0, true},
    {0, "mnuHelp", "&Help", "", 0, true},
    {1, "mnuHelpSub", "&Help", "Ctrl+H", 100, false},
    {1, "mnuSupport", "&Technical Support", "", 0, false},
    {1, "mnuWebSite", "&Web Site", "", 0, false},
    {1, "mnuDemo", "&Demo", "", 0, false},
    {1, "mnuAboutSub", "&About", "Ctrl+A", 0, false},
};

struct ToolEntry {
    const char* key; // empty for a separator
    const char* icon;
    const char* caption;
    const char* toolTip;
    const char* command;
};

constexpr ToolEntry toolbarEntries[] = {
    {"NewJob", "new", "New", "Spec a new job...", "mnuNewJob"},
    {"EditJob", "edit", "Edit", "Edit an existing job...", "mnuEditJob"},
    {"ConvertSteel", "convert", "Convert", "Convert steel tank to bladder tank...", "mnuConvert"},
    {"DeleteJob", "delete", "Delete", "Delete Job or Tanks...", "mnuDeleteJob"},
    {"", "", "", "", ""},
    {"Contractors", "contractors", "Contractors", "Maintain Contractors...", "mnuContractors"},
    {"Engineers", "engineers", "Engineers", "Maintain Engineers...", "mnuEngineers"},
    {"", "", "", "", ""},
    {"Help", "help", "Help", "Help", "mnuHelpSub"},
    {"WebSite", "web", "Web site", "Go to website", "mnuWebSite"},
    {"Close", "close", "Close", "Close", "mnuClose"},
    {"Exit", "exit", "Exit", "Exit Brennoval", "mnuExit"},
};

BrennovalMain::Background& backgroundMaker() {
    static BrennovalMain::Background maker;
    return maker;
}

std::function<void()>& startWork() {
    static std::function<void()> work = [] {};
    return work;
}

BrennovalMain*& theMainWindow() {
    static BrennovalMain* window = nullptr;
    return window;
}

void closeActiveScreen() {
    if (QMdiSubWindow* window = BrennovalMain::instance()->area()->currentSubWindow())
        window->close();
    StatusBar::SetStatusBarText();
}

void savePosition(const QWidget& window) {
    QSettings settings(QSettings::IniFormat, QSettings::UserScope, "Fennerbrooke", "Brennoval");
    settings.beginGroup("Settings");
    settings.setValue("MainLeft", QString::number(window.x()));
    settings.setValue("MainTop", QString::number(window.y()));
    settings.setValue("MainWidth", QString::number(window.width()));
    settings.setValue("MainHeight", QString::number(window.height()));
}

void exitProgram() {
    const QStringList names = Screens::loaded();
    for (auto name = names.crbegin(); name != names.crend(); ++name)
        if (Screens::close(*name) == Screens::Closing::Failed) // a refusal does not stop the exit
            return;
    const BrennovalMain& window = *BrennovalMain::instance();
    if (!window.isMinimized())
        savePosition(window);
    QApplication::exit(0); // not quit(), which would ask the screens again and stop at a refusal
}

/// The entry of a window in the list: its title and, where that does not say it, whose work it is.
QString listedTitle(const QMdiSubWindow& window) {
    QString title = window.windowTitle().replace("[*][*]", "[*]");
    const auto* screen = dynamic_cast<const Screen*>(window.widget());
    if (const QString record = screen ? Screens::recordOf(*screen) : QString(); !title.contains(record))
        title += QStringLiteral(" (%1)").arg(record);
    return title.replace("&", "&&");
}

/// The area for the screens. With no screen in it, it shows a background of its own, or else the program's
/// mark, faint and centred.
class FrameArea : public QMdiArea {
  public:
    using QMdiArea::QMdiArea;

    /// The background lies over the area, not in it: assistive technology sees nothing of an area but its
    /// windows. It scrolls where the main window is too small for it.
    void setBackground(QWidget* widget) {
        auto* scroller = new QScrollArea(parentWidget());
        scroller->setFrameShape(QFrame::NoFrame);
        scroller->setFocusPolicy(Qt::NoFocus);
        scroller->setWidgetResizable(true);
        scroller->setWidget(widget);
        scroller->viewport()->setAutoFillBackground(false);
        widget->setAutoFillBackground(false);
        Fitting::keepFocusInSight(*scroller);
        background = scroller;
        background->setGeometry(geometry());
        background->setVisible(!Screens::anyVisible()); // at once: the window first paints with it
    }
    void refreshBackground() {
        if (!background || !background->isVisible())
            return;
        background->hide();
        background->show();
    }
    /// While one screen replaces another the background must not flash up in between.
    void showBackground() {
        if (Screens::anyVisible())
            background->hide();
        else
            QTimer::singleShot(0, background, [this] { background->setVisible(!Screens::anyVisible()); });
    }

  protected:
    void resizeEvent(QResizeEvent* event) override {
        QMdiArea::resizeEvent(event);
        if (background)
            background->setGeometry(geometry());
        Screens::placeAgain();
    }

    void paintEvent(QPaintEvent* event) override {
        QMdiArea::paintEvent(event);
        if ((background && background->isVisible()) || Screens::anyVisible())
            return; // nothing is to show behind the windows
        QPainter painter(viewport());
        const QColor back = palette().color(QPalette::Mid);
        const QColor ink = palette().color(QPalette::WindowText);
        const auto quiet = [&](float share) {
            return QColor::fromRgbF(back.redF() + (ink.redF() - back.redF()) * share,
                                    back.greenF() + (ink.greenF() - back.greenF()) * share,
                                    back.blueF() + (ink.blueF() - back.blueF()) * share);
        };
        constexpr int size = 220;
        const QRect space = viewport()->rect();
        Appearance::drawMark(painter,
                             QRect(space.center() - QPoint(size / 2, size / 2 + 20), QSize(size, size)),
                             quiet(.12F), Qt::transparent, .4);
        QFont font = painter.font();
        font.setPointSizeF(font.pointSizeF() * 2);
        font.setLetterSpacing(QFont::AbsoluteSpacing, 4);
        painter.setFont(font);
        painter.setPen(quiet(.3F));
        painter.drawText(space.adjusted(0, size + 30, 0, 0), Qt::AlignCenter, QStringLiteral("Brennoval"));
    }

  private:
    QWidget* background = nullptr;
};

} // namespace

void BrennovalMain::setBackground(const Background& maker) {
    backgroundMaker() = maker;
}

void BrennovalMain::setStartWork(const std::function<void()>& work) {
    startWork() = work;
}

void BrennovalMain::beginStartWork() {
    constexpr int idle = 250; // milliseconds, enough for the window and the start page to paint
    QTimer::singleShot(idle, this, [] { Faults::runTrapped("BrennovalMain.StartWork", startWork()); });
}

void BrennovalMain::refreshBackground() {
    static_cast<FrameArea*>(mdiArea)->refreshBackground();
}

BrennovalMain* BrennovalMain::instance() {
    return theMainWindow();
}

BrennovalMain::BrennovalMain() : mdiArea(new FrameArea(this)) {
    theMainWindow() = this;
    setObjectName("BrennovalMain");
    Commands::set("mnuClose", closeActiveScreen);
    Commands::set("mnuExit", exitProgram);
    Commands::set("mnuHelpSub", [this] { Help::pressKey(this); });
    Commands::set("mnuSupport", [] { WebPages::LaunchInternetExplorer("TechSupport"); });
    Commands::set("mnuWebSite", [] { WebPages::LaunchInternetExplorer("Web"); });
    Commands::set("mnuDemo", [] { WebPages::openDemo("BrennovalDemo.htm"); });
    mdiArea->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea->setBackground(palette().brush(QPalette::Mid));
    mdiArea->setActivationOrder(
        QMdiArea::ActivationHistoryOrder);   // closing a pad returns to the screen that opened it
    setContextMenuPolicy(Qt::NoContextMenu); // it would hide the toolbar
    auto* center = new QWidget(this);
    auto* rows = new QVBoxLayout(center);
    rows->setContentsMargins(0, 0, 0, 0);
    rows->addWidget(mdiArea);
    setCentralWidget(center);
    Screens::setArea(mdiArea);
    connect(mdiArea, &QMdiArea::subWindowActivated, this, [](QMdiSubWindow* window) {
        if (window)
            Faults::runTrapped("BrennovalMain.Activate",
                               [window] { Screens::setActive(dynamic_cast<Screen*>(window->widget())); });
    });
    buildMenus();
    buildToolbar();
    buildStatusBar();
    if (backgroundMaker()) {
        auto* area = static_cast<FrameArea*>(mdiArea);
        Screens::onChange([area] { area->showBackground(); });
        area->setBackground(backgroundMaker()(area->parentWidget()));
    }
    setWindowTitle("Ordwick Company Brennoval Version " + Program::programVersion());
    StatusBar::SetStatusBarText();
    // On smaller displays use what is available, minus the desktop's window frame.
    const QSize frame(8, 40);
    resize(QSize(1180, 800).boundedTo(screen()->availableSize() - frame));
    qApp->installEventFilter(this);
}

BrennovalMain::~BrennovalMain() {
    theMainWindow() = nullptr;
    Screens::setArea(nullptr);
    Screens::onChange([] {});
}

void BrennovalMain::buildMenus() {
    QMenu* menus[3] = {};
    for (const MenuEntry& entry : menuTree) {
        const QString name = entry.name;
        QAction* action = nullptr;
        if (entry.submenu) {
            QMenu* menu = entry.depth == 0 ? menuBar()->addMenu(entry.caption)
                                           : menus[entry.depth - 1]->addMenu(entry.caption);
            menu->setObjectName(name);
            menu->setToolTipsVisible(true);
            menus[entry.depth] = menu;
            action = menu->menuAction();
        } else {
            action = menus[entry.depth - 1]->addAction(entry.caption);
            action->setShortcut(QKeySequence(QLatin1String(entry.shortcut)));
            const auto handler = Commands::handlerOf(name);
            action->setEnabled(static_cast<bool>(handler));
            connect(action, &QAction::triggered, this, [name, handler] {
                const Hourglass hourglass;
                Screens::beginTask([&] { Faults::runTrapped("BrennovalMain." + name, handler); });
            });
        }
        action->setObjectName(name);
        action->setProperty("helpContext", entry.helpContext);
        Commands::addAction(name, action);
    }
    // Desktops close an inner window with this key.
    Commands::action("mnuClose")->setShortcuts({QKeySequence("Ctrl+M"), QKeySequence("Ctrl+F4")});
    for (const char* later : {"mnuPrint", "mnuPrintPreview", "mnuExport", "mnuUndo"})
        Commands::setEnabled(later, false);
    Commands::setVisible("mnuSchedule", false);
    windowMenu = Commands::action("mnuWindows")->menu();
    connect(windowMenu, &QMenu::aboutToShow, this, &BrennovalMain::showWindowList);
}

void BrennovalMain::showWindowList() {
    windowMenu->clear();
    const auto windows = mdiArea->subWindowList();
    for (const auto& [caption, arrange] :
         {std::pair(QCoreApplication::translate("BrennovalMain", "&Cascade"), &QMdiArea::cascadeSubWindows),
          {QCoreApplication::translate("BrennovalMain", "&Tile"), &QMdiArea::tileSubWindows}}) {
        QAction* action = windowMenu->addAction(caption);
        action->setEnabled(!windows.isEmpty());
        connect(action, &QAction::triggered, mdiArea, arrange);
    }
    windowMenu->addSeparator();
    int number = 0;
    for (QMdiSubWindow* window : windows) {
        ++number;
        QAction* action = windowMenu->addAction(
            QString(number < 10 ? "&%1 %2" : "%1 %2").arg(QString::number(number), listedTitle(*window)));
        action->setCheckable(true);
        action->setChecked(window == mdiArea->currentSubWindow());
        connect(action, &QAction::triggered, window, [window] { // also restores a minimised frame
            if (const auto* screen = dynamic_cast<Screen*>(window->widget()))
                Screens::show(screen->name());
        });
    }
    if (windows.isEmpty())
        windowMenu->addAction(QCoreApplication::translate("BrennovalMain", "No open windows"))
            ->setEnabled(false);
}

void BrennovalMain::buildToolbar() {
    QToolBar* bar = addToolBar(QCoreApplication::translate("BrennovalMain", "Tools"));
    bar->setObjectName("tbToolbar");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    bar->setIconSize({24, 24});
    for (const ToolEntry& entry : toolbarEntries) {
        if (!*entry.key) {
            bar->addSeparator();
            continue;
        }
        QAction* target = Commands::action(entry.command);
        QAction* action = bar->addAction(Appearance::icon(entry.icon), entry.caption);
        action->setEnabled(target->isEnabled());
        action->setToolTip(entry.toolTip);
        connect(action, &QAction::triggered, target, &QAction::trigger);
        tools.insert(entry.key, action);
    }
}

void BrennovalMain::buildStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName("sbStatusBar");
    auto* statusLabel = new ElidedLabel(bar);
    auto* statusButton = new QToolButton(bar);
    statusButton->setObjectName("bttnStatus");
    statusButton->setFocusPolicy(Qt::TabFocus);
    QFont underlined = statusButton->font();
    underlined.setUnderline(true);
    statusButton->setFont(underlined);
    statusButton->setCursor(Qt::PointingHandCursor);
    statusButton->hide();
    bar->addWidget(statusLabel);
    bar->addWidget(statusButton);
    StatusBar::setStatusPanel(statusLabel, statusButton);
    dateLabel = new QLabel(bar);
    timeLabel = new QLabel(bar);
    for (QLabel* label : {dateLabel, timeLabel})
        bar->addPermanentWidget(label);
    const std::pair<int, const char*> keys[] = {{Qt::Key_CapsLock, "CAPS"},
                                                {Qt::Key_NumLock, "NUM"},
                                                {Qt::Key_Insert, "INS"},
                                                {Qt::Key_ScrollLock, "SCRL"}};
    for (const auto& [key, text] : keys) {
        auto* label = new QLabel(text, bar);
        label->setEnabled(lockKeyOn(key).value_or(false));
        bar->addPermanentWidget(label);
        keyLabels.insert(key, label);
    }
    updateClock();
    auto* clock = new QTimer(this);
    connect(clock, &QTimer::timeout, this, &BrennovalMain::updateClock);
    clock->start(1000);
}

void BrennovalMain::updateClock() {
    const QDateTime now = QDateTime::currentDateTime();
    for (const auto& [label, text] : {std::pair(dateLabel, shownDate(now.date())),
                                      {timeLabel, QLocale().toString(now.time(), QLocale::ShortFormat)}})
        if (label->text() != text) // or the whole status bar would be painted every second
            label->setText(text);
}

void BrennovalMain::toggleKey(int key) {
    QLabel* label = keyLabels.value(key);
    if (!label)
        return;
    label->setEnabled(lockKeyOn(key).value_or(!label->isEnabled()));
}

bool BrennovalMain::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::KeyRelease &&
        object->isWindowType()) // once per keystroke, not once per receiver
        toggleKey(static_cast<QKeyEvent*>(event)->key());
    return QMainWindow::eventFilter(object, event);
}

QAction* BrennovalMain::toolCommand(const QString& key) const {
    return tools.value(key);
}
void BrennovalMain::changeEvent(QEvent* event) {
    if (event->type() == QEvent::PaletteChange)
        mdiArea->setBackground(palette().brush(QPalette::Mid));
    // The user returns from another program, possibly another instance of this one.
    if (event->type() == QEvent::ActivationChange && isActiveWindow())
        Faults::runTrapped("BrennovalMain.Activate", Screens::freshenActive);
    QMainWindow::changeEvent(event);
}

void BrennovalMain::closeEvent(QCloseEvent* event) {
    const Session::Task front = Session::taskAtWork(); // the next start resumes it
    const QStringList names = Screens::loaded();
    for (auto name = names.crbegin(); name != names.crend(); ++name)
        if (!Screens::unload(*name)) {
            event->ignore();
            return;
        }
    Session::putToWork(front);
    event->accept();
}
