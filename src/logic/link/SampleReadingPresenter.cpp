#include "link/SampleReadingPresenter.h"

#include <cmath>

#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/IonSettings.h"
#include "core/Messages.h"
#include "core/ReadingSettings.h"
#include "core/TemperatureText.h"
#include "text/Number.h"

namespace kelvo {
namespace text {

const char* const StableNow = "      The reading is stable now, please click on 'Ok' to continue.";

}  // namespace text

namespace {

constexpr int White = 15, Red = 4, Yellow = 14;
constexpr float LargestDifference = 2;

const char* const HintImmerse = "Please immerse the electrode in the sample,";
const char* const HintPlain = " then click on 'Ok'.";
const char* const HintStable = " when the reading is stable, click on 'OK'.";
const char* const HintWait =
    " Please wait for the stable reading, or click on 'Now' to take the current displayed data.";
const char* const HintPreset =
    " Please wait for the pre-set time completed, or click on 'Now' to take the current displayed data.";

}  // namespace

void SampleReadingPresenter::SetHint() {
    Label1 = client_ != nullptr ? client_->ReadingPrompt() : std::string();
    if (Label1.empty()) Label1 = std::string(HintImmerse) + (reading_.ASD < 1 ? HintPlain : HintStable);
    hintIsRed = false;
    stable_ = false;
}

void SampleReadingPresenter::Load() {
    live_.Open();
    TempWarned_ = TempFailed_ = closed_ = flash_ = false;
    awaited_ = 0;
    Text1.clear();
    lblCntDown.clear();
    if (client_ != nullptr) client_->ColourTemperature(White);
    SetHint();
}

void SampleReadingPresenter::Resume() {
    if (!closed_) return;
    closed_ = false;
    live_.StopWait();
    live_.Restart();
    Text1.clear();
    lblCntDown.clear();
    awaited_ = link_ != nullptr ? link_->Counts().good + 1 : 0;
    SetHint();
}

void SampleReadingPresenter::Tick() {
    if (closed_) return;
    if (!live_.Waiting()) SetHint();
    if (live_.Tick() <= TickLimit) TakeReading();
    if (client_ == nullptr || closed_) return;
    client_->ShowReadingState(State());
    client_->ShowLive(State().IsLive() ? std::optional(static_cast<float>(Val(Text1))) : std::nullopt);
}

void SampleReadingPresenter::TakeReading() {
    lblCntDown.clear();
    if (link_ != nullptr && link_->Counts().good < awaited_) return;
    if (!live_.Take(ReadingAverage::FirstTick::WaitsForData)) return;
    Text1 = live_.MvText();
    FollowStability();
    if (client_ != nullptr) {
        ShowTemperature();
        if (hardware_.Channel[3] == 1)
            client_->ShowSecondElectrode(live_.Average(2), correctPh);
        else
            client_->ShowNoSecondElectrode();
    }
    live_.Count();
}

void SampleReadingPresenter::FollowStability() {
    const bool stable = live_.Judge(Text1) == LiveReading::Verdict::Stable;
    lblCntDown = live_.CountDown();
    if (!live_.Waiting() || stable == stable_) return;
    stable_ = stable;
    if (!stable) return ShowWait();
    hintIsRed = false;
    Label1 = text::StableNow;
}

void SampleReadingPresenter::ShowWait() {
    stable_ = false;
    hintIsRed = true;
    Label1 = reading_.ASD == 2 ? HintPreset : HintWait;
}

void SampleReadingPresenter::ShowTemperature() {
    if (hardware_.Channel[2] == 1) {
        const float celsius = live_.Celsius();
        client_->ShowTemperature(Format(celsius, "#0.0"), FahrenheitText(celsius));
        JudgeTemperature(celsius);
        return;
    }
    if (!CelsiusOf(hardware_.Temperature[1])) return;
    client_->ShowTemperature(hardware_.Temperature[1], FahrenheitOrNone(hardware_.Temperature[1]));
}

void SampleReadingPresenter::JudgeTemperature(float celsius) {
    if (celsius < 0) {
        if (TempFailed_) return Flash(Red);
        TempFailed_ = true;
        prompts_.Message(text::SensorNotWorking);
    } else if (std::abs(static_cast<float>(Val(client_->CalibrationCelsius().value_or(ion_.CaliTemp))) - celsius) >
               LargestDifference) {
        if (TempWarned_) return Flash(Yellow);
        TempWarned_ = true;
        prompts_.Message(TrimStr(live_.Tick()) + TemperatureDiffers, {}, Icon::Exclamation);
    } else {
        flash_ = false;
        client_->ColourTemperature(White);
    }
}

void SampleReadingPresenter::Flash(int colour) {
    flash_ = !flash_;
    client_->ColourTemperature(flash_ ? colour : White);
}

SampleReadingPresenter::Press SampleReadingPresenter::Ok() {
    // Before the first frame there is no value to take: 0.00 would be one that nobody has measured.
    if (Text1.empty()) return Press::Waits;
    if (reading_.ASD > 0 && !live_.Waiting()) {
        live_.StartWait();
        ShowWait();
        return Press::Waits;
    }
    live_.StopWait();
    const bool many = client_ != nullptr && client_->TakesManySamples();
    if (many) TempWarned_ = true;
    const bool taken = client_ == nullptr || client_->TakeSample(Text1);
    SetHint();
    if (!taken) return Press::Refused;
    if (link_ != nullptr && link_->PortOpen() && many) link_->StopLink();
    if (client_ != nullptr) client_->SampleTaken();
    if (!many) {
        closed_ = true;
        return Press::Taken;
    }
    // What is read next may be another thing than what has just been taken.
    SetHint();
    if (link_ != nullptr) link_->StartLink();
    // The link begins without data: the value of this sample must not stand for the next one.
    live_.Restart();
    Text1.clear();
    return Press::Taken;
}

void SampleReadingPresenter::Cancel() {
    if (link_ != nullptr && link_->PortOpen()) link_->StopLink();
    closed_ = true;
    live_.StopWait();
    if (client_ != nullptr) client_->ReadingCancelled();
}

}  // namespace kelvo
