#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <system_error>

#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/LineReport.h"
#include "batch/Rows.h"
#include "calibration/CaliFile.h"
#include "calibration/CaliGraph.h"
#include "calibration/CaliSession.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationState.h"
#include "calibration/CustomCharge.h"
#include "calibration/IseCalibration.h"
#include "calibration/PointForm.h"
#include "core/Clock.h"
#include "core/IonSettings.h"
#include "core/StateOf.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

std::string IonName(const IonSettings& ion) {
    return ion.IonIndex == NoIon ? std::string() : ion.Ions.names[static_cast<std::size_t>(ion.IonIndex)];
}

constexpr double MostMv = 1000;
constexpr const char* Usual = "25";  ///< °C, when nothing is said

/// A standard as the point dialog's boxes take it.
struct Standard {
    long line = 0;
    double mv = 0;
    std::array<std::string, 4> boxes;  ///< by `PointForm`: potential, ppm, mol/L, LogC
};

constexpr std::array<std::pair<int, std::array<const char*, 3>>, 4> ColumnNames = {{
    {PointForm::Potential, {"mV", "E (mV)", "E"}},
    {PointForm::Ppm, {"ppm", "mg/L", "ppm (mg/L)"}},
    {PointForm::Molar, {"mol/L", "molar", "M"}},
    {PointForm::LogC, {"LogC", "log C", "log10(mol/L)"}},
}};

/// Where the boxes stand in a row.
class Columns {
 public:
    explicit Columns(const RowsHead& head, long line) {
        if (!head.named) {
            if (head.fields.size() != 2)
                Refuse(ExitCode::NoResult, "without names the columns are two, ppm and mV; the first line has " +
                                               std::to_string(head.fields.size()));
            at_[PointForm::Ppm] = 0;
            at_[PointForm::Potential] = 1;
            return;
        }
        for (const auto& [box, names] : ColumnNames)
            at_[static_cast<std::size_t>(box)] = ColumnNamed(head, {names.begin(), names.end()});
        if (std::none_of(at_.begin(), at_.end(), [](const auto& column) { return column.has_value(); }))
            for (const std::string& field : head.fields)
                if (!field.empty() && !NumberOf(field))
                    Fault(line, WhyNoNumber(field) + ", and the line names no column that is known");
        if (!at_[PointForm::Potential]) Refuse(ExitCode::NoResult, "there is no column \"mV\"");
        if (!at_[PointForm::Ppm] && !at_[PointForm::Molar] && !at_[PointForm::LogC])
            Refuse(ExitCode::NoResult, "there is no column \"ppm\", \"mol/L\" or \"LogC\"");
    }

    Standard Read(const std::vector<std::string>& fields, long line) const {
        Standard standard;
        standard.line = line;
        bool concentration = false;
        for (std::size_t box = 0; box < at_.size(); ++box) {
            if (!at_[box] || *at_[box] >= fields.size() || fields[*at_[box]].empty()) continue;
            standard.boxes[box] = fields[*at_[box]];
            if (!NumberOf(standard.boxes[box])) Fault(line, WhyNoNumber(standard.boxes[box]));
            concentration = concentration || box != PointForm::Potential;
        }
        if (standard.boxes[PointForm::Potential].empty()) Fault(line, "there is no potential");
        if (!concentration) Fault(line, "there is no concentration");
        standard.mv = Val(standard.boxes[PointForm::Potential]);
        if (!(std::abs(standard.mv) <= MostMv)) Fault(line, "a potential lies within ±1000 mV");
        return standard;
    }

    [[noreturn]] static void Fault(long line, const std::string& why) {
        Refuse(ExitCode::NoResult, "line " + std::to_string(line) + ": " + why);
    }

 private:
    std::array<std::optional<std::size_t>, 4> at_;
};

std::vector<Standard> ReadStandards(std::istream& in) {
    std::vector<Standard> standards;
    LineReader lines(in);
    std::optional<Columns> columns;
    RowsHead head;
    std::vector<std::string> fields;
    while (const auto line = lines.Next()) {
        if (lines.TooLong()) Columns::Fault(lines.Number(), "the line is too long for a table of standards");
        if (Trimmed(*line).empty()) continue;
        if (!columns) {
            head = HeadOf(*line);
            columns.emplace(head, lines.Number());
            if (head.named) continue;
        }
        SplitFields(*line, head.separator, fields);
        if (fields.size() != head.fields.size())
            Columns::Fault(lines.Number(), "it has " + std::to_string(fields.size()) + " fields, the first line " +
                                               std::to_string(head.fields.size()));
        if (standards.size() == MaxCaliPoints)
            Columns::Fault(lines.Number(), "a calibration has at most ten standards");
        standards.push_back(columns->Read(fields, lines.Number()));
    }
    if (standards.empty()) Refuse(ExitCode::NoResult, "there are no standards in the input");
    return standards;
}

std::vector<Standard> ReadStandardsOf(const std::string& file, std::istream& in) {
    constexpr std::size_t LargestPoints = std::size_t{1} << 20;
    std::istringstream text(TextOfFile(file, in, LargestPoints));
    return ReadStandards(text);
}

/// The concentrations of a row are one and the same, but for the places of the program's own boxes.
void CheckConcentrations(const IonSettings& ion, const Standard& standard) {
    constexpr double LogCPlaces = 0.01, PpmPlaces = 0.05;
    const auto agree = [](double a, double b) { return std::abs(a - b) <= LogCPlaces; };
    const auto& boxes = standard.boxes;
    const auto contradict = [&](const std::string& one, const std::string& other) {
        Columns::Fault(standard.line, one + " and " + other + " contradict each other" +
                                          (ion.IonIndex == NoIon ? std::string() : " for " + IonName(ion)));
    };
    const auto told = [&](const char* unit, int box) { return unit + (" " + boxes[static_cast<std::size_t>(box)]); };
    std::vector<std::pair<std::string, double>> logCs;
    if (!boxes[PointForm::Molar].empty())
        logCs.emplace_back(told("mol/L", PointForm::Molar), std::log10(Val(boxes[PointForm::Molar])));
    if (!boxes[PointForm::LogC].empty()) logCs.emplace_back(told("LogC", PointForm::LogC), Val(boxes[PointForm::LogC]));
    if (logCs.size() == 2 && !agree(logCs[0].second, logCs[1].second)) contradict(logCs[0].first, logCs[1].first);
    if (boxes[PointForm::Ppm].empty() || ion.IonIndex == NoIon) return;
    const double ppm = Val(boxes[PointForm::Ppm]);
    const double ppmOfOne = MolarToPpm(ion.Ions, 1, ion.IonIndex);
    for (const auto& [text, logC] : logCs)
        if (!(std::abs(ppm - ppmOfOne * std::pow(10.0, logC)) <= PpmPlaces) && !agree(std::log10(ppm / ppmOfOne), logC))
            contradict(told("ppm", PointForm::Ppm), text);
}

/// Enters a standard in the point dialog and presses OK.
void EnterStandard(StateOf<CalibrationState, HardwareSettings> state, const Standard& standard) {
    KeptMessages messages;
    PointForm form(state, messages);
    form.Begin();
    for (std::size_t box = 0; box < standard.boxes.size(); ++box)
        form.Edited(static_cast<int>(box), standard.boxes[box]);
    // A LogC of 0 fills no other unit, the same concentration as 1 mol/L does.
    const auto& boxes = standard.boxes;
    if (boxes[PointForm::Ppm].empty() && boxes[PointForm::Molar].empty() && Val(boxes[PointForm::LogC]) == 0)
        form.Edited(PointForm::Molar, "1");
    // The first press may only fill the other units; the second one stores.
    if (form.Ok() || form.Ok()) return;
    const std::string told = messages.Take();
    Columns::Fault(standard.line, told.empty() ? "the concentration cannot be converted" : told);
}

/// Enters the standards as the calibration's entry does. In the program they are to be entered from the lowest
/// potential up, since the potentials are sorted afterwards and the concentrations are not.
void Enter(StateOf<CalibrationState, HardwareSettings> state, std::vector<Standard> standards) {
    CalibrationState& calibration = state;
    std::stable_sort(standards.begin(), standards.end(),
                     [](const Standard& a, const Standard& b) { return a.mv < b.mv; });
    KeptMessages messages;
    CaliSession session(state, messages);
    session.StartPoints(static_cast<int>(standards.size()));
    for (std::size_t i = 0; i < standards.size(); ++i) {
        calibration.CurrentPoint = static_cast<std::int16_t>(i + 1);
        EnterStandard(state, standards[i]);
    }
    session.AfterLastPoint();
    const bool drawn = calibration.CaliPoints == 1 ? session.ShowKnownSlopeLine() : session.ShowLinear();
    if (!drawn) Refuse(ExitCode::NoResult, messages.Take());
}

/// The first scale that holds all values, else the widest.
template <typename Holds>
std::int16_t ScaleThatHolds(int count, int widest, Holds holds) {
    for (int i = 0; i < count; ++i)
        if (holds(i)) return static_cast<std::int16_t>(i);
    return static_cast<std::int16_t>(widest);
}

void ChooseScales(IseCalibration& calibration) {
    const auto within = [&](const std::vector<float>& values, float low, float high) {
        return std::all_of(values.begin() + 1, values.end(), [&](float v) { return v >= low && v <= high; });
    };
    constexpr int WidestMv = 3, WidestLogC = 3;
    calibration.MvScaleIndex = ScaleThatHolds(static_cast<int>(MvCaptions.size()), WidestMv, [&](int i) {
        return within(calibration.CaliE, ScaleBottom(i), ScaleTop(i));
    });
    calibration.LogCScaleIndex = ScaleThatHolds(static_cast<int>(LogCCaptions.size()), WidestLogC, [&](int i) {
        return within(calibration.CaliLogC, ScaleLeft(i), ScaleRight(i));
    });
}

void Write(StateOf<const CalibrationState, const HardwareSettings> state, std::string path, bool force) {
    const CalibrationState& calibration = state;
    if (LastPart(path).find('.') == std::string::npos) path += ".ISE";
    if (calibration.IonIndex == NoIon) Refuse(ExitCode::Usage, "--out needs the ion: --ion");
    std::error_code failed;
    const auto type = std::filesystem::symlink_status(FindFile(path), failed).type();
    const bool there = type != std::filesystem::file_type::not_found && type != std::filesystem::file_type::none;
    if (there && !force) Refuse(ExitCode::File, path + " is there already; --force replaces it");
    try {
        const std::string bytes = IseBytes(state, SystemClock().Now());
        ReplaceWholeFile(path, bytes);
        IseCalibration bare;
        WriteCalibrationFacts(bare, path, bytes);  // what stood beside a replaced file is not true of this one
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, path + ": " + error.what());
    }
}

void TakeOptions(CalibrationState& state, const Arguments& arguments, std::size_t standards) {
    if (const auto ion = arguments.Value("--ion")) state.IonIndex = IonNamed(state, *ion);
    if (state.IonIndex == CustomIonRow && !arguments.Has(WeightOption.name) && !arguments.Has(SettingsOption.name))
        Refuse(ExitCode::Usage, "an ion of your own needs its molar mass: --weight");
    CelsiusOf(arguments, "--temperature");
    state.CaliTemp = Trim(arguments.Value("--temperature").value_or(Usual));
    CelsiusOf(arguments, "--slope-temperature");
    const auto slope = arguments.Number("--slope");
    if (slope && standards > 1) Refuse(ExitCode::Usage, "--slope is for one standard alone; the line has its own");
    if (!slope && standards == 1) Refuse(ExitCode::NoResult, "one standard has no line; --slope tells a known one");
    if (slope && *slope == 0) Refuse(ExitCode::Usage, "--slope 0: no concentration follows from it");
    state.KnownSlope = arguments.Value("--slope").value_or("");
    state.KnownSlopeTemp = arguments.Value("--slope-temperature").value_or(state.CaliTemp);
}

int ChargeOf(StateOf<const Paths, const IonSettings> state, const Arguments& arguments) {
    const auto charge = arguments.Number("--charge");
    if (!charge) return CustomCharge(state);
    if (*charge != static_cast<int>(*charge) || *charge == 0 || std::abs(*charge) > 4)
        Refuse(ExitCode::Usage, "--charge takes a whole number from -4 to 4, but not 0");
    return static_cast<int>(*charge);
}

}  // namespace

ExitCode RunFit(const Arguments& arguments, const Streams& streams) {
    BatchState state = StateFor(arguments);
    std::vector<Standard> standards = ReadStandardsOf(arguments.Words().front(), streams.in);
    TakeOptions(state, arguments, standards.size());
    const bool onlyPpm = std::all_of(standards.begin(), standards.end(), [](const Standard& each) {
        return each.boxes[PointForm::Molar].empty() && each.boxes[PointForm::LogC].empty();
    });
    if (state.IonIndex == NoIon && onlyPpm) Refuse(ExitCode::Usage, "ppm need the ion: --ion");
    for (const Standard& standard : standards)
        CheckConcentrations(state, standard);
    const int charge = ChargeOf(state, arguments);
    Enter(state, std::move(standards));
    const std::string made = DateTimeText(SystemClock().Now(), state.DateFormat);
    state.FileTemp = state.CaliTemp = state.PointTemp;
    state.FileDate = state.CaliDate = made;
    ChooseScales(state);
    if (const auto file = arguments.Value("--out")) Write(state, *file, arguments.Has("--force"));

    const bool json = arguments.Has(JsonOption.name);
    const std::string celsius = state.CaliTemp;
    const bool assumed = !arguments.Has("--temperature");
    // What nobody has told is the usual temperature everywhere, and each figure that rests on it says so.
    if (assumed) state.FileTemp = state.CaliTemp = "";
    if (assumed && arguments.Has("--out"))
        streams.Note("--temperature is not given: 25 °C is assumed, and stands in the file");
    Report report = FitReport(state, ReadQualityLimits(state.IniPath), charge, !json);
    report.fields.insert(report.fields.begin(), TextField("ion", "Ion", IonName(state)));
    if (json)
        report.fields.push_back(TextField("celsius_basis", "Temperature", assumed ? "assumed" : "given"));
    else
        report.fields.insert(report.fields.begin() + 1,
                             NumberField({}, "Temperature", celsius, "°C", assumed ? "(assumed)" : ""));
    if (json) {
        WriteJson(streams.out, report);
        streams.out << '\n';
    } else {
        WriteText(streams.out, report, MaxCaliPoints);
    }
    return ExitCode::Done;
}

}  // namespace kelvo
