// The underlined letters of the screens: none is the menu bar's, and none is given twice.

#include <gtest/gtest.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>

namespace fs = std::filesystem;

TEST(Mnemonics, AreClearOfTheMenuBarAndOfEachOther) {
    const std::set<char> menuBar = {'F', 'T', 'M', 'R', 'U', 'W', 'H'};
    const std::string mark = "&amp;";
    int letters = 0;
    for (const char* folder :
         {"core/shell", "jobs", "sizing", "shock", "packages", "estimates", "documents"}) {
        for (const auto& entry : fs::directory_iterator(fs::path(SOURCE_FOLDER) / folder)) {
            if (entry.path().extension() != ".ui")
                continue;
            std::ifstream file(entry.path());
            std::set<char> given;
            const bool ownWindow = entry.path().stem() == "frmDatabasePath"; // it stands without the menu bar
            // Its three groups of options never show together.
            const bool alternatives = entry.path().stem() == "frmTankSeries";
            for (std::string line; std::getline(file, line);) {
                const auto at = line.find(mark);
                if (at == std::string::npos || line.find("\"text\"") == std::string::npos)
                    continue;
                const char letter = char(std::toupper(line[at + mark.size()]));
                if (letter == ' ') // an ampersand between words
                    continue;
                ++letters;
                EXPECT_FALSE(!ownWindow && menuBar.contains(letter))
                    << entry.path().filename() << ": " << line;
                EXPECT_TRUE(given.insert(letter).second || alternatives)
                    << entry.path().filename() << ": " << line;
            }
        }
    }
    EXPECT_GT(letters, 30);
}
