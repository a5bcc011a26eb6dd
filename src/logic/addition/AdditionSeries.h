#pragma once

#include <optional>
#include <string>
#include <vector>

#include "addition/Addition.h"
#include "statistics/Budget.h"

namespace kelvo {

/// Several additions, one after the other, into one solution: to the sample its standard, or to the standard the
/// sample.
struct AdditionSeries {
    bool sampleAdded = false;       ///< the solution is the standard, and the sample is added to it
    double startMl = 0;             ///< volume before the first addition, mL
    double standardPpm = 0;         ///< concentration of the standard
    std::vector<double> addedMl;    ///< of each addition, one to `Most`
    std::vector<double> mv;         ///< before the first and after each addition, one more than additions
    double slope = 0;               ///< mV per decade at the temperature of the measurement
    Scatter scatter;                ///< of the calibration, its slope's deviation for `slope`
    bool fitSlope = false;          ///< the slope follows from the additions themselves, at least `FewestToFit`
    double standardsDeviation = 0;  ///< relative standard deviation of the standard, %; 0: taken as exact

    static constexpr std::size_t Most = 10, FewestToFit = 3;

    double TotalMl(std::size_t additions) const;
};

/// What several additions give.
///
/// The electrode sees x = (A + B·V)/(V0 + V) after V mL, with A = c·V0, B = Ca for a sample of c ppm to which a
/// standard of Ca is added, and A = Ca·V0, B = c the other way round; E = Eo + S·log10 x. Gran's plot shows (V0 +
/// V)·10^(E/S) against V, a straight line that meets the axis at −A/B (G. Gran, Analyst 77 (1952) 661–671). A potential
/// scatters alike everywhere, so an ordinate scatters as it is large: the line is the one of the least squares in mV,
/// which is the same as each ordinate's weight 1/y². Eo (and S, where it is fitted) enter in a straight line, so the
/// squares are searched over c alone.
///
/// The interval of c is that of all c whose squares stay within t²·s² of the least ones (the profile of the squares;
/// Bates and Watts, Nonlinear Regression Analysis, chapter 6), since with few additions and a fitted slope c is far
/// from normally distributed; slope, volumes and standard add to each side as squares do. Of two additions without a
/// calibration (three where the slope is fitted) none is told: it would hold 88 %. All others hold 93 to 97 % by
/// simulation, and more where the volumes are better than the 1 % that is assumed.
struct SeriesResult {
    double ppm = 0;
    double slope = 0;               ///< used or fitted, mV per decade
    double slopeDeviation = 0;      ///< of a fitted one
    double eo = 0;                  ///< mV at 1 ppm
    std::vector<double> residuals;  ///< mV, one a potential
    double residualDeviation = 0;   ///< mV; 0 without a degree of freedom
    int freedom = 0;                ///< degrees behind it
    Budget budget;                  ///< % of c
    struct Interval {
        double low = 0, high = 0;
    };
    std::optional<Interval> interval;  ///< ppm, 95 %
    std::string why;                   ///< why there is none
    double Uncertainty() const { return ppm * budget.Combined() / 100; }
};

/// One addition with a given slope is worked out as `WorkOut` does; its interval is that one's.
/// @throws RuntimeError 11, 6 as `WorkOut`
/// @return none where no concentration above 0 explains the potentials (they change the wrong way, or not at all)
std::optional<SeriesResult> WorkOutSeries(const AdditionSeries& series);

/// Gran's plot of a result: ordinates in units of the one before the first addition, against mL added.
struct GranPlot {
    std::vector<double> ml, ordinate;
    double meetsAxisAt = 0;        ///< mL, below 0
    double atZero = 0, perMl = 0;  ///< the line
};
GranPlot GranPlotOf(const AdditionSeries& series, const SeriesResult& result);

/// What to add, beforehand.
struct AdditionPlan {
    double standardPpm = 0;
    std::vector<double> addedMl;
    double stepMv = 0;  ///< by which each addition changes the potential, without sign
    std::string words;  ///< what speaks against it; empty: nothing
};
/// @param series       its volume, slope and kind; the standard's concentration where it is above 0, else one is chosen
/// @param expectedPpm  of the sample, above 0
/// @param additions    1 to `AdditionSeries::Most`
AdditionPlan PlanAdditions(const AdditionSeries& series, double expectedPpm, int additions);

}  // namespace kelvo
