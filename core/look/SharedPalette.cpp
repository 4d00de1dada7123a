#include "core/look/SharedPalette.h"

#include <QList>
#include <QPalette>

#include <algorithm>

QPalette SharedPalette::of(const QPalette& palette) {
    constexpr qsizetype most = 16; // light, dark, fields with errors, inactive and so on
    static QList<QPalette> seen;
    if (const auto found = std::ranges::find(seen, palette); found != seen.end()) {
        QPalette shared = *found;
        shared.setCurrentColorGroup(palette.currentColorGroup()); // which is no part of the comparison
        return shared;
    }
    if (seen.size() == most)
        seen.removeFirst();
    seen.append(palette);
    return palette;
}
