#pragma once

#include <QUrl>
#include <QWidget>

#include <functional>

/// A control that shows pages. It holds nothing but Qt, so that a plugin can bring another one.
class PageView : public QWidget {
  public:
    using QWidget::QWidget;

    virtual void go(const QUrl& address) = 0;
    virtual void back() = 0;
    virtual void forward() = 0;
    virtual void reload() {}
    virtual void stop() {}
    /// Makes the letters larger or smaller by a number of steps.
    virtual void zoomBy(int steps) = 0;
    /// Whether it finds topics in the help file.
    virtual bool knowsTopics() const { return false; }
    /// Room for a page of text and pictures, where there is as much.
    QSize sizeHint() const override { return {900, 620}; }
    /// What the page in sight says.
    virtual QString plainText() const { return {}; }

    /// Runs when a page begins to load.
    std::function<void()> started = [] {};
    /// Runs when it shows.
    std::function<void(const QUrl& address, const QString& title)> finished = [](const QUrl&,
                                                                                 const QString&) {};
    /// Takes a link that the control does not show itself.
    std::function<void(const QUrl& address)> leave = [](const QUrl&) {};
};

/// What a plugin exports under the name CreatePageView: makes its control for a program of the same version,
/// else nothing.
using PageViewFactory = PageView* (*)(const char* version, QWidget* parent);
