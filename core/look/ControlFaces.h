#pragma once

/// Makes assistive technology call a drop-down list by its name, and press option buttons and tick boxes as a
/// click does. Qt calls a list by the chosen text, so that two with the same choice could not be told apart,
/// and toggles a button without the click that the screens wait for.
void improveControlsForScreenReaders();
