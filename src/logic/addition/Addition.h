#pragma once

namespace kelvo {

/// What both addition methods measure: two potentials around the mixing of a sample and a standard.
///
/// Standard addition puts the electrode into the sample and adds standard; sample addition puts it into the standard
/// and adds sample. `before` and `after` are the potentials before and after the mixing.
struct Addition {
    double sampleMl = 0;            ///< Vs, volume of the sample, mL
    double standardMl = 0;          ///< Va, volume of the standard, mL
    double standardPpm = 0;         ///< Ca, concentration of the standard, ppm
    double slope = 0;               ///< mV per decade at `calibrationCelsius`; negative for anions
    double calibrationCelsius = 0;  ///< temperature at which the slope holds, °C
    double sampleCelsius = 0;       ///< temperature of the measurement, °C
    double before = 0, after = 0;   ///< mV
};

/// Slope at another temperature: S(Ts) = S(Tc)·(Ts + 273.15) / (Tc + 273.15), the Nernst factor R·T/(z·F)·ln 10 being
/// proportional to the absolute temperature. −58 at 20 °C is −58.99 at 25 °C.
/// @throws RuntimeError 11 at absolute zero, 6 when it overflows
double SlopeAt(double slope, double calibrationCelsius, double sampleCelsius);

/// A concentration with its partial derivatives, for the propagation of uncertainty.
struct AdditionTerms {
    double ppm = 0;
    double bySampleMl = 0, byStandardMl = 0;  ///< ∂c/∂Vs, ∂c/∂Va, ppm per mL
    double byQ = 0;                           ///< ∂c/∂Q, ppm
};

/// Concentration of the sample by one of the methods. Q = 10^(ΔE/S) is the ratio of the concentrations that the
/// electrode saw after and before.
using AdditionFormula = AdditionTerms (*)(const Addition& addition, double q);

/// Standard addition: c = Ca·Va / ((Vs + Va)·Q − Vs), from the balance c·Vs + Ca·Va = (Vs + Va)·Q·c (Skoog, Holler,
/// Crouch, "Principles of Instrumental Analysis", chapter 23). Vs 100, Va 10, Ca 1000, Q 10: c = 10000 / 1000 = 10 ppm.
/// @throws RuntimeError 11 when (Vs + Va)·Q equals Vs, 6 when it overflows
AdditionTerms StandardAdditionTerms(const Addition& addition, double q);

/// Sample addition: c = Ca·((Vs + Va)·Q / Vs − Va / Vs), the same balance with the electrode in the standard first.
/// Vs 1, Va 10, Ca 100, Q 1: c = 100·(11 − 10) = 100 ppm, a sample equal to the standard.
/// @throws RuntimeError 11 when Vs is 0, 6 when it overflows
AdditionTerms SampleAdditionTerms(const Addition& addition, double q);

/// Potentials are good to 0.1 mV at best, volumes to 1 %, both as one standard deviation.
constexpr double PotentialDeviation = 0.1, VolumeDeviation = 0.01;

/// What is known of the scatter of an electrode.
struct Scatter {
    double potential = PotentialDeviation;  ///< standard deviation of one potential, mV
    double slope = 0;  ///< standard deviation of the slope at `calibrationCelsius`, mV per decade; 0 when not known
    int freedom = 0;   ///< degrees of freedom behind the two; 0: they are taken as they are
};

/// The outcome of an addition.
struct AdditionResult {
    double ppm = 0;
    double slope = 0;        ///< mV per decade at the sample's temperature
    double uncertainty = 0;  ///< ppm, one standard deviation, first order; never negative
    double margin = 0;       ///< ppm, half of the 95 % interval
};

/// Works an addition out.
///
/// The uncertainty propagates to first order (JCGM 100:2008, 5.1.2, terms taken as independent):
///   u(c)² = (∂c/∂Vs · 0.01·Vs)² + (∂c/∂Va · 0.01·Va)² + (∂c/∂Q · u(Q))²
///   u(Q)  = Q·ln 10 / |S| · √(2·u(E)² + (ΔE / S · u(S))²)
/// Vs 50, Va 2, Ca 1000, ΔE −29, S −58, u(E) 0.1, u(S) 0: Q = 3.1623, c = 17.477,
/// u = √(0.1651² + 0.1651² + 0.1410²) = 0.273 ppm.
/// The margin takes Student's t for the part of the electrode by its degrees of freedom, and 1.96 for that of the
/// volumes. (An effective number of degrees after Welch and Satterthwaite would let three standards that happen to lie
/// close to their line pass for many: it holds 89 % where this holds 98.)
/// @throws RuntimeError 11 for a slope of 0 or a zero denominator, 6 when a step overflows
AdditionResult WorkOut(const Addition& addition, AdditionFormula formula, const Scatter& scatter = {});

/// How a result compares with what was expected, as the ratio of the larger to the smaller value less one, in 32-bit
/// floats: 0 when equal, −999 for a result that is not above 0. 22 against 2 expected: 22 / 2 − 1 = 10.
/// @throws RuntimeError 11 for an expected value of 0, 6 for values beyond 32 bits
float AdditionDeviation(double ppm, double expectedPpm);

enum class AdditionGrade {
    Bad,         ///< the result is 0 or below
    Good,        ///< deviation below 3
    Acceptable,  ///< 3 to 10, both included
    Repeat,      ///< above 10: the expected value was too far off
};
AdditionGrade GradeOf(float deviation);

}  // namespace kelvo
