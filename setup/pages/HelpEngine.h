#pragma once

#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QThread>

/// The engine of the help. Two threads of its own read contents and index from the list of files, which Qt's
/// engine frees before it ends them; so this one waits until both are done.
class HelpEngine : public QHelpEngine {
  public:
    using QHelpEngine::QHelpEngine;
    HelpEngine(const HelpEngine&) = delete;
    HelpEngine& operator=(const HelpEngine&) = delete;
    ~HelpEngine() override {
        while (contentModel()->isCreatingContents() || indexModel()->isCreatingIndex())
            QThread::yieldCurrentThread();
    }
};
