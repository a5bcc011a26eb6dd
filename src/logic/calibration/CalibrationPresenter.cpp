#include "calibration/CalibrationPresenter.h"

#include <algorithm>
#include <utility>

#include "calibration/CaliFile.h"
#include "calibration/CaliList.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CurveFit.h"
#include "calibration/TableName.h"
#include "core/AverageSetup.h"
#include "core/Dialogs.h"
#include "core/Routes.h"

namespace kelvo {
namespace {

const char* const OpeningMessage =
    "If you wish to use old calibration data, then select 'File/Open' to open a calibration file.                                                        Otherwise select 'File/New' to start a new calibration.";
const char* const CurveMessage =
    "Select 'Option' to draw a line/curve Select 'Refresh' to show the latest selected line/curve. Click outside the box to switch off/on this message";
const char* const NoData = "There is no data to calculate, please choose 'New' / 'Open' to get the data.";
const char* const NotSaved = "The calibration has not been saved. It stays in use; File, Save, Calibration saves it.";
const char* const NotSavedAgain = "The calibration has not been saved once more; its file stands as it was.";
const char* const TwoPoints = "Two points have no best-fit curve: they are joined by a straight segment.";
const char* const LowEndNoBetter =
    "The concentration c of the low-end fit cannot be told from 0: 'Linear Regression' does as well.";

}  // namespace

CalibrationPresenter::CalibrationPresenter(const CalibrationContext& context, CalibrationView& view)
    : context_(context),
      state_(context.state),
      view_(view),
      session_(context.state, context.prompts),
      inUse_(context.whole),
      samples_(context, session_, inUse_, view) {}

std::string CalibrationPresenter::SlopeBox() const {
    return slopeShown_ ? SlopeText(state_) : std::string();
}

// --- states of the screen ------------------------------------------------------------------------------------

void CalibrationPresenter::Load() {
    state_.SampleCount = 0;
    context_.tableState.TableOpen = 0;
    context_.tableState.TableFile.clear();
    state_.CaliDirty == 1 ? ShowEntering() : ShowEmpty();
}

bool CalibrationPresenter::Activate() {
    if (state_.CaliDirty != 1 || state_.CaliPoints <= 0) return false;
    if (state_.CaliPoints > 1) session_.ShowLinear();
    ShowCalibrated();
    return true;
}

void CalibrationPresenter::ShowEmpty() {
    session_.ClearGraph();
    title_ = "Kelvo";
    SetMessage(OpeningMessage, true);
    ShowEntering();
    message_.visible = true;
    view_.ShowAll();
}

void CalibrationPresenter::ShowEntering() {
    list_.clear();
    slopeShown_ = recording_ = inFile_ = message_.visible = false;
    samples_.PutAway();
    view_.ShowAll();
    view_.ShowStatusLines({}, {});
}

void CalibrationPresenter::ShowCalibrated() {
    recording_ = context_.screens.Knows(ScreenCode::frmPHSe);
    message_.visible = false;
    slopeShown_ = state_.LinearFit == 1;
    list_ = CaliListRows(*inUse_.Get());
    view_.ShowAll();
    SetStatus({});
}

void CalibrationPresenter::SetMessage(const char* text, bool opening) {
    message_.text = text;
    message_.opening = context_.navigation.MessageAtFont18 = opening;
    ++message_.set;
}

void CalibrationPresenter::ToggleMessage() {
    if (message_.text.empty()) return;
    message_.visible = !message_.visible;
    view_.ShowAll();
}

void CalibrationPresenter::HideMessage() {
    message_.visible = false;
    view_.ShowAll();
}

// --- files and the ways out ----------------------------------------------------------------------------------

bool CalibrationPresenter::AskToSave() {
    if (state_.CaliDirty != 1 || state_.CaliPoints == 0) return true;
    if (context_.navigation.ReturnsTo(ScreenCode::frmPHSe)) {
        AskToRecord();
        return true;
    }
    if (context_.prompts.AskToSave("Would you like to save the calibration"))
        return SaveAfterEntry() == SaveOutcome::Saved;
    DropCalibration();
    return true;
}

void CalibrationPresenter::AskToRecord() {
    context_.navigation.ReturnScreen = 0;
    state_.CaliDirty = 0;
    if (context_.prompts.Ask("Would you like to use this calibration and start the Continuous Recording")) Record();
}

SaveOutcome CalibrationPresenter::SaveAfterEntry() {
    state_.CaliTemp = state_.PointTemp;
    // A cancelled save keeps the calibration, and the question is not repeated. A save that failed leaves it to be
    // asked again on the way out.
    const SaveOutcome outcome = Save();
    if (outcome != SaveOutcome::Failed) state_.CaliDirty = 0;
    state_.LastSlope = RememberedSlope(state_);
    list_ = CaliListRows(*inUse_.Get());
    view_.ShowAll();
    return outcome;
}

SaveOutcome CalibrationPresenter::Save() {
    const SaveOutcome outcome =
        SaveIseCalibration(context_.whole, context_.prompts, context_.files, context_.clock, {});
    if (outcome != SaveOutcome::Saved) {
        SetStatus(inFile_ ? NotSavedAgain : NotSaved);
        return outcome;
    }
    inFile_ = true;
    state_.CaliDirty = 0;
    state_.LastSlope = RememberedSlope(state_);
    list_ = CaliListRows(*inUse_.Get());
    view_.ShowAll();
    SetStatus({});
    return outcome;
}

void CalibrationPresenter::SaveCalibration() {
    Save();
}

void CalibrationPresenter::DropCalibration() {
    state_.CaliDirty = 0;
    state_.CaliPoints = 0;
    ShowEmpty();
}

void CalibrationPresenter::New() {
    if (!AskToSave()) return;
    samples_.StopReading();
    if (context_.tableState.TableOpen == 1) context_.table.Leave();
    state_.SampleCount = 0;
    state_.Cancelled = true;
    state_.ReadingActive = true;
    context_.table.Unload();
    context_.screens.Show(ScreenCode::frmsetup);
    context_.screens.Close(ScreenCode::fmISEcli);
}

void CalibrationPresenter::OpenCalibration() {
    if (!AskToSave()) return;
    samples_.StopReading();
    context_.table.Leave();
    context_.tableState.TableOpen = 0;
    context_.tableState.TableFile.clear();
    context_.tableState.QuickCount = 0;
    state_.SampleCount = 0;
    samples_.PutAway();
    view_.ShowAll();
    OpenIseChecked(context_.whole, context_.prompts, context_.files);
    if (state_.CaliPoints == 0) {
        ShowEmpty();
        return;
    }
    const bool forRecording = context_.navigation.ReturnsTo(ScreenCode::frmPHSe);
    inFile_ = true;
    state_.CaliDate = state_.FileDate;
    title_ = "ISE Measurement:    " + state_.CaliDate;
    session_.DrawOpened();
    session_.ShowLinear();
    if (forRecording) state_.CaliDirty = 1;
    state_.LastSlope = RememberedSlope(state_);
    SetMessage(CurveMessage, false);
    ShowCalibrated();
    message_.visible = true;
    view_.ShowAll();
    if (forRecording) AskToSave();
}

void CalibrationPresenter::OpenTable() {
    const KeptDirty dirty(state_);
    if (context_.table.LookAtFile())
        context_.screens.Show(ScreenCode::frmQSave);
    else if (context_.tableState.TableOpen == 1)
        context_.screens.Hide(ScreenCode::frmQSave);
    else
        context_.table.Unload();
}

void CalibrationPresenter::SaveTable() {
    if (context_.table.Save() != SaveOutcome::Saved) return;
    context_.tableState.TableOpen = 0;
    context_.tableState.TableFile.clear();
    view_.ShowAll();
    if (!context_.status.StatusMessage.empty()) SetStatus(std::exchange(context_.status.StatusMessage, {}));
}

void CalibrationPresenter::Leave() {
    if (!AskToSave()) return;
    context_.table.Leave();
    samples_.StopReading();
    ClearPaths(context_.navigation);
    context_.screens.Show(ScreenCode::frmenu);
    context_.screens.Close(ScreenCode::fmISEcli);
}

void CalibrationPresenter::Exit() {
    if (!context_.prompts.Ask(text::SureToExit, true)) return;
    if (!AskToSave()) return;
    if (context_.tableState.TableOpen == 1) context_.table.Leave("Would you like to save to data table?");
    context_.screens.EndProgram();
}

// --- curves --------------------------------------------------------------------------------------------------

bool CalibrationPresenter::HasData() {
    if (state_.CaliPoints != 0) return true;
    context_.prompts.Message(NoData);
    ShowEmpty();
    return false;
}

void CalibrationPresenter::CloseTableOfOldCurve() {
    const KeptDirty dirty(state_);
    if (context_.tableState.TableOpen == 1 && context_.table.RowCount() > 0) {
        if (!context_.tableState.HasTableFile()) context_.tableState.TableFile = NameToKeep(context_.paths.DataPath);
        if (context_.table.KeepRows() == SaveOutcome::Saved) {
            context_.status.StatusMessage =
                "The samples of the other curve have been kept in " + context_.tableState.TableFile + ".";
        } else {
            context_.tableState.TableFile.clear();
            context_.table.Leave();
        }
    }
    context_.tableState.TableOpen = 0;
    context_.tableState.TableFile.clear();
    context_.table.Unload();
}

void CalibrationPresenter::LeaveTable() {
    const KeptDirty dirty(state_);
    context_.table.Leave();
    context_.tableState.QuickCount = 0;
}

void CalibrationPresenter::ShowCurve(bool withSlope, const std::string& remark) {
    slopeShown_ = withSlope;
    list_ = CaliListRows(*inUse_.Get());
    view_.ShowAll();
    SetStatus(remark);
}

void CalibrationPresenter::Linear() {
    if (!HasData()) return;
    bool withSlope = slopeShown_;
    if (state_.CaliPoints > 1) {
        if (state_.LinearFit != 1) CloseTableOfOldCurve();
        session_.ShowLinear();
        withSlope = true;
    }
    ShowCurve(withSlope, std::exchange(context_.status.StatusMessage, {}));
}

void CalibrationPresenter::PartlyLinear() {
    if (!HasData()) return;
    LeaveTable();
    session_.ShowPartlyLinear();
    ShowCurve(false, {});
}

void CalibrationPresenter::BestCurve() {
    if (!HasData()) return;
    LeaveTable();
    session_.ShowBestCurve();
    ShowCurve(false, state_.CaliPoints == 2 ? TwoPoints : "");
}

void CalibrationPresenter::LowEnd() {
    if (!HasData()) return;
    LeaveTable();
    session_.ShowLowEnd();
    const auto& fit = inUse_.Get()->quality.lowEnd;
    ShowCurve(false, fit && !fit->Significant() ? LowEndNoBetter : "");
}

void CalibrationPresenter::ShowCurveInUse() {
    const bool lowEnd = state_.LowEndCurve == 1, segments = state_.PartlyLinearFit == 1;
    const bool bestFit = state_.BestFitCurve == 1;
    state_.SampleCount = 0;
    session_.DrawOpened();
    if (segments)
        session_.ShowPartlyLinear();
    else if (bestFit && DifferentLogCs(state_) > 2)
        session_.ShowBestCurve();
    else if (!lowEnd || !session_.ShowLowEnd())
        session_.ShowLinear();
}

void CalibrationPresenter::TakeStandards(const std::vector<StandardEntry>& standards, const StandardsTold& told) {
    if (!HasList() || !WhyTooFew(standards).empty()) return;
    const std::vector<StandardEntry> before = AllStandards(state_);
    const bool others = standards != before;
    if (!others && told == state_.Told) return;
    const auto counts = [](const StandardEntry& standard) { return standard.leftOut.empty(); };
    if (!std::ranges::equal(standards, before, {}, counts, counts)) {
        samples_.StopReading();
        samples_.PutAway();
        CloseTableOfOldCurve();
        PutStandards(state_, standards);
        ShowCurveInUse();
        state_.LastSlope = RememberedSlope(state_);
    } else if (others) {
        PutStandards(state_, standards);
    }
    state_.Told = told;
    const std::string kept = std::exchange(context_.status.StatusMessage, {}), lost = AmendCalibrationFacts(state_);
    ShowCurve(state_.LinearFit == 1, kept + (kept.empty() || lost.empty() ? "" : " ") + lost);
}

void CalibrationPresenter::MvScale(int index) {
    session_.ChangeMvScale(index);
    view_.ShowAll();
    SetStatus({});
}

void CalibrationPresenter::LogCScale(int index) {
    session_.ChangeLogCScale(index);
    view_.ShowAll();
    SetStatus({});
}

void CalibrationPresenter::Refresh() {
    session_.Refresh();
    view_.ShowAll();
}

void CalibrationPresenter::Average() {
    AskAverage(context_.reading, context_.prompts);
}

void CalibrationPresenter::EditStability() {
    if (context_.reading.ASD != 0) context_.screens.ShowModal(ScreenCode::frmAutoD);
}

// --- the rest of the menu ------------------------------------------------------------------------------------

void CalibrationPresenter::PotentiometryOpened() {
    samples_.MenuOpened();
    SetMessage(CurveMessage, false);
    view_.ShowAll();
}

void CalibrationPresenter::StartPotentiometry(bool onLine) {
    if (!samples_.Begin(onLine)) return;
    message_.visible = false;
    view_.ShowAll();
    onLine ? samples_.StartReading() : samples_.StopReading();
}

void CalibrationPresenter::Record() {
    if (!recording_) return;
    context_.table.Leave();
    samples_.StopReading();
    // The setup of the recording takes the mark for its word to go on with this calibration.
    context_.navigation.pHMode = 0;
    state_.CaliDirty = 1;
    context_.screens.Show(ScreenCode::frmPHSe);
    context_.screens.Close(ScreenCode::fmISEcli);
}

}  // namespace kelvo
