#include "support/SourceDir.h"

namespace kelvo::test {

std::string SourceDir() {
    return KELVO_SOURCE_DIR "/";
}

}  // namespace kelvo::test
