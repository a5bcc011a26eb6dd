#pragma once

#include <array>
#include <string>

#include "core/Messages.h"
#include "core/StateOf.h"
#include "tables/DataTable.h"
#include "text/RuntimeError.h"

namespace kelvo {

class FileChooser;
class Prompts;
enum class SaveOutcome;

// Files of the data table: ".tab", ".pht", ".phc", ".smt", ".sdt". A head of labelled lines, then the grid from
// the column heads on, one row a line, cells joined by TAB. `ReturnScreen` and `pHMode` decide which.
//
// Two habits of these routines are part of the format and are kept: a save to a name already chosen writes the
// first pass of the head alone, and no save writes the last grid row, which in a table under construction is the
// empty one. So that nothing goes missing unseen, a save that wrote less than the table shows leaves a line in
// `StatusMessage`, and the file it replaced stays beside it as "NAME~"; a backup with a whole head or more
// rows is not replaced by a poorer one. A file with a short head says so when it is opened.
//
// The file of a table is rewritten again and again, and others may change it meanwhile. It is looked at first: a
// version of another hand stays as "NAME (changed elsewhere)". When it happens again another program works on that
// file; it is left to it, and the rows go on in "NAME (measured here)". Both are told in a box.

enum class TableHeadForm { Ise, Ph };

/// What the owner of the table means for its files.
struct TableKind {
    const char* saveFilter;
    const char* openFilter;
    const char* extension;  ///< added to a name without "."
    int lastPass;           ///< last head pass, 5 or 6
    TableHeadForm form;
};
TableKind KindOf(const Navigation& navigation);

/// Saves under `table.FileName`; asks when that is empty. A name asked for is kept there once the file stands.
SaveOutcome SaveTableFile(
    StateOf<const Paths, const Navigation, const IseCalibration, TableState, const HardwareSettings, StatusMessages>
        state,
    DataTable& table, Prompts& prompts, FileChooser& files);

/// Asks for a file and fills the table, whose grid holds row 0 and one empty row. Sets `OpenCancelled`.
/// @return true when the file was read to its end; failures are told in a box, the rows read so far stay.
bool OpenTableFile(StateOf<const Paths, const Navigation, TableState, StatusMessages> state, DataTable& table,
                   Prompts& prompts, FileChooser& files);

/// Reads the file of a table anew by a head of one pass, which is what a repeated save has written: all its rows, and
/// of the head the operator and the date. The table's grid holds row 0 and one empty row.
void ReadShortHead(StateOf<const Navigation, StatusMessages> state, DataTable& table, Prompts& prompts);

/// Writes head and rows to `state.TableFile` without any dialog; that is another file afterwards when it had to be.
/// The backup beside it is what the first of these writes replaced.
SaveOutcome RewriteTableFile(
    StateOf<const Navigation, const IseCalibration, TableState, const HardwareSettings, StatusMessages> state,
    DataTable& table, Prompts& prompts);

/// Whether `RewriteTableFile` would replace nothing that another hand has made: the file is as it was left, or gone.
bool StandsAsLeft(const DataTable& table, const std::string& name);

/// What `RewriteTableFile` would write.
std::string RewrittenTableBytes(StateOf<const Navigation, const IseCalibration, const HardwareSettings> state,
                                const DataTable& table);

/// What the live file of a recording begins with, in the code page: the whole head and the row of column heads.
std::string RecordingHead(StateOf<const Navigation, const IseCalibration, const HardwareSettings> state,
                          const DataTable& table);

// --- the two halves without dialogs, for the routines above and for tests ---------------------------------------

/// Lines of the head in passes 0 to `lastPass`, each ended by CR LF, UTF-8.
std::string TableHeadLines(StateOf<const IseCalibration, const HardwareSettings> state, const DataTable& table,
                           TableHeadForm form, int lastPass);

/// Fills head and rows from the bytes of a file. @throws RuntimeError 62 when the head is short, 7 above the
/// largest number of rows.
void ReadTable(DataTable& table, std::string_view bytes, TableHeadForm form, int lastPass);

}  // namespace kelvo
