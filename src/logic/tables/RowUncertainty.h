#pragma once

#include <string>

#include "tables/DataTable.h"
#include "tables/TableExport.h"

namespace kelvo {

// What the facts of a row say beside its value. They were found out when the row was measured; nothing is worked out
// here again, so screen, export and paper tell the same, and a row without facts is never given any.

/// Whether the rows are samples of direct potentiometry, of which every measured one has an interval or a reason.
bool HoldsSamples(const DataTable& table);

/// What is told beside a row: its interval with the remarks, "35.6 ppm, 34.1 to 37.2 (95 %)"; of a point of a recording
/// what was wrong with its reading, "electrode 1: frame 12 s old"; of an addition the slope that was used; of a sample
/// that nothing is known of, that no interval goes with it. Empty where there is nothing to say.
std::string TextBeside(const DataTable& table, int row);

/// What a control sample has recovered, and whether that is within its limits; empty for every other row.
std::string ControlText(const DataTable& table, int row);

/// Whether a row has been struck out: it stays where it is and counts nowhere.
bool IsStruck(const RowFacts& facts);

/// Whether a remark is told beside a row, on its value or on what it was measured with.
bool HasRemark(const RowFacts& facts);
/// Whether that is so of any row.
bool HasRemarks(const DataTable& table);

/// The facts as columns of an export: "Result (ppm)" with as many places as the bounds "95 % from (ppm)" and
/// "95 % to (ppm)", what the interval holds, and "Remark", which a table of samples always has, and whatever else any
/// row has. The table is to outlive them.
AddedColumns FactColumns(const DataTable& table);

}  // namespace kelvo
