#pragma once

/// Registers the screens and commands of this folder.
void registerDocuments();
