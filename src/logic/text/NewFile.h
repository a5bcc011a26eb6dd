#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// Makes a file under a name that is free, whole and in one step: of two programs that make the same one, one gets the
/// name. Never replaces anything; a name in other letters ("kept.txt" for "KEPT.TXT") is not free.
/// @return false when the name is taken. @throws RuntimeError as ReplaceWholeFile; then nothing is left.
bool CreateWholeFile(const std::string& path, std::string_view bytes);

}  // namespace kelvo
