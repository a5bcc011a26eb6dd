#pragma once

#include <string>

namespace kelvo::test {

/// The source tree, or where $KELVO_SOURCE_DIR says that the built tests have moved to; ends with '/'. In one place, so
/// that a compile cache serves in any folder.
std::string SourceDir();

}  // namespace kelvo::test
