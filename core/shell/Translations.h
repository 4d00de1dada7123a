#pragma once

class QLocale;
class QString;

/// Shows the program's own texts in a language from now on: loads `brennoval_<language>.qm` of a folder, and
/// then Qt's own texts in the same language. Without such a file nothing changes, Qt's texts neither: no half
/// of a window is translated. False then.
bool LoadTranslations(const QString& folder, const QLocale& language);
