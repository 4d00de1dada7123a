#pragma once

#include <QMainWindow>
#include <QMdiArea>

#include <QHash>

#include <functional>

class QAction;
class QLabel;

/// The program's main window: menu, toolbar, status bar and the area for the screens.
class BrennovalMain : public QMainWindow {
  public:
    BrennovalMain();
    ~BrennovalMain() override;

    /// The only main window; null before it is loaded.
    static BrennovalMain* instance();

    /// Creates the widget that the area shows when it has no screen.
    using Background = std::function<QWidget*(QWidget* area)>;
    static void setBackground(const Background& maker);

    /// Sets the work to do after the start, once the window is up and idle.
    static void setStartWork(const std::function<void()>& work);
    /// Does that work as soon as nothing else is waiting.
    void beginStartWork();

    /// Refreshes the widget that the area shows when it has no screen.
    void refreshBackground();

    QMdiArea* area() const { return mdiArea; }
    /// The command behind a toolbar button, by the button's key.
    QAction* toolCommand(const QString& key) const;

  protected:
    void changeEvent(QEvent* event) override;
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
    QHash<QString, QAction*> tools;
    QLabel* dateLabel = nullptr;
    QLabel* timeLabel = nullptr;
    QHash<int, QLabel*> keyLabels;
    QMenu* windowMenu = nullptr;
};
