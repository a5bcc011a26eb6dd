#include "calibration/fmISEcli.h"

#include <QtWidgets>

#include "calibration/CaliFile.h"
#include "calibration/CaliList.h"
#include "calibration/CurveFit.h"
#include "calibration/Potentiometry.h"
#include "calibration/TableName.h"
#include "calibration/fmISEcliMessage.h"
#include "calibration/fmISEcliSample.h"
#include "core/AverageSetup.h"
#include "core/Routes.h"
#include "kit/EntryBox.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "tables/Reports.h"
#include "tables/TablePresenter.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const OpeningMessage =
    "If you wish to use old calibration data, then select 'File/Open' to open a calibration file.                      "
    " "
    "                                 Otherwise select 'File/New' to start a new calibration.";
const char* const CurveMessage =
    "Select 'Option' to draw a line/curve Select 'Refresh' to show the latest selected line/curve. Click outside the "
    "box "
    "to switch off/on this message";
const char* const NoData = "There is no data to calculate, please choose 'New' / 'Open' to get the data.";

bool IsOpen(const AppState& state, ScreenCode code) {
    return state.ReturnScreen == static_cast<int>(code);
}

}  // namespace

// --- states of the screen ------------------------------------------------------------------------------------

void fmISEcli::OnLoad() {
    state_.SampleCount = 0;
    state_.TableOpen = 0;
    state_.TableFile.clear();
    if (state_.CaliDirty == 1) {
        ShowEntering();
        return;
    }
    ShowEmpty();
}

void fmISEcli::OnActivate() {
    if (state_.CaliDirty != 1 || state_.CaliPoints <= 0) return;
    if (state_.CaliPoints > 1) session_.ShowLinear();
    ShowCalibrated();
    // Once the curve is on the screen; the question must not stand before an unpainted window.
    QTimer::singleShot(0, this, [this] { AskToSave(); });
}

void fmISEcli::ShowEmpty() {
    ShowEntering();
    session_.ClearGraph();
    ShowGraph();
    setWindowTitle(QStringLiteral("Kelvo"));
    lblmsg_->setText(ToQt(OpeningMessage));
    lblmsg_->Settle();
    state_.MessageAtFont18 = true;
    PlaceMessage();
    lblmsg_->show();
}

void fmISEcli::ShowEntering() {
    lstCli_->clear();
    lstCli_->hide();
    panel_->hide();
    ShowSlope(false);
    samples_->Empty();
    samples_->Show(false);
    lblmsg_->hide();
    for (QAction* action : {mnuFile_[2], mnuFile_[4], mnuS_, mnuOption_, mnuRefresh_, mnupoten_})
        action->setVisible(false);
    mnuRecording_->setEnabled(false);
    mnuQsave_->setEnabled(false);
    SetStatus({});
}

void fmISEcli::ShowCalibrated() {
    for (QAction* action : {mnuFile_[2], mnuFile_[4], mnuS_, mnuOption_, mnuRefresh_, mnupoten_, mnuRecording_})
        action->setVisible(true);
    mnuRecording_->setEnabled(context_.screens.Knows(ScreenCode::frmPHMe));
    lblmsg_->hide();
    ShowSlope(state_.LinearFit == 1);
    ShowList();
    ShowScales();
    ShowMeasuring();
    ShowGraph();
    Tell({});
}

void fmISEcli::Tell(const std::string& remark) {
    const std::string lasting = PairingRemark(state_);
    SetStatus(lasting + (lasting.empty() || remark.empty() ? "" : " ") + remark);
}

void fmISEcli::ShowSlope(bool shown) {
    Labslo1_[0]->setVisible(shown);
    txtslope_[0]->setVisible(shown);
    Labslo2_->setVisible(shown);
    txtslope_[0]->SetText(shown ? SlopeText(state_) : std::string());
    // The statistics are offered as operations, but no event asks for them: their boxes stay away.
    for (std::size_t i = 1; i < 4; ++i) {
        Labslo1_[i]->hide();
        txtslope_[i]->hide();
    }
}

void fmISEcli::ShowList() {
    lstCli_->clear();
    for (const auto& row : CaliListRows(state_))
        lstCli_->addItem(ToQt(row));
    lstCli_->show();
    panel_->show();
}

void fmISEcli::ShowScales() {
    for (int i = 0; i < 6; ++i)
        mnumV_[static_cast<std::size_t>(i)]->setChecked(i == state_.MvScaleIndex);
    for (int i = 0; i < 4; ++i)
        mnuLogC_[static_cast<std::size_t>(i)]->setChecked(i == state_.LogCScaleIndex);
    mnuLinear_->setChecked(state_.LinearFit == 1);
    mnuNonLinear_->setChecked(state_.PartlyLinearFit == 1);
    mnuRgrsCli_->setChecked(state_.BestFitCurve == 1);
}

void fmISEcli::ShowGraph() {
    ShowScales();
    graph_->update();
}

void fmISEcli::ShowMeasuring() {
    mnuQsave_->setEnabled(state_.TableOpen == 1);
    mnuSave_[1]->setEnabled(state_.TableOpen == 1);
}

void fmISEcli::OnEscape() {
    ToggleMessage();
}

void fmISEcli::ToggleMessage() {
    if (!lblmsg_->text().isEmpty()) lblmsg_->setVisible(!lblmsg_->isVisible());
}

void fmISEcli::mousePressEvent(QMouseEvent* event) {
    Screen::mousePressEvent(event);
    ToggleMessage();
}

void fmISEcli::resizeEvent(QResizeEvent* event) {
    Screen::resizeEvent(event);
    // The layout settles first.
    QTimer::singleShot(0, this, &fmISEcli::PlaceMessage);
}

// --- files ---------------------------------------------------------------------------------------------------

bool fmISEcli::AskToSave() {
    if (state_.CaliDirty != 1 || state_.CaliPoints == 0) return true;
    if (IsOpen(state_, ScreenCode::frmPHSe)) {
        AskToRecord();
        return true;
    }
    if (context_.prompts.Ask("Would you like to save the calibration")) return SaveAfterEntry() == SaveOutcome::Saved;
    DropCalibration();
    return true;
}

void fmISEcli::AskToRecord() {
    state_.ReturnScreen = 0;
    state_.CaliDirty = 0;
    if (context_.prompts.Ask("Would you like to use this calibration and start the Continuous Recording"))
        mnuRecording_->trigger();
}

SaveOutcome fmISEcli::SaveAfterEntry() {
    state_.CaliTemp = state_.PointTemp;
    // A cancelled save keeps the calibration, and the question is not repeated. A save that failed leaves it to be
    // asked again on the way out.
    const SaveOutcome outcome = SaveCalibration();
    if (outcome != SaveOutcome::Failed) state_.CaliDirty = 0;
    state_.LastSlope = RoundedSlope(state_);
    ShowList();
    return outcome;
}

SaveOutcome fmISEcli::SaveCalibration() {
    const SaveOutcome outcome = SaveIseCalibration(state_, context_.prompts, context_.files, context_.clock, {});
    if (outcome != SaveOutcome::Saved) {
        Tell("The calibration has not been saved. It stays in use; File, Save, Calibration saves it.");
        return outcome;
    }
    state_.CaliDirty = 0;
    state_.LastSlope = RoundedSlope(state_);
    ShowList();
    Tell({});
    return outcome;
}

void fmISEcli::DropCalibration() {
    state_.CaliDirty = 0;
    state_.CaliPoints = 0;
    ShowEmpty();
}

void fmISEcli::New() {
    if (!AskToSave()) return;
    StopReading();
    if (state_.TableOpen == 1) context_.table.Leave();
    state_.SampleCount = 0;
    state_.Cancelled = true;
    state_.ReadingActive = true;
    context_.table.Unload();
    context_.screens.Show(ScreenCode::frmsetup);
    context_.screens.Close(Code());
}

void fmISEcli::OpenCalibration() {
    if (!AskToSave()) return;
    StopReading();
    context_.table.Leave();
    state_.TableOpen = 0;
    state_.TableFile.clear();
    state_.QuickCount = 0;
    state_.SampleCount = 0;
    samples_->Empty();
    samples_->Show(false);
    OpenIseChecked(state_, context_.prompts, context_.files);
    if (state_.CaliPoints == 0) {
        ShowEmpty();
        return;
    }
    state_.CaliDate = state_.FileDate;
    setWindowTitle(ToQt("ISE Measurement:    " + state_.CaliDate));
    session_.DrawOpened();
    session_.ShowLinear();
    if (IsOpen(state_, ScreenCode::frmPHSe)) state_.CaliDirty = 1;
    state_.LastSlope = RoundedSlope(state_);
    ShowCalibrated();
    state_.MessageAtFont18 = false;
    lblmsg_->setText(ToQt(CurveMessage));
    PlaceMessage();
    lblmsg_->show();
    if (IsOpen(state_, ScreenCode::frmPHSe)) AskToSave();
}

void fmISEcli::OpenTable() {
    context_.table.Open();
    // A cancelled dialog has closed the table again, or kept the measured rows out of sight.
    if (context_.table.ShowsFile()) context_.screens.Show(ScreenCode::frmQSave);
}

void fmISEcli::Print(int index) {
    context_.table.Load();
    QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    if (index == 2)
        PrintTableDocument(state_, context_.table.Current(), *context_.printing, context_.prompts);
    else
        PrintGraph(state_, context_.table.Working(), context_.clock, *context_.printing, context_.prompts, index == 1);
    QGuiApplication::restoreOverrideCursor();
}

void fmISEcli::SaveTable() {
    if (context_.table.Save() != SaveOutcome::Saved) return;
    state_.TableOpen = 0;
    state_.TableFile.clear();
    ShowMeasuring();
    if (!state_.StatusMessage.empty()) Tell(std::exchange(state_.StatusMessage, {}));
}

void fmISEcli::GoToMenu() {
    ClearPaths(state_);
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(Code());
}

void fmISEcli::Close() {
    if (!AskToSave()) return;
    context_.table.Leave();
    StopReading();
    GoToMenu();
}

void fmISEcli::Back() {
    if (!AskToSave()) return;
    context_.table.Leave();
    StopReading();
    GoToMenu();
}

void fmISEcli::Exit() {
    if (!context_.prompts.Ask(text::SureToExit, true)) return;
    if (!AskToSave()) return;
    if (state_.TableOpen == 1) context_.table.Leave("Would you like to save to data table?");
    context_.screens.EndProgram();
}

// --- curves --------------------------------------------------------------------------------------------------

bool fmISEcli::HasData() {
    if (state_.CaliPoints != 0) return true;
    context_.prompts.Message(NoData);
    ShowEmpty();
    return false;
}

void fmISEcli::KeepRowsOfOldCurve() {
    if (state_.TableOpen != 1) return;
    // The table closes without a question here; what was measured is kept in a file all the same.
    if (state_.TableFile.empty() || state_.TableFile == "-999") state_.TableFile = NameToKeep(state_.DataPath);
    if (context_.table.KeepRows() == SaveOutcome::Saved)
        state_.StatusMessage = "The samples of the other curve have been kept in " + state_.TableFile + ".";
}

void fmISEcli::Linear() {
    if (!HasData()) return;
    if (state_.CaliPoints > 1) {
        if (state_.LinearFit != 1) {
            KeepRowsOfOldCurve();
            state_.TableOpen = 0;
            state_.TableFile.clear();
            context_.table.Unload();
        }
        session_.ShowLinear();
        ShowSlope(true);
    }
    ShowMeasuring();
    ShowGraph();
    Tell(std::exchange(state_.StatusMessage, {}));
}

void fmISEcli::PartlyLinear() {
    if (!HasData()) return;
    context_.table.Leave();
    state_.QuickCount = 0;
    session_.ShowPartlyLinear();
    ShowSlope(false);
    ShowMeasuring();
    ShowGraph();
    Tell({});
}

void fmISEcli::BestCurve() {
    if (!HasData()) return;
    context_.table.Leave();
    state_.QuickCount = 0;
    session_.ShowBestCurve();
    ShowSlope(false);
    ShowMeasuring();
    ShowGraph();
    Tell(state_.CaliPoints == 2 ? "Two points have no best-fit curve: they are joined by a straight segment." : "");
}

void fmISEcli::MvScale(int index) {
    session_.ChangeMvScale(index);
    ShowGraph();
}

void fmISEcli::LogCScale(int index) {
    session_.ChangeLogCScale(index);
    ShowGraph();
}

void fmISEcli::Refresh() {
    session_.Refresh();
    ShowGraph();
}

void fmISEcli::Average() {
    AskAverage(state_, context_.prompts);
}

// --- samples -------------------------------------------------------------------------------------------------

void fmISEcli::PotentiometryOpened() {
    StopReading();
    if (state_.CaliPoints == 1) state_.LinearFit = 1;
    mnuRecording_->setVisible(true);
    state_.MessageAtFont18 = false;
    lblmsg_->setText(ToQt(CurveMessage));
    PlaceMessage();
}

bool fmISEcli::AskTableFile() {
    if (state_.TableOpen == 0 && context_.table.Loaded()) context_.table.Unload();
    if (!state_.TableFile.empty()) return true;
    return kelvo::AskTableFile(state_, context_.prompts, context_.files);
}

void fmISEcli::StartPotentiometry(int index) {
    if (IsOpen(state_, ScreenCode::frmPtset)) context_.screens.Hide(ScreenCode::frmPtset);
    if (!AskTableFile()) return;
    state_.TableOpen = 1;
    samples_->Empty();
    samples_->Show(true);
    samples_->SetText(6, state_.CaliTemp);
    lblmsg_->hide();
    ShowMeasuring();
    if (index != 0) {
        StartReading();
        return;
    }
    samples_->SetText(4, "7.5");
    samples_->SetText(5, state_.CaliTemp);
    samples_->Box(0)->setFocus(Qt::TabFocusReason);
    samples_->Box(0)->SetNextField(true);
    StopReading();
}

void fmISEcli::SampleEntered() {
    EntryBox* box = samples_->Box(0);
    box->selectAll();
    if (Trim(box->Text()).empty()) {
        Tell("Type the sample's potential in mV, then press Enter.");
        return;
    }
    const auto e = static_cast<float>(Val(box->Text()));
    const std::string remark = SampleRemark(state_, e);
    const auto result = PotentialToSample(state_, context_.prompts, e);
    box->setFocus(Qt::TabFocusReason);
    if (!result) return;
    samples_->SetResult(*result);
    if (!MarkSample(e, result->LogC)) return;
    AddTableRow();
    Tell(remark);
}

bool fmISEcli::MarkSample(float e, double logC) {
    if (session_.MarkSample(e, static_cast<float>(logC))) {
        ShowGraph();
        return true;
    }
    context_.prompts.Message(DataOutOfRange);
    Tell(
        "The graph holds 101 samples already, so this one was neither marked nor added to the table. Refresh "
        "empties the graph; Quick Save adds the sample as it stands.");
    return false;
}

void fmISEcli::AddTableRow() {
    const int rows = static_cast<int>(Val(context_.table.NextRowNumber())) + 1;
    context_.table.AddRow(SampleRow(state_, rows, TimeText(context_.clock.Now()), samples_->Texts()));
    context_.table.KeepRows();
    ShowMeasuring();
}

void fmISEcli::QuickSave() {
    StopReading();
    if (state_.TableOpen == 0 && !AskTableFile()) return;
    AddTableRow();
    // The dialog marks the table, so that closing it leads back to its caller; here the mark is that of a calibration
    // not yet saved, and this screen is in front anyway.
    const std::int16_t unsaved = state_.CaliDirty;
    context_.screens.ShowModal(ScreenCode::frmMsg);
    state_.CaliDirty = unsaved;
}

}  // namespace kelvo
