#include "documents/report/Picture.h"

#include "core/base/Fault.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImage>
#include <QImageReader>
#include <QSvgRenderer>
#include <QXmlStreamReader>

#include <algorithm>

namespace {

/// Whether an attribute refers to anything but a part of its own file, by a link or by a url() in a style.
bool leadsOutside(const QXmlStreamAttribute& attribute) {
    const QString value = attribute.value().toString().trimmed();
    if (attribute.name() == u"href" || attribute.name() == u"src" || attribute.name() == u"base")
        return !value.startsWith(u'#') && !value.startsWith(u"data:image/");
    const qsizetype url = value.indexOf(u"url(", 0, Qt::CaseInsensitive);
    return (url >= 0 && !value.mid(url).remove(u' ').startsWith(u"url(#", Qt::CaseInsensitive)) ||
           value.contains(u"@import", Qt::CaseInsensitive) || attribute.name().startsWith(u"on");
}

/// Whether it is a single SVG picture without external references and without scripts.
bool isSelfContained(const QByteArray& svg) {
    QXmlStreamReader reader(svg);
    bool root = true;
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::DTD || token == QXmlStreamReader::ProcessingInstruction ||
            token == QXmlStreamReader::EntityReference)
            return false;
        if (token != QXmlStreamReader::StartElement)
            continue;
        if (std::exchange(root, false) && reader.name() != u"svg")
            return false;
        for (const char16_t* refused : {u"script", u"foreignObject", u"style"})
            if (reader.name() == QStringView(refused))
                return false;
        const auto attributes = reader.attributes();
        if (std::any_of(attributes.begin(), attributes.end(), leadsOutside))
            return false;
    }
    return !reader.hasError() && !root;
}

/// An SVG picture of an image's dots.
QByteArray svgOf(const QImage& image) {
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    const QByteArray size = "width=\"" + QByteArray::number(image.width()) + "\" height=\"" +
                            QByteArray::number(image.height()) + "\"";
    return "<svg xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" " + size +
           " viewBox=\"0 0 " + QByteArray::number(image.width()) + ' ' + QByteArray::number(image.height()) +
           "\"><image " + size + " xlink:href=\"data:image/png;base64," + png.toBase64() + "\"/></svg>";
}

} // namespace

QByteArray readOwnPicture(const QString& path) {
    constexpr qint64 largestFile = 20'000'000; // bytes
    constexpr qint64 largestSvg = 1'000'000;
    constexpr QSize most(1200, 600); // dots, 300 to the inch of the place on a cover and more
    const qint64 size = QFileInfo(path).size();
    QImageReader reader(path);
    const bool svg = QFileInfo(path).suffix().compare(QLatin1String("svg"), Qt::CaseInsensitive) == 0;
    if (size > (svg ? largestSvg : largestFile))
        throw Fault(Fault::InvalidPicture, "Picture too large: " + path.toStdString());
    if (svg || !QFileInfo(path).isFile())
        return readPicture(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    QImage image = reader.read();
    if (image.isNull())
        throw Fault(Fault::InvalidPicture, "Invalid picture: " + path.toStdString());
    if (image.width() > most.width() || image.height() > most.height())
        image = image.scaled(most, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return svgOf(image);
}

QByteArray readPicture(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        throw Fault(Fault::FileNotFound, "File not found: " + path.toStdString());
    QByteArray svg = file.readAll();
    if (!isSelfContained(svg) || !QSvgRenderer(svg).isValid())
        throw Fault(Fault::InvalidPicture, "Invalid picture: " + path.toStdString());
    return svg;
}
