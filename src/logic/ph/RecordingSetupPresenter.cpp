#include "ph/RecordingSetupPresenter.h"

#include <algorithm>

#include "calibration/CaliFile.h"
#include "calibration/CaliSession.h"
#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/GraphState.h"
#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/Routes.h"
#include "core/StoredWithCalibration.h"
#include "core/TableState.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "ph/RecordingChoices.h"
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
    const bool calibration =
        PhPath() && navigation_.PhPath[3] != 1 && navigation_.PhPath[1] == 1 && navigation_.HelpTopic == 7;
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
    phEntry_.PhElectrode = 1;
    phEntry_.PhCaption = "Electrode 1";
    tableState_.HideTableOnBack = 0;
    if (calibrationShown) return CalibrationStage();
    return optionsShown || frameIseShown ? ChoiceStage() : StartStage();
}

RecordingSetupPresenter::Next RecordingSetupPresenter::ChoiceStage() {
    if (opt < 0) {
        prompts_.Message(NothingChosen);
        return Next::Stay;
    }
    if (opt == Look) {
        tableState_.ViewOnly = 1;
        if (!PhPath()) tableState_.HideTableOnBack = -1;
        return StartStage();
    }
    if (PhPath() && !ChannelOn(0) && !ChannelOn(1)) {
        prompts_.Message(NoPhChannel);
        return Next::Hardware;
    }
    tableState_.ViewOnly = 0;
    ShowSettings();
    return PhPath() ? SettingsOfPh() : SettingsOfIse();
}

void RecordingSetupPresenter::ShowSettings() {
    optionsShown = false;
    navigation_.PhPath.fill(0);
    menusEnabled = true;
    listsFilled = true;
    choices_.CmbTime = choices_.cmbX = 0;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::SettingsOfPh() {
    choices_.cmbY = OfferedRange(true);
    channelsShown = true;
    SetChannelBoxes();
    return Next::Stay;
}

RecordingSetupPresenter::Next RecordingSetupPresenter::SettingsOfIse() {
    if (hardware_.Channel[1] != 1) {
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
    calibration_.CaliDirty = 0;
    rangeLabel = " ppm Range";
    channelsShown = false;
    choices_.cmbY = OfferedRange(false);
    status = OnePointRemark(state_);
    SetChannelBoxes();
    return Next::Stay;
}

bool RecordingSetupPresenter::GoesOn() const {
    return !PhPath() && calibration_.CaliDirty == 1 && calibration_.CaliPoints > 0;
}

bool RecordingSetupPresenter::HasLatestIseCalibration() const {
    return calibration_.CaliPoints > 0 && !calibration_.FileTemp.empty() && !calibration_.FileDate.empty();
}

RecordingSetupPresenter::Next RecordingSetupPresenter::OpenIseCalibration() {
    const bool latest = optise == Latest;
    calibration_.CaliDirty = latest ? 1 : 0;
    navigation_.SetReturn(ScreenCode::frmPHSe);
    if (latest) {
        CaliSession session(state_, prompts_);
        session.DrawOpened();
        session.ShowLinear();
    }
    frameIseShown = false;
    return Next::IseCalibration;
}

void RecordingSetupPresenter::SetChannelBoxes() {
    choices_.chk1 = {ChannelOn(0), false};
    choices_.chk2 = {ChannelOn(1), false};
}

RecordingSetupPresenter::Next RecordingSetupPresenter::StartStage() {
    if (tableState_.ViewOnly == 0 && !InterfaceReady()) return Next::Stay;
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
    if (!phCalibration_.PhCaliUnsaved) LoadLastPhCalibration(state_, prompts_, files_);
}

const RecordingPeriods& RecordingSetupPresenter::Periods() const {
    return IntervalEntries[static_cast<std::size_t>(std::max(0, choices_.CmbTime))].periods;
}

void RecordingSetupPresenter::SelectInterval(int row) {
    choices_.CmbTime = row;
    choices_.cmbX = -1;
}

void RecordingSetupPresenter::Tick(int electrode, int index, bool on) {
    auto& ticks = electrode == 0 ? choices_.chk1 : choices_.chk2;
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
    status = "pH calibration of " + phCalibration_.PhCaliDate[1] + " and " + phCalibration_.PhCaliDate[2] + " in use.";
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
    calibration_.CaliDate = calibration_.FileDate;
    calibration_.LastSlope = RememberedSlope(state_);
    const std::string remark = OnePointRemark(state_);
    status = "ISE calibration of " + calibration_.FileDate + " in use." + (remark.empty() ? "" : " ") + remark;
}

}  // namespace kelvo
