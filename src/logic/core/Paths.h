#pragma once

#include <string>

namespace kelvo {

/// Folders of the program's own and the analyst's files; each ends with '/'.
struct Paths {
    std::string AppPath;   ///< folder of the program's own files
    std::string DataPath;  ///< folder that file choosers open at
    std::string HelpPath;  ///< folder of the help texts and notes
    std::string ListPath;
    std::string JournalPath;  ///< the analyst's own data folder, where recordings without a file are kept
    std::string IniPath;      ///< AppPath + "KELVO.ini"
};

}  // namespace kelvo
