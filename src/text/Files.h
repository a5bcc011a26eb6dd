#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace kelvo {

// Files as the system uses them: whole, in one step, under names that do not mind their case.

/// The whole content. @throws RuntimeError 53 not found, 70 not readable, 76 no such folder, 75 a folder or
/// anything else that is not a plain file, 57 read failure; a file above
/// `limit` bytes is refused with 75.
std::string ReadWholeFile(const std::string& path, std::size_t limit = std::size_t{1} << 30);

/// Replaces the content in one step: written beside, flushed to the disk, renamed over the old one, so that a
/// reader sees either the old or the new file, whole. Keeps the permissions of the file it replaces; follows a
/// symbolic link. On any failure the old file stands as it was and nothing is left beside it.
/// @throws RuntimeError 61 disk full, 70 no permission or a read-only medium, 76 no such folder, 75 otherwise.
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
