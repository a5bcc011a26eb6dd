#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Progress.h"
#include "core/StateOf.h"
#include "tables/DataTable.h"
#include "tables/Workbook.h"

namespace kelvo {

class FileChooser;
class Prompts;

// Ways of the table into the programs of today, beside Kelvo's own files. Both are built in memory and replace
// their files in one step; neither asks the locale. Column 0 is headed "Row"; the empty last row of a table under
// construction is left out.

/// Columns that an export has behind those of the table.
struct AddedColumns {
    std::vector<std::string> heads;
    std::function<std::vector<std::string>(int row)> cells;  ///< as many as heads
};

/// The number that a cell is, when it is one as a spreadsheet would show it again: digits, dot, exponent, no leading
/// zeros ("007" stays a text, "1.65E-4" is 0.000165, " 2" is 2).
std::optional<double> CellNumber(std::string_view cell);

/// Whether a column holds measured values. The others hold names and times, which stay texts: a sample called "1E5",
/// "01" or "12.10" keeps its name.
bool IsMeasured(const DataTable& table, int col);

/// Head of a column as the exports name it.
std::string ExportHead(const DataTable& table, int col);
/// Rows to export below row 0.
int ExportRows(const DataTable& table);

/// The head of the table, one fact a line: its name, then its value or values, each in a cell of its own and in one
/// line. {"Ion", "F"}, {"Standards (ppm)", "1", "10"}.
std::vector<std::vector<std::string>> HeadFacts(const DataTable& table);

/// Adds a field of CSV, between quotes where RFC 4180 asks for them, with an apostrophe in front of what a spreadsheet
/// would take for a formula.
void AppendCsvField(std::string& out, std::string_view field);

/// Column heads and rows as CSV: UTF-8, fields between quotes where RFC 4180 asks for them, CR LF. A text that a
/// spreadsheet would take for a formula has an apostrophe in front ("=1+1" is '=1+1); numbers are left alone.
/// None when cancelled.
std::optional<std::string> TableCsv(const DataTable& table, Progress& progress, const AddedColumns& added = {});
/// The head as CSV, a fact a row. It is a file of its own: rows of remarks above the column heads are in the way of
/// every program that reads the first row as heads, and a sample called "Tap #3" is cut by those that take "#" for one.
std::string HeadCsv(const DataTable& table);
/// "run.csv" -> "run-head.csv".
std::string HeadCsvName(const std::string& name);

/// An XLSX workbook: sheet "Data Table" with heads and rows, measured values as numbers that show the digits of the
/// table, all else as texts; sheet "Head" with the facts of the head, and where they say more than the rows, the
/// results with their budgets. A sheet holds 1,048,575 rows below its heads; what is more goes on in further sheets.
/// None when cancelled.
struct XlsxBytes {
    std::string bytes;
    int cutTexts = 0;  ///< cells of more than 32,767 characters, which the format does not hold
};
/// @param rowsASheet at most, the heads among them
std::optional<XlsxBytes> TableXlsx(const DataTable& table, Progress& progress, const AddedColumns& added = {},
                                   int rowsASheet = Workbook::RowsASheet);

/// Whether the table that is measured goes to that file, which an export must not write over. Tells so.
bool IsLiveTable(const TableState& tableState, const std::string& name, Prompts& prompts);

/// "Export", "CSV" or "XLSX": asks for a name (the extension is added to one without ".") and before a file is
/// replaced. Failures are told in the words of the file routines, the outcome in the status line.
/// @return whether the export stands
bool ExportCsv(StateOf<const Paths, const TableState, StatusMessages> state, const DataTable& table, Prompts& prompts,
               FileChooser& files, Progress& progress);
bool ExportXlsx(StateOf<const Paths, const TableState, StatusMessages> state, const DataTable& table, Prompts& prompts,
                FileChooser& files, Progress& progress);

}  // namespace kelvo
