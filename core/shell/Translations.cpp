#include "core/shell/Translations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

#include <memory>

namespace {

bool load(const QString& name, const QString& folder, const QLocale& language) {
    auto translator = std::make_unique<QTranslator>();
    if (!translator->load(language, name, QStringLiteral("_"), folder) ||
        !QCoreApplication::installTranslator(translator.get()))
        return false;
    translator.release()->setParent(QCoreApplication::instance());
    return true;
}

} // namespace

bool LoadTranslations(const QString& folder, const QLocale& language) {
    if (!load(QStringLiteral("brennoval"), folder, language))
        return false;
    load(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath), language);
    return true;
}
