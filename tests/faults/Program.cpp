#include "tests/faults/Program.h"

#include "app/Install.h"

void Program::start() {
    registerAll();
    Dialogs::install(std::make_unique<QuietDialogs>());
    auto* window = new BrennovalMain; // stop deletes it
    window->show();
    window->activateWindow();
    settle();
}

void Program::stop() {
    for (int round = 0; round < 3 && !Screens::loaded().isEmpty(); ++round)
        for (const QString& name : Screens::loaded())
            Screens::unload(name);
    delete BrennovalMain::instance();
    Dialogs::install(std::make_unique<Dialogs>());
    settle();
}
