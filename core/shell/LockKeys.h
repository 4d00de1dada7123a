#pragma once

#include <optional>

/// Whether a lock key (Qt::Key_CapsLock, Qt::Key_NumLock, Qt::Key_ScrollLock) is on, as the system tells;
/// nothing where it does not tell.
std::optional<bool> LockKeyOn(int key);
