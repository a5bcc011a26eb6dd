#include "tables/TablePresenter.h"

#include <algorithm>
#include <utility>

#include "tables/TableGrids.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// Rows of the grid that are in view on the small screen, the heads left out.
constexpr int RowsInView = 22;

/// Columns that "Open" and "Close" empty in row 1; those beyond keep their text until the row is filled.
constexpr int LastClearedColumn = 7;

constexpr int SampleNumberColumn = 1;

}  // namespace

void TablePresenter::Load() {
    if (loaded_) return;
    loaded_ = true;
    showsFile_ = false;
    table_.FileName.clear();
    keptFile_.clear();
    MenuEnabled.fill(true);
    table_.Clear();
    RunHeadRoutine(state_, table_);
    std::fill_n(table_.txtData.begin(), 7, std::string());
    RunGridRoutine(state_, table_, clock_);
    ForgetCopy();
    table_.HeadChanged();
}

void TablePresenter::AddRow(const std::string& row) {
    Load();
    RestoreWorkingTable();
    if (table_.Rows() < 2) table_.AddItem({}, 1);
    table_.AddItem(row, table_.Rows() - 1);
    if (table_.Rows() - RowsInView >= 2) table_.TopRow = table_.Rows() - RowsInView;
    state_.TableOpen = 1;
}

std::string TablePresenter::NextRowNumber() {
    Load();
    RestoreWorkingTable();
    return Str(table_.Rows() - 1);
}

void TablePresenter::NumberRow(const std::string& number) {
    state_.QuickCount = 1;
    state_.CaliDirty = 1;
    const int row = table_.Rows() - 2;
    if (!loaded_ || row < 1) return;
    std::string text = number;
    // A TAB would put the rest of the number into the next column.
    std::replace(text.begin(), text.end(), '\t', ' ');
    table_.SetCell(row, SampleNumberColumn, text);
    KeepRows();
}

void TablePresenter::DropRow() {
    const int row = table_.Rows() - 2;
    if (!loaded_ || row < 1) return;
    table_.RemoveItem(row);
    KeepRows();
}

SaveOutcome TablePresenter::KeepRows() {
    if (!loaded_ || state_.TableFile.empty() || state_.TableFile == "-999") return SaveOutcome::Cancelled;
    RestoreWorkingTable();
    const Backup backup = keptFile_ == state_.TableFile ? Backup::Leave : Backup::Make;
    const SaveOutcome outcome = RewriteTableFile(state_, table_, prompts_, backup);
    if (outcome == SaveOutcome::Saved) keptFile_ = state_.TableFile;
    return outcome;
}

SaveOutcome TablePresenter::Save() {
    Load();
    return SaveTableFile(state_, table_, prompts_, files_);
}

void TablePresenter::Prompt(const std::string& question) {
    if (state_.TableOpen == 1) {
        // A recording's file has grown row by row; any other is brought up to date before it is called saved.
        const bool live = state_.ReturnScreen == static_cast<int>(ScreenCode::frmPHMe);
        const bool named = !state_.TableFile.empty() && state_.TableFile != "-999";
        if (named && (live || !loaded_ || KeepRows() == SaveOutcome::Saved)) {
            prompts_.Message("Your data have been saved: " + state_.TableFile);
        } else {
            RestoreWorkingTable();
            while (prompts_.Ask(question) && Save() != SaveOutcome::Saved) {
            }
        }
    }
    state_.TableOpen = 0;
    state_.TableFile.clear();
}

void TablePresenter::Leave(const std::string& question) {
    Prompt(question);
    Unload();
}

void TablePresenter::Open() {
    Load();
    KeepWorkingRows();
    if (!showsFile_) workingFileName_ = table_.FileName;
    showsFile_ = true;
    EmptyRows(LastClearedColumn);
    OpenTableFile(state_, table_, prompts_, files_);
    if (state_.OpenCancelled == 1) {
        RestoreWorkingTable();
        CloseByFrame();
    }
    state_.OpenCancelled = 0;
}

void TablePresenter::Close() {
    if (state_.ReturnScreen == static_cast<int>(ScreenCode::frmPHMe)) {
        navigator_->HideTable();
        return;
    }
    KeepWorkingRows();
    PutFileAway();
    EmptyRows(LastClearedColumn);
    if (SavedCount != 0) {
        RestoreHead(5);
        RestoreRows(SavedCount - 1);
    } else {
        table_.FileName.clear();
    }
    navigator_->HideTable();
    if (state_.ReturnScreen == static_cast<int>(ScreenCode::frmDsply)) navigator_->ResumeLiveDisplay();
}

void TablePresenter::Back() {
    if (state_.HideTableOnBack == -1) {
        navigator_->HideTable();
        return;
    }
    KeepWorkingRows();
    PutFileAway();
    MenuEnabled[0] = MenuEnabled[2] = true;
    RunGridRoutine(state_, table_, clock_);
    EmptyRows(table_.Cols() - 1);
    const auto owner = static_cast<ScreenCode>(state_.ReturnScreen);
    if (owner != ScreenCode::frmDsply && owner != ScreenCode::frmPHMe) {
        table_.Label1[6] = "Ref. : " + state_.FileRefElectrode[0] + " " + state_.FileRefElectrode[1];
        table_.Label1[7] = "Ref. : " + state_.RefElectrode[0] + " " + state_.RefElectrode[1];
        table_.Label1[8] = "Serial No. " + state_.FileElectrodeNum[0];
        table_.Label1[9] = "Serial No. " + state_.ElectrodeNum[0];
    }
    if (SavedCount != 0) {
        RestoreHead(7);
        RestoreRows(SavedCount - 2);
    } else {
        // The rows are gone: what is measured next is another table and must not silently replace this one's file.
        table_.FileName.clear();
    }
    if (table_.Rows() - RowsInView >= 2) table_.TopRow = table_.Rows() - RowsInView;
    table_.HeadChanged();
    if (owner == ScreenCode::frmDsply) navigator_->ResumeLiveDisplay();
    navigator_->HideTable();
}

void TablePresenter::CloseByFrame() {
    if (!loaded_) return;
    if (!Measuring()) {
        Unload();
        return;
    }
    RestoreWorkingTable();
    if (state_.QuickCount == 1) KeepRows();
    navigator_->HideTable();
    ReturnToCaller();
}

void TablePresenter::Unload() {
    if (!loaded_) return;
    RestoreWorkingTable();
    if (state_.QuickCount == 1) KeepRows();
    state_.QuickCount = 0;
    loaded_ = false;
    ForgetCopy();
    table_.Clear();
    navigator_->CloseTable();
    ReturnToCaller();
}

void TablePresenter::ReturnToCaller() {
    if (state_.CaliDirty != 1) return;
    const auto owner = static_cast<ScreenCode>(state_.ReturnScreen);
    switch (owner) {
        case ScreenCode::frmDsply:
            navigator_->ShowScreen(owner);
            navigator_->ResumeLiveDisplay();
            break;
        case ScreenCode::frmPHMe:
        case ScreenCode::frmSampa:
        case ScreenCode::frmStanad01: navigator_->ShowScreen(owner); break;
        default: break;
    }
    state_.CaliDirty = 0;
}

void TablePresenter::EmptyRows(int lastCol) {
    table_.RemoveRowsFrom(2);
    // A file without rows has left the heads alone; entries need the row to stand above.
    if (table_.Rows() < 2) table_.AddItem({}, 1);
    table_.ClearCells(1, 0, lastCol);
    table_.TopRow = 1;
}

void TablePresenter::KeepWorkingRows() {
    if (!Measuring() || showsFile_) return;
    SavedHead = table_.txtData;
    SavedCount = table_.Rows();
    SavedRows.clear();
    SavedRows.reserve(static_cast<std::size_t>(SavedCount));
    for (int row = 1; row < SavedCount; ++row)
        SavedRows.push_back(table_.RowLine(row));
}

void TablePresenter::ForgetCopy() {
    SavedHead.fill({});
    SavedRows.clear();
    SavedRows.shrink_to_fit();
    SavedCount = 0;
}

void TablePresenter::RestoreHead(std::size_t count) {
    std::copy_n(SavedHead.begin(), count, table_.txtData.begin());
    table_.HeadChanged();
}

void TablePresenter::RestoreRows(int count) {
    const DataTable::BatchUpdate filling(table_);
    for (int i = 0; i < count; ++i)
        table_.AddItem(std::move(SavedRows[static_cast<std::size_t>(i)]), table_.Rows() - 1);
    ForgetCopy();
}

void TablePresenter::PutFileAway() {
    if (showsFile_) table_.FileName = std::exchange(workingFileName_, {});
    showsFile_ = false;
}

void TablePresenter::RestoreWorkingTable() {
    if (!showsFile_ || SavedCount == 0) return;
    RunHeadRoutine(state_, table_);
    EmptyRows(table_.Cols() - 1);
    RestoreHead(SavedHead.size());
    RestoreRows(SavedCount - 2);
    PutFileAway();
}

}  // namespace kelvo
