#pragma once

/// Letters for a computer that has none.
namespace Fonts {

/// Whether text can be shown. Where the system has no font, this takes the one inside the program, if it was
/// built with one.
bool provide();
/// Whether `provide` had to take the program's own font.
bool areOwn();

} // namespace Fonts
