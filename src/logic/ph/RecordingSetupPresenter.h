#pragma once

#include <array>
#include <string>

#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "link/Link.h"
#include "ph/RecordingChoices.h"
#include "ph/RecordingSetup.h"

namespace kelvo {

class FileChooser;
class Prompts;

/// The setup screen `frmPHSe` without its widgets: a wizard whose OK moves on from stage to stage. It sets up a pH
/// calibration, or a recording of pH or of an ISE, in these stages: choice (record or look at a file), for an ISE
/// which calibration, settings, start. What was set is in `RecordingChoices` of the state.
class RecordingSetupPresenter {
 public:
    /// What the screen does when a step has returned.
    enum class Next {
        Stay,
        Calibrate,       ///< the buffers are taken, then the menu comes
        Record,          ///< frmPHMe opens, which reads the choices as it loads
        IseCalibration,  ///< fmISEcli opens; it leads back here
        Hardware,        ///< frmHware opens
    };

    RecordingSetupPresenter(StateOf<CalibrationState, const Paths, Navigation, PhCalibration, PhEntry, RecordingChoices,
                                    TableState, const HardwareSettings>
                                state,
                            Prompts& prompts, FileChooser& files, Link* link)
        : state_(state),
          calibration_(state),
          navigation_(state),
          phCalibration_(state),
          phEntry_(state),
          choices_(state),
          tableState_(state),
          hardware_(state),
          prompts_(prompts),
          files_(files),
          link_(link) {}

    /// The screen loads in the layout that the path asks for. Back from an ISE calibration (`CaliDirty` 1) it goes on
    /// to the settings by itself.
    Next Load();
    /// `SetupOk`.
    Next Ok();
    /// `SetupCancel`: the last pH calibration is in force again.
    void Cancel();

    /// A row of `CmbTime`: the periods change, and none is chosen.
    void SelectInterval(int row);
    void SelectPeriod(int row) { choices_.cmbX = row; }
    void SelectRange(int row) { choices_.cmbY = row; }
    /// A tick of `chk1` (electrode 1) or `chk2`: 0 the electrode, 1 its ATC. Of a channel that is off none stays.
    void Tick(int electrode, int index, bool on);
    /// "Yes" and "No" of an electrode's calibration.
    void WantCalibration(int electrode, bool wanted);
    /// `txtbf`: a number below 2 becomes 2, one above 4 becomes 4.
    void SetBuffers(int electrode, const std::string& text);
    void StepBuffers(int electrode, int by);
    /// "Change Calibration": the pH one, or on the ISE path that of the ion. Nothing changes unless a file was read.
    void ChangeCalibration();

    // --- what the screen shows --------------------------------------------------------------------------------------
    std::string caption;
    bool menusEnabled = true;    ///< `mnuO`, `mnuH`
    bool optionsShown = false;   ///< `Panelopt`, `Opt`
    int opt = -1;                ///< the ticked one of `Opt`, -1 none
    bool frameIseShown = false;  ///< `frameISE`
    bool latestOffered = true;   ///< `optise(0)`
    int optise = -1;
    bool calibrationShown = false;  ///< `lbltxt(4)`, `FrmChannel1`, `FrmChannel2`
    bool channelsShown = true;      ///< `lbltxt(3)`, `frm3DChl`
    std::string rangeLabel = " pH Range";
    bool listsFilled = false;
    /// Periods that go with the chosen interval; those of the first when none is.
    const RecordingPeriods& Periods() const;
    bool PhPath() const { return navigation_.pHMode != 0; }

    /// The calibration question of one electrode.
    struct Electrode {
        bool wanted = false;      ///< `OptCali(0)`, else `OptCali(1)`
        std::string txtbf = "2";  ///< shown while wanted
        int buffers = 0;          ///< taken over by OK; 0 for an electrode that is not calibrated
    };
    std::array<Electrode, 2> electrodes;
    /// A quiet line on the last step, empty when there is nothing to say.
    std::string status;

 private:
    bool ChannelOn(int electrode) const { return hardware_.Channel[electrode == 0 ? 0 : 3] == 1; }
    Next ChoiceStage();
    Next SettingsOfPh();
    Next SettingsOfIse();
    Next OpenIseCalibration();
    Next StartStage();
    Next CalibrationStage();
    void ShowSettings();
    void SetChannelBoxes();
    /// Back from an ISE calibration that is to be used.
    bool GoesOn() const;
    bool HasLatestIseCalibration() const;
    bool InterfaceReady();
    void ChangeIseCalibration();

    StateOf<CalibrationState, const Paths, Navigation, PhCalibration, PhEntry, RecordingChoices, TableState,
            const HardwareSettings>
        state_;
    CalibrationState& calibration_;
    Navigation& navigation_;
    PhCalibration& phCalibration_;
    PhEntry& phEntry_;
    RecordingChoices& choices_;
    TableState& tableState_;
    const HardwareSettings& hardware_;
    Prompts& prompts_;
    FileChooser& files_;
    Link* link_;
};

}  // namespace kelvo
