#include "core/look/SystemScheme.h"

#include <QApplication>
#include <QPalette>
#include <QStyleHints>

#ifdef BRENNOVAL_WITH_DBUS
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#endif

#include <optional>

namespace {

/// The scheme that the platform's palette suggests, before the program replaces that palette.
Appearance::Scheme schemeOfPalette() {
    const QPalette palette = QApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness()
               ? Appearance::Scheme::Dark
               : Appearance::Scheme::Light;
}

#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
std::optional<Appearance::Scheme> schemeOfPlatform() {
    switch (QGuiApplication::styleHints()->colorScheme()) {
    case Qt::ColorScheme::Dark:
        return Appearance::Scheme::Dark;
    case Qt::ColorScheme::Light:
        return Appearance::Scheme::Light;
    case Qt::ColorScheme::Unknown:
        break;
    }
    return std::nullopt;
}
#endif

#ifdef BRENNOVAL_WITH_DBUS
const QString portalGroup = QStringLiteral("org.freedesktop.appearance");
const QString portalKey = QStringLiteral("color-scheme");

/// The desktop portal's number: 1 for dark, 2 for light, 0 for no preference.
std::optional<Appearance::Scheme> schemeOfNumber(const QVariant& value) {
    switch (value.toUInt()) {
    case 1:
        return Appearance::Scheme::Dark;
    case 2:
        return Appearance::Scheme::Light;
    default:
        return std::nullopt;
    }
}

/// Asks the desktop portal, which replies at once or not at all.
std::optional<Appearance::Scheme> schemeOfPortal() {
    QDBusMessage question = QDBusMessage::createMethodCall(
        QStringLiteral("org.freedesktop.portal.Desktop"), QStringLiteral("/org/freedesktop/portal/desktop"),
        QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("Read"));
    question.setArguments({portalGroup, portalKey});
    constexpr int maxWait = 300; // milliseconds
    const QDBusMessage answer = QDBusConnection::sessionBus().call(question, QDBus::Block, maxWait);
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty())
        return std::nullopt;
    QVariant value = answer.arguments().first();
    while (value.canConvert<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return schemeOfNumber(value);
}
#endif

} // namespace

SystemScheme::SystemScheme() {
    std::optional<Appearance::Scheme> scheme;
#if QT_VERSION >= QT_VERSION_CHECK(6, 5, 0)
    scheme = schemeOfPlatform();
    connect(QGuiApplication::styleHints(), &QStyleHints::colorSchemeChanged, this,
            [] { follow(schemeOfPlatform().value_or(Appearance::Scheme::Light)); });
#elif defined(BRENNOVAL_WITH_DBUS)
    if (QDBusConnection::sessionBus().isConnected()) {
        scheme = schemeOfPortal();
        QDBusConnection::sessionBus().connect(QStringLiteral("org.freedesktop.portal.Desktop"),
                                              QStringLiteral("/org/freedesktop/portal/desktop"),
                                              QStringLiteral("org.freedesktop.portal.Settings"),
                                              QStringLiteral("SettingChanged"), this,
                                              SLOT(portalChanged(QString, QString, QDBusVariant)));
    }
#endif
    follow(scheme.value_or(schemeOfPalette()));
}

void SystemScheme::portalChanged([[maybe_unused]] const QString& group, [[maybe_unused]] const QString& key,
                                 [[maybe_unused]] const QDBusVariant& value) {
#ifdef BRENNOVAL_WITH_DBUS
    if (group == portalGroup && key == portalKey)
        follow(schemeOfNumber(value.variant()).value_or(Appearance::Scheme::Light));
#endif
}

void SystemScheme::follow(Appearance::Scheme scheme) {
    Appearance::apply(scheme);
}
