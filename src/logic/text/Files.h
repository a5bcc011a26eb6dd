#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

// Files as Kelvo uses them: whole, in one step, under names that do not mind their case.

/// The whole content of the file that `FindFile` finds. Opens plain files only: no device is touched and no pipe
/// waited for.
/// @throws RuntimeError 53 not found, 76 no such folder, 70 no permission, 75 a folder, anything else that is not a
/// plain file, or one of more than `limit` bytes, 52 not a possible name, 57 read failure.
std::string ReadWholeFile(const std::string& path, std::size_t limit = std::size_t{1} << 30);
/// The same; none where it throws.
std::optional<std::string> ReadIfPossible(const std::string& path, std::size_t limit = std::size_t{1} << 30);

/// Replaces the content of the file that `FindFile` finds, or makes it, in one step: written beside, flushed to the
/// disk, renamed over the old one, so that a reader sees either the old or the new file, whole. Keeps the
/// permissions of the file it replaces; follows a symbolic link. On any failure the old file stands as it was and
/// nothing is left beside it; what a save that was killed has left (".NAME.kelvo-0") goes with the next save of that
/// file.
/// @throws RuntimeError 61 disk full, quota or size limit, 70 no permission, a read-only file or medium, 76 no such
/// folder, 52 not a possible name, 57 device failure, 75 a folder or anything else.
void ReplaceWholeFile(const std::string& path, std::string_view bytes);

/// Path with its last part found without regard to case: a file "run.ise" is found for "RUN.ISE". An exact
/// match wins; otherwise the first in byte order; with none the path itself comes back. `\` counts as `/`.
std::string FindFile(const std::string& path);

/// Whether a plain file exists under that name, without regard to the case of its last part.
bool FileExists(const std::string& path);

/// Path whose last part is in upper case; its folders keep their case. "/home/a/run.ise" -> "/home/a/RUN.ISE".
std::string UpperName(const std::string& path);

/// Part behind the last `/` or `\`.
std::string LastPart(const std::string& path);

/// Whether the name holds a folder, by `/` or `\`.
bool HasFolder(const std::string& path);

/// Name with `\` turned into `/`.
std::string NativePath(const std::string& path);

}  // namespace kelvo
