#pragma once

#include <string>
#include <string_view>

#include "core/FactsFile.h"
#include "tables/DataTable.h"

namespace kelvo {

// The file of facts (`core/FactsFile`) beside a table. The check of a row is that of its cells.

/// The line of a row, ended by LF; empty when nothing is known of it. For a file that grows row by row.
/// @param row    from 1 on
/// @param cells  the row as it is written, joined by TAB, UTF-8
std::string FactsLine(int row, std::string_view cells, const RowFacts& facts);
/// The whole file for the rows 1 to `lastRow`; empty when nothing is known of any.
std::string FactsBytes(const DataTable& table, const std::string& name, int lastRow);

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
