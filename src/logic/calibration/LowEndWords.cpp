#include "calibration/LowEndWords.h"

#include <algorithm>

#include "calibration/Calibration.h"
#include "statistics/Figures.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

std::string WithDeviation(double value, double deviation, const LowEndFit& fit, const char* unit) {
    const double half = StudentT(fit.Freedom()) * deviation;
    return WithInterval(value, value - half, value + half).Line(unit) + " (95 %)";
}

}  // namespace

LowEndWords WordsOf(const LowEndFit& fit, double gramsPerMole) {
    constexpr double GramsPerLitre = 1000;
    const double factor = gramsPerMole > 0 ? GramsPerLitre * gramsPerMole : 1;
    const char* unit = gramsPerMole > 0 ? "ppm" : "mol/L";
    LowEndWords words;
    words.slope = WithDeviation(fit.slope, fit.SlopeDeviation(), fit, "mV/decade");
    words.eo = WithDeviation(fit.intercept, fit.InterceptDeviation(), fit, "mV");
    const auto interval = fit.CInterval();
    if (fit.c == 0) {
        words.c = interval ? "0, at most " + WithPlacesOf(factor * interval->high, factor * interval->high) + " " +
                                 unit + " (95 %)"
                           : "0";
        words.test = "the straight line fits as well";
        return words;
    }
    words.c = interval
                  ? WithInterval(factor * fit.c, factor * interval->low, factor * interval->high).Line(unit) + " (95 %)"
                  : WithPlacesOf(factor * fit.c, factor * fit.c) + " " + unit;
    const std::string figures = " (F " + WithPlaces(fit.F(), 1) + ", limit " + WithPlaces(fit.FLimit(), 1) + ")";
    words.test =
        (fit.Significant() ? "c differs from 0" : "c cannot be told from 0: 'Linear Regression' does as well") +
        figures;
    return words;
}

std::vector<std::string> LowEndLines(const Calibration& calibration) {
    if (calibration.curve != CalibrationData::Curve::LowEnd || !calibration.quality.lowEnd) return {};
    const LowEndWords words = WordsOf(*calibration.quality.lowEnd, calibration.gramsPerMole);
    return {"Results: low-end fit", "c " + words.c, "S " + words.slope, "Eo " + words.eo, words.test};
}

}  // namespace kelvo
