#pragma once

#include <QIcon>
#include <QPixmap>
#include <QString>

/// The program's one icon set, from its own line drawings.
namespace Appearance {

/// An icon of the set in the scheme's colours, such as "print".
QIcon icon(const QString& name);

/// A picture of the set, sized in screen units, for a screen with this pixel ratio.
QPixmap picture(const QString& name, const QSize& size, qreal pixelRatio);

} // namespace Appearance
