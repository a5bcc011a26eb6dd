#pragma once

#include <string>

#include "core/AppState.h"
#include "core/Dialogs.h"
#include "tables/TableExport.h"

namespace kelvo {

/// Writes the table as an XLSX workbook, row by row in constant memory: a sheet "Data Table" with heads and rows,
/// cells that are numbers as numbers, and a sheet "Head" with the captions and texts of the head. Built beside the
/// file and renamed over it. A sheet holds 1,048,575 rows below its heads; what is more goes on in further sheets.
/// @throws RuntimeError 61, 70, 75, 76 as ReplaceWholeFile
void WriteXlsx(const DataTable& table, const std::string& path, const AddedColumns& added = {});

/// "Export", "XLSX": the whole way, as ExportCsv.
bool ExportXlsx(AppState& state, const DataTable& table, Prompts& prompts, FileChooser& files);

/// Version of the library that writes workbooks, as the about box tells it.
std::string XlsxLibraryVersion();

}  // namespace kelvo
