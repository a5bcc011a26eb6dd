#include "ph/RecordingRow.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>
#include <string_view>

#include "core/HardwareSettings.h"
#include "core/IonSettings.h"
#include "core/Navigation.h"
#include "core/StateOf.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr const char* None = "N/A";
constexpr float NoValue = std::numeric_limits<float>::quiet_NaN();
/// Digits of a whole number that tell as much as the three of the mol/L cell.
constexpr std::size_t WholeDigits = 3;

std::string Cell(float value, const char* mask) {
    return std::isfinite(value) ? Format(value, mask) : None;
}

std::string ElectrodeCells(const RecordingPoint& point, std::size_t electrode, bool on, bool sensor) {
    const float celsius = point.celsius[electrode];
    const std::string values =
        on ? Cell(point.value[electrode], "#0.00") + "\t" + Cell(point.mv[electrode], "#0.00") : "N/A\tN/A";
    const std::string degrees =
        sensor ? Cell(celsius, "#0.0") + "\t" + Cell(CelsiusToFahrenheit(celsius), "#0.0") : "N/A\tN/A";
    return "\t" + values + "\t" + degrees;
}

/// mol/L of a concentration that has one.
std::string MolarCell(const IonSettings& ion, float ppm) {
    if (!std::isfinite(ppm)) return None;
    try {
        return Format(PpmToMolar(ion.Ions, double{ppm}, ion.IonIndex), "0.00E-00");
    } catch (const RuntimeError&) {
        return None;
    }
}

/// Cells of a row one after the other; those that it lacks are empty.
class CellReader {
 public:
    explicit CellReader(std::string_view row) : rest_(row) {}
    std::string_view Next() {
        const std::size_t tab = rest_.find('\t');
        const std::string_view cell = rest_.substr(0, tab);
        rest_ = tab == std::string_view::npos ? std::string_view() : rest_.substr(tab + 1);
        return cell;
    }

 private:
    std::string_view rest_;
};

/// Whether a cell begins as a number does; what follows is left to `Val`, as wherever a table is read.
bool BeginsAsNumber(std::string_view cell) {
    const std::size_t start = cell.find_first_not_of(" \t");
    if (start == std::string_view::npos) return false;
    const char first = cell[start];
    const bool sign = first == '-' || first == '+';
    const std::string_view body = cell.substr(start + (sign ? 1 : 0));
    return !body.empty() && ((body[0] >= '0' && body[0] <= '9') || (body[0] == '.' && body.size() > 1));
}

/// ppm of the mol/L cell, when it is that of the ppm cell to its digits: another ion under the same name, or a cell
/// changed by hand, is none.
std::optional<float> FinerPpm(std::string_view ppm, std::string_view molar, const std::string& ion,
                              const IonTable& ions) {
    const auto known = std::find(ions.names.begin(), ions.names.end(), ion);
    if (known == ions.names.end() || !BeginsAsNumber(molar) || !(ppm.empty() || BeginsAsNumber(ppm)))
        return std::nullopt;
    try {
        const double finer = MolarToPpm(ions, Val(molar), static_cast<int>(known - ions.names.begin()));
        // Half a unit of the whole number, and half of the third digit of the other cell.
        if (std::abs(finer - Val(ppm)) > 0.5 + finer * 0.005) return std::nullopt;
        return static_cast<float>(finer);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

}  // namespace

std::string RecordingRow(StateOf<const Navigation, const IonSettings, const HardwareSettings> state,
                         const RecordingPoint& point) {
    const Navigation& navigation = state;
    const IonSettings& ion = state;
    const HardwareSettings& hardware = state;
    const std::string number = TrimStr(point.n + 1);
    if (navigation.pHMode != 0) {
        const bool secondSensor = hardware.SensorCount >= 2;
        return number + "\t" + TrimStr(point.n) + "\t" + point.time +
               ElectrodeCells(point, 0, hardware.Channel[0] == 1, true) +
               ElectrodeCells(point, 1, hardware.Channel[3] == 1, secondSensor);
    }
    const float celsius = point.celsius[0];
    const bool ionKnown = ion.IonIndex >= 0 && ion.IonIndex < IonRows;
    const std::string name = ionKnown ? ion.Ions.names[static_cast<std::size_t>(ion.IonIndex)] : std::string();
    return number + "\t" + name + " - " + TrimStr(point.n) + "\t" + point.time + "\t" + Cell(point.mv[0], "#0.00") +
           "\t" + Cell(point.value[0], "#") + "\t" + MolarCell(state, point.value[0]) + "\t" + Cell(celsius, "#0.0") +
           "\t" + Cell(CelsiusToFahrenheit(celsius), "#0.0") + "\tN/A";
}

std::string IonOfRow(const std::string& row) {
    CellReader reader(row);
    reader.Next();
    const std::string_view name = reader.Next();
    return std::string(name.substr(0, name.rfind(" - ")));
}

RecordingCells ReadRecordingRow(bool ph, const std::string& row, const IonTable& ions) {
    RecordingCells cells;
    CellReader reader(row);
    /// The number of a cell; one that says nothing has no value.
    const auto number = [&cells](std::string_view cell) {
        if (cell == None) return NoValue;
        if (BeginsAsNumber(cell)) return static_cast<float>(Val(cell));
        ++cells.faulty;
        return NoValue;
    };
    reader.Next();
    reader.Next();
    cells.point.time = reader.Next();
    if (!ph) {
        cells.point.mv[0] = number(reader.Next());
        const std::string_view ppm = reader.Next(), molar = reader.Next();
        cells.electrode[0] = ppm != None;
        const auto finer = ppm.size() < WholeDigits ? FinerPpm(ppm, molar, IonOfRow(row), ions) : std::nullopt;
        // A mask that leaves a zero out wrote an empty cell; what lies below 0.5 only the other cell knows.
        const float below = Val(molar) == 0 ? 0.0f : NoValue;
        cells.point.value[0] = finer ? *finer : ppm.empty() ? below : number(ppm);
        cells.point.celsius[0] = number(reader.Next());
        return cells;
    }
    for (std::size_t electrode = 0; electrode < 2; ++electrode) {
        const std::string_view value = reader.Next();
        cells.electrode[electrode] = value != None;
        cells.point.value[electrode] = number(value);
        cells.point.mv[electrode] = number(reader.Next());
        cells.point.celsius[electrode] = number(reader.Next());
        reader.Next();
    }
    return cells;
}

}  // namespace kelvo
