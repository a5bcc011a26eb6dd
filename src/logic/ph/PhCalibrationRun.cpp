#include "ph/PhCalibrationRun.h"

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/StoredWithCalibration.h"
#include "ph/ElectrodeQuality.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "text/Number.h"

namespace kelvo {

namespace text {
const char* const BadPhCalibration = "Bad calibration data, please re-do the calibration";
}  // namespace text

namespace {

constexpr std::size_t Ph = 1, Mv = 2;

const char* const LastInUse = "The last calibration is in use again.";
const char* const SaveQuestion = "Would you like to save the calibration data and use them for the measurement?";

}  // namespace

bool CheckPhCalibration(const BufferTable& table, int rows) {
    const auto row = [&](int i) { return i == 0 ? std::array<float, 3>{} : table.at(static_cast<std::size_t>(i)); };
    const auto last = row(rows), before = row(rows - 1);
    return last[Ph] != before[Ph] && last[Mv] != before[Mv];
}

void PhCalibrationRun::Begin(int buffers1, int buffers2) {
    before_ = state_;
    electrodesBefore_ = stored_.FileElectrodeNum;
    calibrates_ = {false, buffers1 > 0, buffers2 > 0};
    phCalibration_.BufferCount = {static_cast<std::int16_t>(buffers1 + buffers2), static_cast<std::int16_t>(buffers1),
                                  static_cast<std::int16_t>(buffers2)};
    if (buffers1 > 0) phCalibration_.Buffers1.assign(static_cast<std::size_t>(buffers1) + 1, {});
    if (buffers2 > 0) phCalibration_.Buffers2.assign(static_cast<std::size_t>(buffers2) + 1, {});
    phCalibration_.PhCaliUnsaved = false;
    phEntry_.PhCancelled = 0;
    electrode_ = buffer_ = taken_ = 0;
    left_ = over_ = false;
    quality_.clear();
}

bool PhCalibrationRun::NextBuffer() {
    if (left_) return false;
    while (electrode_ == 0 || buffer_ == Count()) {
        if (electrode_ == 2) return false;
        ++electrode_;
        buffer_ = taken_ = 0;
        if (Count() > 0) StartElectrode();
    }
    ++buffer_;
    if (link_ != nullptr) link_->StartLink();
    return true;
}

void PhCalibrationRun::StartElectrode() {
    phEntry_.PhElectrode = electrode_;
    phEntry_.PhCaption = "Electrode " + TrimStr(electrode_);
    phEntry_.PhPrompt = "Please type in the pH of the buffer in the box below and press 'Enter', then Immerse " +
                        phEntry_.PhCaption + " in the solution, when Reading is stable click on 'OK'";
    phCalibration_.PhCaliDate[static_cast<std::size_t>(electrode_)] = DateTimeText(clock_.Now(), hardware_.DateFormat);
    navigation_.ReturnScreen = 0;
}

void PhCalibrationRun::Take() {
    if (phEntry_.PhCancelled != 0) {
        phEntry_.PhCancelled = 0;
        StopLink();
        Leave();
        return;
    }
    auto& row = Table().at(static_cast<std::size_t>(buffer_));
    row[Ph] = ToSingle(Val(phEntry_.txtph[0]));
    row[Mv] = ToSingle(Val(phEntry_.txtph[1]));
    if (buffer_ == 1)
        phCalibration_.PhCaliTemp[static_cast<std::size_t>(electrode_)] = ToSingle(Val(phEntry_.txtph[2]));
    taken_ = buffer_;
    if (buffer_ == Count()) CheckElectrode();
}

void PhCalibrationRun::CheckElectrode() {
    StopLink();
    if (!CheckPhCalibration(Table(), Count())) {
        prompts_.Message(text::BadPhCalibration);
        Leave();
        return;
    }
    const double celsius = double{phCalibration_.PhCaliTemp[static_cast<std::size_t>(electrode_)]};
    quality_ += (quality_.empty() ? "" : " ") +
                ElectrodeQualityText(electrode_, JudgeElectrode(Table(), Count(), celsius), celsius);
}

void PhCalibrationRun::Leave() {
    left_ = true;
    quality_.clear();
    PutBack();
    status_.StatusMessage = LastInUse;
}

void PhCalibrationRun::PutBack() {
    over_ = true;
    static_cast<PhCalibration&>(state_) = before_;
    stored_.FileElectrodeNum = electrodesBefore_;
    // What no file holds would be lost by reading one.
    if (!phCalibration_.PhCaliUnsaved) LoadLastPhCalibration(state_, prompts_, files_);
}

void PhCalibrationRun::StopLink() {
    if (link_ != nullptr && link_->PortOpen()) link_->StopLink();
}

std::vector<UnsavedPiece> PhCalibrationRun::Unsaved() const {
    std::vector<UnsavedPiece> pieces;
    if (over_) return pieces;
    const auto keep = [&](const PhCalibration& calibration) {
        pieces.push_back({"the pH calibration", ".CLI", PhBytes(calibration), {}});
    };
    PhCalibration kept = phCalibration_;
    for (int e = 1; e <= 2; ++e) {
        auto& count = kept.BufferCount[static_cast<std::size_t>(e)];
        if (e > electrode_) count = 0;
        if (e == electrode_ && count > 0) count = static_cast<std::int16_t>(taken_);
        // A single buffer would open as a calibration through zero.
        if (count < 2) count = 0;
    }
    if (kept.BufferCount[1] + kept.BufferCount[2] > 0) {
        NameElectrodes(kept);
        keep(kept);
    }
    if (before_.PhCaliUnsaved) {
        keep(before_);
    }
    return pieces;
}

bool PhCalibrationRun::Keeps(std::size_t e) const {
    return !calibrates_[e] && before_.BufferCount[e] > 0;
}

void PhCalibrationRun::NameElectrodes(PhCalibration& phCalibration) const {
    for (const std::size_t e : {1u, 2u})
        if (Keeps(e))
            phCalibration.BufferCount[e] = before_.BufferCount[e];
        else if (calibrates_[e])
            phCalibration.PhCaliElectrode[e] = hardware_.ElectrodeNum[e];
}

std::string PhCalibrationRun::KeptText() const {
    std::string text;
    for (const std::size_t e : {1u, 2u})
        if (Keeps(e) && hardware_.Channel[e == 1 ? 0 : 3] == 1)
            text += " Electrode " + TrimStr(static_cast<int>(e)) + " keeps its calibration of " +
                    phCalibration_.PhCaliDate[e] + ".";
    return text;
}

PhCalibrationRun::End PhCalibrationRun::Finish() {
    if (left_) return End::Left;
    if (!prompts_.AskToSave(SaveQuestion)) {
        PutBack();
        status_.StatusMessage = LastInUse;
        return End::Declined;
    }
    NameElectrodes(state_);
    phCalibration_.BufferCount[0] =
        static_cast<std::int16_t>(phCalibration_.BufferCount[1] + phCalibration_.BufferCount[2]);
    stored_.FileElectrodeNum[1] = phCalibration_.PhCaliElectrode[1];
    stored_.FileElectrodeNum[2] = phCalibration_.PhCaliElectrode[2];
    status_.StatusMessage.clear();
    phCalibration_.PhCaliUnsaved = !SavePhCalibration(state_, prompts_, files_);
    over_ = true;
    if (phCalibration_.PhCaliUnsaved && status_.StatusMessage.empty())
        status_.StatusMessage = "The pH calibration has not been saved.";
    if (phCalibration_.PhCaliUnsaved)
        status_.StatusMessage += " It is in use until the program ends or another one is opened.";
    status_.StatusMessage += (status_.StatusMessage.empty() ? "" : " ") + quality_ + KeptText();
    return phCalibration_.PhCaliUnsaved ? End::UsedUnsaved : End::Used;
}

}  // namespace kelvo
