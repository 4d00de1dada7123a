#include "extras/compare/CompareTable.h"

#include "core/base/Text.h"
#include "core/shell/DisplayFields.h"
#include "core/shell/Fitting.h"
#include "core/shell/Lists.h"

#include <QPainter>
#include <QStyledItemDelegate>

#include <algorithm>

namespace {

constexpr int placeRole = Qt::UserRole + 1; // of the candidate, in the first column

/// The columns of the table, in order.
enum Column {
    SeriesCode,
    Quantity,
    ModelNo,
    Volume,
    Acceptance,
    VolumeReserve,
    AcceptanceReserve,
    Diameter,
    Height,
    FloorArea,
    Weight,
    WorkingPressure,
    MaximumTemperature,
    Asme,
    Notes
};

/// Paints a reserve as a bar behind its text: full at 100 per cent.
class ReserveBar : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const QVariant reserve = index.data(Qt::UserRole);
        if (!reserve.isValid())
            return;
        constexpr int margin = 3;
        constexpr int faint = 60; // of 255
        QRectF bar = QRectF(option.rect).adjusted(margin, margin, -margin, -margin);
        bar.setWidth(bar.width() * std::clamp(reserve.toDouble(), 0.0, 1.0));
        const bool chosen = option.state & QStyle::State_Selected;
        QColor colour = option.palette.color(chosen ? QPalette::HighlightedText : QPalette::Highlight);
        colour.setAlpha(faint);
        painter->fillRect(bar, colour);
    }
};

QString percent(double reserve) {
    return formattedNumber(reserve, "#,##0.0") + " %";
}

/// The numbers by which the columns are sorted; per cents as fractions.
QList<std::pair<int, double>> keysOf(const Candidate& candidate, bool acceptanceCounts) {
    QList<std::pair<int, double>> keys{{Quantity, candidate.quantity}};
    if (!candidate.model)
        return keys;
    using Record::orZero;
    keys += {{Volume, candidate.volume},
             {Acceptance, candidate.acceptance},
             {VolumeReserve, candidate.volumeReserve / 100},
             {Diameter, orZero(candidate.model->tankOD)},
             {Height, orZero(candidate.model->oal)},
             {FloorArea, candidate.floorArea},
             {Weight, candidate.weight},
             {WorkingPressure, orZero(candidate.model->tankWkPressure)},
             {MaximumTemperature, orZero(candidate.model->maxTemp)}};
    if (acceptanceCounts)
        keys.append({AcceptanceReserve, candidate.acceptanceReserve / 100});
    return keys;
}

/// The search for a shock arrestor asks for volume alone.
bool acceptanceCounts(Application application) {
    return application != Application::Shock;
}

std::unique_ptr<ListRow> rowOf(const Candidate& candidate, int place, Application application) {
    auto row = std::make_unique<ListRow>(CompareTable::textsOf(candidate, application));
    row->setData(0, placeRole, place);
    for (const auto& [column, key] : keysOf(candidate, acceptanceCounts(application)))
        row->setSortKey(column, key);
    row->setToolTip(Notes, CompareTable::remarksOf(candidate).join(u'\n'));
    return row;
}

QStringList identityOf(const QTreeWidgetItem& row) {
    return {row.text(SeriesCode), row.text(Quantity), row.text(ModelNo)};
}

} // namespace

namespace CompareTable {

QStringList headings() {
    return {"Series",           "Qty",       "Model No.",  "Volume, gal", "Accept., gal", "Volume, reserve",
            "Accept., reserve", "Diam., in", "Height, in", "Floor, ft²",  "Weight, lbs",  "Working, psig",
            "Max., °F",         "ASME",      "Notes"};
}

QStringList remarksOf(const Candidate& candidate) {
    return candidate.isOffered() ? candidate.notes : QStringList(candidate.objection + '.') + candidate.notes;
}

QStringList textsOf(const Candidate& candidate, Application application) {
    QStringList texts{candidate.series, QString::number(candidate.quantity)};
    if (candidate.model) {
        const Model& model = *candidate.model;
        texts += {shownText(model.modelDscrptn),
                  formattedNumber(candidate.volume, "#,##0.##"),
                  formattedNumber(candidate.acceptance, "#,##0.##"),
                  percent(candidate.volumeReserve),
                  acceptanceCounts(application) ? percent(candidate.acceptanceReserve) : QString(),
                  shownText(model.tankOD),
                  shownText(model.oal),
                  formattedNumber(candidate.floorArea, "#,##0.0"),
                  formattedNumber(candidate.weight, "#,##0"),
                  shownText(model.tankWkPressure),
                  shownText(model.maxTemp),
                  model.asme.value_or(false) ? "Yes" : "No"};
    }
    texts.resize(Notes);
    return texts << remarksOf(candidate).join(' ');
}

void prepare(QTreeWidget* list) {
    sortByHeadings(list);
    Fitting::keepNarrow(*list);
    auto* bars = new ReserveBar(list);
    for (const int column : {VolumeReserve, AcceptanceReserve})
        list->setItemDelegateForColumn(column, bars);
}

void fill(QTreeWidget* list, const std::vector<Candidate>& candidates, const std::vector<int>& places,
          Application application, const QStringList& wanted) {
    ListRows rows;
    for (const int place : places)
        rows.push_back(rowOf(candidates[std::size_t(place)], place, application));
    QStringList twoLines = headings(); // which are narrower
    fillList(list, twoLines.replaceInStrings(", ", "\n"), std::move(rows), Selected::None);
    const QBrush grey = list->palette().brush(QPalette::Disabled, QPalette::Text);
    // The wanted row; failing that, one of its series and quantity, then of its series, then any.
    QTreeWidgetItem* best = list->topLevelItem(0);
    int bestRank = -1;
    for (int i = 0; i < list->topLevelItemCount(); ++i) {
        QTreeWidgetItem* row = list->topLevelItem(i);
        const bool offered = candidates[row->data(0, placeRole).toUInt()].isOffered();
        for (int column = 0; !offered && column <= Notes; ++column)
            row->setForeground(column, grey);
        const QStringList here = identityOf(*row);
        int rank = offered ? 0 : -1;
        if (here == wanted)
            rank = 3;
        else if (offered && here.first() == wanted.value(0))
            rank = here[1] == wanted.value(1) ? 2 : 1;
        if (rank > bestRank) {
            bestRank = rank;
            best = row;
        }
    }
    list->setCurrentItem(best);
}

QStringList chosenTexts(const QTreeWidget* list) {
    const QTreeWidgetItem* row = list->currentItem();
    return row ? identityOf(*row) : QStringList();
}

std::vector<int> places(const QTreeWidget* list) {
    std::vector<int> found;
    found.reserve(std::size_t(list->topLevelItemCount()));
    for (int i = 0; i < list->topLevelItemCount(); ++i)
        found.push_back(list->topLevelItem(i)->data(0, placeRole).toInt());
    return found;
}

int chosen(const QTreeWidget* list) {
    const QTreeWidgetItem* row = list->currentItem();
    return row ? row->data(0, placeRole).toInt() : -1;
}

bool offersAny(const QTreeWidget* list, const std::vector<Candidate>& candidates) {
    return std::ranges::any_of(places(list),
                               [&](int place) { return candidates[std::size_t(place)].isOffered(); });
}

QString tabbed(const QTreeWidget* list, const std::vector<Candidate>& candidates, Application application) {
    QString text = headings().join(u'\t') + u'\n';
    for (const int place : places(list))
        text += textsOf(candidates[std::size_t(place)], application).join(u'\t') + u'\n';
    return text;
}

} // namespace CompareTable
