#pragma once

#include "setup/pages/HelpEngine.h"
#include "setup/pages/HelpFolder.h"
#include "setup/pages/PageView.h"

#include <QTextBrowser>

class QLineEdit;
class QListWidget;
class QTabWidget;

/// A text box that finds its pages and pictures in the help file.
class HelpText : public QTextBrowser {
  public:
    HelpText(const QHelpEngine& helpEngine, QWidget* parent) : QTextBrowser(parent), engine(helpEngine) {}

  protected:
    QVariant loadResource(int type, const QUrl& name) override;

  private:
    const QHelpEngine& engine;
};

/// The help: contents, index and search beside the page.
class HelpView : public PageView {
  public:
    explicit HelpView(QWidget* parent);

    /// Opens a topic, such as topic:101, or a page of the help. An unknown topic opens the first page.
    void go(const QUrl& address) override;
    void back() override { page->backward(); }
    void forward() override { page->forward(); }
    void zoomBy(int steps) override { page->zoomIn(steps); }
    bool knowsTopics() const override { return true; }
    QString plainText() const override { return page->toPlainText(); }

  private:
    void open(const QUrl& address);
    QWidget* buildContents();
    QWidget* buildIndex();
    QWidget* buildSearch();
    void showFound();
    void showInContents(const QUrl& address);

    HelpFolder folder; // the engine wants to write beside its list of files, and ours is read-only
    HelpEngine engine;
    HelpText* page = nullptr;
    QTabWidget* tabs = nullptr;
    QLineEdit* searchBox = nullptr;
    QListWidget* found = nullptr;
};
