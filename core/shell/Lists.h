#pragma once

#include <QListWidget>
#include <QTreeWidget>

#include <memory>
#include <vector>

/// Fits the columns of a list to their texts, plus a gap; the last column takes the rest.
void fitColumns(QTreeWidget* list);

/// Lets columns give way, the first one first, where a list is too narrow for the texts of all: theirs end in
/// dots then.
void letGiveWay(QTreeWidget* list, const QList<int>& columns);

/// A row of a list that sorts by its headings: texts ignore case and compare embedded numbers by value; keys
/// compare as values.
class ListRow : public QTreeWidgetItem {
  public:
    using QTreeWidgetItem::QTreeWidgetItem;
    /// Sorts a column of this row by a value, such as a date, whose text would sort wrongly.
    void setSortKey(int column, const QVariant& key) { setData(column, Qt::UserRole, key); }
    bool operator<(const QTreeWidgetItem& other) const override;
    /// The first cell, which the arrow keys reach, has the whole row as its name for a screen reader.
    QVariant data(int column, int role) const final;

  protected:
    /// The text of a cell, or for Qt::UserRole its sort key. A row of a long list may take them from
    /// elsewhere instead of storing its own.
    virtual QVariant cell(int column, int role) const { return QTreeWidgetItem::data(column, role); }
};

using ListRows = std::vector<std::unique_ptr<ListRow>>;

/// Makes a list of ListRows sort by its headings from the first click on one.
void sortByHeadings(QTreeWidget* list);

/// Stops sorting a list until a heading is clicked again, as for the rows of another search.
void stopSorting(QTreeWidget* list);

/// The selected and ticked rows of a screen's lists, kept while the lists are refilled. Rows are identified
/// by their first text and, where that is ambiguous, by the second as well.
class KeptRows {
  public:
    /// Notes the rows of all lists within a screen, which must outlive this.
    explicit KeptRows(const QWidget& screen);
    /// Selects, ticks and scrolls as noted; rows that are gone are left out.
    void restore() const;

  private:
    struct Kept {
        QTreeWidget* list;
        QStringList chosen; // its first two texts; empty if no row was selected
        QStringList ticked; // their first texts
        int scrolledTo;
    };
    QList<Kept> lists;
    QList<std::pair<QListWidget*, QString>> names; // selected texts of the simple lists
};

/// The start of a text, as much of it as a list can use.
QString beginningOf(const QString& text);

/// Which row is selected after a list was refilled.
enum class Selected { First, None };

/// Refills a list. Rows keep the given order until a heading is clicked, and from then on that heading's.
void fillList(QTreeWidget* list, const QStringList& headings, ListRows rows,
              Selected selected = Selected::First);
