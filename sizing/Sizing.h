#pragma once

/// Registers the screens of this folder.
void registerSizing();
