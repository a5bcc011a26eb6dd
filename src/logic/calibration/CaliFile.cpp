#include "calibration/CaliFile.h"
#include "calibration/CalibrationState.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Paths.h"
#include "core/PhCalibration.h"
#include "core/Settings.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/StoredWithCalibration.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/Records.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// Far above any calibration: a file of this size is something else and is not worth its memory.
constexpr std::size_t LargestFile = std::size_t{1} << 20;

struct FileKind {
    const char* saveFilter;
    const char* openFilter;
    const char* savePattern;
    const char* extension;
};
const FileKind IseKind = {"All Data(*.ISE)|*.ISE", "All Data(*.ise)|*.ise", "*.ISE", ".ISE"};
const FileKind PhKind = {"All Data(*.Cli)|*.Cli", "All Data(*.Cli)|*.Cli", "", ".CLI"};

const char* const SerialWarning =
    "The ion electrode or the reference electrode serial number is different from the hardware setup. Please use "
    "Option/View Data for more details";

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

/// The name as it is used: upper case at once, in `folder` when it has none of its own.
std::string UsedName(const std::string& name, const std::string& folder) {
    const std::string upper = UpperName(NativePath(name));
    return HasFolder(upper) ? upper : folder + upper;
}

/// Asks, when there is no name yet, and goes on asking until the name is free or may be replaced.
std::optional<std::string> NameToSave(const Paths& paths, Prompts& prompts, FileChooser& chooser, const FileKind& kind,
                                      std::string name) {
    for (;; name.clear()) {
        if (name.empty()) name = chooser.Save({kind.saveFilter, paths.DataPath, kind.savePattern}).value_or("");
        if (LastPart(name).empty()) return std::nullopt;
        std::string used = UsedName(name, paths.DataPath);
        if (LastPart(used).find('.') == std::string::npos) used += kind.extension;
        if (MayReplace(prompts, used)) return used;
    }
}

/// Asks, when there is no name yet, and hands the content to `read`.
template <typename Read>
OpenOutcome OpenWith(const Paths& paths, Prompts& prompts, FileChooser& chooser, const FileKind& kind, std::string name,
                     Read read) {
    if (name.empty()) name = chooser.Open({kind.openFilter, paths.DataPath, {}}).value_or("");
    if (name.empty()) return OpenOutcome::Cancelled;
    const std::string used = UsedName(name, paths.AppPath);
    if (!FileExists(used)) {
        prompts.Message("File" + used + "Not Found.", {}, Icon::Exclamation);
        return OpenOutcome::Missing;
    }
    try {
        read(ReadWholeFile(used, LargestFile), LastPart(used));
        return OpenOutcome::Opened;
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Opening", used);
        return OpenOutcome::Failed;
    }
}

/// What an ".ISE" file sets beside the arrays, to be put back when the file turns out to be of no use.
class IseScalars {
 public:
    explicit IseScalars(CalibrationState& state)
        : mvScale_(state.MvScaleIndex),
          logCScale_(state.LogCScaleIndex),
          ion_(state.IonIndex),
          slope_(state.CaliSlope),
          temp_(state.FileTemp),
          date_(state.FileDate),
          operator_(state.FileOperator),
          reference_(state.FileRefElectrode),
          electrode_(state.FileElectrodeNum) {}

    void PutBack(CalibrationState& state) const {
        state.CaliPoints = 0;
        state.MvScaleIndex = mvScale_;
        state.LogCScaleIndex = logCScale_;
        state.IonIndex = ion_;
        state.CaliSlope = slope_;
        state.FileTemp = temp_;
        state.FileDate = date_;
        state.FileOperator = operator_;
        state.FileRefElectrode = reference_;
        state.FileElectrodeNum = electrode_;
    }

 private:
    std::int16_t mvScale_, logCScale_, ion_;
    float slope_;
    std::string temp_, date_, operator_;
    std::array<std::string, 2> reference_;
    std::array<std::string, 3> electrode_;
};

/// A whole number of the file that must be one of `low`..`high`.
std::int16_t WholeWithin(RecordReader& reader, int low, int high) {
    const int value = reader.Whole();
    if (value < low || value > high) throw RuntimeError(ErrorNumber::Subscript);
    return static_cast<std::int16_t>(value);
}

void ReadColumn(RecordReader& reader, std::vector<float>& column) {
    for (std::size_t i = 1; i < column.size(); ++i)
        column[i] = reader.Number();
}

/// The calibration of one pH electrode as it stands in a file.
struct PhChannel {
    std::string date, electrode;
    float temperature = 0;
    std::int16_t count = 0;
    std::vector<std::array<float, 3>> buffers;
};

float SingleText(RecordReader& reader) {
    return ToSingle(Val(reader.Text()));
}

void ReadHead(RecordReader& reader, PhChannel& channel) {
    channel.date = reader.Text();
    channel.temperature = SingleText(reader);
    channel.electrode = reader.Text();
    channel.count = ToInt16(Val(reader.Text()));
    if (channel.count < 0 || channel.count > MaxBuffers) throw RuntimeError(ErrorNumber::Subscript);
}

void ReadBuffers(RecordReader& reader, PhChannel& channel) {
    channel.buffers.assign(At(channel.count + 1), {});
    for (std::size_t j = 1; j < channel.buffers.size(); ++j) {
        channel.buffers[j][1] = SingleText(reader);
        channel.buffers[j][2] = SingleText(reader);
    }
}

}  // namespace

std::string IseBytes(StateOf<const CalibrationState, const HardwareSettings> state, const DateTime& now) {
    const CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    RecordWriter writer;
    writer.Write(static_cast<float>(calibration.MvScaleIndex));
    writer.Write(static_cast<float>(calibration.LogCScaleIndex));
    writer.Write(static_cast<float>(calibration.IonIndex));
    writer.Write(static_cast<float>(calibration.CaliPoints));
    for (const auto* column : {&calibration.CaliLogC, &calibration.CaliE, &calibration.CaliPpm, &calibration.CaliMolar})
        for (int i = 1; i <= calibration.CaliPoints; ++i)
            writer.Write((*column)[At(i)]);
    writer.Write(std::string_view(calibration.CaliTemp));
    writer.Write(std::string_view(DateTimeText(now, hardware.DateFormat)));
    writer.Write(std::string_view(hardware.Operator));
    writer.Write(std::string_view(hardware.RefElectrode[0]));
    writer.Write(std::string_view(hardware.RefElectrode[1]));
    writer.Write(std::string_view(hardware.ElectrodeNum[0]));
    if (calibration.CaliPoints == 1) writer.Write(calibration.CaliSlope);
    return writer.Bytes();
}

void ReadIse(CalibrationState& state, std::string_view bytes) {
    RecordReader reader(bytes);
    state.MvScaleIndex = WholeWithin(reader, 0, 5);
    state.LogCScaleIndex = WholeWithin(reader, 0, 3);
    state.IonIndex = WholeWithin(reader, 0, IonRows - 1);
    state.CaliPoints = WholeWithin(reader, 1, MaxCaliPoints);
    state.PairsCrossed = state.LineRefused = state.CurveRefused = false;
    const std::size_t size = At(state.CaliPoints + 1);
    for (auto* column : {&state.CaliLogC, &state.CaliE, &state.CaliPpm, &state.CaliMolar})
        column->assign(size, 0.0f);
    for (auto* column : {&state.CaliLogC, &state.CaliE, &state.CaliPpm, &state.CaliMolar})
        ReadColumn(reader, *column);
    state.FileTemp = reader.Text();
    state.FileDate = reader.Text();
    state.FileOperator = reader.Text();
    state.FileRefElectrode[0] = reader.Text();
    state.FileRefElectrode[1] = reader.Text();
    state.FileElectrodeNum[0] = reader.Text();
    if (state.CaliPoints == 1) state.CaliSlope = reader.Number();
}

SaveOutcome SaveIseCalibration(StateOf<CalibrationState, const Paths, const HardwareSettings, StatusMessages> state,
                               Prompts& prompts, FileChooser& chooser, const Clock& clock, std::string fileName) {
    CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    StatusMessages& status = state;
    const std::optional<std::string> name = NameToSave(state, prompts, chooser, IseKind, std::move(fileName));
    if (!name) return SaveOutcome::Cancelled;
    const DateTime now = clock.Now();
    try {
        ReplaceWholeFile(*name, IseBytes(state, now));
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", *name);
        return SaveOutcome::Failed;
    }
    // A slope of an earlier calibration, perhaps of another ion, is not remembered as this ion's.
    if (!calibration.LineRefused && calibration.IonIndex >= 0 &&
        At(calibration.IonIndex) < calibration.IonCali.size()) {
        calibration.IonCali[At(calibration.IonIndex)] = {Str(calibration.CaliSlope), calibration.CaliTemp,
                                                         calibration.CaliTemp, DateTimeText(now, hardware.DateFormat)};
    }
    calibration.FileOperator = hardware.Operator;
    calibration.FileRefElectrode = hardware.RefElectrode;
    calibration.FileElectrodeNum[0] = hardware.ElectrodeNum[0];
    calibration.FileTemp = calibration.CaliTemp;
    calibration.FileDate = calibration.CaliDate;
    calibration.CaliFileName = LastPart(*name);
    status.StatusMessage = "The calibration has been saved to " + calibration.CaliFileName + ".";
    return SaveOutcome::Saved;
}

OpenOutcome OpenIseCalibration(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                               FileChooser& chooser) {
    CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    const IseScalars before(state);
    calibration.CaliPoints = 0;
    const OpenOutcome outcome =
        OpenWith(state, prompts, chooser, IseKind, {}, [&](const std::string& bytes, const std::string& name) {
            ReadIse(state, bytes);
            calibration.CaliFileName = name;
        });
    if (outcome == OpenOutcome::Failed) before.PutBack(state);
    if (outcome == OpenOutcome::Cancelled) {
        calibration.FileElectrodeNum[0] = hardware.ElectrodeNum[0];
        calibration.FileRefElectrode = hardware.RefElectrode;
    }
    return outcome;
}

OpenOutcome OpenIseChecked(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                           FileChooser& chooser) {
    CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    const IseScalars before(state);
    const std::int16_t ion = calibration.IonIndex;
    for (;;) {
        const OpenOutcome outcome = OpenIseCalibration(state, prompts, chooser);
        if (outcome != OpenOutcome::Opened) return outcome;
        if (ion == NoIon || calibration.IonIndex == ion) break;
        prompts.Message("You have opened a calibration file which is for the ion '" +
                        calibration.Ions.names[At(calibration.IonIndex)] +
                        "', the setting in the Hardware Setup is for the ion '" + calibration.Ions.names[At(ion)] +
                        "'. Please re-open a calibration file");
        before.PutBack(state);
    }
    if (hardware.ElectrodeNum[0] != calibration.FileElectrodeNum[0] ||
        hardware.RefElectrode != calibration.FileRefElectrode)
        prompts.Message(SerialWarning, "Warning");
    return OpenOutcome::Opened;
}

std::string PhBytes(const PhCalibration& phCalibration) {
    RecordWriter writer;
    for (std::size_t i = 1; i <= 2; ++i) {
        writer.Write(std::string_view(phCalibration.PhCaliDate[i]));
        writer.Write(std::string_view(Str(phCalibration.PhCaliTemp[i])));
        writer.Write(std::string_view(phCalibration.PhCaliElectrode[i]));
        writer.Write(std::string_view(Str(int{phCalibration.BufferCount[i]})));
    }
    for (std::size_t i = 1; i <= 2; ++i) {
        const auto& buffers = i == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2;
        for (int j = 1; j <= phCalibration.BufferCount[i]; ++j)
            for (const std::size_t column : {std::size_t{1}, std::size_t{2}})
                writer.Write(std::string_view(Str(buffers.at(At(j))[column])));
    }
    return writer.Bytes();
}

void ReadPh(StateOf<PhCalibration, StoredWithCalibration> state, std::string_view bytes) {
    PhCalibration& phCalibration = state;
    StoredWithCalibration& stored = state;
    RecordReader reader(bytes);
    std::array<PhChannel, 2> channels;
    for (PhChannel& channel : channels)
        ReadHead(reader, channel);
    for (PhChannel& channel : channels)
        ReadBuffers(reader, channel);
    phCalibration.PhCaliUnsaved = false;
    for (std::size_t i = 1; i <= 2; ++i) {
        PhChannel& channel = channels[i - 1];
        phCalibration.PhCaliDate[i] = std::move(channel.date);
        phCalibration.PhCaliTemp[i] = channel.temperature;
        phCalibration.PhCaliElectrode[i] = channel.electrode;
        stored.FileElectrodeNum[i] = std::move(channel.electrode);
        phCalibration.BufferCount[i] = channel.count;
        if (channel.count > 0) (i == 1 ? phCalibration.Buffers1 : phCalibration.Buffers2) = std::move(channel.buffers);
    }
}

bool SavePhCalibration(StateOf<const Paths, const PhCalibration, StatusMessages> state, Prompts& prompts,
                       FileChooser& chooser) {
    const Paths& paths = state;
    StatusMessages& status = state;
    const std::optional<std::string> name = NameToSave(state, prompts, chooser, PhKind, {});
    if (!name) return false;
    try {
        ReplaceWholeFile(*name, PhBytes(state));
    } catch (const RuntimeError& error) {
        status.StatusMessage = "The pH calibration could not be saved in " + *name + ": " + error.what() + ".";
        return false;
    }
    WriteSetting("Latest Calibration Value", "LastCaliFile", *name, paths.IniPath);
    return true;
}

OpenOutcome OpenPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                              FileChooser& chooser, std::string fileName) {
    return OpenWith(state, prompts, chooser, PhKind, std::move(fileName),
                    [&](const std::string& bytes, const std::string&) { ReadPh(state, bytes); });
}

OpenOutcome LoadLastPhCalibration(StateOf<const Paths, PhCalibration, StoredWithCalibration> state, Prompts& prompts,
                                  FileChooser& chooser) {
    const Paths& paths = state;
    return OpenPhCalibration(state, prompts, chooser, ResolvePhCalibration(paths.IniPath, paths.AppPath));
}

}  // namespace kelvo
