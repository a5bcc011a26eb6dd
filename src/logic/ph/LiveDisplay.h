#pragma once

#include <array>
#include <string>
#include <vector>

#include "core/FormModel.h"
#include "core/HardwareSettings.h"
#include "core/StateOf.h"
#include "core/TemperatureText.h"
#include "core/WorkingTable.h"
#include "link/LiveReading.h"

namespace kelvo {

class FileChooser;

/// The live display `frmDsply` without its widgets: pH, mV and temperature of one or two electrodes, once a second.
/// Its boxes are `txtTempt`: 0 °C and 1 °F of channel 1, 2 and 3 of channel 2.
class LiveDisplay : public FormModel {
 public:
    /// @param link null where no interface can be reached
    LiveDisplay(
        StateOf<CalibrationState, const Paths, Navigation, PhCalibration, TableState, HardwareSettings, ReadingSettings>
            state,
        Prompts& prompts, FileChooser& files, const Clock& clock, Link* link, WorkingTable& table);

    /// The screen loads: no values, the display runs.
    void Load();
    /// One tick of `Timer1`, 1000 ms. Shows nothing by itself; what is to be said afterwards is said by `Tell`, so that
    /// the display goes on behind a message.
    void Tick();
    void Tell();

    /// A temperature that is none is told, by `Tell`, and the one before stands again.
    void Enter(int i) override;
    /// The same without a box: the status line tells it.
    void Left(int i) override;
    bool KeyAllowed(int, char32_t) const override { return true; }
    void KeyRefused(int) override {}

    /// "Stop": the values stand, the link goes on.
    void Stop();
    /// "Re-start": the average fills with the next reading.
    void Restart();
    bool Running() const { return running_; }

    /// "Change Calibration". Without a file read nothing changes.
    void ChangeCalibration();
    /// "Average Setting" has set `ReadAvg`.
    void AverageSet() { live_.ResizeAverage(); }
    void SetAtc(int electrode, bool on) { Of(electrode).atc = on; }

    /// "Save Data": a row of what is shown, as it was when this was called. The display pauses until `RowDone`.
    /// @return false when there is nothing to keep; else the row has been added and asks for its sample number
    bool SaveRow();
    /// The row has been numbered or dropped.
    void RowDone();

    /// "Back" and "Close": the link stops, the table is saved or declined.
    void Leave();
    /// "Exit", up to the end of the program. @return false when the analyst stays
    bool Exit();

    // --- what the screen shows --------------------------------------------------------------------------------------
    /// One electrode: 0 or 1.
    struct Electrode {
        bool inUse = false;
        std::string ph, mv;  ///< `lbldata`; "Error" for a pH outside 0 to 14
        bool live = false;   ///< the values are measured ones of now
        std::string worth;   ///< the quiet line beside them
        std::string doubt;   ///< what else is to be told of them: the sensor, the calibration; parts joined by "; "
        std::string serial, date, buffers;
        bool atc = false;
        // --- kept between ticks
        bool outside = false, badTable = false;
    };
    const Electrode& Shown(int electrode) const { return electrodes_.at(static_cast<std::size_t>(electrode)); }
    /// Background of the temperature boxes of a channel, a colour of the sixteen; 15 is none.
    int Background(int channel) const { return sensors_.at(static_cast<std::size_t>(channel)).colour; }
    /// A quiet line on the last step, empty when there is nothing to say.
    const std::string& Status() const { return status_; }

 private:
    static constexpr int TickLimit = 32000;

    /// A temperature sensor: its message is shown once, after that its boxes flash as long as it fails.
    struct Sensor {
        bool told = false;
        int colour = 15;
        std::string fault;  ///< what is wrong with it
    };

    Electrode& Of(int electrode) { return electrodes_.at(static_cast<std::size_t>(electrode)); }
    void FillCalibration();
    void ShowSensor(int sensor, int channel, const char* mask);
    void ShowElectrode(int electrode);
    bool TakeTemperature(int box);
    float Compensated(int electrode, float ph) const;
    /// What is wrong with the sensor whose temperature stands beside an electrode, empty when nothing is.
    const std::string& FaultAt(int electrode) const;
    std::string TemperatureDoubt(int electrode) const;
    bool SensorOneOnChannelTwo() const { return hardware_.Channel[1] == 1 && hardware_.Channel[2] == 1; }
    bool ShowsSensorTwo() const;
    void Judge();
    std::string WorthOf(int electrode, const ReadingState& reading) const;
    std::string AtcText(int electrode) const;
    std::string DoubtOf(int electrode) const;
    std::string Held() const;
    RowFacts Facts() const;
    std::string Row(const std::string& number) const;
    bool LinkOpen() const { return link_ != nullptr && link_->PortOpen(); }

    StateOf<CalibrationState, const Paths, Navigation, PhCalibration, TableState, HardwareSettings, ReadingSettings>
        state_;
    CalibrationState& calibration_;
    Navigation& navigation_;
    PhCalibration& phCalibration_;
    TableState& tableState_;
    HardwareSettings& hardware_;
    FileChooser& files_;
    const Clock& clock_;
    Link* link_;
    WorkingTable& table_;
    LiveReading live_;
    std::array<Electrode, 2> electrodes_;
    std::array<Sensor, 2> sensors_;
    std::array<TemperaturePair, 2> taken_;  ///< temperatures of the channels as they were last taken
    std::vector<std::string> messages_;
    std::string status_, stoppedAt_;
    bool running_ = false, paused_ = false;
};

namespace text {
extern const char* const SensorFailed1;
extern const char* const SensorFailed2;
}  // namespace text

}  // namespace kelvo
