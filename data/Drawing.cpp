#include "data/Drawing.h"

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

/// The distance from a dimension line's first point to its last; the gap for its letter lies between them.
Point extent(const std::string& picture, const std::string& name) {
    const std::regex element("id=\"" + name + R"re(" d="M([\d.]+) ([\d.]+) [^"]*L([\d.]+) ([\d.]+)")re");
    std::smatch found;
    if (!std::regex_search(picture, found, element))
        throw std::runtime_error("has no dimension line " + name);
    return {std::abs(std::stod(found[3]) - std::stod(found[1])),
            std::abs(std::stod(found[4]) - std::stod(found[2]))};
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
    const auto shows = [&](const char* name) {
        return picture.find(std::string("id=\"") + name + '"') != std::string::npos;
    };
    const Point a = extent(picture, "A");
    const Point b = extent(picture, "B");
    return {.ringBase = shows("ring-base"),
            .legs = shows("legs"),
            .saddles = shows("saddles"),
            .connectionTop = shows("connection-top"),
            .connectionBottom = shows("connection-bottom"),
            .topNozzle = shows("top-nozzle") || shows("connection-top"),
            .horizontal = b.x > b.y,
            .aToB = std::hypot(a.x, a.y) / std::hypot(b.x, b.y),
            .widthToHeight = pictureShape(picture)};
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
