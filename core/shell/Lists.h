#pragma once

#include <QTreeWidget>

/// Makes the columns of a list as wide as their texts, with room between them; the last takes the rest.
inline void FitColumns(QTreeWidget* list) {
    constexpr int gap = 18;
    for (int column = 0; column + 1 < list->columnCount(); ++column) {
        list->resizeColumnToContents(column);
        list->setColumnWidth(column, list->columnWidth(column) + gap);
    }
}
