#pragma once

#include <QStyleOption>

/// Qt keeps what it draws of headers and boxes under the identity of the palette, and each widget has a
/// palette of its own: what is drawn would never be found again, and fill the cache. Palettes with the same
/// colours share one identity here.
namespace SharedPalette {

/// The palette with these colours that was seen first.
QPalette of(const QPalette& palette);

/// Draws with a copy of an option that has the shared palette; false if it is not an option of this type.
template<typename Option, typename Draw>
bool draws(const QStyleOption* option, const Draw& draw) {
    const auto* own = qstyleoption_cast<const Option*>(option);
    if (!own)
        return false;
    Option shared(*own);
    shared.palette = of(own->palette);
    draw(&shared);
    return true;
}

} // namespace SharedPalette
