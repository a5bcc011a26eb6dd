#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/ScreenCode.h"

namespace kelvo {

/// Where the analyst is and came from.
struct Navigation {
    std::int16_t pHMode = 0;     ///< -1 on the pH path, 0 on the ISE path
    std::int16_t HelpTopic = 0;  ///< 0 calibration ... 7 pH
    std::array<std::int16_t, 3> IsePath{};
    std::array<std::int16_t, 5> PhPath{};
    std::int16_t ReturnScreen = 0;        ///< ScreenCode of the working screen or sub-screen now open, 0 none
    int MenuBranch = 1;                   ///< branch that frmenu shows: 0 pH, 1 ISE, 2 utilities
    std::string NorvakCaption = "Start";  ///< caption of the button of frmNorvak
    bool AboutIsStart = true;             ///< that screen is the first one of the program, and leads on
    bool MessageAtFont18 = true;          ///< fmISEcli shows its opening message in large type
    std::string HelpFile;                 ///< text file that the help sheet opens next; empty: the sheet of `HelpTopic`
    int HelpStep = -1;                    ///< step of the topic that it opens next; -1: as the marks of the paths say
    int SheetTopic = -1, SheetStep = 0;   ///< page of the first help sheet, for the second one
    ScreenCode HelpHost = ScreenCode::None;  ///< screen that the help sheet stands in front of
    bool LeaveForMenu = false;               ///< the help sheet was left for the menu, and its host is to follow
    std::string ManualPage;                  ///< page of the manual to open next, "manual.md#files"; empty: the first

    ScreenCode ReturnTo() const { return static_cast<ScreenCode>(ReturnScreen); }
    bool ReturnsTo(ScreenCode code) const { return ReturnTo() == code; }
    void SetReturn(ScreenCode code) { ReturnScreen = static_cast<std::int16_t>(code); }
};

/// Clears the marks of both paths, as every Back does.
void ClearPaths(Navigation& navigation);

}  // namespace kelvo
