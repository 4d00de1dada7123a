#include "setup/pages/HelpView.h"

#include "core/base/Program.h"
#include "setup/pages/HelpBook.h"
#include "setup/pages/HelpPictures.h"

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
#include <QRegularExpression>
#include <QSplitter>
#include <QTabWidget>
#include <QTextOption>
#include <QVBoxLayout>

#include <algorithm>
#include <cstring>
#include <functional>

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
    const QByteArray bytes = engine.fileData(address.adjusted(QUrl::RemoveQuery));
    if (type == QTextDocument::ImageResource)
        return address.hasQuery() ? QVariant(bytes) : QVariant(helpPicture(bytes, devicePixelRatioF()));
    if (type == QTextDocument::HtmlResource && address.path().endsWith(u".png"))
        return QStringLiteral("<title>%1 - Brennoval</title><p><img src=\"%2?full\"></p>")
            .arg(QCoreApplication::translate("HelpView", "Picture"), address.toString());
    QString text = QString::fromUtf8(bytes);
    static const QRegularExpression picture(R"re((<img\s+src="([^"]*)"[^>]*>))re");
    if (type == QTextDocument::HtmlResource)
        text.replace(picture, R"re(<a href="\2">\1</a>)re");
    return text;
}

HelpView::HelpView(QWidget* parent) : PageView(parent), engine(folder.filePath("help.qhc")) {
    engine.setReadOnly(false);
    engine.setupData();
    engine.registerDocumentation(Program::dataFolder() + "/Help/brennovalhelp.qch");
    page = new HelpText(engine, this);
    page->setObjectName("pageText");
    page->setAccessibleName(QCoreApplication::translate("HelpView", "Topic"));
    page->setFrameShape(QFrame::NoFrame);
    page->setOpenLinks(false);
    page->setWordWrapMode(QTextOption::WordWrap); // a narrow column of a table must not break its words
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
    search->scheduleIndexDocumentation();
    searchBox = new QLineEdit;
    searchBox->setObjectName("searchBox");
    found = new QListWidget;
    found->setObjectName("found");
    found->setAccessibleName(QCoreApplication::translate("HelpView", "Found topics"));
    found->setWordWrap(true);
    const auto look = [this, search] {
        wanted = widenedQuery(searchBox->text());
        if (indexed && !wanted.typed.isEmpty())
            search->search(wanted.expression);
    };
    connect(searchBox, &QLineEdit::returnPressed, this, look);
    connect(search, &QHelpSearchEngine::indexingStarted, this, [this] { indexed = false; });
    connect(search, &QHelpSearchEngine::indexingFinished, this, [this, look] {
        indexed = true;
        look(); // what was searched for meanwhile
    });
    connect(search, &QHelpSearchEngine::searchingFinished, this, [this] { showFound(); });
    const auto openRow = [this](const QListWidgetItem* row) {
        const QUrl address = row->data(Qt::UserRole).toUrl();
        if (!address.isValid())
            return;
        open(address);
        static_cast<void>(std::ranges::any_of(wanted.typed + wanted.wider,
                                              [this](const QString& word) { return page->find(word); }));
    };
    connect(found, &QListWidget::itemClicked, this, openRow);
    connect(found, &QListWidget::itemActivated, this, openRow);
    return listBelowLine(new QLabel(QCoreApplication::translate("HelpView", "S&earch for:")), searchBox,
                         found);
}

void HelpView::showFound() {
    constexpr int most = 50;
    found->clear();
    auto results = engine.searchEngine()->searchResults(0, most);
    std::ranges::stable_sort(results, std::ranges::greater(), [this](const QHelpSearchResult& result) {
        return titleRank(result.title(), wanted);
    });
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

bool HelpView::print(QPagedPaintDevice& device, Extent extent) {
    return extent == Extent::All ? HelpBook(engine).paint(device)
                                 : HelpBook(engine, page->source()).paint(device);
}

QByteArray HelpView::pdf() {
    return HelpBook(engine).pdf();
}

extern "C" Q_DECL_EXPORT PageView* createPageView(const char* version, QWidget* parent) {
    return std::strcmp(version, BRENNOVAL_VERSION) == 0 ? new HelpView(parent) : nullptr;
}
