#include "documents/report/PictureLabels.h"

#include <QXmlStreamReader>
#include <QXmlStreamWriter>

namespace {

/// How the texts inside an element look.
struct Look {
    TextStyle style;
    bool moved = false;   // by a transformation
    bool foreign = false; // in another font than a page's
};

void read(Look& look, const QXmlStreamAttributes& attributes) {
    if (attributes.hasAttribute(QLatin1String("transform")))
        look.moved = true;
    if (attributes.hasAttribute(QLatin1String("font-family")))
        look.foreign = attributes.value(QLatin1String("font-family")) != u"Liberation Sans";
    if (attributes.hasAttribute(QLatin1String("font-size")))
        look.style.size = attributes.value(QLatin1String("font-size")).toDouble();
    if (attributes.hasAttribute(QLatin1String("font-style")))
        look.style.italic = attributes.value(QLatin1String("font-style")) == u"italic";
    if (attributes.hasAttribute(QLatin1String("font-weight")))
        look.style.bold = attributes.value(QLatin1String("font-weight")) == u"bold";
    if (attributes.hasAttribute(QLatin1String("fill")) && attributes.value(QLatin1String("fill")) != u"none")
        look.style.color = QColor(attributes.value(QLatin1String("fill")).toString());
    if (const auto anchor = attributes.value(QLatin1String("text-anchor")); !anchor.isEmpty())
        look.style.alignment = anchor == u"middle" ? Qt::AlignHCenter
                               : anchor == u"end"  ? Qt::AlignRight
                                                   : Qt::AlignLeft;
}

} // namespace

LabelledPicture labelledPicture(const QByteArray& svg) {
    LabelledPicture picture;
    if (!svg.contains("<text"))
        return {svg, {}};
    QXmlStreamReader reader(svg);
    QXmlStreamWriter writer(&picture.svg);
    QList<Look> looks{{}};
    while (!reader.atEnd()) {
        const auto token = reader.readNext();
        if (token == QXmlStreamReader::StartElement) {
            Look look = looks.last();
            const auto attributes = reader.attributes();
            read(look, attributes);
            if (reader.name() == u"text" && !look.moved && !look.foreign) {
                const QString text = reader.readElementText(QXmlStreamReader::IncludeChildElements);
                if (!text.isEmpty())
                    picture.labels.append({text,
                                           {attributes.value(QLatin1String("x")).toDouble(),
                                            attributes.value(QLatin1String("y")).toDouble()},
                                           look.style});
                continue;
            }
            looks.append(look);
        } else if (token == QXmlStreamReader::EndElement) {
            looks.removeLast();
        }
        if (token != QXmlStreamReader::Invalid && token != QXmlStreamReader::StartDocument)
            writer.writeCurrentToken(reader);
    }
    return reader.hasError() ? LabelledPicture{svg, {}} : picture;
}
