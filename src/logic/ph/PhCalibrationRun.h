#pragma once

#include <string>
#include <vector>

#include "core/StateOf.h"
#include "core/UnsavedWork.h"
#include "link/Link.h"
#include "ph/PhCalibration.h"
#include "ph/PhValue.h"

namespace kelvo {

class FileChooser;
class Prompts;

/// Whether the last two of `rows` buffers make a line: their pH and their mV differ. With one buffer row 0, which
/// holds zeros, is the other. Neither the slope's size nor its sign is judged here.
bool CheckPhCalibration(const BufferTable& table, int rows);

namespace text {
extern const char* const BadPhCalibration;
}  // namespace text

/// The calibration of one or both pH electrodes, from the first buffer to the answer about saving. Whoever drives it
/// shows the buffer dialog between `NextBuffer` and `Take`:
///
///     run.Begin(2, 0);
///     while (run.NextBuffer()) { show frmPset; run.Take(); }
///     run.Finish();
///
/// While it runs `PhCalibration` of the state is being filled. Cancel and a failed check leave it with the last
/// calibration in force again, complete: that of the file saved last or the default one, or, where no file holds it,
/// what stood there before.
class PhCalibrationRun {
 public:
    PhCalibrationRun(StateOf<const Paths, Navigation, PhCalibration, PhEntry, HardwareSettings, StoredWithCalibration,
                             StatusMessages>
                         state,
                     Prompts& prompts, FileChooser& files, const Clock& clock, Link* link)
        : state_(state),
          navigation_(state),
          phCalibration_(state),
          phEntry_(state),
          hardware_(state),
          stored_(state),
          status_(state),
          prompts_(prompts),
          files_(files),
          clock_(clock),
          link_(link) {}

    /// Sizes the tables. @param buffers1, buffers2  2 to 4, or 0 for an electrode that is not calibrated: a calibration
    /// that it has already stays
    void Begin(int buffers1, int buffers2);
    /// Prepares caption and prompt of the dialog and starts the link afresh, so that no value of the buffer before
    /// stands for this one. @return false when no buffer is left, or the run has been left
    bool NextBuffer();
    /// The dialog has gone: takes its pair, or leaves the run after Cancel. After the last buffer of an electrode the
    /// link stops and the table is checked.
    void Take();

    enum class End {
        Left,         ///< by Cancel or a failed check
        Used,         ///< in use and saved
        UsedUnsaved,  ///< in use; the file was not named or could not be written, and `StatusMessage` says so
        Declined,     ///< the last calibration is in force again
    };
    /// All buffers have been taken: the saving question. A run that has been left asks nothing.
    End Finish();

    /// What would be lost if the program ended now, as calibration files: the buffers taken so far of each electrode
    /// that has at least two, and the calibration that was in use when the run began and that no file holds.
    std::vector<UnsavedPiece> Unsaved() const;

    /// A line per electrode calibrated, empty until its check has passed.
    const std::string& Quality() const { return quality_; }

 private:
    BufferTable& Table() { return electrode_ == 1 ? phCalibration_.Buffers1 : phCalibration_.Buffers2; }
    int Count() const { return phCalibration_.BufferCount[static_cast<std::size_t>(electrode_)]; }
    void StartElectrode();
    void CheckElectrode();
    void Leave();
    void PutBack();
    /// Whether an electrode that is not calibrated has a calibration already, which stays.
    bool Keeps(std::size_t electrode) const;
    /// Puts the calibrations that stay beside those taken, and the numbers of the electrodes to those.
    void NameElectrodes(PhCalibration& phCalibration) const;
    std::string KeptText() const;
    void StopLink();

    StateOf<const Paths, Navigation, PhCalibration, PhEntry, HardwareSettings, StoredWithCalibration, StatusMessages>
        state_;
    Navigation& navigation_;
    PhCalibration& phCalibration_;
    PhEntry& phEntry_;
    HardwareSettings& hardware_;
    StoredWithCalibration& stored_;
    StatusMessages& status_;
    Prompts& prompts_;
    FileChooser& files_;
    const Clock& clock_;
    Link* link_;

    PhCalibration before_;
    std::array<std::string, 3> electrodesBefore_;
    std::array<bool, 3> calibrates_{};  ///< 1, 2
    int electrode_ = 0, buffer_ = 0;
    int taken_ = 0;  ///< buffers of the electrode in hand
    bool left_ = false;
    bool over_ = true;  ///< nothing of this run waits for an answer
    std::string quality_;
};

}  // namespace kelvo
