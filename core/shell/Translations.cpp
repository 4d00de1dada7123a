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

bool loadTranslations(const QString& folder, const QLocale& language) {
    // Only the user's first language counts: those who prefer English must not get their second choice.
    const QStringList wanted = language.uiLanguages();
    const QLocale first(wanted.isEmpty() ? QString() : wanted.first());
    if (first.language() == QLocale::English || first.language() == QLocale::C ||
        !load(QStringLiteral("brennoval"), folder, first))
        return false;
    load(QStringLiteral("qtbase"), QLibraryInfo::path(QLibraryInfo::TranslationsPath), first);
    return true;
}
