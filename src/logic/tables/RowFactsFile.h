#pragma once

#include <string>
#include <string_view>

#include "core/RowFacts.h"
#include "tables/DataTable.h"

namespace kelvo {

// The file beside a table, "RUN.TAB.rows": what is known of its rows beyond their cells. UTF-8, one JSON object a line.
// The first names the format, {"format":"kelvo-rows","version":1,"table":"RUN.TAB"}; each other one belongs to a row,
// {"row":3,"check":"9a0b1c2d","low":"34.1","high":"37.2"}. The check is the CRC-32 of the row's cells, so that a row
// that was changed elsewhere loses its facts instead of being told what is not true of it. A table without the file
// is read as ever.

/// The first line, ended by LF. @param table  its name; folders are left out
std::string FactsHeading(const std::string& table);
/// The line of a row, ended by LF; empty when nothing is known of it. For a file that grows row by row.
/// @param row    from 1 on
/// @param cells  the row as it is written, joined by TAB, UTF-8
std::string FactsLine(int row, std::string_view cells, const RowFacts& facts);
/// The whole file for the rows 1 to `lastRow`; empty when nothing is known of any.
std::string FactsBytes(const DataTable& table, const std::string& name, int lastRow);

/// Whether these bytes are such a file, of this version or another.
bool IsFactsFile(std::string_view bytes);
/// Gives the rows of the table what the file knows of them. A line that is none, or a row without its line, is passed
/// over. @return lines whose row is not in the table; -1 when the file is none that this program reads
int TakeFacts(DataTable& table, std::string_view bytes);

/// Writes the file beside a table that has just been written, or removes it when there is nothing to say. A file of
/// that name that is not ours is left alone. @param backup  of the table: what stood there goes beside it; empty: none
/// @return what is to be told when it could not be done, else empty
std::string WriteFactsBeside(const DataTable& table, const std::string& path, int lastRow, const std::string& backup);
/// Reads the file beside a table that has just been read. @return what is to be told, else empty
std::string ReadFactsBeside(DataTable& table, const std::string& path);

}  // namespace kelvo
