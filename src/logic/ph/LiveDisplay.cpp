#include "ph/LiveDisplay.h"

#include <algorithm>
#include <cstdio>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Navigation.h"
#include "core/ReadingSettings.h"
#include "core/Routes.h"
#include "core/StateOf.h"
#include "core/TableState.h"
#include "core/Tables.h"
#include "core/TemperatureText.h"
#include "link/SensorFault.h"
#include "ph/CalibrationDoubt.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "ph/PhCalibrationRun.h"
#include "ph/PhValue.h"
#include "text/Number.h"

namespace kelvo {

namespace text {
const char* const SensorFailed1 =
    "The Temperature sensor 1 is not working, please check the connection or re-configure the hardware setup.";
const char* const SensorFailed2 =
    "The Temperature sensor 2 is not working, please check the connection or re-configure the hardware setup.";
}  // namespace text

namespace {

constexpr int White = 15, Red = 4;
constexpr float LowestPh = 0, HighestPh = 14;
constexpr std::size_t Ph = 1;

const char* const SerialDiffers =
    "The pH electrode serial number is different from calibration. Please use Option/View Data for more details";
const char* const Steady = "steady";
const TableFileRequest PhtFile = {nullptr, "All Data(*.pht)|*.pht", "*.pht", ".pht"};

/// "7, 4": the pH of the buffers in the order they were taken.
std::string BufferList(const BufferTable& table, int count) {
    std::string list;
    for (int i = 1; i <= count && i < static_cast<int>(table.size()); ++i)
        list += (i > 1 ? ", " : "") + TrimStr(table[static_cast<std::size_t>(i)][Ph]);
    return list;
}

std::string SecondsText(const DateTime& time) {
    char text[40];
    std::snprintf(text, sizeof text, "%02d:%02d:%02d", time.hour, time.minute, time.second);
    return text;
}

}  // namespace

LiveDisplay::LiveDisplay(
    StateOf<CalibrationState, const Paths, Navigation, PhCalibration, TableState, HardwareSettings, ReadingSettings>
        state,
    Prompts& prompts, FileChooser& files, const Clock& clock, Link* link, WorkingTable& table)
    : FormModel(4, prompts),
      state_(state),
      calibration_(state),
      navigation_(state),
      phCalibration_(state),
      tableState_(state),
      hardware_(state),
      files_(files),
      clock_(clock),
      link_(link),
      table_(table),
      live_(state, clock, link) {}

// --- opening -----------------------------------------------------------------------------------------------------

void LiveDisplay::Load() {
    navigation_.SetReturn(ScreenCode::frmDsply);
    tableState_.TableFile.clear();
    electrodes_ = {};
    sensors_ = {};
    Of(0).inUse = hardware_.Channel[0] == 1;
    Of(1).inUse = hardware_.Channel[3] == 1;
    FillCalibration();
    const std::array<bool, 2> read = {
        hardware_.Channel[2] == 1, hardware_.SensorCount == 1 || SensorOneOnChannelTwo() || hardware_.Channel[4] == 1};
    for (int channel = 0; channel < 2; ++channel) {
        const int box = 2 * channel;
        const bool typed = !read[static_cast<std::size_t>(channel)];
        Mutable(box).readOnly = Mutable(box + 1).readOnly = !typed;
        Set(box, typed ? hardware_.Temperature[static_cast<std::size_t>(channel) + 1] : "");
        Set(box + 1, typed ? FahrenheitOrNone(Text(box)) : "");
        taken_[static_cast<std::size_t>(channel)] = {Text(box), Text(box + 1)};
    }
    live_.Open();
    running_ = true;
    paused_ = false;
    Judge();
}

void LiveDisplay::FillCalibration() {
    for (int e = 0; e < 2; ++e) {
        const auto number = static_cast<std::size_t>(e) + 1;
        Electrode& electrode = Of(e);
        electrode.serial = hardware_.ElectrodeNum[number];
        electrode.date = phCalibration_.PhCaliDate[number];
        electrode.buffers =
            BufferList(e == 0 ? phCalibration_.Buffers1 : phCalibration_.Buffers2, phCalibration_.BufferCount[number]);
        electrode.badTable = false;
    }
}

// --- the tick ----------------------------------------------------------------------------------------------------

void LiveDisplay::Tick() {
    if (!running_ || paused_) return;
    if (live_.Tick() > TickLimit) {
        Stop();
        status_ = "The display has stopped after 32000 readings; Re-start goes on.";
        return;
    }
    if (live_.Take()) {
        if (hardware_.Channel[2] == 1) ShowSensor(0, SensorOneOnChannelTwo() ? 1 : 0, "#0.0");
        // Without a sensor the boxes of channel 1 keep the default temperature, or what was typed over it.
        ShowElectrode(0);
        if (ShowsSensorTwo()) ShowSensor(1, 1, "#.0");
        if (hardware_.SensorCount == 1 && !SensorOneOnChannelTwo())
            for (const int box : {2, 3})
                Set(box, Text(box - 2));
        ShowElectrode(1);
        live_.Count();
    }
    if (Of(0).badTable || Of(1).badTable) {
        messages_.emplace_back(text::BadPhCalibration);
        Stop();
        return;
    }
    Judge();
}

bool LiveDisplay::ShowsSensorTwo() const {
    // With an ISE on channel 1 the boxes of channel 2 are lent to sensor 1 where there is one.
    return hardware_.SensorCount == 2 && hardware_.Channel[4] == 1 && !SensorOneOnChannelTwo();
}

void LiveDisplay::ShowSensor(int sensor, int channel, const char* mask) {
    const float celsius = SensorToCelsius(StandardSensor(), live_.Average(sensor == 0 ? 1 : 3));
    const int box = 2 * channel;
    Set(box, Format(celsius, mask));
    Set(box + 1, FahrenheitFrom(Text(box)));
    Sensor& shown = sensors_[static_cast<std::size_t>(channel)];
    shown.fault = SensorFaultText(sensor + 1, celsius);
    if (celsius >= 0) {
        shown.colour = White;
    } else if (!shown.told) {
        shown.told = true;
        messages_.emplace_back(sensor == 0 ? text::SensorFailed1 : text::SensorFailed2);
    } else {
        shown.colour = shown.colour == White ? Red : White;
    }
}

void LiveDisplay::ShowElectrode(int e) {
    Electrode& electrode = Of(e);
    const auto number = static_cast<std::size_t>(e) + 1;
    const float mv = live_.Average(e == 0 ? 0 : 2);
    if (!electrode.inUse) return;
    if (phCalibration_.BufferCount[number] <= 0) {
        electrode.ph.clear();
        electrode.mv.clear();
        return;
    }
    electrode.mv = Format(mv, "#.0");
    const auto ph =
        PhFromMv(e == 0 ? phCalibration_.Buffers1 : phCalibration_.Buffers2, phCalibration_.BufferCount[number], mv);
    electrode.badTable = !ph;
    const float value = ph ? electrode.atc ? Compensated(e, *ph) : *ph : HighestPh + 1;
    electrode.outside = !(value >= LowestPh && value <= HighestPh);
    electrode.ph = electrode.outside ? "Error" : Format(value, "#.00");
}

const std::string& LiveDisplay::FaultAt(int electrode) const {
    // The only sensor stands beside both electrodes.
    const bool shared = hardware_.SensorCount == 1 && !SensorOneOnChannelTwo();
    return sensors_[shared ? 0 : static_cast<std::size_t>(electrode)].fault;
}

float LiveDisplay::Compensated(int electrode, float ph) const {
    // The box beside the electrode, and the temperature of its own calibration. What is being typed counts from the
    // moment that it is a temperature.
    const int box = 2 * electrode;
    const auto typed = CelsiusOf(Text(box)), before = CelsiusOf(taken_[static_cast<std::size_t>(electrode)].celsius);
    if (!typed && !before) return ph;
    return PhTempCorrect(ph, phCalibration_.PhCaliTemp[static_cast<std::size_t>(electrode) + 1],
                         typed ? *typed : *before);
}

void LiveDisplay::Judge() {
    for (int e = 0; e < 2; ++e) {
        Electrode& electrode = Of(e);
        const ReadingState reading = live_.State(2 * e);
        electrode.live = running_ && !paused_ && reading.IsLive();
        electrode.worth = WorthOf(e, reading);
        electrode.doubt = DoubtOf(e);
    }
}

std::string LiveDisplay::WorthOf(int e, const ReadingState& reading) const {
    const Electrode& electrode = Shown(e);
    if (!electrode.inUse) return {};
    if (phCalibration_.BufferCount[static_cast<std::size_t>(e) + 1] <= 0) return "no calibration";
    if (electrode.badTable) return "the calibration makes no line";
    if (std::string held = Held(); !held.empty()) return held;
    switch (reading.kind) {
        case ReadingState::Kind::Waiting: return "waiting for the first reading";
        case ReadingState::Kind::Stale: return TrimStr(reading.seconds) + " s old";
        case ReadingState::Kind::Averaging:
            return "averaging: " + TrimStr(reading.filled) + " of " + TrimStr(reading.wanted) + " readings";
        case ReadingState::Kind::Held:
        case ReadingState::Kind::Live: break;
    }
    if (electrode.outside) return "outside pH 0 to 14";
    if (!electrode.atc) return SteadyText(reading.steadiness);
    const std::string atc = AtcText(e);
    // A pH that a sensor's fault goes into is not steady, whatever the potential does.
    return FaultAt(e).empty() ? SteadyText(reading.steadiness) + ", " + atc : atc;
}

std::string LiveDisplay::AtcText(int e) const {
    if (!FaultAt(e).empty()) return "ATC by a sensor that does not work";
    const std::string& text = Text(2 * e);
    if (CelsiusOf(text)) return Trim(text).empty() ? "ATC by no temperature: it counts as 0 °C" : "ATC";
    const std::string& before = taken_[static_cast<std::size_t>(e)].celsius;
    return CelsiusOf(before) ? "ATC still by " + before + " °C" : "no ATC: the temperature is none";
}

std::string LiveDisplay::TemperatureDoubt(int e) const {
    if (At(2 * e).readOnly) return FaultAt(e);
    const auto celsius = CelsiusOf(Text(2 * e));
    return celsius && (*celsius < 0 || *celsius > 100) ? "temperature outside 0 to 100 °C" : std::string();
}

std::string LiveDisplay::DoubtOf(int e) const {
    if (!Shown(e).inUse) return {};
    std::string doubt = TemperatureDoubt(e);
    const std::string calibration = CalibrationDoubt(state_, e + 1, clock_.Now());
    if (!doubt.empty() && !calibration.empty()) doubt += "; ";
    return doubt + calibration;
}

std::string LiveDisplay::Held() const {
    if (!running_) return "stopped at " + stoppedAt_;
    return paused_ ? "held since " + stoppedAt_ : std::string();
}

void LiveDisplay::Tell() {
    // A message runs the event loop, and the ticks in it may have more to say.
    while (!messages_.empty()) {
        const std::string message = messages_.front();
        messages_.erase(messages_.begin());
        prompts_.Message(message);
    }
}

// --- what the analyst does ---------------------------------------------------------------------------------------

void LiveDisplay::Enter(int i) {
    if (TakeTemperature(i)) return;
    messages_.emplace_back(DataOutOfRange);
    FocusOn(i);
}

void LiveDisplay::Left(int i) {
    const std::string text = Text(i);
    const TemperaturePair& taken = taken_[static_cast<std::size_t>(i) / 2];
    if (At(i).readOnly || text == (i % 2 == 0 ? taken.celsius : taken.fahrenheit) || TakeTemperature(i)) return;
    status_ = "\"" + text + "\" is no temperature: " + Text(i & ~1) + " °C stands.";
}

bool LiveDisplay::TakeTemperature(int i) {
    const int celsius = i & ~1;
    TemperaturePair& taken = taken_[static_cast<std::size_t>(celsius) / 2];
    const bool accepted = taken.Take(Text(i), i != celsius);
    Set(celsius, taken.celsius);
    Set(celsius + 1, taken.fahrenheit);
    return accepted;
}

void LiveDisplay::Stop() {
    if (!running_) return;
    running_ = false;
    stoppedAt_ = SecondsText(clock_.Now());
    Judge();
}

void LiveDisplay::Restart() {
    if (running_) return;
    live_.ResizeAverage();
    live_.Restart();
    for (Electrode& electrode : electrodes_)
        electrode.badTable = false;
    navigation_.SetReturn(ScreenCode::frmDsply);
    running_ = true;
    status_.clear();
    Judge();
}

void LiveDisplay::ChangeCalibration() {
    if (OpenPhCalibration(state_, prompts_, files_, {}) != OpenOutcome::Opened) return;
    for (int e = 0; e < 2; ++e) {
        const auto number = static_cast<std::size_t>(e) + 1;
        if (Of(e).inUse && calibration_.FileElectrodeNum[number] != hardware_.ElectrodeNum[number])
            prompts_.Message(SerialDiffers, "Warning");
    }
    FillCalibration();
    status_ = tableState_.TableOpen == 1
                  ? "The rows from now on are measured with another calibration than the head of the table names."
                  : "";
    Judge();
}

bool LiveDisplay::SaveRow() {
    status_.clear();
    if (Of(0).mv.empty() && Of(1).mv.empty()) {
        status_ = "There is no reading to keep yet.";
        return false;
    }
    const bool live = std::any_of(electrodes_.begin(), electrodes_.end(), [](const auto& e) { return e.live; });
    const std::string worth = Of(0).inUse ? Of(0).worth : Of(1).worth;
    const std::string row = Row("");
    const RowFacts facts = Facts();
    if (tableState_.TableOpen == 0) {
        tableState_.TableFile.clear();
        if (!table_.AskFile(PhtFile)) tableState_.TableFile = TableState::Declined;
    }
    stoppedAt_ = SecondsText(clock_.Now());
    paused_ = true;
    Judge();
    const std::string number = table_.NextRowNumber();
    table_.AddRow(number + row, facts);
    if (!live) status_ = "Row" + number + " keeps a value that was not live: " + worth + ".";
    return true;
}

RowFacts LiveDisplay::Facts() const {
    RowFacts facts;
    for (int e = 0; e < 2; ++e) {
        const Electrode& electrode = Shown(e);
        if (!electrode.inUse) continue;
        const std::string name = "electrode " + TrimStr(e + 1) + ": ";
        if (electrode.worth != Steady) facts.Remark(name + electrode.worth);
        if (!electrode.doubt.empty()) facts.Remark(name + electrode.doubt);
    }
    return facts;
}

std::string LiveDisplay::Row(const std::string& number) const {
    std::string row = number + "\t\t" + TimeText(clock_.Now());
    for (int e = 0; e < 2; ++e) {
        row += "\t" + Shown(e).ph + "\t" + Shown(e).mv;
        row += "\t" + Text(2 * e) + "\t" + Text(2 * e + 1);
    }
    return row;
}

void LiveDisplay::RowDone() {
    paused_ = false;
    Judge();
}

void LiveDisplay::Leave() {
    running_ = false;
    if (LinkOpen()) link_->StopLink();
    // The mark is that of an ISE calibration; the table takes it as a wish to come back here.
    const std::int16_t unsaved = std::exchange(calibration_.CaliDirty, std::int16_t{0});
    table_.Leave();
    calibration_.CaliDirty = unsaved;
    navigation_.ReturnScreen = 0;
    ClearPaths(state_);
}

bool LiveDisplay::Exit() {
    if (!prompts_.Ask(text::SureToExit, true)) return false;
    Leave();
    return true;
}

}  // namespace kelvo
