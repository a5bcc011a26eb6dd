#include "tables/TablePresenter.h"

#include <algorithm>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "tables/ControlSample.h"
#include "tables/ReportedResult.h"
#include "tables/Reports.h"
#include "tables/RowFactsFile.h"
#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"
#include "tables/TableGrids.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// Rows of the grid that are in view on the small screen, the heads left out.
constexpr int RowsInView = 22;

/// Columns that "Close" empties in row 1; those beyond keep their text until the row is filled.
constexpr int LastClearedColumn = 7;

constexpr int SampleNumberColumn = 1;

void ToFoot(DataTable& table) {
    if (table.Rows() - RowsInView >= 2) table.TopRow = table.Rows() - RowsInView;
}

}  // namespace

void TablePresenter::Listen(DataTable::Listener* view) {
    view_ = view;
    working_.Listen(showsDocument_ ? nullptr : view);
    document_.Listen(showsDocument_ ? view : nullptr);
}

void TablePresenter::Show(bool document) {
    if (!document) document_ = DataTable();
    if (showsDocument_ == document) return;
    showsDocument_ = document;
    Listen(view_);
    Shown().HeadChanged();
}

void TablePresenter::Load() {
    if (loaded_) return;
    loaded_ = true;
    Show(false);
    working_.FileName.clear();
    working_.Files.clear();
    twoEmptyRows_ = false;
    MenuEnabled.fill(true);
    working_.Clear();
    RunHeadRoutine(state_, working_);
    std::fill_n(working_.txtData.begin(), 7, std::string());
    RunGridRoutine(state_, working_, clock_);
    working_.HeadChanged();
}

// --- for the screens that measure --------------------------------------------------------------------------------

void TablePresenter::SetMethodHead(const MethodHead& head) {
    working_.Method = head;
    if (!loaded_ || !(navigation_.ReturnsTo(ScreenCode::frmSampa) || navigation_.ReturnsTo(ScreenCode::frmStanad01)))
        return;
    FillMethodHead(working_);
    working_.HeadChanged();
}

int TablePresenter::RowCount() const {
    if (!loaded_) return 0;
    return working_.Rows() - 2 - (twoEmptyRows_ ? 1 : 0);
}

/// Leaves one empty row at the foot of the working table, where "Close" has left two.
void TablePresenter::SettleFoot() {
    if (std::exchange(twoEmptyRows_, false)) working_.RemoveItem(working_.Rows() - 1);
    if (working_.Rows() < 2) working_.AddItem({}, 1);
}

std::string TablePresenter::NextRowNumber() {
    Load();
    SettleFoot();
    return Str(working_.Rows() - 1);
}

void TablePresenter::AddRow(const std::string& row, const RowFacts& facts) {
    Load();
    Show(false);
    SettleFoot();
    working_.TopRow = std::max(working_.TopRow, working_.Rows() + 1 - RowsInView);
    working_.AddItem(row, working_.Rows() - 1, facts);
    tableState_.TableOpen = 1;
    control_.clear();
    const int added = RowCount();
    fromList_ = !samples_.Done() && HasResults(working_) && working_.Cell(added, SampleNumberColumn).empty();
    if (!fromList_) return;
    working_.SetCell(added, SampleNumberColumn, samples_.Next());
    samples_.Taken();
    JudgeControl(added);
}

void TablePresenter::JudgeControl(int row) {
    if (!HasResults(working_)) return;
    const auto controls = ReadControls(paths_.IniPath);
    const std::string number(working_.Cell(row, SampleNumberColumn));
    const ControlSample* control = number.empty() ? nullptr : ControlOf(controls, number);
    RowFacts facts = working_.Facts(row);
    SetControl(facts, control);
    if (!(facts == working_.Facts(row))) working_.SetFacts(row, std::move(facts));
    control_ = control != nullptr ? number + ": " + ControlText(working_, row) : std::string();
    if (!control_.empty()) state_.Get<StatusMessages>().StatusMessage = control_ + ".";
}

std::string TablePresenter::NextSample() const {
    const std::string next = samples_.Line();
    return control_ + (control_.empty() || next.empty() ? "" : ". ") + next;
}

void TablePresenter::AskControls() {
    std::string text = ControlsText(ReadControls(paths_.IniPath));
    for (;;) {
        const auto answer =
            prompts_.Input("Control Samples",
                           "A sample whose number begins with the word is a control sample. Word, target and "
                           "limits of the recovery in per cent, parted by semicolons: QC 10 90 110",
                           text);
        if (!answer) return;
        std::string told;
        const auto controls = ControlsOf(*answer, told);
        if (controls && WriteControls(*controls, paths_.IniPath)) return;
        prompts_.Message(controls ? "These controls could not be kept in the settings." : told + ".");
        if (controls) return;
        text = *answer;
    }
}

void TablePresenter::NumberRow(const std::string& number) {
    tableState_.QuickCount = 1;
    calibration_.CaliDirty = 1;
    const int row = RowCount();
    if (row < 1) return;
    std::string text = number;
    // A TAB would put the rest of the number into the next column.
    std::replace(text.begin(), text.end(), '\t', ' ');
    // The row is of another sample: that of the list is still to be measured.
    if (fromList_ && working_.Cell(row, SampleNumberColumn) != text) GiveBackToList();
    working_.SetCell(row, SampleNumberColumn, text);
    JudgeControl(row);
    KeepRows();
}

std::string TablePresenter::NumberInHand() const {
    return fromList_ ? std::string(working_.Cell(RowCount(), SampleNumberColumn)) : std::string();
}

bool TablePresenter::NumberIsOpen(int row) const {
    return !showsDocument_ && Measuring() && HasResults(working_) && row >= 1 && row <= RowCount();
}

bool TablePresenter::TypeNumber(int row, const std::string& number) {
    if (!NumberIsOpen(row)) return false;
    std::string text = number;
    std::replace(text.begin(), text.end(), '\t', ' ');
    if (fromList_ && row == RowCount() && working_.Cell(row, SampleNumberColumn) != text) GiveBackToList();
    working_.SetCell(row, SampleNumberColumn, text);
    JudgeControl(row);
    KeepRows();
    return true;
}

void TablePresenter::GiveBackToList() {
    samples_.Back();
    fromList_ = false;
}

void TablePresenter::OpenSampleList() {
    std::string told;
    const auto read = [&](const std::string& bytes, const std::string&) { told = samples_.Take(bytes); };
    constexpr std::size_t Largest = 16'000'000;
    const OpenRequest request{.dialog = {"Lists of samples(*.csv;*.txt)|*.csv;*.txt", paths_.DataPath, {}},
                              .limit = Largest};
    if (AskAndRead(prompts_, files_, request, read) != OpenOutcome::Opened) return;
    StatusMessages& status = state_;
    if (told.empty()) {
        fromList_ = false;
        status.StatusMessage = samples_.Line() + ".";
    } else {
        prompts_.Message("The list of samples has not been taken: " + told + ".", {}, Icon::Exclamation);
    }
}

void TablePresenter::SetFactsOf(int row, const RowFacts& facts) {
    if (row >= 1 && row <= RowCount()) working_.SetFacts(row, facts);
}

void TablePresenter::DropRow() {
    const int row = RowCount();
    if (row < 1) return;
    if (fromList_) GiveBackToList();
    control_.clear();
    working_.RemoveItem(row);
    KeepRows();
}

void TablePresenter::FillRows(std::vector<std::string> rows, std::vector<RowFacts> facts) {
    Load();
    Show(false);
    const DataTable::BatchUpdate filling(working_);
    SettleFoot();
    working_.Clear();
    working_.Reserve(static_cast<int>(rows.size()) + 2);
    facts.resize(rows.size());
    for (std::size_t i = 0; i < rows.size(); ++i)
        working_.AddItem(std::move(rows[i]), working_.Rows() - 1, std::move(facts[i]));
}

bool TablePresenter::AskFile(const TableFileRequest& request) {
    if (!tableState_.TableFile.empty()) return true;
    if (request.question != nullptr && !prompts_.Ask(request.question)) {
        tableState_.TableFile = TableState::Declined;
        return true;
    }
    const auto name = AskNameToSave(prompts_, files_,
                                    {.dialog = {request.filter, paths_.DataPath, request.pattern},
                                     .ending = request.extension,
                                     .use = request.upper ? UpperName : NameRule()});
    if (!name) return false;
    tableState_.TableFile = FindFile(*name);
    return true;
}

SaveOutcome TablePresenter::KeepRows() {
    if (!loaded_ || !tableState_.HasTableFile()) return SaveOutcome::Cancelled;
    SettleFoot();
    return RewriteTableFile(state_, working_, prompts_);
}

std::vector<UnsavedPiece> TablePresenter::UnsavedRows() const {
    // A file that another hand has changed is not replaced where nobody can be told.
    const bool named = tableState_.HasTableFile() && StandsAsLeft(working_, tableState_.TableFile);
    if (!loaded_ || !Measuring() || navigation_.ReturnsTo(ScreenCode::frmPHMe)) return {};
    const std::string file = named ? tableState_.TableFile : std::string();
    return {{"the rows of the data table", Upper(KindOf(state_).extension), RewrittenTableBytes(state_, working_), file,
             FactsBytes(working_, file, working_.Rows() - 2)}};
}

SaveOutcome TablePresenter::Save() {
    Load();
    if (&Current() == &working_) SettleFoot();
    return SaveTableFile(state_, Current(), prompts_, files_);
}

void TablePresenter::Prompt(const std::string& question) {
    if (Measuring()) {
        // A recording's file has grown row by row; any other is brought up to date before it is called saved.
        const bool live = navigation_.ReturnsTo(ScreenCode::frmPHMe);
        if (tableState_.HasTableFile() && (live || !loaded_ || KeepRows() == SaveOutcome::Saved)) {
            prompts_.Message("Your data have been saved: " + tableState_.TableFile);
        } else {
            while (prompts_.AskToSave(question) && Save() != SaveOutcome::Saved) {
            }
        }
    }
    tableState_.TableOpen = 0;
    tableState_.TableFile.clear();
}

void TablePresenter::Leave(const std::string& question) {
    Prompt(question);
    Unload();
}

void TablePresenter::Unload() {
    if (!loaded_) return;
    if (tableState_.QuickCount == 1) KeepRows();
    tableState_.QuickCount = 0;
    loaded_ = false;
    Show(false);
    working_.Clear();
    navigator_->CloseTable();
    ReturnToCaller();
}

std::string TablePresenter::LiveHead() {
    Load();
    return RecordingHead(state_, working_);
}

bool TablePresenter::LookAtFile() {
    Load();
    DataTable document;
    document.LayOutAs(working_);
    OpenTableFile(state_, document, prompts_, files_);
    if (std::exchange(tableState_.OpenCancelled, std::int16_t{0}) == 1) {
        Show(false);
        return false;
    }
    Show(false);
    document_ = std::move(document);
    Show(true);
    return true;
}

std::vector<std::string> TablePresenter::RowsLookedAt() const {
    std::vector<std::string> rows;
    if (!showsDocument_) return rows;
    for (int row = 1; row < document_.Rows(); ++row)
        rows.push_back(document_.RowText(row));
    return rows;
}

std::vector<RowFacts> TablePresenter::FactsLookedAt() const {
    std::vector<RowFacts> facts;
    if (!showsDocument_) return facts;
    for (int row = 1; row < document_.Rows(); ++row)
        facts.push_back(document_.Facts(row));
    return facts;
}

bool TablePresenter::Print(Printing& printing, Progress& progress) {
    Load();
    return PrintTable(Current(), printing, progress);
}

bool TablePresenter::PrintShown(Printing& printing, Progress& progress) {
    return PrintTable(Shown(), printing, progress);
}

std::string TablePresenter::Annotate(const std::vector<int>& rows, const std::function<void(RowFacts&)>& change) {
    DataTable& table = Shown();
    const auto apply = [&](DataTable& to) {
        for (const int row : rows) {
            if (row < 1 || row >= to.Rows() || to.RowIsEmpty(row)) continue;
            RowFacts facts = to.Facts(row);
            change(facts);
            to.SetFacts(row, std::move(facts));
        }
    };
    const bool measured = &table == &working_ && Measuring();
    if (measured || table.FileName.empty()) {
        apply(table);
        if (measured && tableState_.HasTableFile()) KeepRows();
        return {};
    }
    const std::string path = FindFile(table.FileName);
    if (!FileExists(path) || !StandsAsLeft(table, path))
        return LastPart(path) + " has been changed elsewhere: open it again first. Nothing has been changed.";
    // Another program may have said something of other rows since.
    DataTable present = table;
    present.Listen(nullptr);
    if (std::string told = ReadFactsBeside(present, path); !told.empty()) return Trim(told);
    apply(present);
    std::string told = Trim(WriteFactsBeside(present, path, ExportRows(present), {}));
    for (int row = 1; row < table.Rows(); ++row)
        if (!(table.Facts(row) == present.Facts(row))) table.SetFacts(row, present.Facts(row));
    return told;
}

std::string TablePresenter::PrintedFile() {
    return TableFileOf(state_, Current(), &Current() == &working_);
}

bool TablePresenter::PrintTable(const DataTable& table, Printing& printing, Progress& progress) {
    const bool working = &table == &working_;
    // A copy: what waits is done while it prints.
    const DataTable printed = table;
    return PrintTableDocument(state_, printed, working, {printing, prompts_, clock_, progress});
}

// --- the screen's own events -------------------------------------------------------------------------------------

void TablePresenter::Open() {
    if (!LookAtFile()) CloseByFrame();
}

void TablePresenter::ReadShortHead() {
    if (!HasShortHead()) return;
    DataTable document;
    document.LayOutAs(working_);
    document.FileName = document_.FileName;
    kelvo::ReadShortHead(state_, document, prompts_);
    Show(false);
    document_ = std::move(document);
    Show(true);
}

void TablePresenter::Close() {
    if (navigation_.ReturnsTo(ScreenCode::frmPHMe)) {
        navigator_->HideTable();
        return;
    }
    const bool wasDocument = showsDocument_;
    Show(false);
    if (Measuring()) {
        // The rows come back with one empty row more than after "Back".
        if (!twoEmptyRows_) working_.AddItem({}, working_.Rows());
        twoEmptyRows_ = true;
    } else if (!wasDocument) {
        EmptyRows(LastClearedColumn);
    }
    navigator_->HideTable();
    if (navigation_.ReturnsTo(ScreenCode::frmDsply)) navigator_->ResumeLiveDisplay();
}

void TablePresenter::Back() {
    if (tableState_.HideTableOnBack == -1) {
        navigator_->HideTable();
        return;
    }
    const bool wasDocument = showsDocument_;
    Show(false);
    MenuEnabled[0] = MenuEnabled[2] = true;
    if (!Measuring() && !wasDocument) {
        RunGridRoutine(state_, working_, clock_);
        EmptyRows(working_.Cols() - 1);
    }
    SettleFoot();
    if (!navigation_.ReturnsTo(ScreenCode::frmDsply) && !navigation_.ReturnsTo(ScreenCode::frmPHMe)) {
        working_.Label1[6] = "Ref. : " + calibration_.FileRefElectrode[0] + " " + calibration_.FileRefElectrode[1];
        working_.Label1[7] = "Ref. : " + hardware_.RefElectrode[0] + " " + hardware_.RefElectrode[1];
        working_.Label1[8] = "Serial No. " + calibration_.FileElectrodeNum[0];
        working_.Label1[9] = "Serial No. " + hardware_.ElectrodeNum[0];
    }
    ToFoot(working_);
    working_.HeadChanged();
    if (navigation_.ReturnsTo(ScreenCode::frmDsply)) navigator_->ResumeLiveDisplay();
    navigator_->HideTable();
}

void TablePresenter::CloseByFrame() {
    if (!loaded_) return;
    if (!Measuring()) {
        Unload();
        return;
    }
    Show(false);
    if (tableState_.QuickCount == 1) KeepRows();
    navigator_->HideTable();
    ReturnToCaller();
}

void TablePresenter::ReturnToCaller() {
    if (calibration_.CaliDirty != 1) return;
    const auto owner = navigation_.ReturnTo();
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
    calibration_.CaliDirty = 0;
}

/// A table that is put away is gone: what is measured next is another one and must not replace this one's file.
void TablePresenter::EmptyRows(int lastCol) {
    SettleFoot();
    working_.RemoveRowsFrom(2);
    working_.ClearCells(1, 0, lastCol);
    working_.TopRow = 1;
    working_.FileName.clear();
    working_.Files.clear();
}

}  // namespace kelvo
