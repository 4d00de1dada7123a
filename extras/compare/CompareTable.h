#pragma once

#include "extras/compare/Comparison.h"

#include <QStringList>

class QTreeWidget;

/// The table of candidates: the screen's, the clipboard's and the report's.
namespace CompareTable {

/// The headings of the columns, from the left.
QStringList headings();

/// The texts of a candidate, one a heading.
QStringList textsOf(const Candidate& candidate, Application application);

/// What to look at again: the reason why the search does not offer a candidate, then the notes.
QStringList remarksOf(const Candidate& candidate);

/// Makes a list show the reserves as bars as well.
void prepare(QTreeWidget* list);

/// Fills the list with some of the candidates, by their places. Chooses the wanted one; failing that, the
/// offered row that comes closest.
void fill(QTreeWidget* list, const std::vector<Candidate>& candidates, const std::vector<int>& places,
          Application application, const QStringList& wanted);

/// What `fill` finds the chosen row by: its series, quantity and model; empty if there is none.
QStringList chosenTexts(const QTreeWidget* list);

/// The places of the candidates in the order of the list, and that of the chosen one; -1 if there is none.
std::vector<int> places(const QTreeWidget* list);
int chosen(const QTreeWidget* list);

/// Whether any row of the list is one that the search offers.
bool offersAny(const QTreeWidget* list, const std::vector<Candidate>& candidates);

/// The rows of the list with their headings, as spreadsheets take them from the clipboard.
QString tabbed(const QTreeWidget* list, const std::vector<Candidate>& candidates, Application application);

} // namespace CompareTable
