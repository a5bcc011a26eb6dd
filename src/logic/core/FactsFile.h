#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/RowFacts.h"

namespace kelvo {

// The file beside a table or a calibration, "RUN.TAB.rows": what is known of its rows beyond the file itself. UTF-8,
// one JSON object a line. The first names the format, {"format":"kelvo-rows","version":1,"table":"RUN.TAB"}; each other
// one belongs to a row, {"row":3,"check":"9a0b1c2d","low":"34.1","high":"37.2"}. The check is a CRC-32 of what the row
// was written as, so that one that was changed elsewhere loses its facts instead of being told what is not true of it.
// A file without one beside it is read as ever.

struct FactsEntry {
    int row = 0;
    std::string check;
    RowFacts facts;
};

/// The first line, ended by LF. @param table  its name; folders are left out
std::string FactsHeading(const std::string& table);
/// Eight digits.
std::string FactsCheck(std::string_view bytes);
/// The line of a row, ended by LF; empty when nothing is known of it.
std::string EntryLine(const FactsEntry& entry);

/// Whether these bytes are such a file, of this version or another.
bool IsFactsFile(std::string_view bytes);
/// Its lines in their order; one that is none is passed over. @return none when the file is none that this program
/// reads
std::optional<std::vector<FactsEntry>> ReadFacts(std::string_view bytes);

/// Writes the file beside another that has just been written, or removes it where there is nothing to say. A file of
/// that name that is not ours is left alone.
/// @param path    of the file it lies beside
/// @param backup  of that file: what stood there goes beside it; empty: none
/// @return why it could not be done, else empty
std::string WriteFactsBeside(const std::string& path, const std::string& bytes, const std::string& backup = {});
/// The file beside another. @return none when there is none, or another file has its name
/// @throws RuntimeError when it cannot be read
std::optional<std::string> FactsFileBeside(const std::string& path);

}  // namespace kelvo
