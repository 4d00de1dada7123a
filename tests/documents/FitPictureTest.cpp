#include "core/base/Fault.h"
#include "documents/drawings/Drawings.h"
#include "documents/report/Picture.h"

#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QTemporaryDir>

TEST(FitPicture, KeepsProportionsAndCentres) {
    const struct {
        double x;
        double y;
        PictureFrame area;
        PictureFrame fitted;
    } cases[] = {
        {100, 100, {5, 7, 200, 200}, {5, 7, 200, 200}},
        {400, 100, {10, 20, 200, 200}, {10, 95, 200, 50}},
        {200, 100, {10, 20, 400, 100}, {60 - 50 + 100, 20, 200, 100}},
        {100, 200, {0, 0, 200, 200}, {50, 0, 100, 200}},
        {100, 110, {0, 0, 100, 400}, {0, 145, 100, 110}},
    };
    for (const auto& c : cases) {
        const PictureFrame fitted = fitPicture(c.x, c.y, c.area);
        EXPECT_DOUBLE_EQ(fitted.left, c.fitted.left) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.top, c.fitted.top) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.width, c.fitted.width) << c.x << " : " << c.y;
        EXPECT_DOUBLE_EQ(fitted.height, c.fitted.height) << c.x << " : " << c.y;
    }
    EXPECT_THROW(fitPicture(0, 10, {0, 0, 5, 5}), Fault);
    EXPECT_THROW(fitPicture(10, 0, {0, 0, 5, 5}), Fault);
}

TEST(Pictures, LoadOnlyIfSelfContained) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.svg");
    const auto reads = [&](const QByteArray& head, const QByteArray& body) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(head +
                   "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                   "width=\"9\" height=\"9\">" +
                   body + "</svg>");
        file.close();
        try {
            return !readPicture(path).isEmpty();
        } catch (const Fault&) {
            return false;
        }
    };
    EXPECT_TRUE(reads("", "<path id=\"p\" d=\"M0 0 L9 9\"/><use xlink:href=\"#p\"/>"));
    EXPECT_FALSE(reads("root:x:0:0:root\n", ""));
    EXPECT_FALSE(reads("<!DOCTYPE svg [<!ENTITY e SYSTEM \"file:///etc/passwd\">]>", "<text>&e;</text>"));
    for (const char* outside :
         {"<image xlink:href=\"/etc/passwd\"/>", "<image href=\"http://a.example/b.png\"/>",
          "<script>1</script>", "<rect style=\"fill: url( 'b.svg#c')\"/>", "<style>@import 'a.css';</style>"})
        EXPECT_FALSE(reads("", outside)) << outside;
    EXPECT_THROW(readPicture(folder.path()), Fault);
    for (const char* name : {"../a", "b/a", "b\\a", "c:a", "."})
        EXPECT_THROW(drawingPath(name, "svg"), Fault) << name;
    EXPECT_THROW(drawingPath("a", "/../b"), Fault);
}

// A photograph of any size is kept as part of a picture, with no more dots than a cover needs.
TEST(Pictures, OfDotsBecomePartsOfAPicture) {
    const QTemporaryDir folder;
    const QString path = folder.filePath("a.jpg");
    QImage image(2400, 600, QImage::Format_RGB32);
    image.fill(Qt::red);
    ASSERT_TRUE(image.save(path));
    const QByteArray svg = readOwnPicture(path);
    QSvgRenderer renderer(svg);
    EXPECT_EQ(renderer.defaultSize(), QSize(1200, 300));
    QImage painted(12, 3, QImage::Format_RGB32);
    QPainter painter(&painted);
    renderer.render(&painter);
    EXPECT_GT(qRed(painted.pixel(6, 1)), 240);
    EXPECT_LT(qGreen(painted.pixel(6, 1)), 15);
    EXPECT_THROW(readOwnPicture(folder.filePath("b.png")), Fault);
}
