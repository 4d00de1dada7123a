#include "setup/pages/TextPageView.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTextBrowser>
#include <QVBoxLayout>

namespace {

/// A text box that shows local pages and ignores all others.
class LocalPages : public QTextBrowser {
  public:
    using QTextBrowser::QTextBrowser;

  protected:
    QVariant loadResource(int type, const QUrl& name) override {
        const QUrl address = source().resolved(name);
        if (type != QTextDocument::HtmlResource || address.isLocalFile())
            return address.isLocalFile() ? QTextBrowser::loadResource(type, name) : QVariant();
        return QCoreApplication::translate(
                   "TextPageView",
                   "<h1>No web browser</h1><p>This page is on the web, and neither the system nor "
                   "Brennoval has a browser that shows it. Its address:</p><p>%1</p>")
            .arg(address.toString().toHtmlEscaped());
    }
};

} // namespace

TextPageView::TextPageView(QWidget* parent) : PageView(parent), text(new LocalPages(this)) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text);
    text->setObjectName("pageText");
    text->setAccessibleName(QCoreApplication::translate("TextPageView", "Page"));
    text->setFrameShape(QFrame::NoFrame);
    text->document()->setDocumentMargin(16);
    text->setOpenLinks(false);
    setFocusProxy(text);
    connect(text, &QTextBrowser::sourceChanged, this, &TextPageView::tell);
    connect(text, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) {
        if (link.isLocalFile() || link.isRelative())
            go(text->source().resolved(link));
        else
            leave(link);
    });
}

void TextPageView::go(const QUrl& address) {
    started();
    text->setSource(address, QTextDocument::HtmlResource);
    text->document()->setDocumentMargin(16);
}

void TextPageView::back() {
    text->backward();
}

void TextPageView::forward() {
    text->forward();
}

void TextPageView::reload() {
    started();
    text->reload();
    tell(text->source());
}

void TextPageView::zoomBy(int steps) {
    text->zoomIn(steps);
}

QString TextPageView::plainText() const {
    return text->toPlainText();
}

void TextPageView::tell(const QUrl& address) { // the box still has the previous page's address at this point
    finished(address, text->documentTitle());
}
