#include "data/Drawing.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <regex>
#include <sstream>
#include <stdexcept>

namespace {

struct Point {
    double x;
    double y;
};

struct Line {
    Point from;
    Point to;
};

/// A dimension line from its first point to its last; the gap for its letter lies between them.
Line dimensionLine(const std::string& picture, const std::string& name) {
    const std::regex element("id=\"" + name + R"re(" d="M([\d.]+) ([\d.]+) [^"]*L([\d.]+) ([\d.]+)")re");
    std::smatch found;
    if (!std::regex_search(picture, found, element))
        throw std::runtime_error("has no dimension line " + name);
    return {{std::stod(found[1]), std::stod(found[2])}, {std::stod(found[3]), std::stod(found[4])}};
}

Point extent(const Line& line) {
    return {std::abs(line.to.x - line.from.x), std::abs(line.to.y - line.from.y)};
}

/// Reads the main of a shock tank, drawn as a circle, and the width of the nozzle: the distance between the
/// first two strokes of the connection.
void readMain(const std::string& picture, const Line& a, Drawing& drawing) {
    const std::regex circle(R"re(id="main" cx="([\d.]+)" cy="[\d.]+" r="([\d.]+)")re");
    const std::regex nozzle(R"re(id="connection-bottom" d="M([\d.]+) [^M"]*M([\d.]+) )re");
    std::smatch main;
    std::smatch pipe;
    if (!std::regex_search(picture, main, circle) || !std::regex_search(picture, pipe, nozzle))
        return;
    const double centre = std::stod(main[1]);
    const double radius = std::stod(main[2]);
    drawing.mainToConnection = 2 * radius / (std::stod(pipe[2]) - std::stod(pipe[1]));
    drawing.mainBeside =
        centre + radius < std::min(a.from.x, a.to.x) || centre - radius > std::max(a.from.x, a.to.x);
}

std::map<std::string, int> partsOf(const std::string& picture) {
    static const std::regex element("id=\"([a-z-]*[a-z])(-[0-9]+)?\"");
    std::map<std::string, int> parts;
    for (std::sregex_iterator found(picture.begin(), picture.end(), element), end; found != end; ++found)
        ++parts[(*found)[1]];
    return parts;
}

double pictureShape(const std::string& picture) {
    const std::regex size(R"re(<svg [^>]*width="([\d.]+)" height="([\d.]+)")re");
    std::smatch found;
    if (!std::regex_search(picture, found, size))
        throw std::runtime_error("has no size");
    return std::stod(found[1]) / std::stod(found[2]);
}

} // namespace

Drawing readDrawing(const std::filesystem::path& file) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream)
        throw std::runtime_error("cannot be read");
    std::ostringstream text;
    text << stream.rdbuf();
    const std::string picture = text.str();
    const auto parts = partsOf(picture);
    const auto shows = [&](const char* name) { return parts.contains(name); };
    const Line lineA = dimensionLine(picture, "A");
    const Point a = extent(lineA);
    const Point b = extent(dimensionLine(picture, "B"));
    Drawing drawing{.ringBase = shows("ring-base"),
                    .legs = shows("legs"),
                    .saddles = shows("saddles"),
                    .connectionTop = shows("connection-top"),
                    .connectionBottom = shows("connection-bottom"),
                    .topNozzle = shows("top-nozzle") || shows("connection-top"),
                    .horizontal = b.x > b.y,
                    .aToB = std::hypot(a.x, a.y) / std::hypot(b.x, b.y),
                    .widthToHeight = pictureShape(picture),
                    .parts = parts};
    readMain(picture, lineA, drawing);
    return drawing;
}

double baseAndNozzles(const Drawing& drawing, double diameter, double connection) {
    const bool large = diameter >= 30;
    double length = drawing.topNozzle ? (large ? 1.5 : 1) : 0;
    if (drawing.ringBase)
        length += large ? 4.5 : 3;
    if (drawing.legs)
        length += 6 + 1.5 * connection; // room for nozzle, flanges and a long-radius elbow
    return length;
}
