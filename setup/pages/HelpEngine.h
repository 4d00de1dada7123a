#pragma once

#include <QHelpContentModel>
#include <QHelpEngine>
#include <QHelpIndexModel>
#include <QThread>

/// The help engine. Qt's engine frees its list of files while its two threads may still be reading contents
/// and index from it, so this one waits for both first.
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
