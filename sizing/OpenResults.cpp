#include "sizing/OpenResults.h"

#include "core/base/Text.h"
#include "core/shell/Screens.h"

#include <QLabel>

void openResults(Application application, bool severalTanks) {
    const QString screen = toQString(infoOf(application).resultsScreen);
    const Screen* results = Screens::load(screen);
    if (results && severalTanks && screen == "frmResults") // no other screen has these labels
        for (const char* warning : {"lblConsultFactory", "lblMsgFlag"})
            results->control<QLabel>(warning)->setVisible(true);
    Screens::show(screen);
}
