#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// Replaces a file and keeps what stood there as `backup`. @throws RuntimeError as ReplaceWholeFile; then the file
/// and an older backup are as they were. @return false when the previous version could not be kept.
bool ReplaceKeepingBackup(const std::string& path, std::string_view bytes, const std::string& backup);
/// The same as "NAME~".
bool ReplaceKeepingBackup(const std::string& path, std::string_view bytes);

}  // namespace kelvo
