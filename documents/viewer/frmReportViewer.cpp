#include "documents/viewer/frmReportViewer.h"

#include "core/shell/Commands.h"
#include "core/shell/Dialogs.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/shell/Trap.h"
#include "documents/export/Export.h"
#include "documents/viewer/Printing.h"
#include "documents/viewer/Written.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QScopedValueRollback>
#include <QScrollBar>
#include <QShortcut>

#include <algorithm>
#include <cmath>
#include <utility>

using namespace StatusBar;

namespace {

constexpr double zoomStep = 1.25;

/// Turns "125 %" into 125. Anything but a whole number counts as 0.
int percentOf(QString text) {
    return text.remove(u'%').trimmed().toInt();
}

} // namespace

frmReportViewer::frmReportViewer() : Screen("frmReportViewer") {
    setupUi(this);
    prepare();
    on(bttnFirst, ".bttnFirst", [this] { ARViewer21->goTo(0); });
    on(bttnPrevious, ".bttnPrevious", [this] { ARViewer21->goTo(ARViewer21->currentPage() - 1); });
    on(bttnNext, ".bttnNext", [this] { ARViewer21->goTo(ARViewer21->currentPage() + 1); });
    on(bttnLast, ".bttnLast", [this] { goToLast(); });
    on(bttnZoomIn, ".bttnZoomIn", [this] { ARViewer21->zoomBy(zoomStep); });
    on(bttnZoomOut, ".bttnZoomOut", [this] { ARViewer21->zoomBy(1 / zoomStep); });
    on(bttnPageWidth, ".bttnPageWidth", [this] { ARViewer21->setZoom(ReportView::Zoom::PageWidth); });
    on(bttnWholePage, ".bttnWholePage", [this] { ARViewer21->setZoom(ReportView::Zoom::WholePage); });
    on(bttnPrint, ".bttnPrint", [this] {
        if (makeWhole())
            printDocument(document());
    });
    on(bttnExport, ".bttnExport", [this] { showFormats(); });
    on(bttnFind, ".bttnFind", [this] { Find(1); });
    on(bttnFindPrevious, ".bttnFindPrevious", [this] { Find(-1); });
    connect(txtPage, &QLineEdit::editingFinished, this, [this] { goToTypedPage(); });
    cboZoom->lineEdit()->setAccessibleName(cboZoom->accessibleName());
    connect(cboZoom, &QComboBox::currentIndexChanged, this, [this] { zoomAsTyped(); });
    connect(cboZoom, &QComboBox::textActivated, this, [this] { zoomAsTyped(); });
    connect(cboZoom->lineEdit(), &QLineEdit::editingFinished, this, [this] { zoomAsTyped(); });
    connect(txtFind, &QLineEdit::returnPressed, this, [this] { Find(1); });
    connect(txtFind, &QLineEdit::textChanged, this, [this] { lblFound->clear(); });
    lstContents->header()->setStretchLastSection(false);
    lstContents->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    lstContents->header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    const auto goToRow = [this](QTreeWidgetItem* row) {
        if (row)
            ARViewer21->goTo(contents[lstContents->indexOfTopLevelItem(row)]);
    };
    connect(lstContents, &QTreeWidget::currentItemChanged, this, goToRow);
    connect(lstContents, &QTreeWidget::itemClicked, this, goToRow); // works on the current row too
    addShortcuts();
    ARViewer21->changed = [this] {
        if (!growing && !(ARViewer21->isResizing() && isTyping()))
            showPage();
    };
    ARViewer21->makeWhole = [this] { return makeWhole(); };
    making.setSingleShot(true);
    connect(&making, &QTimer::timeout, this, [this] { makeMore(); });
}

Subject frmReportViewer::shownRecord() const {
    switch (shownDocument.of) {
    case ReportOf::Catalogue:
        return Subject::None;
    case ReportOf::Job:
        return Subject::Job;
    case ReportOf::TankLine:
        return Subject::TankLine;
    }
    return Subject::None;
}

void frmReportViewer::setDocument(const Document& shown) {
    maker.reset();
    making.stop();
    shownDocument = shown;
    lstContents->clear();
    showContents();
    ARViewer21->setPages(shown.pages);
    lblFound->clear();
    showPage();
}

void frmReportViewer::setMaker(std::unique_ptr<DocumentMaker> newMaker) {
    setDocument(newMaker->document());
    maker = std::move(newMaker);
    showMore();
}

/// Makes one part and returns to the event loop, so that the user's work comes first.
void frmReportViewer::makeMore() {
    if (!maker || Screens::find(name()) != this)
        return;
    constexpr int later = 50; // milliseconds
    if (Screens::working())   // a handler waits for the user, and what it is about comes first
        return making.start(later);
    if (!tryToMake([this] { maker->makeNext(); }))
        return;
    constexpr int often = 100; // milliseconds; painting takes as long as making some pages
    if (maker->isDone() || lastShown.elapsed() >= often)
        showMore();
    else
        making.start(0);
}

/// Runs what makes pages. A document that cannot be made is not left half: the screen closes. False then.
bool frmReportViewer::tryToMake(const std::function<void()>& make) {
    const Screens::AtWork work(this);
    if (Faults::runTrapped(name() + ".MakePages", make))
        return true;
    maker.reset();
    Screens::unload(name());
    return false;
}

bool frmReportViewer::makeWhole() {
    if (!maker)
        return true;
    if (waiting) // the progress takes the focus from a box, which asks for its page then
        return false;
    const QScopedValueRollback wait(waiting, true);
    making.stop();
    bool stopped = false;
    const auto make = [&] {
        const Hourglass hourglass;
        const auto progress = Dialogs::current().progress(
            QCoreApplication::translate("frmReportViewer", "Putting the documents together..."));
        while (!maker->isDone() && !stopped) {
            stopped = !progress->goesOn(maker->partsMade(), maker->parts());
            if (!stopped)
                maker->makeNext();
        }
    };
    if (!tryToMake(make))
        return false;
    if (stopped)
        setStatusText(QCoreApplication::translate("frmReportViewer", "Stopped"));
    showMore();
    return !stopped;
}

/// Shows what has been made since, and goes on when the user leaves time for it.
void frmReportViewer::showMore() {
    lastShown.start();
    shownDocument = maker->document();
    if (std::exchange(beginning, maker->beginnings()) != maker->beginnings()) {
        lstContents->clear();
        ARViewer21->forgetSelection();
    }
    if (maker->isDone())
        maker.reset();
    else
        making.start(0);
    showContents();
    {
        const QScopedValueRollback grow(growing, true);
        ARViewer21->setMorePages(shownDocument.pages);
    }
    showCount();
    if (!isTyping() && !cboZoom->view()->isVisible())
        showPage();
}

/// Whether a page or a zoom is being typed, which stays while the program adds pages and makes room.
bool frmReportViewer::isTyping() const {
    return txtPage->isModified() || cboZoom->lineEdit()->isModified();
}

void frmReportViewer::goToLast() {
    if (makeWhole())
        ARViewer21->goTo(int(shownDocument.pages.size()) - 1);
}

void frmReportViewer::addShortcuts() {
    const auto add = [this](const QKeySequence& keys, const std::function<void()>& run) {
        connect(new QShortcut(keys, this, nullptr, nullptr, Qt::WidgetWithChildrenShortcut),
                &QShortcut::activated, this, run);
    };
    add(QKeySequence("Ctrl+F"), [this] {
        txtFind->setFocus();
        txtFind->selectAll();
    });
    add(QKeySequence::Print, [this] { bttnPrint->click(); });
    add(QKeySequence("F3"), [this] { Find(1); });
    add(QKeySequence("Shift+F3"), [this] { Find(-1); });
    for (const char* plus : {"Ctrl++", "Ctrl+="}) // with and without Shift
        add(QKeySequence(plus), [this] { ARViewer21->zoomBy(zoomStep); });
    add(QKeySequence("Ctrl+-"), [this] { ARViewer21->zoomBy(1 / zoomStep); });
    add(QKeySequence("Ctrl+0"), [this] { ARViewer21->setPercent(100); });
}

/// The main window's formats, and the way to the file that was written last. What is chosen waits until Qt
/// has left the menu: it shows dialogs, during which the menu is deleted.
void frmReportViewer::showFormats() {
    auto* menu = new QMenu(bttnExport);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const Export::Format& format : Export::formats())
        if (QAction* command = Commands::action(format.command))
            connect(menu->addAction(command->text()), &QAction::triggered, command, &QAction::trigger,
                    Qt::QueuedConnection);
    menu->addSeparator();
    QAction* open = menu->addAction(QCoreApplication::translate("frmReportViewer", "&Open the last file"));
    open->setEnabled(!lastWritten().isEmpty());
    connect(
        open, &QAction::triggered, this, [this] { act(".bttnExport", openWritten); }, Qt::QueuedConnection);
    menu->popup(bttnExport->mapToGlobal(bttnExport->rect().bottomLeft()));
}

/// Lists the groups, those that are not listed yet; a report without groups has no contents.
void frmReportViewer::showContents() {
    const QSignalBlocker noSelection(lstContents);
    const QList<Bookmark> marks = outlineOf(document());
    contents.resize(lstContents->topLevelItemCount());
    for (qsizetype i = contents.size(); i < marks.size(); ++i) {
        constexpr qsizetype indent = 3; // blanks
        auto* row = new QTreeWidgetItem(lstContents, {QString(marks[i].depth * indent, u' ') + marks[i].title,
                                                      printedNumber(marks[i].page)});
        row->setTextAlignment(1, Qt::AlignRight | Qt::AlignVCenter);
        contents.append({marks[i].page, marks[i].text, 0});
        const QModelIndex title = lstContents->model()->index(int(i), 0);
        widestTitle = std::max(i == 0 ? 0 : widestTitle, lstContents->sizeHintForIndex(title).width());
    }
    // Lists are grouped by series, whose name the maker's sheets never translate; other reports have
    // sections.
    lstContents->headerItem()->setText(0, shownDocument.of == ReportOf::Catalogue
                                              ? QStringLiteral("Series")
                                              : QCoreApplication::translate("frmReportViewer", "Section"));
    lstContents->setVisible(!contents.isEmpty());
    fitContents();
}

/// The number of a page as its document's own contents give it; those of a cover have none.
QString frmReportViewer::printedNumber(int page) const {
    if (shownDocument.pageLabels.isEmpty())
        return QString::number(page + 1);
    const QString label = shownDocument.pageLabels.value(page);
    const qsizetype number = label.indexOf(QStringLiteral(" of "));
    return number < 0 ? QString() : label.left(number);
}

/// Makes room for the titles, as far as the pages can spare it.
void frmReportViewer::fitContents() {
    constexpr int least = 200; // pixels
    constexpr int share = 4;   // of the screen
    const int wanted = widestTitle + lstContents->header()->sectionSize(1) +
                       lstContents->verticalScrollBar()->sizeHint().width();
    lstContents->setFixedWidth(std::clamp(wanted, least, std::max(least, width() / share)));
}

void frmReportViewer::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    fitContents();
}

/// Escape leaves a search before it closes the report.
void frmReportViewer::keyPressEvent(QKeyEvent* event) {
    if (event->key() != Qt::Key_Escape || !txtFind->hasFocus() || txtFind->text().isEmpty())
        return Screen::keyPressEvent(event);
    txtFind->clear();
    ARViewer21->search({});
    ARViewer21->setFocus();
}

void frmReportViewer::showPage() {
    txtPage->setText(QString::number(shownDocument.pages.isEmpty() ? 0 : ARViewer21->currentPage() + 1));
    showCount();
    showZoom();
}

/// A package numbers its pages without those of its cover, and its printed contents say so; the count of all
/// pages alone would seem to contradict them.
void frmReportViewer::showCount() {
    const QString count =
        QCoreApplication::translate("frmReportViewer", "of %1")
            .arg(maker ? QString(DocumentMaker::Unknown) : QString::number(shownDocument.pages.size()));
    const QStringList& labels = shownDocument.pageLabels;
    const auto withLabel = [&](const QString& label) {
        return label.isEmpty() ? count : QStringLiteral("%1 (%2)").arg(count, label);
    };
    constexpr int slack = 2; // pixels
    lblPages->setMinimumWidth(
        labels.isEmpty() ? 0 // the last label is the widest, so that nothing moves
                         : lblPages->fontMetrics().horizontalAdvance(withLabel(labels.last())) + slack);
    lblPages->setText(withLabel(labels.value(ARViewer21->currentPage())));
}

/// Selects the largest listed zoom that is not above the current one, so that the arrow keys continue from
/// there.
void frmReportViewer::showZoom() {
    const long percent = std::lround(ARViewer21->percent());
    int row = cboZoom->count() - 1;
    while (row > 0 && percentOf(cboZoom->itemText(row)) > percent)
        --row;
    const QSignalBlocker shownOnly(cboZoom);
    cboZoom->setCurrentIndex(row);
    cboZoom->setEditText(QString("%1 %").arg(percent));
}

void frmReportViewer::goToTypedPage() {
    bool number = false;
    const int page = txtPage->text().toInt(&number);
    const bool reachable = page <= shownDocument.pages.size() || makeWhole();
    if (number && reachable && page != ARViewer21->currentPage() + 1)
        ARViewer21->goTo(page - 1);
    showPage(); // shows the page that was reached, whatever was typed
}

void frmReportViewer::zoomAsTyped() {
    const int percent = percentOf(cboZoom->currentText());
    if (percent > 0 && percent != std::lround(ARViewer21->percent()))
        ARViewer21->setPercent(percent);
    showPage();
}

void frmReportViewer::Find(int step) {
    if (!makeWhole())
        return;
    if (txtFind->text() == ARViewer21->searched())
        ARViewer21->goToFound(step);
    else
        ARViewer21->search(txtFind->text());
    if (ARViewer21->foundCount() == 0)
        Dialogs::current().beep();
    showFound();
}

void frmReportViewer::showFound() {
    lblFound->setText(ARViewer21->foundCount() == 0
                          ? QCoreApplication::translate("frmReportViewer", "not found")
                          : QCoreApplication::translate("frmReportViewer", "%1 of %2")
                                .arg(ARViewer21->foundNumber())
                                .arg(ARViewer21->foundCount()));
}

void frmReportViewer::Load() {
    setStatusText("Brennoval Report Viewer");
}

void frmReportViewer::Activate() {
    setStatusText("Brennoval Report Viewer");
    Commands::setEnabled("mnuExport", true);
}

void frmReportViewer::Deactivate() {
    Commands::setEnabled("mnuExport", false);
}

bool frmReportViewer::QueryUnload() {
    making.stop();
    maker.reset();
    Commands::setEnabled("mnuExport", false);
    SetStatusBarText();
    return true;
}
