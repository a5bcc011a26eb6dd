#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace kelvo {

// Settings files: `[section]` heads and `key=value` lines, in the code page. Blanks and tabs around heads, names and
// values do not count, a line that starts with `;` is a remark, and lines of any other make are passed over. Lines end
// at CR LF, LF or CR. Names compare without regard to the case of ASCII letters. Only the first section of a name is
// looked at, and in it the first line of a key.

/// Value of a key, trimmed; empty when the key, the section or the file is absent. A pair of double or single quotes
/// around it falls away, and what stood between them is kept with its blanks. It is then cut at 254 bytes of the code
/// page (a buffer of 255 with its end mark).
/// Never fails: a file that cannot be read, or is above 64 MB, is an absent file.
std::string ReadSetting(std::string_view section, std::string_view key, const std::string& file);

/// One key of a settings file.
struct SettingEntry {
    std::string section, key, value;
};
/// All that `ReadSetting` finds in the bytes of a settings file, in the order of the file.
std::vector<SettingEntry> ListSettings(std::string_view bytes);

/// Sets one key, keeping every other line of the file as it stands, byte for byte, and of its own line all up to the
/// `=`. A missing key becomes the last line of its section, before blank lines; a missing section the last of the file;
/// a missing file is made. New lines end in CR LF, or in LF where all lines of the file do. The file is replaced in one
/// step, or left alone when it holds the value already. A value that has quotes around it is given another pair, so
/// that it reads back with its own; blanks around a value are written but do not read back.
/// @return false when the value could not be written; the file is then as it was. So ends a value or a name with a
/// line break, a NUL or a character that the code page lacks, an empty name, a `]` in a section, a `=` in a key.
/// Callers may ignore it.
bool WriteSetting(std::string_view section, std::string_view key, std::string_view value, const std::string& file);

}  // namespace kelvo
