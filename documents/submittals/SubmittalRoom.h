#pragma once

#include "documents/report/Layout.h"

/// Shares the room of a filled submittal between its drawing and its texts: what the specification does not
/// need makes the drawing larger, whose frame closes around it, and then the specification's letters. A long
/// specification gets smaller letters while those of the drawing could not be read; one that needs all its
/// room even so leaves the layout as it is.
void shareRoom(Layout& layout);
