#include "calibration/CaliFile.h"

#include <functional>
#include <utility>

#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationStandards.h"
#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/FactsFile.h"
#include "core/HardwareSettings.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
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

const char* const SerialWarning =
    "The ion electrode or the reference electrode serial number is different from the hardware setup. Please use "
    "Option/View Data for more details";

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
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

void RememberFile(IseCalibration& calibration, const std::string& path, std::string_view bytes) {
    calibration.CaliFileName = LastPart(path);
    calibration.CaliFilePath = path;
    calibration.FileCheck = FactsCheck(bytes);
    calibration.FactsRemark.clear();
}

}  // namespace

std::string IseBytes(StateOf<const CalibrationState, const HardwareSettings> state, const DateTime& now) {
    const CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    const std::vector<StandardEntry> standards = AllStandards(calibration);
    RecordWriter writer;
    writer.Write(static_cast<float>(calibration.MvScaleIndex));
    writer.Write(static_cast<float>(calibration.LogCScaleIndex));
    writer.Write(static_cast<float>(calibration.IonIndex));
    writer.Write(static_cast<float>(standards.size()));
    for (const auto column : {&StandardEntry::logC, &StandardEntry::mv, &StandardEntry::ppm, &StandardEntry::molar})
        for (const StandardEntry& standard : standards)
            writer.Write(standard.*column);
    writer.Write(std::string_view(calibration.CaliTemp));
    writer.Write(std::string_view(DateTimeText(now, hardware.DateFormat)));
    writer.Write(std::string_view(hardware.Operator));
    writer.Write(std::string_view(hardware.RefElectrode[0]));
    writer.Write(std::string_view(hardware.RefElectrode[1]));
    writer.Write(std::string_view(hardware.ElectrodeNum[0]));
    if (standards.size() == 1) writer.Write(calibration.CaliSlope);
    return writer.Bytes();
}

void ReadIse(CalibrationState& state, std::string_view bytes) {
    RecordReader reader(bytes);
    state.MvScaleIndex = WholeWithin(reader, 0, 5);
    state.LogCScaleIndex = WholeWithin(reader, 0, 3);
    state.IonIndex = WholeWithin(reader, 0, IonRows - 1);
    state.CaliPoints = WholeWithin(reader, 1, MaxCaliPoints);
    state.PairsCrossed = state.LineRefused = state.CurveRefused = false;
    state.LeftOut.clear();
    state.Told = {};
    state.SavedCurve.clear();
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
    const std::string& folder = state.Get<const Paths>().DataPath;
    const auto name = AskNameToSave(prompts, chooser,
                                    {.dialog = {"All Data(*.ISE)|*.ISE", folder, "*.ISE"},
                                     .ending = ".ISE",
                                     .use = std::bind_front(UpperInFolder, folder),
                                     .known = std::move(fileName)});
    if (!name) return SaveOutcome::Cancelled;
    const DateTime now = clock.Now();
    std::string bytes;
    const auto write = [&] {
        bytes = IseBytes(state, now);
        ReplaceWholeFile(*name, bytes);
    };
    if (!TakeFileStep(prompts, "Saving", *name, write)) return SaveOutcome::Failed;
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
    RememberFile(calibration, *name, bytes);
    status.StatusMessage = "The calibration has been saved to " + calibration.CaliFileName + ".";
    if (const std::string lost = WriteCalibrationFacts(calibration, *name, bytes); !lost.empty())
        status.StatusMessage += " " + lost;
    return SaveOutcome::Saved;
}

OpenOutcome OpenIseCalibration(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                               FileChooser& chooser) {
    CalibrationState& calibration = state;
    const HardwareSettings& hardware = state;
    const IseScalars before(state);
    calibration.CaliPoints = 0;
    const Paths& paths = state;
    const OpenRequest request{.dialog = {"All Data(*.ise)|*.ise", paths.DataPath, {}},
                              .use = std::bind_front(UpperInFolder, paths.AppPath),
                              .limit = LargestFile};
    const OpenOutcome outcome =
        AskAndRead(prompts, chooser, request, [&](const std::string& bytes, const std::string& name) {
            ReadIse(state, bytes);
            RememberFile(calibration, name, bytes);
            calibration.FactsRemark = ReadCalibrationFacts(calibration, name, bytes);
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

}  // namespace kelvo
