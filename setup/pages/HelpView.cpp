#include "setup/pages/HelpView.h"

#include <QCoreApplication>
#include <QHelpContentWidget>
#include <QHelpEngineCore>
#include <QHelpIndexWidget>
#include <QHelpLink>
#include <QHelpSearchEngine>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QSplitter>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cstring>

namespace {

constexpr int margin = 8;      // pixels around the lists
constexpr int pageMargin = 16; // pixels around the text

/// An entry line above a list.
QWidget* listBelowLine(QLabel* caption, QLineEdit* line, QWidget* list) {
    auto* panel = new QWidget;
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin / 2);
    caption->setBuddy(line);
    layout->addWidget(caption);
    layout->addWidget(line);
    layout->addWidget(list, 1);
    return panel;
}

} // namespace

QVariant HelpText::loadResource(int type, const QUrl& name) {
    const QUrl address = source().resolved(name);
    if (address.scheme() != u"qthelp")
        return {};
    const QByteArray bytes = engine.fileData(address);
    return type == QTextDocument::ImageResource ? QVariant(bytes) : QVariant(QString::fromUtf8(bytes));
}

HelpView::HelpView(QWidget* parent) : PageView(parent), engine(folder.filePath("help.qhc")) {
    engine.setReadOnly(false);
    engine.setupData();
    engine.registerDocumentation(QCoreApplication::applicationDirPath() + "/Help/brennovalhelp.qch");
    page = new HelpText(engine, this);
    page->setObjectName("pageText");
    page->setAccessibleName(QCoreApplication::translate("HelpView", "Topic"));
    page->setFrameShape(QFrame::NoFrame);
    page->setOpenLinks(false);
    connect(page, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        const QUrl address = page->source().resolved(link);
        if (address.scheme() == u"qthelp")
            open(address);
        else
            leave(address);
    });
    connect(page, &QTextBrowser::sourceChanged, this, [this](const QUrl& address) {
        page->document()->setDocumentMargin(pageMargin);
        showInContents(address);
        finished(address, page->documentTitle());
    });

    tabs = new QTabWidget(this);
    tabs->setDocumentMode(true);
    tabs->addTab(buildContents(), QCoreApplication::translate("HelpView", "&Contents"));
    tabs->addTab(buildIndex(), QCoreApplication::translate("HelpView", "&Index"));
    tabs->addTab(buildSearch(), QCoreApplication::translate("HelpView", "&Search"));
    connect(tabs, &QTabWidget::currentChanged, this, [this] { // so that the user can type straight away
        auto* line = tabs->currentWidget()->findChild<QLineEdit*>();
        (line ? static_cast<QWidget*>(line) : tabs->currentWidget())->setFocus();
    });
    auto* splitter = new QSplitter(this);
    splitter->addWidget(tabs);
    splitter->addWidget(page);
    splitter->setStretchFactor(1, 1);
    constexpr int listWidth = 260;
    splitter->setSizes({listWidth, 2 * listWidth});
    splitter->setChildrenCollapsible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(splitter);
    setFocusProxy(page);
    page->setFocus();
}

QWidget* HelpView::buildContents() {
    QHelpContentWidget* tree = engine.contentWidget();
    tree->setAccessibleName(QCoreApplication::translate("HelpView", "Contents"));
    tree->setFrameShape(QFrame::NoFrame);
    connect(tree, &QHelpContentWidget::linkActivated, this, &HelpView::open);
    connect(tree, &QTreeView::clicked, this, [this, tree](const QModelIndex& row) {
        if (const QHelpContentItem* item = engine.contentModel()->contentItemAt(row))
            open(item->url());
        tree->expand(row);
    });
    connect(engine.contentModel(), &QHelpContentModel::contentsCreated, this, [this, tree] {
        tree->expandToDepth(0);
        showInContents(page->source());
    });
    return tree;
}

QWidget* HelpView::buildIndex() {
    QHelpIndexWidget* list = engine.indexWidget();
    list->setAccessibleName(QCoreApplication::translate("HelpView", "Index"));
    auto* line = new QLineEdit;
    connect(line, &QLineEdit::textChanged, list,
            [list](const QString& start) { list->filterIndices(start, {}); });
    connect(line, &QLineEdit::returnPressed, list, &QHelpIndexWidget::activateCurrentItem);
    connect(list, &QListView::clicked, list, &QHelpIndexWidget::activateCurrentItem);
    connect(list, &QHelpIndexWidget::documentActivated, this,
            [this](const QHelpLink& document) { open(document.url); });
    connect(list, &QHelpIndexWidget::documentsActivated, this, [this](const QList<QHelpLink>& documents) {
        QMenu choice;
        for (const QHelpLink& document : documents)
            choice.addAction(document.title, this, [this, document] { open(document.url); });
        choice.exec(QCursor::pos());
    });
    return listBelowLine(new QLabel(QCoreApplication::translate("HelpView", "&Look for:")), line, list);
}

QWidget* HelpView::buildSearch() {
    QHelpSearchEngine* search = engine.searchEngine();
    search->reindexDocumentation();
    searchBox = new QLineEdit;
    found = new QListWidget;
    found->setAccessibleName(QCoreApplication::translate("HelpView", "Found topics"));
    found->setWordWrap(true);
    const auto look = [this, search] {
        if (!searchBox->text().trimmed().isEmpty())
            search->search(searchBox->text());
    };
    connect(searchBox, &QLineEdit::returnPressed, this, look);
    connect(search, &QHelpSearchEngine::indexingFinished, this,
            look); // for a search made before the index was ready
    connect(search, &QHelpSearchEngine::searchingFinished, this, [this] { showFound(); });
    const auto openRow = [this](const QListWidgetItem* row) {
        const QUrl address = row->data(Qt::UserRole).toUrl();
        if (!address.isValid())
            return;
        open(address);
        page->find(searchBox->text().trimmed().section(' ', 0, 0));
    };
    connect(found, &QListWidget::itemClicked, this, openRow);
    connect(found, &QListWidget::itemActivated, this, openRow);
    return listBelowLine(new QLabel(QCoreApplication::translate("HelpView", "S&earch for:")), searchBox,
                         found);
}

void HelpView::showFound() {
    constexpr int most = 50;
    found->clear();
    const auto results = engine.searchEngine()->searchResults(0, most);
    for (const QHelpSearchResult& result : results) {
        auto* row = new QListWidgetItem(result.title().section(" - ", 0, 0), found);
        row->setData(Qt::UserRole, result.url());
    }
    if (results.isEmpty())
        new QListWidgetItem(QCoreApplication::translate("HelpView", "No topic holds these words."), found);
}

void HelpView::showInContents(const QUrl& address) {
    const QModelIndex row = engine.contentWidget()->indexOf(address);
    if (row.isValid())
        engine.contentWidget()->setCurrentIndex(row);
}

void HelpView::go(const QUrl& address) {
    if (address.scheme() != u"topic")
        return open(address);
    QList<QHelpLink> topics = engine.documentsForIdentifier(address.path());
    if (topics.isEmpty())
        topics = engine.documentsForIdentifier("100");
    if (!topics.isEmpty())
        open(topics.first().url);
}

void HelpView::open(const QUrl& address) {
    started();
    page->setSource(address, QTextDocument::HtmlResource);
}

extern "C" Q_DECL_EXPORT PageView* createPageView(const char* version, QWidget* parent) {
    return std::strcmp(version, BRENNOVAL_VERSION) == 0 ? new HelpView(parent) : nullptr;
}
