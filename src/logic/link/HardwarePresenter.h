#pragma once

#include <array>
#include <string>

#include "core/StateOf.h"
#include "core/Tables.h"

namespace kelvo {

class Prompts;

/// What is plugged into the interface, as the hardware dialog holds it between its opening and "Back": the choices,
/// what they show and hide, the checks and the writing. It knows no widget.
class HardwarePresenter {
 public:
    // Indices of the check boxes.
    static constexpr int Ph1 = 0, Ise = 1, Sensor1 = 2, Ph2 = 3, Sensor2 = 4;
    // Indices of txtC.
    static constexpr int Celsius1 = 0, Celsius2 = 1, Fahrenheit1 = 2, Fahrenheit2 = 3, RefNumber = 4, RefType = 5;

    /// What "Back" has asked for last.
    enum class Missing { Nothing, Electrode, Temperature1, Ion, Temperature2 };

    HardwarePresenter(StateOf<const Paths, IonSettings, HardwareSettings, StoredWithCalibration, StatusMessages> state,
                      Prompts& prompts)
        : state_(state),
          paths_(state),
          ion_(state),
          hardware_(state),
          stored_(state),
          status_(state),
          prompts_(prompts) {}

    /// Fills everything from the state, clicking through the check boxes in their order.
    void Load();
    /// The analyst has switched check box i.
    void Click(int i, bool on);
    /// Enter in, or leaving of, a temperature box: fills the box of the other unit, mask "#0.0".
    void ConvertTemperature(int txtC);
    /// An entry of the ion list has been chosen, -1 none.
    void SelectIon(int index);
    /// Text typed into the ion list. A listed name selects its row; any other text names the user's own ion.
    void TypeIon(const std::string& text);
    /// The custom ion dialog has closed: shows the name that came back.
    void CustomIonDone();

    /// "Back": checks in order, the first failure shows its message; then everything goes into the state and the
    /// settings file. @return false when a check failed and the dialog stays.
    bool Back();
    /// What both buttons read before anything else.
    void CommonReads();

    // --- what the boxes hold --------------------------------------------------------------------------------------
    std::array<bool, 5> checked{};
    std::array<std::string, 3> number;  ///< txtNum: pH 1, ISE, pH 2
    std::array<std::string, 6> txtC;
    std::string ionText;
    int ionIndex = NoIon;
    std::string isab, oper;
    int portIndex = -1;
    int formatIndex = 0;
    bool networkPrinter = false;

    Missing missing = Missing::Nothing;

    // --- what is shown --------------------------------------------------------------------------------------------
    std::array<bool, 3> numberVisible{};
    bool sensor2Visible = false, sensor2Enabled = true;
    bool iseVisible = false;                     ///< reference electrode, detected ion and ISAB
    bool TemperatureVisible(int channel) const;  ///< default temperature of channel 1 or 2, both units
    bool TemperatureLabelsVisible() const;

    /// A quiet line on what "Back" may do unseen, empty when there is nothing.
    std::string StatusMessage() const;

 private:
    Missing Check() const;
    /// The °F box of a channel holds what Enter has not turned into °C.
    bool FahrenheitWaits(int channel) const;
    void Store();
    bool WriteAll() const;

    StateOf<const Paths, IonSettings, HardwareSettings, StoredWithCalibration, StatusMessages> state_;
    const Paths& paths_;
    IonSettings& ion_;
    HardwareSettings& hardware_;
    StoredWithCalibration& stored_;
    StatusMessages& status_;
    Prompts& prompts_;
};

}  // namespace kelvo
