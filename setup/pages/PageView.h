#pragma once

#include <QByteArray>
#include <QUrl>
#include <QWidget>

#include <functional>

class QPagedPaintDevice;

/// A control that shows pages. It uses nothing but Qt, so that a plugin can provide another one.
class PageView : public QWidget {
  public:
    using QWidget::QWidget;

    virtual void go(const QUrl& address) = 0;
    virtual void back() = 0;
    virtual void forward() = 0;
    virtual void reload() {}
    virtual void stop() {}
    /// Enlarges or shrinks the text by a number of steps.
    virtual void zoomBy(int steps) = 0;
    /// Whether it can find topics in the help file.
    virtual bool knowsTopics() const { return false; }
    /// Enough for a page of text and pictures, if the display has the room.
    QSize sizeHint() const override { return {900, 620}; }
    /// What is printed.
    enum class Extent { Page, All };
    /// Prints pages. False if the control cannot, or the device fails.
    virtual bool print(QPagedPaintDevice&, Extent) { return false; }
    /// All pages as a PDF with an outline; empty if the control cannot.
    virtual QByteArray pdf() { return {}; }
    /// The text of the visible page.
    virtual QString plainText() const { return {}; }

    /// Called when a page starts to load.
    std::function<void()> started = [] {};
    /// Called when the page is shown.
    std::function<void(const QUrl& address, const QString& title)> finished = [](const QUrl&,
                                                                                 const QString&) {};
    /// Receives links that the control does not show itself.
    std::function<void(const QUrl& address)> leave = [](const QUrl&) {};
};

/// The function that a plugin exports as createPageView: creates its control for a program of the same
/// version, otherwise returns null.
using PageViewFactory = PageView* (*)(const char* version, QWidget* parent);
