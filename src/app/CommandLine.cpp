#include "app/CommandLine.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <vector>

#include "core/FileKinds.h"

namespace kelvo {
namespace {

constexpr int Refused = 2;

struct ToolkitOption {
    std::string_view name;  ///< one dash or two stand before it
    bool takesValue;
};
/// Options that Qt and its platforms take away (QGuiApplication, QApplication).
constexpr std::array ToolkitOptions = {
    ToolkitOption{"platform", true},
    ToolkitOption{"platformpluginpath", true},
    ToolkitOption{"platformtheme", true},
    ToolkitOption{"plugin", true},
    ToolkitOption{"qwindowgeometry", true},
    ToolkitOption{"qwindowicon", true},
    ToolkitOption{"qwindowtitle", true},
    ToolkitOption{"geometry", true},
    ToolkitOption{"icon", true},
    ToolkitOption{"title", true},
    ToolkitOption{"display", true},
    ToolkitOption{"session", true},
    ToolkitOption{"style", true},
    ToolkitOption{"stylesheet", true},
    ToolkitOption{"fontengine", true},
    ToolkitOption{"reverse", false},
    ToolkitOption{"widgetcount", false},
    ToolkitOption{"nograb", false},
    ToolkitOption{"dograb", false},
    ToolkitOption{"sync", false},
};

CommandLine Say(std::string text) {
    return {0, std::move(text), {}, {}};
}

CommandLine Refuse(const std::string& why) {
    return {Refused, {}, "kelvo: " + why + "\nkelvo --help tells more\n", {}};
}

std::string Help() {
    std::string text =
        "kelvo: measure ions and pH with electrodes\n\n"
        "  kelvo            start\n"
        "  kelvo FILE       start in the screen of this file\n"
        "  kelvo --help     show this page\n"
        "  kelvo --version  show the version\n"
        "                   -h and -V are short for the two\n\n"
        "Files:\n";
    for (const FileKindRow& row : FileKindRows())
        if (row.screen != ScreenCode::None)
            text.append("  *").append(row.ending).append("  ").append(row.name).append("\n");
    return text +
           "\nkelvo-batch has the files and sums without the screens. The manual is in the program's menu Help,\n"
           "and in kelvo(1).\n";
}

std::string Absolute(const std::string& file) {
    std::error_code failed;
    const auto path = std::filesystem::absolute(file, failed);
    return failed ? file : path.string();
}

}  // namespace

CommandLine ReadCommandLine(std::span<const char* const> words, const std::string& version) {
    std::vector<std::string> files;
    bool options = true;
    for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string_view word = words[i];
        if (!options || !word.starts_with('-')) {
            files.emplace_back(word);
            continue;
        }
        if (word == "--") {
            options = false;
            continue;
        }
        if (word == "--help" || word == "-h") return Say(Help());
        if (word == "--version" || word == "-V") return Say("kelvo " + version + "\n");
        const std::string_view stem = word.substr(word.starts_with("--") ? 2 : 1);
        const std::string_view name = stem.substr(0, stem.find('='));
        const auto option = std::find_if(ToolkitOptions.begin(), ToolkitOptions.end(),
                                         [&](const ToolkitOption& each) { return each.name == name; });
        if (option == ToolkitOptions.end()) return Refuse("there is no option " + std::string(word));
        if (option->takesValue && name == stem) ++i;
    }
    if (files.size() > 1) return Refuse("one file at a time");
    CommandLine line;
    if (!files.empty() && files[0].empty()) return Refuse("the name of the file is empty");
    if (!files.empty()) line.file = Absolute(files[0]);
    return line;
}

}  // namespace kelvo
