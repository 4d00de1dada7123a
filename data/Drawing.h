#pragma once

#include <filesystem>
#include <map>
#include <string>

/// What a drawing shows, read from the named elements of the picture: `A` and `B` (the dimension lines),
/// `ring-base`, `legs` or `saddles`, `connection-top`, `connection-bottom`, `top-nozzle` (a flange or valve
/// that rises above the top head), `main` (a circle, the main of a shock tank in section).
struct Drawing {
    bool ringBase = false;
    bool legs = false;
    bool saddles = false;
    bool connectionTop = false;
    bool connectionBottom = false;
    bool topNozzle = false;
    bool horizontal = false;          // B, the length, is horizontal
    double aToB = 0;                  // length of A over length of B
    double widthToHeight = 0;         // of the whole picture
    double mainToConnection = 0;      // diameter of the main over that of the connection; 0 without a main
    bool mainBeside = false;          // the main is clear of the tank on one side
    std::map<std::string, int> parts; // how often each element occurs: pump-1 and pump-2 are two of pump
};

/// Throws std::runtime_error for a file that cannot be read or has no dimension lines.
Drawing readDrawing(const std::filesystem::path& file);

/// How much the whole exceeds the vessel's head-to-head length, because of base, legs and nozzles, in inches.
/// `diameter` and `connection` are in inches.
double baseAndNozzles(const Drawing& drawing, double diameter, double connection);
