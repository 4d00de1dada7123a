#pragma once

#include <QListWidget>
#include <QTreeWidget>

#include <memory>
#include <vector>

/// Makes the columns of a list as wide as their texts, with room between them; the last takes the rest.
void FitColumns(QTreeWidget* list);

/// A row of a list that sorts by its headings: texts without regard to case and
/// with their numbers as numbers, keys as such.
class ListRow : public QTreeWidgetItem {
  public:
    using QTreeWidgetItem::QTreeWidgetItem;
    /// Sorts a column of this row by a value that its text does not show in order, such as a date.
    void setSortKey(int column, const QVariant& key) { setData(column, Qt::UserRole, key); }
    bool operator<(const QTreeWidgetItem& other) const override;
};

using ListRows = std::vector<std::unique_ptr<ListRow>>;

/// Lets a list of ListRows sort by its headings, once one of them has been clicked.
void SortByHeadings(QTreeWidget* list);

/// The chosen and ticked rows of the lists of a screen, which keep them when they are filled anew. A row is
/// known by its first text, where several share it by the second, too.
class KeptRows {
  public:
    explicit KeptRows(const QWidget& screen);
    void restore() const;

  private:
    struct Kept {
        QTreeWidget* list;
        QStringList chosen; // its first two texts; none when no row was chosen
        QStringList ticked; // their first texts
        int scrolledTo;
    };
    QList<Kept> lists;
    QList<std::pair<QListWidget*, QString>> names; // the chosen texts of the simple lists
};

/// The beginning of a text, as much of it as a list has any use for.
QString Beginning(const QString& text);

/// Which row a list that was filled anew has selected.
enum class Selected { First, None };

/// Fills a list anew, in the order of the rows until a heading is clicked.
void FillList(QTreeWidget* list, const QStringList& headings, ListRows rows,
              Selected selected = Selected::First);
