#include "calibration/PointReading.h"

#include "calibration/EntryState.h"
#include "core/AverageSetup.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/ReadingSettings.h"

namespace kelvo {
namespace {

const char* const HintPlain = "Immerse the electrode in the solution, when the reading is stable, click on 'OK'.";
const char* const HintWait =
    "Please wait for the stable reading, or click on 'Now' to take the current displayed data.";
const char* const HintPreset =
    "Please wait for the pre-set time, or click on 'Now' to take the current displayed data.";
const char* const HintStable = "The reading is stable now, please click on 'Ok' to continue.";

}  // namespace

void PointReading::Open() {
    live_.Open();
    entry_.PointRunning = 0;
}

void PointReading::SetHint(const char* text, bool red) {
    hint_ = text;
    hintIsRed_ = red;
}

void PointReading::StartMeasurement() {
    form_.BeginMeasurement();
    if (reading_.ASD < 1) {
        SetHint(HintPlain, false);
        return;
    }
    live_.StartWait();
    ShowWait();
}

void PointReading::Tick() {
    countDown_.clear();
    if (!live_.Take()) return;
    form_.Measured(live_.MvText());
    FollowStability();
    if (hardware_.Channel[2] == 1) TakeTemperature();
    live_.Count();
}

void PointReading::TakeTemperature() {
    const float celsius = live_.Celsius();
    if (celsius >= 0) {
        form_.MeasuredTemperature(celsius);
        return;
    }
    if (entry_.SensorWarned) return;
    entry_.SensorWarned = true;
    prompts_.Message(text::SensorNotWorking);
}

void PointReading::FollowStability() {
    const auto verdict = live_.Judge(form_.Text(PointForm::Potential));
    countDown_ = live_.CountDown();
    const bool stable = verdict == ReadingSource::Verdict::Stable;
    if (verdict == ReadingSource::Verdict::NotWaiting || stable == (entry_.PointRunning == 0)) return;
    if (!stable) return ShowWait();
    entry_.PointRunning = 0;
    SetHint(HintStable, false);
}

void PointReading::ShowWait() {
    entry_.PointRunning = 1;
    SetHint(reading_.ASD == 2 ? HintPreset : HintWait, true);
}

void PointReading::AskAverage() {
    if (kelvo::AskAverage(state_, prompts_)) live_.ResizeAverage();
}

}  // namespace kelvo
