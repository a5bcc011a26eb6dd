#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "tables/DataTable.h"

namespace kelvo {

// Looking through a table without touching it.

/// The rows below the heads in the order of a column: numbers by their value and before texts, texts by their letters
/// without regard to case, empty cells last either way; equal rows keep the table's own order. The empty last row of a
/// table under construction stays last.
std::vector<int> RowsInOrderOf(const DataTable& table, int col, bool descending);

/// A cell of a table: row and column, row 0 the heads.
using CellPlace = std::pair<int, int>;

/// The next cell that holds the text, without regard to case, going on from `after` (row by row, each from column 1)
/// through `order` and around its end. `forward` false goes the other way. None when no cell holds it.
/// @param order rows as they are looked at; @param after a cell of it, or {0, 0} to begin at the first
std::optional<CellPlace> FindCell(const DataTable& table, const std::vector<int>& order, const std::string& text,
                                  CellPlace after, bool forward);

}  // namespace kelvo
