#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "tables/DataTable.h"
#include "tables/TableFile.h"

namespace kelvo {

/// What the table screen asks of the screens around it. The base does nothing, for use without screens.
class TableNavigator {
 public:
    virtual ~TableNavigator() = default;
    /// Hides the table screen; the table stays loaded.
    virtual void HideTable() {}
    /// Takes the table screen down, its table has just been unloaded.
    virtual void CloseTable() {}
    virtual void ShowScreen(ScreenCode) {}
    /// Switches the timer of the pH live display on again.
    virtual void ResumeLiveDisplay() {}
};

/// Conduct of the table screen `frmQSave` without its widgets. The table is loaded on first use, hidden between
/// uses and unloaded when the owning screen ends; other screens say `Unload()` where "the table closes".
class TablePresenter {
 public:
    TablePresenter(AppState& state, DataTable& table, Prompts& prompts, FileChooser& files, const Clock& clock)
        : state_(state), table_(table), prompts_(prompts), files_(files), clock_(clock) {}

    /// Null detaches.
    void Attach(TableNavigator* navigator) { navigator_ = navigator != nullptr ? navigator : &none_; }
    DataTable& Table() { return table_; }

    // --- for the screens that fill the table -----------------------------------------------------------------
    bool Loaded() const { return loaded_; }
    /// Whether the rows are those of a file that "Open" read.
    bool ShowsFile() const { return loaded_ && showsFile_; }
    /// Loads the table for the present owner unless it is loaded.
    void Load();
    /// Adds a measured row (cells joined by TAB) above the empty last row, loading the table first, and brings it
    /// into view. A table that shows a file gives way to the working table.
    void AddRow(const std::string& row);
    /// `Rows` - 1 as `Str`, the number of the next measured row.
    std::string NextRowNumber();
    /// "Ok" of the sample number: the text goes into the row just added, which may stay without. The table counts as
    /// quickly saved, and closing it leads back to its caller.
    void NumberRow(const std::string& number);
    /// "Cancel" of the sample number: the row just added goes away again.
    void DropRow();
    /// Writes the working table to `TableFile` when one was chosen, so that what was measured stands on disk. The
    /// backup beside it is what the first of these writes replaced.
    SaveOutcome KeepRows();
    /// Saves, asking for a name when none is chosen yet.
    SaveOutcome Save();
    /// The table prompt of every way out: with rows and a file chosen, writes them and tells "Your data have been
    /// saved: "; otherwise asks `question`, and again until the table is saved or the analyst says No. Then no
    /// table is open and no file chosen; the table stays loaded.
    void Prompt(const std::string& question = "Would you like to save the data table?");
    /// `Prompt` and `Unload`.
    void Leave(const std::string& question = "Would you like to save the data table?");

    // --- the screen's own events ------------------------------------------------------------------------------
    // Rows that were measured and not yet saved (`TableOpen` 1) outlive every one of these but `Unload`.
    void Open();
    void Close();
    void Back();
    /// The window frame: unloads, or hides when measured rows are still to be saved.
    void CloseByFrame();
    /// Closing of the screen; the table and its rows are gone. Does nothing when it is not loaded.
    void Unload();

    /// "Open", "Close", "Print": off while a recording shows its table.
    std::array<bool, 3> MenuEnabled{true, true, true};

 private:
    void RestoreHead(std::size_t count);
    void RestoreRows(int count);
    void PutFileAway();
    void RestoreWorkingTable();
    void EmptyRows(int lastCol);
    void KeepWorkingRows();
    void ForgetCopy();
    void ReturnToCaller();
    bool Measuring() const { return state_.TableOpen == 1; }

    AppState& state_;
    DataTable& table_;
    Prompts& prompts_;
    FileChooser& files_;
    const Clock& clock_;
    TableNavigator none_;
    TableNavigator* navigator_ = &none_;

    bool loaded_ = false;
    bool showsFile_ = false;       ///< the rows are those of a file that "Open" read
    std::string workingFileName_;  ///< `FileName` of the working table while a file is shown
    std::string keptFile_;         ///< `TableFile` that holds earlier rows of this table

    // Copy of the working table while a file is shown in its place.
    std::array<std::string, 8> SavedHead;
    std::vector<std::string> SavedRows;  ///< rows from 1 on, the empty last one too
    int SavedCount = 0;                  ///< `Rows` when the copy was made, 0 no copy
};

}  // namespace kelvo
