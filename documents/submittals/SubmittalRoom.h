#pragma once

#include "documents/report/Layout.h"

/// Shares the room of a filled submittal between its drawing and its texts: what the specification does not
/// need makes the drawing larger, whose frame closes around it, and then the specification's letters. A
/// specification that needs all its room leaves the layout as it is.
void shareRoom(Layout& layout);
