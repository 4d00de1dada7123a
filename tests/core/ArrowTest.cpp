// The folders include each other in one direction only.

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

namespace fs = std::filesystem;

TEST(Arrows, PointOneWay) {
    const std::map<std::string, std::set<std::string>> allowed = {
        {"core", {}},
        {"jobs", {"core"}},
        {"estimates", {"core"}},
        {"documents", {"core"}},
        {"setup", {"core", "jobs"}},
        {"packages", {"core", "documents"}},
        {"shock", {"core", "estimates", "documents"}},
        {"sizing", {"core", "estimates", "documents", "shock"}},
    };
    const std::regex include(R"re(^\s*#include\s+"([a-z]+)/.*)re");
    int read = 0;
    for (const auto& [folder, targets] : allowed) {
        const fs::path path = fs::path(SOURCE_FOLDER) / folder;
        if (!fs::exists(path))
            continue;
        for (const auto& entry : fs::recursive_directory_iterator(path)) {
            if (entry.path().extension() != ".h" && entry.path().extension() != ".cpp")
                continue;
            ++read;
            std::ifstream file(entry.path());
            std::smatch match;
            for (std::string line; std::getline(file, line);)
                if (std::regex_match(line, match, include) && match[1] != folder) {
                    EXPECT_TRUE(targets.contains(match[1])) << entry.path() << ": " << line;
                }
        }
    }
    EXPECT_GT(read, 5);
}
