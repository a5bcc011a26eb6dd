#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "core/Dialogs.h"
#include "tables/DataTable.h"

namespace kelvo {

// Ways of the table into the programs of today, beside the system's own files.

/// Columns that an export has behind those of the table.
struct AddedColumns {
    std::vector<std::string> heads;
    std::function<std::vector<std::string>(int row)> cells;  ///< as many as heads
};

/// Column heads and rows as CSV: UTF-8, fields between quotes where RFC 4180 asks for them, CR LF. Column 0 is headed
/// "Row"; the empty last row of a table under construction is left out.
std::string TableCsv(const DataTable& table, const AddedColumns& added = {});

/// The number that a cell is, when it is one as a spreadsheet would show it again: digits, dot, exponent, no leading
/// zeros ("007" stays a text, "1.65E-4" is 0.000165, " 2" is 2).
std::optional<double> CellNumber(std::string_view cell);

/// Head of a column as the exports name it.
std::string ExportHead(const DataTable& table, int col);
/// Rows to export below row 0.
int ExportRows(const DataTable& table);

/// Asks for a name (".csv" is added to one without "."), and before a file is replaced. None when cancelled.
std::optional<std::string> AskExportName(const AppState& state, const char* extension, Prompts& prompts,
                                         FileChooser& files);

/// "Export", "CSV": the whole way. Failures are told in the words of the file routines.
bool ExportCsv(AppState& state, const DataTable& table, Prompts& prompts, FileChooser& files);

}  // namespace kelvo
