#pragma once

#include <string>
#include <vector>

#include "core/RowFacts.h"

namespace kelvo {

enum class SaveOutcome;

/// What the head of an addition table copies from its method screen. The screen hands it over before the first row
/// and whenever these boxes change.
struct MethodHead {
    std::string Date;        ///< `Label28`, date and time of the measurement or of the calibration
    std::string Slope;       ///< `txtbox(11)`, mV per decade
    std::string Celsius;     ///< `txtbox(12)`
    std::string Fahrenheit;  ///< `txtbox(13)`
    std::string Ion;         ///< selected entry of `cmbIon`, empty when none
};

/// How a measuring screen asks for the file of its table.
struct TableFileRequest {
    const char* question;   ///< asked first, Yes or No; null: the file chooser comes at once
    const char* filter;     ///< "All Data(*.sdt)|*.sdt"
    const char* pattern;    ///< offered as the name, "*.sdt"
    const char* extension;  ///< added to a name without ".", ".sdt"
    bool upper = true;      ///< the name is turned into upper case, its folders are not
};

/// The table that is being measured, as the screens that measure into it see it. A file that the analyst looks at in
/// the table screen is another table and is never touched through this: rows, head and file are always those of the
/// samples now measured.
///
/// `TableOpen` is 1 from the first row until the rows are saved or declined, `TableFile` is the
/// file they go to (`TableState::Declined` when the analyst declined one). A row is one text, its cells joined by TAB,
/// column 0 first.
class WorkingTable {
 public:
    virtual ~WorkingTable() = default;

    /// Date, slope, temperatures and ion of an addition method for the head.
    virtual void SetMethodHead(const MethodHead& head) = 0;

    /// Rows measured and not yet put away, saved or not.
    virtual int RowCount() const = 0;
    /// Number of the next row as `Str` gives it: " 1" when the table is empty.
    virtual std::string NextRowNumber() = 0;
    /// Adds a row at the foot, loading the table for the present `ReturnScreen` first, brings it into sight and sets
    /// `TableOpen`. A file that the table screen shows is put away for it.
    virtual void AddRow(const std::string& row, const RowFacts& facts = {}) = 0;
    /// Which sample of the analyst's list the next row is of, in words; empty without a list.
    virtual std::string NextSample() const { return {}; }
    /// What is known of a row, from 1; and to replace it. The file follows at the next `KeepRows`.
    virtual RowFacts FactsOf(int) const { return {}; }
    virtual void SetFactsOf(int, const RowFacts&) {}
    /// Takes the last measured row away again.
    virtual void DropRow() = 0;
    /// Replaces all rows, as a recording does to show or save what it holds. Sets nothing else.
    /// @param facts  of the rows, in their order; those that it lacks have none
    virtual void FillRows(std::vector<std::string> rows, std::vector<RowFacts> facts = {}) = 0;

    /// Asks for the file unless one is chosen or declined, and before it replaces one (a No asks for another name).
    /// Sets `TableFile`; a No to the question sets it to `Declined`. @return false when the chooser was cancelled:
    /// `TableFile` stays empty
    virtual bool AskFile(const TableFileRequest& request) = 0;
    /// Writes head and rows to `TableFile` when there is one, so that what was measured stands on disk.
    virtual SaveOutcome KeepRows() = 0;
    /// "Save", "Data Table": asks for a name the first time. The screen then clears `TableOpen` and `TableFile`.
    virtual SaveOutcome Save() = 0;
    /// The question of every way out: with rows and a file chosen, writes them and tells "Your data have been saved: ";
    /// otherwise asks `question` until the table is saved or the analyst says No. Afterwards no table is open and no
    /// file chosen.
    virtual void Prompt(const std::string& question = "Would you like to save the data table?") = 0;
    /// `Prompt` and `Unload`.
    virtual void Leave(const std::string& question = "Would you like to save the data table?") = 0;
    /// The table and its rows are gone.
    virtual void Unload() = 0;

    /// Head and column heads of the owner's table file in the code page, which a recording's live file begins with.
    virtual std::string LiveHead() = 0;

    /// Asks for a table file and reads it to be looked at, beside the working table. Sets `OpenCancelled` to 0.
    /// @return false when no file was chosen; what could be read of a faulty file is shown, its failure told in a box
    virtual bool LookAtFile() = 0;
    /// Rows of the file looked at, empty when there is none.
    virtual std::vector<std::string> RowsLookedAt() const = 0;
    /// What is known of them, in the same order.
    virtual std::vector<RowFacts> FactsLookedAt() const = 0;
};

}  // namespace kelvo
