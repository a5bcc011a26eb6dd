#pragma once

#include <functional>
#include <string>

#include "core/Progress.h"
#include "core/StateOf.h"
#include "tables/DataTable.h"
#include "tables/PageWriter.h"
#include "tables/Sheets.h"

namespace kelvo {

class Clock;
class Prompts;
struct DateTime;

struct Calibration;

// Printed reports. They print on sheets that carry their head and leave ending the document to the caller.

/// Fields of the head lines of a report: a label padded to this many characters, then its value.
constexpr int LabelField = 26;

/// The data table: title, head, heads and rows, the heads again on every sheet. Columns keep
/// their fixed fields; a column grows for a cell that is longer, the letters shrink for a row that is wider than the
/// page, down to 6 points, and what is longer still goes on in the line below.
void PrintTable(const Navigation& navigation, const DataTable& table, Sheets& page);

/// The calibration: a rule, the head lines, one row a point, a rule. Begins at the current position, or on a new
/// sheet when the head would not fit.
void PrintCalibration(const Calibration& calibration, const std::string& notes, Sheets& page);

/// Parts of the graph page, drawn in the printer's twips (every x 500 to the right), in the order of the report:
/// the frame, points and active curve, the axes; `PrintSamples` adds the marks of the samples plotted.
void PrintPageHead(DisplayList& list);
void PrintCurve(const CalibrationState& state, DisplayList& list);
void PrintAxes(const CalibrationState& state, DisplayList& list);
void PrintSamples(const CalibrationState& state, DisplayList& list);
/// One row of the samples below the graph, from 0; the first is preceded by operator, date and heads.
void PrintExperimentPoints(StateOf<const CalibrationState, const HardwareSettings> state, int sample,
                           const DateTime& now, Sheets& page);

/// Graph page and calibration; with `samples` the samples as well and, when it has rows, the data table. The quality of
/// the calibration comes last, then a line for the signature.
/// @throws RuntimeError of the graph routines for a scale that has no row.
void PrintIseReport(StateOf<const CalibrationState, const Navigation, const HardwareSettings> state,
                    const Calibration& calibration, const DataTable& table, const Clock& clock, Sheets& page,
                    bool samples);

// --- the whole way from a menu entry to the page -----------------------------------------------------------------

/// What a print routine says when the device fails under it.
extern const char* const GraphNotPrinted;
extern const char* const DataNotPrinted;

/// What a print needs beside its content.
struct PrintServices {
    Printing& printing;
    Prompts& prompts;
    const Clock& clock;
    Progress& progress;
};

/// Names of the files for the head of the sheets, without their folder: of the rows (the working table, or a file
/// looked at), of the calibration in use.
std::string TableFileOf(const TableState& tableState, const DataTable& table, bool working);
std::string CalibrationFileOf(const std::string& name);

/// Checks the printer unless `NetworkPrinter` is set, begins the document, runs `print` once to count the sheets and
/// once on paper, and ends it. More than 50 sheets are asked about first. `file` names what is printed at the head of
/// every sheet. A failing device is told with `failure`, a failing file in the words of the file routines; after a
/// file the status line says where it is.
/// @return whether the document was handed over.
bool RunPrint(StateOf<const HardwareSettings, StatusMessages> state, const PrintServices& services,
              const std::string& title, const std::string& file, const char* failure,
              const std::function<void(Sheets&)>& print);

/// "Print" of a table, the working one or a file looked at, with a line for the signature.
bool PrintTableDocument(StateOf<const Navigation, const TableState, const HardwareSettings, StatusMessages> state,
                        const DataTable& table, bool working, const PrintServices& services);
/// `PrintGraph`: "Calibration" (`samples` false) and "Sample Graphics" of the calibration screen, which has its own
/// samples below the graph and never those of a file looked at.
bool PrintGraph(
    StateOf<const CalibrationState, const Navigation, const TableState, const HardwareSettings, StatusMessages> state,
    const Calibration& calibration, const DataTable& table, const PrintServices& services, bool samples);

/// Title of the table by its owner: "ISE Sample Data Table".
std::string TableTitle(const Navigation& navigation);

}  // namespace kelvo
