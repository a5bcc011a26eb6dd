#pragma once

#include <array>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "core/Tables.h"

namespace kelvo::simulator {

/// One electrode channel. Its potential follows the beaker with a time constant, drifts and is noisy.
struct Electrode {
    enum class Kind { Ise, Ph, Open };
    Kind kind = Kind::Ise;
    double eo = 0;        ///< mV at 1 mol/L, or at pH 0
    double slope = 0;     ///< mV per decade at 25 °C, of the ion's sign; for pH the potential falls by it per unit
    double response = 2;  ///< seconds in which a step has come in to 63 %
    double noise = 0.05;  ///< standard deviation, mV
    double drift = 0;     ///< mV per hour
    double settled = 0;   ///< potential without drift and noise, mV
    double drifted = 0;   ///< what drift has added, mV
};

/// What stands under the electrodes.
struct Beaker {
    double molar = 1e-3;  ///< of the detected ion, mol/L
    double ph = 7;
    double celsius = 25;
};

/// Electrodes, temperature sensors and the beaker they stand in: everything that a frame tells, and nothing of how
/// it travels. Time passes only by `Advance`, chance comes only from the seed, so a run repeats exactly.
class Instrument {
 public:
    explicit Instrument(std::uint32_t seed);

    Beaker beaker;
    std::array<Electrode, 2> electrodes;
    std::array<bool, 2> sensors = {true, true};  ///< plugged in
    double weight = 18.9984;                     ///< g/mol of the detected ion, for concentrations in ppm
    std::string ion = "F";

    /// Adds a standard: `volume` mL of `molar` into `sample` mL of what stands in the beaker.
    void Add(double volume, double molar, double sample);
    /// Chooses the ion of the program's table by its name. @return false for an unknown one.
    bool SelectIon(const std::string& name);

    void Advance(double seconds);
    /// The four channels as the interface would send them now, in tenths within ±9999: electrode 1, sensor 1,
    /// electrode 2, sensor 2. A sensor that is unplugged reads 999.9, which is colder than any.
    std::array<int, 4> Tenths();
    /// The 24 bytes of an answer.
    std::vector<std::uint8_t> Frame();

    /// Potential that the electrode tends to in this beaker, mV: Eo + S·(273.15 + t)/298.15 · log10 of the
    /// concentration, S -59.16 for an anion; an open input floats at 650.
    double Target(const Electrode& electrode) const;
    /// Chance, for the faults too.
    std::mt19937& Random() { return random_; }

 private:
    double Gauss();

    std::mt19937 random_;
};

/// Raw reading of a temperature sensor at that temperature, by the program's own table turned round.
double SensorReading(double celsius);

/// A value in tenths as a group of the frame: "+1234".
std::string Group(int tenths);

}  // namespace kelvo::simulator
