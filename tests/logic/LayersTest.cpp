#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <map>
#include <regex>
#include <set>

#include "support/SourceDir.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;

/// Modules of the logic and which others each may include. An include only points down; every module may include
/// itself.
const std::map<std::string, std::set<std::string>> LogicLayers = {
    {"text", {}},
    {"core", {"text"}},
    {"statistics", {"text"}},
    {"help", {"text", "core"}},
    {"utilities", {"text", "core"}},
    {"link", {"text", "core"}},
    {"calibration", {"text", "core", "statistics", "link"}},
    {"ph", {"text", "core", "link", "calibration"}},
    {"menu", {"text", "core", "link", "calibration", "ph"}},
    {"addition", {"text", "core", "statistics", "link", "calibration"}},
    {"tables", {"text", "core", "statistics", "calibration", "ph", "addition"}},
};

/// "kit/Screen.h" of `#include "kit/Screen.h"`; includes of the compiler's folders are left out.
std::vector<std::string> IncludesOf(const fs::path& file) {
    static const std::regex Include(R"re(^\s*#\s*include\s*"([^"]+)")re");
    std::ifstream in(file);
    std::vector<std::string> found;
    for (std::string line; std::getline(in, line);)
        if (std::smatch match; std::regex_search(line, match, Include)) found.push_back(match[1]);
    return found;
}

std::string ModuleOf(const std::string& include) {
    return include.substr(0, include.find('/'));
}

/// Names of the screens, from the list of their numbers.
std::set<std::string> ScreensOf(const fs::path& root) {
    static const std::regex Row(R"(^\s*(frm\w+|fm\w+) = \d+,)");
    std::ifstream in(root / "src/logic/core/ScreenCode.h");
    std::set<std::string> names;
    for (std::string line; std::getline(in, line);)
        if (std::smatch match; std::regex_search(line, match, Row)) names.insert(match[1]);
    return names;
}

/// Every breach under `root`/src, a line each: "src/logic/text/Number.cpp includes core/ScreenCode.h".
std::vector<std::string> Breaches(const fs::path& root) {
    const std::set<std::string> screens = ScreensOf(root);
    std::vector<std::string> breaches;
    for (const auto& entry : fs::recursive_directory_iterator(root / "src")) {
        const std::string extension = entry.path().extension().string();
        if (extension != ".h" && extension != ".cpp") continue;
        const std::string relative = fs::relative(entry.path(), root).generic_string();
        const fs::path name(relative);
        auto part = ++name.begin();
        const std::string tree = part->string(), module = (++part)->string();
        for (const std::string& include : IncludesOf(entry.path())) {
            const std::string target = ModuleOf(include);
            const bool logic = fs::exists(root / "src/logic" / include);
            const std::string otherName = fs::path(include).stem().string();
            const bool otherScreen = screens.contains(otherName) && !name.stem().string().starts_with(otherName);
            bool allowed = true;
            if (tree == "logic")
                allowed = logic && (target == module ||
                                    (LogicLayers.contains(module) && LogicLayers.at(module).contains(target)));
            else if (tree == "batch")
                allowed = logic || target == "batch";
            else if (tree == "gui" && module == "kit")
                allowed = logic || target == "kit";
            else if (tree == "gui" && module == "devices")
                allowed = logic || target == "kit" || target == "devices";
            else if (tree == "gui")
                allowed = target != "app" && target != "batch" && !otherScreen;
            if (!allowed) breaches.push_back(relative + " includes " + include);
        }
    }
    return breaches;
}

TEST(LayersTest, AnIncludeOnlyPointsDown) {
    for (const std::string& breach : Breaches(SourceDir()))
        ADD_FAILURE() << breach;
    for (const auto& entry : fs::directory_iterator(SourceDir() + "src/logic"))
        EXPECT_TRUE(!entry.is_directory() || LogicLayers.contains(entry.path().filename().string()))
            << entry.path() << " has no layer of its own in the table";
}

TEST(LayersTest, NamesEachKindOfBreach) {
    const fs::path root = fs::temp_directory_path() / "kelvo-layers";
    fs::remove_all(root);
    const std::map<std::string, std::string> tree = {
        {"src/gui/help/Helper.cpp", "link/frmtwo.h"},
        {"src/logic/text/A.cpp", "core/B.h"},
        {"src/logic/core/B.h", "kit/C.h"},
        {"src/logic/calibration/D.cpp", "tables/E.h"},
        {"src/logic/tables/E.h", "text/F.h"},
        {"src/logic/text/F.h", "text/F.h"},
        {"src/gui/kit/C.h", "devices/G.h"},
        {"src/gui/devices/G.h", "core/B.h"},
        {"src/gui/link/frmone.cpp", "link/frmtwo.h"},
        {"src/gui/link/frmtwo.cpp", "link/frmtwo.h"},
        {"src/gui/link/frmtwo.h", "app/H.h"},
        {"src/app/H.h", "link/frmtwo.h"},
        {"src/batch/I.cpp", "core/B.h"},
        {"src/batch/J.cpp", "kit/C.h"},
        {"src/batch/K.cpp", "batch/I.h"},
    };
    for (const auto& [file, include] : tree) {
        fs::create_directories((root / file).parent_path());
        std::ofstream(root / file) << "#include \"" << include << "\"\n";
    }
    fs::create_directories(root / "src/logic/core");
    std::ofstream(root / "src/logic/core/ScreenCode.h") << "    frmone = 1,\n    frmtwo = 2,\n";
    std::vector<std::string> found = Breaches(root);
    std::sort(found.begin(), found.end());
    EXPECT_EQ(found, (std::vector<std::string>{
                         "src/batch/J.cpp includes kit/C.h", "src/gui/help/Helper.cpp includes link/frmtwo.h",
                         "src/gui/kit/C.h includes devices/G.h", "src/gui/link/frmone.cpp includes link/frmtwo.h",
                         "src/gui/link/frmtwo.h includes app/H.h", "src/logic/calibration/D.cpp includes tables/E.h",
                         "src/logic/core/B.h includes kit/C.h", "src/logic/text/A.cpp includes core/B.h"}));
    fs::remove_all(root);
}

}  // namespace
}  // namespace kelvo::test
