#pragma once

#include <array>
#include <functional>
#include <string>
#include <vector>

#include "core/Progress.h"
#include "core/ScreenCode.h"
#include "core/StateOf.h"
#include "core/TableState.h"
#include "core/UnsavedWork.h"
#include "core/WorkingTable.h"
#include "tables/DataTable.h"
#include "tables/PageWriter.h"
#include "tables/SampleList.h"
#include "tables/TableFile.h"

namespace kelvo {

class Clock;
class FileChooser;
class Prompts;
enum class SaveOutcome;

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

/// Conduct of the table screen `frmQSave` without its widgets.
///
/// It holds two tables that never mix: the working table, which the measuring screens append to, and the document, a
/// file that "Open" has read to be looked at. The screen shows the document while there is one and the working table
/// otherwise; a new sample, "Back" and "Close" put the document away. Each has its own head, rows and file name.
///
/// The working table is loaded on first use, hidden between uses and unloaded when the owning screen ends; other
/// screens say `Unload()` where "the table closes".
class TablePresenter : public WorkingTable {
 public:
    TablePresenter(StateOf<CalibrationState, const Paths, const Navigation, const PhCalibration, TableState,
                           const HardwareSettings, StatusMessages>
                       state,
                   DataTable& working, Prompts& prompts, FileChooser& files, const Clock& clock)
        : state_(state),
          calibration_(state),
          paths_(state),
          navigation_(state),
          tableState_(state),
          hardware_(state),
          working_(working),
          prompts_(prompts),
          files_(files),
          clock_(clock) {}

    /// Null detaches.
    void Attach(TableNavigator* navigator) { navigator_ = navigator != nullptr ? navigator : &none_; }
    /// The view hears of changes in the table that is shown, and is told to read everything again when that becomes
    /// the other one. Null detaches.
    void Listen(DataTable::Listener* view);

    DataTable& Working() { return working_; }
    /// What the table screen shows.
    DataTable& Shown() { return showsDocument_ ? document_ : working_; }
    /// What "the table" means to a screen that saves or prints it: the samples now measured while any are unsaved,
    /// otherwise what is shown.
    DataTable& Current() { return Measuring() ? working_ : Shown(); }

    bool Loaded() const { return loaded_; }
    bool ShowsFile() const { return loaded_ && showsDocument_; }
    /// Loads the working table for the present owner unless it is loaded.
    void Load();

    // --- the list of samples -----------------------------------------------------------------------------------
    /// Asks for a list of sample numbers, which the next rows are given one after the other.
    void OpenSampleList();
    void EndSampleList() { samples_ = {}; }
    void SkipSample() { samples_.Skip(); }
    const SampleList& Samples() const { return samples_; }
    std::string NextSample() const override;
    /// Asks for the words that control samples begin with, their targets and limits.
    void AskControls();
    /// Number that the last row has.
    std::string NumberInHand() const;
    /// The analyst has typed a number into a row of the working table. @return whether it was taken
    bool TypeNumber(int row, const std::string& number);
    /// Whether a number may be typed into that row: it is one of the samples that are measured.
    bool NumberIsOpen(int row) const;

    // --- WorkingTable ----------------------------------------------------------------------------------------
    void SetMethodHead(const MethodHead& head) override;
    int RowCount() const override;
    std::string NextRowNumber() override;
    void AddRow(const std::string& row, const RowFacts& facts = {}) override;
    RowFacts FactsOf(int row) const override { return working_.Facts(row); }
    void SetFactsOf(int row, const RowFacts& facts) override;
    /// "Cancel" of the sample number: the row just added goes away again.
    void DropRow() override;
    void FillRows(std::vector<std::string> rows, std::vector<RowFacts> facts = {}) override;
    bool AskFile(const TableFileRequest& request) override;
    /// The backup beside the file is what the first of these writes replaced.
    SaveOutcome KeepRows() override;
    SaveOutcome Save() override;
    void Prompt(const std::string& question = "Would you like to save the data table?") override;
    void Leave(const std::string& question = "Would you like to save the data table?") override;
    void Unload() override;
    std::string LiveHead() override;
    bool LookAtFile() override;
    std::vector<std::string> RowsLookedAt() const override;
    std::vector<RowFacts> FactsLookedAt() const override;

    /// "Ok" of the sample number: the text goes into the row just added, which may stay without. The table counts as
    /// quickly saved, and closing it leads back to its caller.
    void NumberRow(const std::string& number);
    /// The file of the working table, while rows are measured that no save has taken: for an end of the program that
    /// asks nobody. A recording looks after its rows itself.
    std::vector<UnsavedPiece> UnsavedRows() const;

    /// Prints what "the table" means to a screen, `Current()`. @return whether the document was handed over
    bool Print(Printing& printing, Progress& progress);
    /// "Print" of the table screen: what it shows.
    bool PrintShown(Printing& printing, Progress& progress);
    /// Changes what is known of rows of the table that is shown, as the analyst says afterwards, and writes it beside
    /// the table's file where there is one. What another program has written there meanwhile stays.
    /// @return what is to be told: why nothing was changed, or that it could not be written; else empty
    std::string Annotate(const std::vector<int>& rows, const std::function<void(RowFacts&)>& change);
    /// Name of the file behind `Current()` for the head of a print.
    std::string PrintedFile();

    // --- the screen's own events ------------------------------------------------------------------------------
    // Rows that were measured and not yet saved (`TableOpen` 1) outlive every one of these but `Unload`.
    void Open();
    void Close();
    void Back();
    /// Shows all rows of a file that has a short head.
    void ReadShortHead();
    bool HasShortHead() const { return ShowsFile() && document_.ShortHead; }
    /// The window frame: unloads, or hides when measured rows are still to be saved.
    void CloseByFrame();

    /// "Open", "Close", "Print": off while a recording shows its table.
    std::array<bool, 3> MenuEnabled{true, true, true};

 private:
    void GiveBackToList();
    /// The row has been given its number: whether it is a control sample, and what that says.
    void JudgeControl(int row);
    void Show(bool document);
    bool PrintTable(const DataTable& table, Printing& printing, Progress& progress);
    void SettleFoot();
    void EmptyRows(int lastCol);
    void ReturnToCaller();
    bool Measuring() const { return tableState_.TableOpen == 1; }

    StateOf<CalibrationState, const Paths, const Navigation, const PhCalibration, TableState, const HardwareSettings,
            StatusMessages>
        state_;
    CalibrationState& calibration_;
    const Paths& paths_;
    const Navigation& navigation_;
    TableState& tableState_;
    const HardwareSettings& hardware_;
    DataTable& working_;
    DataTable document_;
    Prompts& prompts_;
    FileChooser& files_;
    const Clock& clock_;
    TableNavigator none_;
    TableNavigator* navigator_ = &none_;
    DataTable::Listener* view_ = nullptr;

    SampleList samples_;
    bool fromList_ = false;  ///< the last row has its number from the list
    std::string control_;    ///< what the last control sample has said, until the next row
    bool loaded_ = false;
    bool showsDocument_ = false;
    bool twoEmptyRows_ = false;  ///< the working table ends with one empty row more than the one for the next sample
};

}  // namespace kelvo
