#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

/// The one set of icons, drawn from the program's own line drawings.
namespace Appearance {

/// An icon of the set in the colours of the scheme, such as "print".
QIcon icon(const QString& name);

/// A picture of the set in a size of screen units, for a screen of that pixel ratio.
QPixmap picture(const QString& name, const QSize& size, qreal pixelRatio);

} // namespace Appearance
