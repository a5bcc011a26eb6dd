#include "simulator/Instrument.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <numbers>

namespace kelvo::simulator {
namespace {

constexpr double OpenInput = 650, OpenNoise = 20, UnpluggedSensor = 999.9;
constexpr double Smallest = 1e-12;  // mol/L below which no electrode sees anything

int ToTenths(double value) {
    return static_cast<int>(std::lround(std::clamp(value, -999.9, 999.9) * 10));
}

}  // namespace

double SensorReading(double celsius) {
    const SensorTable table = StandardSensor();
    std::size_t i = 1;
    while (i + 1 < table.celsius.size() && celsius > table.celsius[i])
        ++i;
    const double slope = double{table.mv[i]} - table.mv[i - 1];
    const double width = double{table.celsius[i]} - table.celsius[i - 1];
    return table.mv[i - 1] + slope * (celsius - table.celsius[i - 1]) / width;
}

std::string Group(int tenths) {
    char text[16];
    std::snprintf(text, sizeof text, "%c%04d", tenths < 0 ? '-' : '+', std::abs(tenths));
    return text;
}

Instrument::Instrument(std::uint32_t seed) : random_(seed) {
    // A fluoride electrode on channel 1 and a pH electrode on channel 2.
    electrodes[0].eo = -120;
    electrodes[0].slope = -58.2;
    electrodes[1].kind = Electrode::Kind::Ph;
    electrodes[1].eo = 414;
    electrodes[1].slope = 58.6;
    for (Electrode& electrode : electrodes)
        electrode.settled = Target(electrode);
}

double Instrument::Target(const Electrode& electrode) const {
    const double warmth = (273.15 + beaker.celsius) / 298.15;
    switch (electrode.kind) {
        case Electrode::Kind::Ise:
            return electrode.eo + electrode.slope * warmth * std::log10(std::max(beaker.molar, Smallest));
        case Electrode::Kind::Ph: return electrode.eo - electrode.slope * warmth * beaker.ph;
        case Electrode::Kind::Open: break;
    }
    return OpenInput;
}

void Instrument::Add(double volume, double molar, double sample) {
    beaker.molar = (beaker.molar * sample + molar * volume) / (sample + volume);
}

bool Instrument::SelectIon(const std::string& name) {
    const IonTable ions = StandardIons();
    const auto found = std::find(ions.names.begin(), ions.names.end(), name);
    if (found == ions.names.end()) return false;
    ion = name;
    weight = ions.weights[static_cast<std::size_t>(found - ions.names.begin())];
    return true;
}

void Instrument::Advance(double seconds) {
    for (Electrode& electrode : electrodes) {
        const double share = electrode.response > 0 ? 1 - std::exp(-seconds / electrode.response) : 1;
        electrode.settled += (Target(electrode) - electrode.settled) * share;
        electrode.drifted += electrode.drift * seconds / 3600;
    }
}

double Instrument::Gauss() {
    // Box and Muller on raw words: the same on every machine, unlike the library's distributions.
    constexpr double Words = 4294967296.0;
    const double a = (static_cast<double>(random_()) + 1) / (Words + 1);
    const double b = static_cast<double>(random_()) / Words;
    return std::sqrt(-2 * std::log(a)) * std::cos(2 * std::numbers::pi * b);
}

std::array<int, 4> Instrument::Tenths() {
    const auto potential = [this](const Electrode& electrode) {
        const double noise = electrode.kind == Electrode::Kind::Open ? OpenNoise : electrode.noise;
        return ToTenths(electrode.settled + electrode.drifted + noise * Gauss());
    };
    const auto sensor = [this](bool plugged) {
        return ToTenths(plugged ? SensorReading(beaker.celsius) : UnpluggedSensor);
    };
    const int first = potential(electrodes[0]);
    const int second = potential(electrodes[1]);
    return {first, sensor(sensors[0]), second, sensor(sensors[1])};
}

std::vector<std::uint8_t> Instrument::Frame() {
    std::string text;
    for (const int tenths : Tenths())
        text += Group(tenths) + "\t";
    text.back() = '\x04';
    return {text.begin(), text.end()};
}

}  // namespace kelvo::simulator
