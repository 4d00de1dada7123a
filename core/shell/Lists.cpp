#include "core/shell/Lists.h"

#include "core/shell/Fitting.h"

#include <QCollator>
#include <QEvent>
#include <QFontMetrics>
#include <QHash>
#include <QHeaderView>
#include <QPixmap>
#include <QRegularExpression>
#include <QScrollBar>

#include <algorithm>
#include <cmath>

namespace {

constexpr qsizetype longestText = 1023; // characters, the most that the session accepts as a key

/// Sort order of texts: ignores case and sorts embedded numbers by value.
const QCollator& textOrder() {
    static const QCollator order = [] {
        QCollator collator(QLocale::English); // the "C" locale's collator cannot sort numbers
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        collator.setNumericMode(true);
        return collator;
    }();
    return order;
}

/// The row whose first two texts match, otherwise one whose first does; null if there is none.
QTreeWidgetItem* rowOf(const QTreeWidget& list, const QStringList& texts) {
    QTreeWidgetItem* found = nullptr;
    for (int i = list.topLevelItemCount() - 1; i >= 0 && !texts.isEmpty(); --i) {
        QTreeWidgetItem* row = list.topLevelItem(i);
        if (row->text(0) != texts[0])
            continue;
        if (row->text(1) == texts[1])
            return row;
        found = row;
    }
    return found;
}

/// The widths of a font's characters.
class Characters {
  public:
    explicit Characters(const QFontMetrics& font) : metrics(font) {}
    int widthOf(const QString& text) {
        int width = 0;
        for (const QChar character : text) {
            auto known = widths.constFind(character);
            if (known == widths.constEnd())
                known = widths.insert(character, metrics.horizontalAdvance(character));
            width += *known;
        }
        return width;
    }

  private:
    QFontMetrics metrics;
    QHash<QChar, int> widths;
};

/// The width of a column's contents. Only its widest text is set, as shaping all takes ten times as long; to
/// find it the widths of characters are added up, which kerning hardly ever changes.
int contentsWidth(const QTreeWidget& list, int column, Characters& characters) {
    constexpr int mostRows = 1000; // of a longer list, the first rows tell enough
    int widest = -1;
    int widestRow = 0;
    for (int row = 0; row < std::min(mostRows, list.topLevelItemCount()); ++row)
        if (const int width = characters.widthOf(list.topLevelItem(row)->text(column)); width > widest) {
            widest = width;
            widestRow = row;
        }
    const int cell = list.sizeHintForIndex(list.model()->index(widestRow, column)).width();
    return std::max(cell, list.header()->sectionSizeHint(column));
}

QStringList headingsOf(const QTreeWidget& list) {
    QStringList headings;
    for (int column = 0; column < list.columnCount(); ++column)
        headings.append(list.headerItem()->text(column));
    return headings;
}

const char* const givingWayProperty = "givingWay"; // the columns that do
const char* const widthsProperty = "widths";       // of all columns but the last when each shows its texts

using Columns = QList<int>;

/// Gains a number of pixels in a list with columns that give way: from the gaps between all columns, then
/// from those columns, down to their headings. Returns what is still missing.
int narrow(const QTreeWidget& list, int missing) {
    constexpr int gap = 10;
    QHeaderView* heads = list.header();
    const auto giving = list.property(givingWayProperty).value<Columns>();
    const auto take = [&](int column, int room) {
        const int less = std::clamp(missing, 0, std::max(0, room));
        heads->resizeSection(column, heads->sectionSize(column) - less);
        missing -= less;
    };
    for (int column = 0; !giving.isEmpty() && column + 1 < list.columnCount(); ++column)
        take(column, gap);
    for (const int column : giving)
        take(column, heads->sectionSize(column) - heads->sectionSizeHint(column));
    return missing;
}

/// The last column takes what the others leave, but never less than its own texts need: then others give way,
/// or the list scrolls.
void fitLastColumn(QTreeWidget* list) {
    QHeaderView* heads = list->header();
    const int last = list->columnCount() - 1;
    if (last < 0 || heads->sectionResizeMode(last) != QHeaderView::Interactive)
        return;
    const auto widths = list->property(widthsProperty).value<Columns>();
    int others = 0;
    for (int column = 0; column < last; ++column) {
        if (heads->sectionResizeMode(column) == QHeaderView::Stretch)
            return; // which leaves the last one its size
        if (list->property(givingWayProperty).isValid())
            heads->resizeSection(column, widths.value(column));
        others += heads->sectionSize(column);
    }
    heads->setStretchLastSection(false); // else it has no size of its own
    Characters characters(list->fontMetrics());
    heads->resizeSection(last, contentsWidth(*list, last, characters));
    const int needed = others + heads->sectionSize(last);
    heads->setStretchLastSection(narrow(*list, needed - list->viewport()->width()) <= 0);
    Fitting::makeRoomForColumns(*list, needed);
}

/// Fits the last column of a list again when the list gets another width.
class LastColumn : public QObject {
  public:
    explicit LastColumn(QTreeWidget* owner) : QObject(owner), list(owner) {
        setObjectName("lastColumn");
        list->viewport()->installEventFilter(this);
    }

  protected:
    bool eventFilter(QObject* object, QEvent* event) override {
        if (event->type() == QEvent::Resize)
            fitLastColumn(list);
        return QObject::eventFilter(object, event);
    }

  private:
    QTreeWidget* list;
};

/// Whether a cell shows just the number that it sorts by, with or without a unit.
bool showsItsNumber(const QTreeWidgetItem& row, int column) {
    static const QRegularExpression number(R"(^(-?[\d,]*\.?\d+)\s*([^\s\d]{0,4})$)");
    const QVariant key = row.data(column, Qt::UserRole);
    const auto shown = number.match(row.text(column));
    if (!shown.hasMatch() || !key.canConvert<double>())
        return false;
    const double share = shown.captured(2) == u"%" ? 100 : 1;
    return std::abs(shown.captured(1).remove(u',').toDouble() - key.toDouble() * share) < .51;
}

/// Whether a column holds numbers alone; some of its cells may be empty. How a number is shown does not
/// change further down a long list.
bool holdsNumbers(const QList<QTreeWidgetItem*>& rows, int column) {
    constexpr int looked = 200;
    int numbers = 0;
    for (const QTreeWidgetItem* row : rows) {
        if (row->text(column).isEmpty())
            continue;
        if (numbers < looked ? !showsItsNumber(*row, column) : !row->data(column, Qt::UserRole).isValid())
            return false;
        ++numbers;
    }
    return numbers > 0;
}

/// Numbers to the right, texts to the left, with a gap where a text follows a number. The rows take both from
/// the headings.
void alignNumbers(QTreeWidget& list, const QList<QTreeWidgetItem*>& rows) {
    static const QPixmap gap = [] {
        QPixmap nothing(12, 1);
        nothing.fill(Qt::transparent);
        return nothing;
    }();
    bool afterNumbers = false;
    for (int column = 0; column < list.columnCount(); ++column) {
        const bool numbers = holdsNumbers(rows, column);
        const Qt::Alignment side = (numbers ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
        const QVariant before = afterNumbers && !numbers ? QVariant(gap) : QVariant();
        list.headerItem()->setTextAlignment(column, side);
        list.headerItem()->setData(column, Qt::DecorationRole, before);
        afterNumbers = numbers;
    }
}

/// The headings of a list, arranged as its rows are. They are announced in one go: at every change the list
/// would measure all of its columns.
void setHeadings(QTreeWidget& list, const QStringList& headings, const QList<QTreeWidgetItem*>& rows) {
    const int columns = static_cast<int>(headings.size());
    list.setColumnCount(columns);
    {
        const QSignalBlocker together(list.model());
        list.setHeaderLabels(headings);
        alignNumbers(list, rows);
    }
    emit list.model()->headerDataChanged(Qt::Horizontal, 0, columns - 1);
}

} // namespace

KeptRows::KeptRows(const QWidget& screen) {
    for (QTreeWidget* list : screen.findChildren<QTreeWidget*>()) {
        Kept kept{.list = list, .chosen = {}, .ticked = {}, .scrolledTo = list->verticalScrollBar()->value()};
        if (const auto selected = list->selectedItems();
            !selected.isEmpty()) // the focus alone does not count as a selection
            kept.chosen = {selected.first()->text(0), selected.first()->text(1)};
        for (int i = 0; i < list->topLevelItemCount(); ++i)
            if (list->topLevelItem(i)->checkState(0) == Qt::Checked)
                kept.ticked.append(list->topLevelItem(i)->text(0));
        lists.append(kept);
    }
    for (QListWidget* list : screen.findChildren<QListWidget*>())
        if (const auto selected = list->selectedItems(); !selected.isEmpty())
            names.append({list, selected.first()->text()});
}

void KeptRows::restore() const {
    for (const auto& [list, name] : names) {
        const QSignalBlocker shownOnly(list);
        for (QListWidgetItem* row : list->findItems(name, Qt::MatchExactly))
            list->setCurrentItem(row);
    }
    for (const Kept& kept : lists) {
        const QSignalBlocker shownOnly(kept.list); // restoring is not a user's choice
        for (int i = 0; i < kept.list->topLevelItemCount(); ++i) {
            QTreeWidgetItem* row = kept.list->topLevelItem(i);
            if (kept.ticked.contains(row->text(0)))
                row->setCheckState(0, Qt::Checked);
        }
        const QTreeWidgetItem* now = kept.list->currentItem();
        const bool stays = now && kept.chosen == QStringList{now->text(0), now->text(1)};
        if (QTreeWidgetItem* row = stays ? nullptr : rowOf(*kept.list, kept.chosen))
            kept.list->setCurrentItem(row);
        kept.list->verticalScrollBar()->setValue(kept.scrolledTo);
    }
}

void fitColumns(QTreeWidget* list) {
    const int gap = list->property("narrow").toBool() ? 10 : 18; // where columns are many
    constexpr int widest = 600;                                  // pixels; a name is hardly ever wider
    Characters characters(list->fontMetrics());
    Columns widths;
    for (int column = 0; column + 1 < list->columnCount(); ++column) {
        widths.append(std::min(contentsWidth(*list, column, characters) + gap, widest));
        list->setColumnWidth(column, widths.last());
    }
    list->setProperty(widthsProperty, QVariant::fromValue(widths));
    if (!list->header()->stretchLastSection() && !list->findChild<QObject*>("lastColumn"))
        return; // its screen has arranged the columns
    if (!list->findChild<QObject*>("lastColumn"))
        new LastColumn(list); // which the list owns
    fitLastColumn(list);
}

void letGiveWay(QTreeWidget* list, const QList<int>& columns) {
    list->setProperty(givingWayProperty, QVariant::fromValue(columns));
}

bool ListRow::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget()->sortColumn();
    const QVariant key = data(column, Qt::UserRole);
    const QVariant otherKey = other.data(column, Qt::UserRole);
    if (key.isValid() || otherKey.isValid()) // rows without a key come first
        return QVariant::compare(key, otherKey) == QPartialOrdering::Less || !key.isValid();
    return textOrder().compare(text(column), other.text(column)) < 0;
}

QVariant ListRow::data(int column, int role) const {
    if ((role == Qt::TextAlignmentRole || role == Qt::DecorationRole) && treeWidget()) {
        const QVariant own = QTreeWidgetItem::data(column, role); // for cells that are filled later
        return own.isValid() ? own : treeWidget()->headerItem()->data(column, role);
    }
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::UserRole)
        return cell(column, role);
    if (role != Qt::AccessibleTextRole || column != 0)
        return QTreeWidgetItem::data(column, role);
    QStringList cells;
    for (int i = 0; treeWidget() && i < treeWidget()->columnCount(); ++i)
        if (const QString shown = text(i); !shown.isEmpty())
            cells.append(shown);
    return cells.join(", ");
}

void sortByHeadings(QTreeWidget* list) {
    list->header()->setSectionsClickable(true);
    QObject::connect(list->header(), &QHeaderView::sectionClicked, list, [list](int column) {
        if (list->isSortingEnabled()) // from here on the list sorts itself
            return;
        list->header()->setSortIndicator(column, Qt::AscendingOrder);
        list->setSortingEnabled(true);
    });
}

void stopSorting(QTreeWidget* list) {
    const bool sorts = list->header()->sectionsClickable();
    list->setSortingEnabled(false); // this also stops the headings from being clickable
    list->header()->setSectionsClickable(sorts);
}

QString beginningOf(const QString& text) {
    return text.left(longestText);
}

void fillList(QTreeWidget* list, const QStringList& headings, ListRows rows, Selected selected) {
    const bool sorted = list->isSortingEnabled() && headings == headingsOf(*list);
    stopSorting(list); // or each row would be sorted in
    list->clear();
    QList<QTreeWidgetItem*> items; // the list takes ownership
    for (std::unique_ptr<ListRow>& row : rows) {
        for (int column = 0; column < row->columnCount(); ++column)
            if (const QString text = row->text(column); text.size() > longestText)
                row->setText(column, beginningOf(text));
        items.append(row.release());
    }
    setHeadings(*list, headings, items);
    list->addTopLevelItems(items);
    if (sorted) // by the heading that was clicked last
        list->setSortingEnabled(true);
    if (selected == Selected::First && !items.isEmpty())
        list->setCurrentItem(list->topLevelItem(0));
    fitColumns(list);
}
