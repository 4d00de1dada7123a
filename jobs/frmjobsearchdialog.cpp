#include "jobs/frmjobsearchdialog.h"

#include "core/base/Text.h"
#include "core/shell/Lists.h"
#include "core/shell/Screens.h"
#include "core/shell/Status.h"
#include "core/store/JetSql.h"
#include "core/store/SessionStore.h"

#include <QKeyEvent>
#include <QLocale>
#include <QScrollArea>
#include <QScrollBar>
#include <QToolButton>

using namespace StatusBar;

namespace {

QStringList headings() {
    return {"Job ID", "Contractor", "Engineer", "Date Created"};
}

/// A date in the user's short format, with a four-digit year.
QString shortDate(const QDate& date) {
    QString format = QLocale().dateFormat(QLocale::ShortFormat);
    if (!format.contains("yyyy"))
        format.replace("yy", "yyyy");
    return QLocale().toString(date, format);
}

} // namespace

frmjobsearchdialog::frmjobsearchdialog() : Screen("frmjobsearchdialog") {
    setupUi(this);
    prepare();
    sortByHeadings(lvOptions);
    for (QComboBox* operators : {cmboCriteriaJob, cmboCriteriaContractor, cmboCriteriaEngineer})
        operators->addItems(JobSearch::comparisonsOfTexts());
    cmboCriteriaDateCreated->addItems(JobSearch::comparisonsOfDates());
    for (QComboBox* operators : findChildren<QComboBox*>()) {
        operators->setCurrentIndex(operators->findText("Contains")); // none among those of dates
        operators->installEventFilter(this);
    }
    for (QLineEdit* box : {txtJobID, txtContractor, txtEngineer, txtDate1, txtDate2})
        connect(box, &QLineEdit::returnPressed, this,
                [this] { trap(".tbToolbar", [this] { FillResultsBox(); }); });
    for (QLineEdit* box : {txtDate1, txtDate2})
        onLeaving(box, "." + box->objectName() + "_Validate", [this, box] { return validateDate(box); });
    prepareCalendar();
    connect(Calendar1, &QCalendarWidget::clicked, this, &frmjobsearchdialog::takeDate);
    on(bttnFind, ".tbToolbar", [this] { FillResultsBox(); });
    on(bttnOK, ".tbToolbar", [this] { SearchFinished(); });
    connect(lvOptions, &QTreeWidget::itemActivated, this,
            [this] { act(".lvOptions", [this] { SearchFinished(); }); });
}

void frmjobsearchdialog::Load() {
    Calendar1->setSelectedDate(QDate::currentDate());
    fillList(lvOptions, headings(), {});
    if (Session::Mode.text() == Session::Modes::Delete) // which the list itself would not tell
        setTitle(windowTitle() + " to delete");
    else if (Session::Mode.text() == Session::Modes::Edit)
        setTitle(windowTitle() + " to edit");
}

QWidget* frmjobsearchdialog::firstField() const {
    return txtJobID;
}

JobSearch::Criteria frmjobsearchdialog::enteredCriteria() const {
    return {.jobID = {txtJobID->text(), cmboCriteriaJob->currentText()},
            .contractor = {txtContractor->text(), cmboCriteriaContractor->currentText()},
            .engineer = {txtEngineer->text(), cmboCriteriaEngineer->currentText()},
            .created = {txtDate1->text(), cmboCriteriaDateCreated->currentText()},
            .createdUntil = txtDate2->text()};
}

void frmjobsearchdialog::FillResultsBox() {
    const Hourglass hourglass;
    frameCalendar->hide();
    listedQuery = JobSearch::Query(enteredCriteria()).value_or(QString());
    stopSorting(lvOptions);
    listFound(listedQuery);
    if (lvOptions->topLevelItemCount() == 0)
        Dialogs::current().beep();
    else
        lvOptions->setFocus();
}

/// Lists what a statement finds; clears the list for an empty statement.
void frmjobsearchdialog::listFound(const QString& query) {
    fillList(lvOptions, headings(), {});
    if (query.isEmpty())
        return;
    ListRows rows;
    for (const JobSearch::Job& job : JobSearch::Find(query)) {
        auto& row = rows.emplace_back(std::make_unique<ListRow>(
            QStringList{job.jobID, job.contractor, job.engineer, shownDate(job.created)}));
        row->setSortKey(3, job.created);
    }
    fillList(lvOptions, headings(), std::move(rows));
}

void frmjobsearchdialog::showChanges() {
    listFound(listedQuery);
}

void frmjobsearchdialog::SearchFinished() {
    const Hourglass hourglass;
    const QTreeWidgetItem* chosen = lvOptions->currentItem();
    if (!chosen || chosen->text(0).isEmpty()) {
        Dialogs::current().beep();
        return;
    }
    const QString jobID = chosen->text(0);
    Session::JobID.write(jobID);
    const QString mode = Session::Mode.text();
    Tag = "1";
    if (mode == Session::Modes::Edit)
        leaveFor(JobSearch::editScreenOf(jobID));
    else if (mode == Session::Modes::Delete)
        leaveFor("frmDelete");
    else
        Screens::unload(name());
}

/// Gives the calendar the program's look. Clicking it leaves the focus in the date's box.
void frmjobsearchdialog::prepareCalendar() {
    frameCalendar->hide();
    for (QWidget* part : Calendar1->findChildren<QWidget*>())
        part->setFocusPolicy(Qt::NoFocus);
    Calendar1->setFocusPolicy(Qt::NoFocus);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday})
        Calendar1->setWeekdayTextFormat(day, {});
    for (const auto& [part, arrow] :
         {std::pair("qt_calendar_prevmonth", Qt::LeftArrow), {"qt_calendar_nextmonth", Qt::RightArrow}}) {
        auto* turn = Calendar1->findChild<QToolButton*>(part);
        turn->setArrowType(arrow);
        QPalette onAccent = turn->palette();
        for (const auto role : {QPalette::ButtonText, QPalette::WindowText})
            onAccent.setColor(role, onAccent.color(QPalette::HighlightedText));
        turn->setPalette(onAccent);
    }
}

/// Places the calendar below the box, or beside it if the screen is too low.
void frmjobsearchdialog::showCalendar(const QLineEdit* box) {
    Tag = box->objectName();
    frameCalendar->adjustSize();
    QPoint corner = box->mapTo(this, QPoint(0, box->height() + 3));
    const QPoint lowest(width() - frameCalendar->width(), height() - frameCalendar->height());
    if (corner.y() > lowest.y()) {
        const int beside = box->mapTo(this, QPoint(box->width() + 3, 0)).x();
        const int before = corner.x() - frameCalendar->width() - 3;
        // Where neither side has the room, it covers the end of the box rather than the text.
        corner = {beside > lowest.x() && before >= 0 ? before : std::min(beside, lowest.x()), lowest.y()};
    } else {
        corner.setX(std::min(corner.x(), lvOptions->mapTo(this, lvOptions->rect().topRight()).x() + 1 -
                                             frameCalendar->width()));
    }
    frameCalendar->move(std::max(corner.x(), 0), std::max(corner.y(), 0));
    frameCalendar->raise();
    frameCalendar->show();
    if (const auto* middle = findChild<QScrollArea*>("middle")) // its box scrolls away under it
        connect(middle->verticalScrollBar(), &QScrollBar::valueChanged, frameCalendar, &QWidget::hide,
                Qt::UniqueConnection);
}

void frmjobsearchdialog::takeDate(const QDate& date) {
    (Tag == "txtDate2" ? txtDate2 : txtDate1)->setText(shortDate(date));
    frameCalendar->hide();
}

bool frmjobsearchdialog::validateDate(QLineEdit* box) {
    if (box->text().isEmpty() || readDate(box->text()))
        return true;
    Dialogs::current().show({"Please select a valid date!", "Error"});
    box->selectAll();
    frameCalendar->hide();
    return false;
}

bool frmjobsearchdialog::eventFilter(QObject* object, QEvent* event) {
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::MouseButtonPress) {
        if (object == txtDate1 || object == txtDate2)
            showCalendar(static_cast<QLineEdit*>(object));
        else
            frameCalendar->hide();
    }
    return Screen::eventFilter(object, event);
}

void frmjobsearchdialog::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Escape && frameCalendar->isVisible())
        frameCalendar->hide();
    else
        Screen::keyPressEvent(event);
}

bool frmjobsearchdialog::QueryUnload() {
    if (Tag != "1") // a tag set by the calendar deliberately counts as not left
        SetStatusBarText();
    return true;
}
