// The folders include each other in one direction only, and so do the units of each floor of the core.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace {

using Targets = std::set<std::string>;

const std::map<std::string, Targets> allowed = {
    {"core/base", {}},
    {"core/store", {"core/base"}},
    {"core/look", {"core/base"}},
    {"core/shell", {"core/base", "core/store", "core/look"}},
    {"jobs", {"core"}},
    {"estimates", {"core"}},
    {"documents", {"core"}},
    {"setup", {"core", "jobs", "documents"}},
    {"packages", {"core", "documents"}},
    {"shock", {"core", "estimates", "documents"}},
    {"sizing", {"core", "estimates", "documents", "shock"}},
    {"app", {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing"}},
    {"data", {"core/base"}},
    {"packaging", {"core/look"}},
    {"tests", {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing", "app"}},
    {"bench",
     {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing", "app", "tests"}},
};

bool isSource(const fs::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

/// The row of `allowed` that a path below the project belongs to; an empty text for none.
std::string folderOf(const std::string& path) {
    for (const auto& [folder, targets] : allowed)
        if (path.starts_with(folder + "/"))
            return folder;
    return {};
}

bool mayInclude(const std::string& folder, const std::string& target) {
    if (folder == target)
        return true;
    const Targets& targets = allowed.at(folder);
    return targets.contains(target) || (target.starts_with("core/") && targets.contains("core"));
}

/// The paths that a file includes of the project's own.
std::vector<std::string> includesOf(const fs::path& file) {
    static const std::regex include(R"re(^\s*#include\s+"([^"/]+/[^"]+)".*)re");
    std::ifstream text(file);
    std::vector<std::string> found;
    std::smatch match;
    for (std::string line; std::getline(text, line);)
        if (std::regex_match(line, match, include))
            found.push_back(match[1]);
    return found;
}

/// Every source of the project, by its path below it.
std::vector<std::string> sources() {
    const fs::path root = SOURCE_FOLDER;
    std::vector<std::string> paths;
    for (const auto& top : fs::directory_iterator(root)) {
        const std::string name = top.path().filename().string();
        if (!top.is_directory() || name.starts_with(".") || name == "build" || name == "out")
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(top.path()))
            if (isSource(entry.path()))
                paths.push_back(fs::relative(entry.path(), root).generic_string());
    }
    return paths;
}

} // namespace

TEST(Arrows, PointOneWay) {
    const auto paths = sources();
    EXPECT_GT(paths.size(), 100U);
    for (const std::string& path : paths) {
        const std::string folder = folderOf(path);
        EXPECT_FALSE(folder.empty()) << path << " stands in a folder that has no arrows";
        if (folder.empty())
            continue;
        for (const std::string& included : includesOf(fs::path(SOURCE_FOLDER) / path)) {
            const std::string target = folderOf(included);
            EXPECT_TRUE(!target.empty() && mayInclude(folder, target)) << path << " includes " << included;
        }
    }
}

TEST(Arrows, MakeNoKnotInsideAFloor) {
    // A unit is a header with its source; a screen and the registry that opens it are two halves of one.
    std::map<std::string, Targets> units;
    const auto unitOf = [](const std::string& path) {
        const std::string unit = path.substr(0, path.rfind('.'));
        return unit == "core/shell/Screen" ? std::string("core/shell/Screens") : unit;
    };
    for (const std::string& path : sources()) {
        const std::string folder = folderOf(path);
        if (!folder.starts_with("core/"))
            continue;
        const std::string unit = unitOf(path);
        for (const std::string& included : includesOf(fs::path(SOURCE_FOLDER) / path))
            if (const std::string other = unitOf(included); other != unit)
                units[unit].insert(other);
    }
    std::set<std::string> done;
    std::vector<std::string> road;
    const std::function<void(const std::string&)> follow = [&](const std::string& unit) {
        if (done.contains(unit))
            return;
        const bool knot = std::find(road.begin(), road.end(), unit) != road.end();
        EXPECT_FALSE(knot) << unit << " includes itself by way of " << (road.empty() ? "" : road.back());
        if (knot)
            return;
        road.push_back(unit);
        for (const std::string& other : units[unit])
            follow(other);
        road.pop_back();
        done.insert(unit);
    };
    const auto all = units; // following adds empty rows
    for (const auto& [unit, targets] : all)
        follow(unit);
    EXPECT_GT(done.size(), 20U);
}

TEST(Arrows, KeepWindowsOutOfTheStore) {
    const std::regex window(
        R"re(^\s*#include\s+<(Q(Widget|Dialog|MessageBox|Application|MainWindow)|QtWidgets|QtGui).*)re");
    for (const std::string& path : sources()) {
        if (!path.starts_with("core/store/") && !path.starts_with("core/base/"))
            continue;
        std::ifstream text(fs::path(SOURCE_FOLDER) / path);
        for (std::string line; std::getline(text, line);)
            EXPECT_FALSE(std::regex_match(line, window)) << path << ": " << line;
    }
}
