#pragma once

#include <functional>
#include <string>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "tables/DataTable.h"
#include "tables/PageWriter.h"

namespace kelvo {

// Printed reports. They print on any page writer and leave ending the document to the caller.

/// Fields of the head lines of a report: a label padded to this many characters, then its value.
constexpr int LabelField = 26;

/// The data table: page numbers, title, head, heads and rows, the heads again on every page. Columns keep their
/// fixed fields; a column grows for a cell that is longer, the letters shrink for a row that is wider than the page,
/// down to 6 points, and what is longer still goes on in the line below.
/// @param position twips from the top, the table screen gives 400
void PrintTable(const AppState& state, const DataTable& table, PageWriter& page, float position);

/// The calibration: a rule, the head lines, one row a point, a rule. Begins at the current position, or on a new
/// page when the head would not fit.
void PrintCalibration(const AppState& state, PageWriter& page);

/// Parts of the graph page, drawn in the printer's twips (every x 500 to the right), in the order of the report:
/// the frame, points and active curve, the axes; `PrintSamples` adds the marks of the samples plotted.
void PrintPageHead(DisplayList& picture);
void PrintCurve(const AppState& state, DisplayList& picture);
void PrintAxes(const AppState& state, DisplayList& picture);
void PrintSamples(const AppState& state, DisplayList& picture);
/// One row of the samples below the graph, from 0; the first is preceded by operator, date and heads.
void PrintExperimentPoints(const AppState& state, int sample, const DateTime& now, PageWriter& page);

/// Graph page and calibration; with `samples` the samples as well and, when it has rows, the data table. The quality of
/// the calibration is the last page.
/// @throws RuntimeError of the graph routines for a scale that has no row.
void PrintIseReport(const AppState& state, const DataTable& table, const Clock& clock, PageWriter& page, bool samples);

// --- the whole way from a menu entry to the page -----------------------------------------------------------------

/// What a print routine says when the device fails under it.
extern const char* const GraphNotPrinted;
extern const char* const DataNotPrinted;

/// Checks the printer unless `NetworkPrinter` is set, begins the document, runs `print` on it and ends it. A failing
/// device is told with `failure`, a failing file in the words of the file routines.
/// @return whether the document was handed over.
bool RunPrint(const AppState& state, Printing& printing, Prompts& prompts, const std::string& title,
              const char* failure, const std::function<void(PageWriter&)>& print);

/// "Print" of the table: the table at position 400.
bool PrintTableDocument(const AppState& state, const DataTable& table, Printing& printing, Prompts& prompts);
/// `PrintGraph`: "Calibration" (`samples` false) and "Sample Graphics" of the calibration screen.
bool PrintGraph(const AppState& state, const DataTable& table, const Clock& clock, Printing& printing, Prompts& prompts,
                bool samples);

/// Title of the table by its owner: "ISE Sample Data Table".
std::string TableTitle(const AppState& state);

}  // namespace kelvo
