#include "support/SourceDir.h"

#include <cstdlib>

namespace kelvo::test {

std::string SourceDir() {
    const char* moved = std::getenv("KELVO_SOURCE_DIR");
    return std::string(moved != nullptr ? moved : KELVO_SOURCE_DIR) + "/";
}

}  // namespace kelvo::test
