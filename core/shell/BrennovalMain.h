#pragma once

#include <QMainWindow>
#include <QMdiArea>

#include <functional>

class QAction;
class QLabel;

/// The frame of the program: menu, toolbar, status bar and the area in which the screens stand.
class BrennovalMain : public QMainWindow {
  public:
    BrennovalMain();
    ~BrennovalMain() override;

    /// The one main window, or null before it is loaded.
    static BrennovalMain* instance();

    QMdiArea* area() const { return mdiArea; }
    /// A menu command by its name, such as "mnuNewJob".
    QAction* command(const QString& name) const;
    /// A button of the toolbar by its key, as the command that it runs.
    QAction* toolCommand(const QString& key) const;
    QString statusText() const;
    void setStatusText(const QString& text);

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    void buildMenus();
    void buildToolbar();
    void buildStatusBar();
    void updateClock();
    void toggleKey(int key);
    void showWindowList();

    QMdiArea* mdiArea;
    QHash<QString, QAction*> commands;
    QHash<QString, QAction*> tools;
    QLabel* statusLabel = nullptr;
    QLabel* dateLabel = nullptr;
    QLabel* timeLabel = nullptr;
    QHash<int, QLabel*> keyLabels;
    QMenu* windowMenu = nullptr;
};

/// What the menu commands do. Each subsystem gives its own; a command without a handler is disabled.
namespace Commands {
void set(const QString& name, const std::function<void()>& handler);
}

namespace UtilityFunctions {
/// Writes the first status panel; nothing happens while there is no main window.
void SetStatusText(const QString& text);
} // namespace UtilityFunctions
