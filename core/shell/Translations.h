#pragma once

class QLocale;
class QString;

/// Switches the program's texts to a language: loads `brennoval_<language>.qm` from a folder and then Qt's
/// own texts in the same language. Without such a file it loads neither, so that no window is half
/// translated, and returns false.
bool loadTranslations(const QString& folder, const QLocale& language);
