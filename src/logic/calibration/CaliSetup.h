#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/StateOf.h"
#include "core/Tables.h"

namespace kelvo {

class Clock;
class Prompts;

/// The choices of a new ISE calibration as the setup dialog `frmsetup` holds them, their checks and their writing,
/// and what has to happen around the entry of the points. It knows no widget.
class CaliSetup {
 public:
    static constexpr int Keyboard = 0, OnLine = 1, StabilityWatch = 2;

    CaliSetup(StateOf<CalibrationState, const Paths, Navigation, const HardwareSettings, ReadingSettings> state,
              Prompts& prompts)
        : state_(state), calibration_(state), paths_(state), hardware_(state), reading_(state), prompts_(prompts) {}

    /// Reads the last choices. @param onLineAvailable whether readings can come from an interface at all; without
    /// one the keyboard is ticked
    void Load(bool onLineAvailable);
    std::vector<std::string> MvList() const;
    std::vector<std::string> LogCList() const;

    // --- txtspin and its up-down control ----------------------------------------------------------------------------
    void SpinUp();
    void SpinDown();
    /// Digits 1 to 8 alone; 0 and 9 are refused as keystrokes.
    static bool SpinKeyAllowed(char32_t key) { return key >= U'1' && key <= U'8'; }
    void SpinKeyRefused();
    /// Enter: 11 or more becomes 10, less than 2 becomes 2.
    void SpinEnter();

    /// A tick of the data input mode: each unticks the other.
    void Tick(int box, bool on);

    /// "Ok" up to the entry of points: checks, `IonIndex`, `ASD`, the settings, the marks.
    /// @return false when something is missing; its message has been shown, `CaliDirty` is 0, the choices stand
    bool Accept();
    /// Takes scales and number of points into the state and draws the empty graph.
    void BeginEntry();
    /// `CurrentPoint`, title and prompt of the point dialog for point i, from 1.
    void BeginPoint(int i);
    /// The entry was cancelled: no calibration is held.
    void Abandon();
    /// All points are in: `CaliDate`, and temperature and date of the calibration in use.
    void Complete(const Clock& clock);
    /// "Cancel" of the dialog.
    void Cancel();

    int mvIndex = -1, logCIndex = -1, ionIndex = NoIon;
    std::string txtspin;
    std::array<bool, 3> ticked{};

    /// What `Accept` has asked for last.
    enum class Missing { Nothing, MvScale, LogCScale, Ion, Mode, Points };
    Missing missing = Missing::Nothing;

    /// A quiet line on what a choice does unseen, empty when there is nothing.
    std::string StatusMessage() const;

 private:
    bool Refuse(Missing what);
    void Write() const;

    int listedIon_ = NoIon;  ///< ion that the ppm limits of the LogC rows have been worked out for

    StateOf<CalibrationState, const Paths, Navigation, const HardwareSettings, ReadingSettings> state_;
    CalibrationState& calibration_;
    const Paths& paths_;
    const HardwareSettings& hardware_;
    ReadingSettings& reading_;
    Prompts& prompts_;
};

}  // namespace kelvo
