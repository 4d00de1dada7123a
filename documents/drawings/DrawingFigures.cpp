#include "documents/drawings/DrawingFigures.h"

#include "core/shell/DisplayFields.h"
#include "documents/report/Renderer.h"

#include <utility>

DrawingFigures figuresOf(const Model& model) {
    const auto inches = [](const std::optional<double>& length) {
        return length ? shownNumber(*length, QStringLiteral("General\"")) : QString();
    };
    return {inches(model.tankOD), inches(model.oal), shownText(model.sysConnStd)};
}

QByteArray withFigures(QByteArray svg, const DrawingFigures& figures) {
    for (const auto& [place, text] : {std::pair("class=\"figure-A\"", &figures.diameter),
                                      {"class=\"figure-B\"", &figures.height},
                                      {"class=\"figure-C\"", &figures.connection}})
        for (qsizetype at = svg.indexOf(place); at >= 0; at = svg.indexOf(place, at + 1))
            svg.insert(svg.indexOf('>', at) + 1, text->toHtmlEscaped().toUtf8());
    return svg;
}
