// Dependencies among the folders run in one direction only, and so do those among the units of each folder.

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

namespace {

using Targets = std::set<std::string>;
using Graph = std::map<std::string, Targets>;

const Graph allowed = {
    {"core/base", {}},
    {"core/store", {"core/base"}},
    {"core/postgres", {"core/base"}},
    {"core/office", {"core/base", "core/postgres", "core/store"}},
    {"core/look", {"core/base"}},
    {"core/shell", {"core/base", "core/store", "core/look"}},
    {"jobs", {"core"}},
    {"estimates", {"core"}},
    {"documents/report", {"core/base", "core/store"}},
    {"documents/export", {"core/base", "documents/report"}},
    {"documents/viewer", {"core", "documents/report", "documents/export"}},
    {"documents/drawings", {"core", "documents/report"}},
    {"documents/tags", {"core"}},
    {"documents/specifications", {"core"}},
    {"documents/submittals",
     {"core", "documents/report", "documents/viewer", "documents/drawings", "documents/tags",
      "documents/specifications"}},
    {"documents/schedule", {"core", "documents/tags", "documents/submittals"}},
    {"documents/lists", {"core", "documents/report", "documents/viewer", "documents/schedule"}},
    {"documents", {"core", "documents"}},
    {"setup", {"core", "jobs", "documents"}},
    {"packages", {"core", "documents"}},
    {"shock", {"core", "estimates", "documents"}},
    {"sizing", {"core", "estimates", "documents", "shock"}},
    {"calculation", {"core", "documents", "shock", "sizing"}},
    {"extras", {"core", "jobs", "documents", "estimates", "shock", "sizing", "calculation", "setup"}},
    {"app",
     {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing", "calculation",
      "extras"}},
    {"data", {"core/base", "core/store", "shock"}},
    {"packaging", {"core/look"}},
    {"tests",
     {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing", "calculation",
      "extras", "app"}},
    {"bench",
     {"core", "jobs", "estimates", "documents", "setup", "packages", "shock", "sizing", "calculation",
      "extras", "app", "tests"}},
};

bool isSource(const fs::path& path) {
    return path.extension() == ".h" || path.extension() == ".cpp";
}

/// The innermost row of `allowed` that covers a path in the project; empty if none does.
std::string folderOf(const std::string& path) {
    std::string innermost;
    for (const auto& [folder, targets] : allowed)
        if (path.starts_with(folder + "/") && folder.size() > innermost.size())
            innermost = folder;
    return innermost;
}

/// Naming a folder in a row also allows the folders inside it.
bool mayInclude(const std::string& folder, const std::string& target) {
    const Targets& targets = allowed.at(folder);
    return folder == target || std::any_of(targets.begin(), targets.end(), [&](const std::string& name) {
               return target == name || target.starts_with(name + "/");
           });
}

/// The project's own paths that a file includes.
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

/// The path of every source file, relative to the project.
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

/// Finds the paths along which something includes itself.
class CycleSearch {
  public:
    explicit CycleSearch(const Graph& searched) : graph(searched) {
        for (const auto& [name, targets] : graph)
            follow(name);
    }
    /// Each cycle as the list of its members.
    const std::vector<std::string>& found() const { return cycles; }

  private:
    void follow(const std::string& name) {
        if (const auto begin = std::find(way.begin(), way.end(), name); begin != way.end()) {
            std::string cycle;
            for (auto member = begin; member != way.end(); ++member)
                cycle += *member + " > ";
            cycles.push_back(cycle + name);
            return;
        }
        if (!graph.contains(name) || !done.insert(name).second)
            return;
        way.push_back(name);
        for (const std::string& target : graph.at(name))
            if (target != name)
                follow(target);
        way.pop_back();
    }

    const Graph& graph;
    Targets done;
    std::vector<std::string> way;
    std::vector<std::string> cycles;
};

} // namespace

TEST(Dependencies, RunOneWay) {
    const auto paths = sources();
    EXPECT_GT(paths.size(), 100U);
    for (const std::string& path : paths) {
        const std::string folder = folderOf(path);
        EXPECT_FALSE(folder.empty()) << path << " is in a folder without dependencies in the table";
        if (folder.empty())
            continue;
        for (const std::string& included : includesOf(fs::path(SOURCE_FOLDER) / path)) {
            const std::string target = folderOf(included);
            EXPECT_TRUE(!target.empty() && mayInclude(folder, target)) << path << " includes " << included;
        }
    }
}

TEST(Dependencies, HaveNoCycles) {
    // A unit is a header and its source. A screen and the registry that opens it count as one unit.
    const auto unitOf = [](const std::string& path) {
        const std::string unit = path.substr(0, path.rfind('.'));
        return unit == "core/shell/Screen" ? std::string("core/shell/Screens") : unit;
    };
    Graph units;
    Graph folders;
    for (const std::string& path : sources())
        for (const std::string& included : includesOf(fs::path(SOURCE_FOLDER) / path)) {
            units[unitOf(path)].insert(unitOf(included));
            folders[folderOf(path)].insert(folderOf(included));
        }
    EXPECT_GT(units.size(), 100U);
    EXPECT_GT(folders.size(), 10U);
    for (const Graph& graph : {units, folders})
        EXPECT_EQ(CycleSearch(graph).found(), std::vector<std::string>());
}

TEST(Dependencies, KeepWindowsOutOfTheStore) {
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
