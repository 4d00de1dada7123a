#include "core/shell/LockKeys.h"

#include <QDir>
#include <QFile>

#ifdef Q_OS_WIN
#include <qt_windows.h>
#endif

std::optional<bool> lockKeyOn(int key) {
    if (key != Qt::Key_CapsLock && key != Qt::Key_NumLock && key != Qt::Key_ScrollLock)
        return std::nullopt;
#ifdef Q_OS_WIN
    const int code = key == Qt::Key_CapsLock ? VK_CAPITAL : key == Qt::Key_NumLock ? VK_NUMLOCK : VK_SCROLL;
    return (GetKeyState(code) & 1) != 0;
#else
    // The keyboard's LEDs, on systems that expose them as files.
    const QString lamp = key == Qt::Key_CapsLock  ? QStringLiteral("*::capslock")
                         : key == Qt::Key_NumLock ? QStringLiteral("*::numlock")
                                                  : QStringLiteral("*::scrolllock");
    const QDir lamps(QStringLiteral("/sys/class/leds"));
    const QStringList found = lamps.entryList({lamp}, QDir::Dirs);
    std::optional<bool> on;
    for (const QString& name : found) {
        QFile brightness(lamps.filePath(name + QStringLiteral("/brightness")));
        if (brightness.open(QIODevice::ReadOnly))
            on = on.value_or(false) || brightness.readAll().trimmed() != "0";
    }
    return on;
#endif
}
