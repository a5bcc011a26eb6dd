#pragma once

#include <array>
#include <string>

#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// The settings of the stability wait as the dialog `frmAutoD` holds them between its opening and "Ok". Boxes: 0
/// reading average, 1 waiting time, 2 threshold, 3 pre-set time. It knows no widget.
class StabilityPresenter {
 public:
    static constexpr int Average = 0, Waiting = 1, Threshold = 2, PresetTime = 3;
    static constexpr int StableReading = 0, AfterTime = 1;  ///< the two options
    static constexpr int OkButton = -1;                     ///< a focus that is no box

    StabilityPresenter(StateOf<const Paths, ReadingSettings> state, Prompts& prompts)
        : paths_(state), reading_(state), prompts_(prompts) {}

    void Load();
    /// The analyst has switched an option.
    void Click(int option, bool on);
    /// "Reset": both options off, boxes 0 and 1 at "10" and "30". Nothing reaches the settings before "Ok".
    void Reset();
    /// "Ok": checks in order, then the settings in memory and in the file. @return false after the message of the
    /// first value out of range; `focus` is then its box and nothing has changed.
    bool Ok();
    /// Where Enter in box i leads: the next box whose option is on, at the end `OkButton`.
    int Next(int i) const;

    std::array<bool, 2> option{};
    std::array<std::string, 4> text;
    std::array<bool, 4> enabled{};
    int focus = Average;

 private:
    void EnableByOptions();
    bool Within(int box, double lowest, double highest, const char* what);

    const Paths& paths_;
    ReadingSettings& reading_;
    Prompts& prompts_;
};

}  // namespace kelvo
