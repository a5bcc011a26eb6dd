#include "link/StabilityPresenter.h"

#include "core/Dialogs.h"
#include "core/Paths.h"
#include "core/ReadingSettings.h"
#include "core/Settings.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const Section = "Hareware";

}  // namespace

void StabilityPresenter::EnableByOptions() {
    enabled = {option[StableReading], false, option[StableReading], option[AfterTime]};
}

void StabilityPresenter::Load() {
    option = {reading_.ASD == 1, reading_.ASD == 2};
    text[Average] = TrimStr(reading_.ASDavg);
    // Box 1 is never read back. With the watch off it shows the pre-set time, else the waiting time in force.
    text[Waiting] = TrimStr(reading_.ASD < 1 ? reading_.Preset : reading_.Waittime);
    text[Threshold] = TrimStr(reading_.Threshold);
    text[PresetTime] = TrimStr(reading_.Preset);
    EnableByOptions();
    focus = option[AfterTime] ? PresetTime : Average;
}

void StabilityPresenter::Click(int clicked, bool on) {
    const auto i = static_cast<std::size_t>(clicked);
    option[i] = on;
    if (on) option[1 - i] = false;
    EnableByOptions();
}

void StabilityPresenter::Reset() {
    option = {};
    EnableByOptions();
    text[Average] = "10";
    text[Waiting] = "30";
}

bool StabilityPresenter::Within(int box, double lowest, double highest, const char* what) {
    const double value = Val(text[static_cast<std::size_t>(box)]);
    if (value >= lowest && value <= highest) return true;
    prompts_.Message(std::string(what) + "data are out of range, please type in again.");
    focus = box;
    return false;
}

bool StabilityPresenter::Ok() {
    std::int16_t asd = 0, average = reading_.ASDavg, preset = reading_.Preset;
    float threshold = reading_.Threshold;
    if (option[StableReading]) {
        asd = 1;
        if (!Within(Average, 1, 30, "The average setting")) return false;
        average = ToInt16(Val(text[Average]));
        if (!Within(Threshold, 0.001, 0.9, "The threshold ")) return false;
        threshold = ToSingle(Val(text[Threshold]));
    }
    if (option[AfterTime]) {
        asd = 2;
        if (!Within(PresetTime, 1, 30000, "The pes-set time ")) return false;
        preset = ToInt16(Val(text[PresetTime]));
    }
    reading_.ASD = asd;
    reading_.ASDavg = average;
    reading_.Threshold = threshold;
    reading_.Preset = preset;
    WriteSetting(Section, "ASD", Str(asd), paths_.IniPath);
    WriteSetting(Section, "ASDavg", Str(average), paths_.IniPath);
    WriteSetting(Section, "threshold", Str(threshold), paths_.IniPath);
    WriteSetting(Section, "Preset", Str(preset), paths_.IniPath);
    return true;
}

int StabilityPresenter::Next(int i) const {
    for (int next = i + 1; next < static_cast<int>(enabled.size()); ++next)
        if (enabled[static_cast<std::size_t>(next)]) return next;
    return OkButton;
}

}  // namespace kelvo
