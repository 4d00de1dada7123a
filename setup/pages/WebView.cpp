// The plugin with the web engine. It is separate because the engine would slow every start of the program.

#include "setup/pages/PageView.h"

#include <QCoreApplication>
#include <QOpenGLContext>
#include <QQuickWindow>
#include <QVBoxLayout>
#include <QWebEnginePage>
#include <QWebEngineProfile>
#include <QWebEngineSettings>
#include <QWebEngineView>

#include <cstring>
#include <memory>

QT_BEGIN_NAMESPACE
// NOLINTNEXTLINE(readability-identifier-naming): a name of Qt's
Q_GUI_EXPORT void qt_gl_set_global_share_context(QOpenGLContext* context);
QT_END_NAMESPACE

namespace {

/// A page that opens requests for a new window in its own.
class OneWindowPage : public QWebEnginePage {
  public:
    using QWebEnginePage::QWebEnginePage;

  protected:
    QWebEnginePage* createWindow(WebWindowType) override { return this; }
};

class WebView : public PageView {
  public:
    explicit WebView(QWidget* parent) : PageView(parent), view(new QWebEngineView(this)) {
        auto* profile = new QWebEngineProfile(this); // without a name it stores nothing on disk
        view->setPage(new OneWindowPage(profile, view));
        view->settings()->setAttribute(QWebEngineSettings::ScreenCaptureEnabled, false);
        view->settings()->setAttribute(QWebEngineSettings::JavascriptCanOpenWindows, false);
        auto* layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        view->setAccessibleName(QCoreApplication::translate("WebView", "Page"));
        setFocusProxy(view);
        connect(view, &QWebEngineView::loadStarted, this, [this] { started(); });
        connect(view, &QWebEngineView::loadFinished, this, [this] { finished(view->url(), view->title()); });
    }
    ~WebView() override { delete view->page(); } // before the profile that it uses

    void go(const QUrl& address) override { view->load(address); }
    void back() override { view->back(); }
    void forward() override { view->forward(); }
    void reload() override { view->reload(); }
    void stop() override { view->stop(); }
    void zoomBy(int steps) override {
        constexpr double step = .1;
        view->setZoomFactor(view->zoomFactor() + step * steps);
    }

  private:
    QWebEngineView* view;
};

/// The engine asks the shared graphics context for its format even for software rendering. The program does
/// not set one up, since that would slow the start; a context object that was never created on the system is
/// enough.
void drawBySoftware() {
    static std::unique_ptr<QOpenGLContext> context;
    if (QOpenGLContext::globalShareContext())
        return;
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    context = std::make_unique<QOpenGLContext>();
    qt_gl_set_global_share_context(context.get());
    qAddPostRoutine([] {
        qt_gl_set_global_share_context(nullptr);
        context.reset();
    });
}

} // namespace

extern "C" Q_DECL_EXPORT PageView* createPageView(const char* version, QWidget* parent) {
    if (std::strcmp(version, BRENNOVAL_VERSION) != 0)
        return nullptr;
    drawBySoftware();
    return new WebView(parent);
}
