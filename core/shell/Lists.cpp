#include "core/shell/Lists.h"

#include <QCollator>
#include <QHeaderView>

namespace {

/// The order of texts: letters without regard to case, numbers within them as numbers.
const QCollator& textOrder() {
    static const QCollator order = [] {
        QCollator collator(QLocale::English); // that of "C" knows no numbers
        collator.setCaseSensitivity(Qt::CaseInsensitive);
        collator.setNumericMode(true);
        return collator;
    }();
    return order;
}

} // namespace

void FitColumns(QTreeWidget* list) {
    constexpr int gap = 18;
    for (int column = 0; column + 1 < list->columnCount(); ++column) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, list->columnWidth(column) + gap);
    }
}

bool ListRow::operator<(const QTreeWidgetItem& other) const {
    const int column = treeWidget()->sortColumn();
    const QVariant key = data(column, Qt::UserRole);
    const QVariant otherKey = other.data(column, Qt::UserRole);
    if (key.isValid() || otherKey.isValid()) // a row without a key comes first
        return QVariant::compare(key, otherKey) == QPartialOrdering::Less || !key.isValid();
    return textOrder().compare(text(column), other.text(column)) < 0;
}

void SortByHeadings(QTreeWidget* list) {
    list->header()->setSectionsClickable(true);
    QObject::connect(list->header(), &QHeaderView::sectionClicked, list, [list](int column) {
        if (list->isSortingEnabled()) // the list sorts by itself by now
            return;
        list->header()->setSortIndicator(column, Qt::AscendingOrder);
        list->setSortingEnabled(true);
    });
}

void FillList(QTreeWidget* list, const QStringList& headings, ListRows rows, Selected selected) {
    const bool sorts = list->header()->sectionsClickable();
    list->setSortingEnabled(false); // which takes the headings their clicks too
    list->header()->setSectionsClickable(sorts);
    list->clear();
    list->setColumnCount(static_cast<int>(headings.size()));
    list->setHeaderLabels(headings);
    QList<QTreeWidgetItem*> items; // which the list owns from now on
    for (std::unique_ptr<ListRow>& row : rows)
        items.append(row.release());
    list->addTopLevelItems(items);
    if (selected == Selected::First && !items.isEmpty())
        list->setCurrentItem(items.first());
    FitColumns(list);
}
