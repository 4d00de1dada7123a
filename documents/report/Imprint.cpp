#include "documents/report/Imprint.h"

#include "core/base/Program.h"
#include "core/base/Text.h"

#include <QDate>

QString Imprint::madeLine() {
    return "Brennoval, version " + Program::fullProgramVersion() + ", " + shownDate(QDate::currentDate());
}
