#pragma once

#include <QMainWindow>
#include <QMdiArea>

#include <QHash>

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

    /// Makes what the area shows while no screen stands in it.
    using Background = std::function<QWidget*(QWidget* area)>;
    static void setBackground(const Background& maker);

    /// Sets what is to be done after the start, once the window stands and nothing else is waiting.
    static void setStartWork(const std::function<void()>& work);
    /// Does it as soon as nothing else is waiting.
    void beginStartWork();

    /// Shows anew what the area shows while no screen stands in it.
    void refreshBackground();

    QMdiArea* area() const { return mdiArea; }
    /// A button of the toolbar by its key, as the command that it runs.
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
