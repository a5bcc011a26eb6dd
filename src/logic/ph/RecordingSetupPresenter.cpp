#include "ph/RecordingSetupPresenter.h"

#include <algorithm>

#include "calibration/CaliFile.h"
#include "calibration/CaliSession.h"
#include "calibration/CurveFit.h"
#include "core/Routes.h"
#include "ph/RecordingQuality.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const PhCaptionText = "pH Continuous Recording Setup";
const char* const IseCaptionText = "ISE Continuous Recording Setup";
const char* const CalibrationCaptionText = "pH Calibration";

const char* const NothingChosen = "Please select one of the options, or click Cancel to go back to the main menu";
const char* const NoPhChannel = "None of the pH channels are avaliable, please re-configure the hardware setup.";
const char* const NoIonChannel = "Ion channel is not avaliable, please re-configure in the Hardware Setup.";
const char* const NoElectrode = "You have not selected an electrode,,\"";
const char* const ChannelOff = "You need to re-configure the hardware setup to enable this channel.";

constexpr int FewestBuffers = 2, MostBuffers = 4;
constexpr int Record = 0, Look = 1;   ///< rows of `Opt`
constexpr int Latest = 0, Other = 1;  ///< rows of `optise`

std::string WithinBuffers(double value) {
    return TrimStr(std::clamp(value, double{FewestBuffers}, double{MostBuffers}));
}

}  // namespace

RecordingSetupPresenter::Next RecordingSetupPresenter::Load() {
    const bool calibration = PhPath() && state_.PhPath[3] != 1 && state_.PhPath[1] == 1 && state_.HelpTopic == 7;
    caption = calibration ? CalibrationCaptionText : PhPath() ? PhCaptionText : IseCaptionText;
    static_cast<RecordingChoices&>(state_) = {};
    optionsShown = !calibration;
    opt = calibration ? -1 : Record;
    menusEnabled = calibration;
    frameIseShown = listsFilled = false;
    optise = -1;
    calibrationShown = calibration;
    channelsShown = !calibration;
    rangeLabel = " pH Range";
    for (int e = 0; e < 2; ++e)
        electrodes[static_cast<std::size_t>(e)] = {calibration && ChannelOn(e), TrimStr(FewestBuffers), 0};
    // Going on with the latest calibration needs one.
    if (GoesOn()) return Ok();
    return Next::Stay;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::Ok() {
    status.clear();
    state_.PhCaption = "Electrode 1";
    state_.HideTableOnBack = 0;
    if (calibrationShown) return CalibrationStage();
    return optionsShown || frameIseShown ? ChoiceStage() : StartStage();
}

RecordingSetupPresenter::Next RecordingSetupPresenter::ChoiceStage() {
    if (opt < 0) {
        prompts_.Message(NothingChosen);
        return Next::Stay;
    }
    if (opt == Look) {
        state_.ViewOnly = 1;
        if (!PhPath()) state_.HideTableOnBack = -1;
        return StartStage();
    }
    if (PhPath() && !ChannelOn(0) && !ChannelOn(1)) {
        prompts_.Message(NoPhChannel);
        return Next::Hardware;
    }
    state_.ViewOnly = 0;
    ShowSettings();
    return PhPath() ? SettingsOfPh() : SettingsOfIse();
}

void RecordingSetupPresenter::ShowSettings() {
    optionsShown = false;
    state_.PhPath.fill(0);
    menusEnabled = true;
    listsFilled = true;
    state_.CmbTime = state_.cmbX = 0;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::SettingsOfPh() {
    state_.cmbY = OfferedRange(true);
    channelsShown = true;
    SetChannelBoxes();
    return Next::Stay;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::SettingsOfIse() {
    if (state_.Channel[1] != 1) {
        prompts_.Message(NoIonChannel);
        return Next::Hardware;
    }
    const bool calibrated = GoesOn() && !frameIseShown;
    if (!calibrated && !frameIseShown) {
        frameIseShown = true;
        latestOffered = HasLatestIseCalibration();
        optise = latestOffered ? Latest : Other;
        status = OnePointRemark(state_);
        return Next::Stay;
    }
    if (!calibrated) return OpenIseCalibration();
    state_.CaliDirty = 0;
    rangeLabel = " ppm Range";
    channelsShown = false;
    state_.cmbY = OfferedRange(false);
    status = OnePointRemark(state_);
    SetChannelBoxes();
    return Next::Stay;
}

bool RecordingSetupPresenter::GoesOn() const {
    return !PhPath() && state_.CaliDirty == 1 && state_.CaliPoints > 0;
}

bool RecordingSetupPresenter::HasLatestIseCalibration() const {
    return state_.CaliPoints > 0 && !state_.FileTemp.empty() && !state_.FileDate.empty();
}

RecordingSetupPresenter::Next RecordingSetupPresenter::OpenIseCalibration() {
    const bool latest = optise == Latest;
    state_.CaliDirty = latest ? 1 : 0;
    state_.SetReturn(ScreenCode::frmPHSe);
    if (latest) {
        CaliSession session(state_, prompts_);
        session.DrawOpened();
        session.ShowLinear();
    }
    frameIseShown = false;
    return Next::IseCalibration;
}

void RecordingSetupPresenter::SetChannelBoxes() {
    state_.chk1 = {ChannelOn(0), false};
    state_.chk2 = {ChannelOn(1), false};
}

RecordingSetupPresenter::Next RecordingSetupPresenter::StartStage() {
    if (state_.ViewOnly == 0 && !InterfaceReady()) return Next::Stay;
    ClearPaths(state_);
    return Next::Record;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::CalibrationStage() {
    for (Electrode& electrode : electrodes)
        electrode.buffers = electrode.wanted ? ToInt16(Val(electrode.txtbf)) : 0;
    if (electrodes[0].buffers + electrodes[1].buffers == 0) {
        prompts_.Message(NoElectrode);
        return Next::Stay;
    }
    return InterfaceReady() ? Next::Calibrate : Next::Stay;
}

bool RecordingSetupPresenter::InterfaceReady() {
    if (link_ == nullptr || link_->StartReady()) return true;
    prompts_.Message(text::InterfaceNotReady);
    return false;
}

void RecordingSetupPresenter::Cancel() {
    ClearPaths(state_);
    // What no file holds would be lost by reading one.
    if (!state_.PhCaliUnsaved) LoadLastPhCalibration(state_, prompts_, files_);
}

const RecordingPeriods& RecordingSetupPresenter::Periods() const {
    return IntervalEntries[static_cast<std::size_t>(std::max(0, state_.CmbTime))].periods;
}

void RecordingSetupPresenter::SelectInterval(int row) {
    state_.CmbTime = row;
    state_.cmbX = -1;
}

void RecordingSetupPresenter::Tick(int electrode, int index, bool on) {
    auto& ticks = electrode == 0 ? state_.chk1 : state_.chk2;
    ticks.at(static_cast<std::size_t>(index)) = on && ChannelOn(electrode);
}

void RecordingSetupPresenter::WantCalibration(int electrode, bool wanted) {
    Electrode& row = electrodes.at(static_cast<std::size_t>(electrode));
    row.wanted = wanted && ChannelOn(electrode);
    if (wanted && !row.wanted) prompts_.Message(ChannelOff);
}

void RecordingSetupPresenter::SetBuffers(int electrode, const std::string& text) {
    const double value = Val(text);
    const bool within = value >= FewestBuffers && value <= MostBuffers;
    electrodes.at(static_cast<std::size_t>(electrode)).txtbf = within ? text : WithinBuffers(value);
}

void RecordingSetupPresenter::StepBuffers(int electrode, int by) {
    std::string& text = electrodes.at(static_cast<std::size_t>(electrode)).txtbf;
    text = WithinBuffers(Val(text) + by);
}

void RecordingSetupPresenter::ChangeCalibration() {
    status.clear();
    if (!PhPath()) {
        ChangeIseCalibration();
        return;
    }
    if (OpenPhCalibration(state_, prompts_, files_, {}) != OpenOutcome::Opened) return;
    status = "pH calibration of " + state_.PhCaliDate[1] + " and " + state_.PhCaliDate[2] + " in use.";
}

void RecordingSetupPresenter::ChangeIseCalibration() {
    const IseCalibration calibration = state_;
    const StoredWithCalibration stored = state_;
    const GraphState graph = state_;
    if (OpenIseChecked(state_, prompts_, files_) != OpenOutcome::Opened) {
        static_cast<IseCalibration&>(state_) = calibration;
        static_cast<StoredWithCalibration&>(state_) = stored;
        static_cast<GraphState&>(state_) = graph;
        return;
    }
    CaliSession session(state_, prompts_);
    session.DrawOpened();
    session.ShowLinear();
    state_.CaliDate = state_.FileDate;
    state_.LastSlope = RememberedSlope(state_);
    const std::string remark = OnePointRemark(state_);
    status = "ISE calibration of " + state_.FileDate + " in use." + (remark.empty() ? "" : " ") + remark;
}

}  // namespace kelvo
