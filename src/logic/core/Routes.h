#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/ScreenCode.h"
#include "core/StateOf.h"

namespace kelvo {

/// What a route asks for before its screen opens.
enum class RouteNeed {
    Nothing,
    IseChannel,          ///< `Channel[1]`
    IseChannelAndSlope,  ///< `Channel[1]`, and a known slope or the analyst's word to go on without
    AnyPhChannel,        ///< `Channel[0]` or `Channel[3]`
};

/// One button of the sub-menu.
struct RouteRow {
    const char* caption;
    const char* tip;
    ScreenCode target;
    RouteNeed need;
    int helpTopic;  ///< -1 leaves `HelpTopic` as it is
    int path;       ///< mark of `PhPath` (pH branch) or `IsePath` (ISE branch) that the route sets; -1 none
};

struct RouteBranch {
    const char* screenCaption;
    const char* heading;
    std::vector<RouteRow> rows;
};

/// One large button of the start screen and the text beside it.
struct StartRow {
    const char* caption;
    const char* beside;
};

/// pH, ISE, utilities, hardware.
const std::array<StartRow, 4>& StartRows();

/// Branches of the menu.
constexpr int PhBranch = 0, IseBranch = 1, UtilitiesBranch = 2;
const RouteBranch& MenuBranch(int branch);

/// Text of the message that refuses a route whose channel is not in use; empty when the route is open.
std::string RouteRefusal(const HardwareSettings& hardware, const RouteRow& row);

namespace text {
extern const char* const ProgramTitle;
extern const char* const SureToExit;
extern const char* const NoCalibrationForIon;
extern const char* const InterfaceNotReady;
}  // namespace text

}  // namespace kelvo
