#include "core/look/Fonts.h"

#include <QApplication>
#include <QDir>
#include <QFont>
#include <QFontDatabase>
#include <QFontMetrics>

namespace Fonts {

namespace {

bool ownInUse = false;

/// Qt lists families even without any font, but none that has a letter.
bool canShowText() {
    return QFontMetrics(QFont()).inFont(u'A');
}

} // namespace

bool provide() {
    if (canShowText())
        return true;
    const QDir fonts(":/fonts");
    for (const QString& name : fonts.entryList()) {
        const int font = QFontDatabase::addApplicationFont(fonts.filePath(name));
        const QStringList families = QFontDatabase::applicationFontFamilies(font);
        if (!families.isEmpty())
            QApplication::setFont(QFont(families.first()));
    }
    ownInUse = canShowText();
    return ownInUse;
}

bool areOwn() {
    return ownInUse;
}

} // namespace Fonts
