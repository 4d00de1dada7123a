#pragma once

#include "setup/pages/HelpEngine.h"
#include "setup/pages/HelpFolder.h"
#include "setup/pages/HelpWords.h"
#include "setup/pages/PageView.h"

#include <QTextBrowser>

class QLineEdit;
class QListWidget;
class QTabWidget;

/// A text box that loads its pages and pictures from the help file.
class HelpText : public QTextBrowser {
  public:
    HelpText(const QHelpEngine& helpEngine, QWidget* parent) : QTextBrowser(parent), engine(helpEngine) {}

  protected:
    /// Pictures of a page are links to themselves, and a picture's address shows it alone in its full size.
    QVariant loadResource(int type, const QUrl& name) override;

  private:
    const QHelpEngine& engine;
};

/// The help: contents, index and search, with the page next to them.
class HelpView : public PageView {
  public:
    explicit HelpView(QWidget* parent);

    /// Opens a topic, such as topic:101, or a help page. An unknown topic opens the first page.
    void go(const QUrl& address) override;
    void back() override { page->backward(); }
    void forward() override { page->forward(); }
    void zoomBy(int steps) override { page->zoomIn(steps); }
    bool knowsTopics() const override { return true; }
    QString plainText() const override { return page->toPlainText(); }
    bool print(QPagedPaintDevice& device, Extent extent) override;
    QByteArray pdf() override;

  private:
    void open(const QUrl& address);
    QWidget* buildContents();
    QWidget* buildIndex();
    QWidget* buildSearch();
    void showFound();
    void showInContents(const QUrl& address);

    HelpFolder folder; // the engine writes next to its list of files, but ours is read-only
    HelpEngine engine;
    HelpText* page = nullptr;
    QTabWidget* tabs = nullptr;
    QLineEdit* searchBox = nullptr;
    QListWidget* found = nullptr;
    bool indexed = false; // before that a search would not find everything
    HelpQuery wanted;     // of the last search
};
