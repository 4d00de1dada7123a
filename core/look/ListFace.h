#pragma once

/// Makes assistive technology call a drop-down list by its name. Qt calls it by the chosen text, so that two
/// lists with the same choice could not be told apart.
void nameListsForScreenReaders();
