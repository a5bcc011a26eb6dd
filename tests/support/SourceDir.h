#pragma once

#include <string>

namespace kelvo::test {

/// The source tree, ends with '/'. In one place, so that a compile cache serves in any folder.
std::string SourceDir();

}  // namespace kelvo::test
