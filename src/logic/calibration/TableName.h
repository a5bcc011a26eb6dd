#pragma once

#include <string>

namespace kelvo {

/// A name for rows that close without a question: "KEPT.TAB" in the folder, or the first "KEPT2.TAB", "KEPT3.TAB" ...
/// that no file has.
std::string NameToKeep(const std::string& folder);

}  // namespace kelvo
