#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// Value of a key in a settings file, trimmed; empty when the key, the section or the file is absent.
/// Names compare without regard to case; the first section of a name that holds the key wins. A value is cut
/// at 254 bytes of the code page (a buffer of 255 with its end mark). A pair of quotes around it falls away.
/// Never fails: a file that cannot be read is an absent file.
std::string ReadSetting(std::string_view section, std::string_view key, const std::string& file);

/// Sets one key, keeping every other line of the file as it stands, byte for byte; makes the section, or the
/// file, when missing. The file is replaced in one step.
/// @return false when the value could not be written; the file is then as it was. Callers may ignore it.
bool WriteSetting(std::string_view section, std::string_view key, std::string_view value, const std::string& file);

/// Name of the pH calibration to load: the file of "LastCaliFile" when it exists, else AppPath followed by the
/// value of "DefaultFile".
std::string ResolvePhCalibration(const std::string& iniPath, const std::string& appPath);

}  // namespace kelvo
