#include "addition/Addition.h"

#include <cmath>
#include <numbers>

#include "statistics/StudentT.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr double AbsoluteZero = -273.15;
constexpr float NoConcentration = -999, HighestGood = 3, HighestAcceptable = 10;

/// So many degrees of freedom are as good as infinitely many.
constexpr int ManyFreedom = 1000000;

double Square(double x) {
    return x * x;
}

}  // namespace

double SlopeAt(double slope, double calibrationCelsius, double sampleCelsius) {
    return Divide(Finite(slope * (sampleCelsius - AbsoluteZero)), calibrationCelsius - AbsoluteZero);
}

AdditionTerms StandardAdditionTerms(const Addition& a, double q) {
    const double total = a.sampleMl + a.standardMl;
    const double balance = Finite(total * q - a.sampleMl);
    const double added = a.standardPpm * a.standardMl;
    return {Divide(added, balance), -added * (q - 1) / Square(balance),
            a.standardPpm * a.sampleMl * (q - 1) / Square(balance), -added * total / Square(balance)};
}

AdditionTerms SampleAdditionTerms(const Addition& a, double q) {
    const double total = a.sampleMl + a.standardMl;
    const double ratio = Divide(total * q, a.sampleMl) - a.standardMl / a.sampleMl;
    return {Finite(a.standardPpm * ratio), a.standardPpm * a.standardMl * (1 - q) / Square(a.sampleMl),
            a.standardPpm * (q - 1) / a.sampleMl, a.standardPpm * total / a.sampleMl};
}

AdditionResult WorkOut(const Addition& addition, AdditionFormula formula, const Scatter& scatter) {
    AdditionResult result;
    result.slope = SlopeAt(addition.slope, addition.calibrationCelsius, addition.sampleCelsius);
    const double decades = Divide(addition.after - addition.before, result.slope);
    const double q = Finite(std::pow(10.0, decades));
    const AdditionTerms terms = formula(addition, q);
    result.ppm = terms.ppm;
    // The slope's deviation moves with the slope to the sample's temperature, so their ratio stays.
    const double byPotentials = 2 * Square(scatter.potential / result.slope);
    const double bySlope = Square(decades * scatter.slope / addition.slope);
    const double electrode = Square(terms.byQ * q * std::numbers::ln10) * (byPotentials + bySlope);
    const double volumes = Square(terms.bySampleMl * VolumeDeviation * addition.sampleMl) +
                           Square(terms.byStandardMl * VolumeDeviation * addition.standardMl);
    result.uncertainty = std::sqrt(electrode + volumes);
    result.margin = std::sqrt(electrode * Square(StudentT(scatter.freedom > 0 ? scatter.freedom : ManyFreedom)) +
                              volumes * Square(StudentT(ManyFreedom)));
    return result;
}

float AdditionDeviation(double ppm, double expectedPpm) {
    if (ppm <= 0) return NoConcentration;
    const float x = ToSingle(ppm), expected = ToSingle(expectedPpm);
    const float difference = x - expected;
    if (x == expected) return 0;
    return ToSingle(std::abs(Divide(difference, x > expected ? expected : x)));
}

AdditionGrade GradeOf(float deviation) {
    if (deviation == NoConcentration) return AdditionGrade::Bad;
    if (deviation > HighestAcceptable) return AdditionGrade::Repeat;
    return deviation < HighestGood ? AdditionGrade::Good : AdditionGrade::Acceptable;
}

}  // namespace kelvo
