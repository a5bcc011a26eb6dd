#include "calibration/TableName.h"

#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {

std::string NameToKeep(const std::string& folder) {
    std::string name = folder + "KEPT.TAB";
    for (int i = 2; FileExists(name); ++i)
        name = folder + "KEPT" + TrimStr(i) + ".TAB";
    return name;
}

}  // namespace kelvo
