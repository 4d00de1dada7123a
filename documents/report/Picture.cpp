#include "documents/report/Picture.h"

#include "core/base/Fault.h"

#include <QFileInfo>
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

} // namespace

QByteArray readPicture(const QString& path) {
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        throw Fault(Fault::FileNotFound, "File not found: " + path.toStdString());
    QByteArray svg = file.readAll();
    if (!isSelfContained(svg) || !QSvgRenderer(svg).isValid())
        throw Fault(Fault::InvalidPicture, "Invalid picture: " + path.toStdString());
    return svg;
}
