#pragma once

/// Makes assistive technology call a drop-down list by its name and its choice, and press option buttons and
/// tick boxes as a click does. Qt calls a list by one of them only, so that either two with the same choice
/// could not be told apart or the choice is not heard, and toggles a button without the click that the
/// screens wait for.
void improveControlsForScreenReaders();
