#pragma once

/// Makes the screens and the commands of this folder known.
void registerDocuments();
