#pragma once

#include <optional>

/// Whether a lock key (Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock) is on; nothing if the system
/// does not say.
std::optional<bool> lockKeyOn(int key);
