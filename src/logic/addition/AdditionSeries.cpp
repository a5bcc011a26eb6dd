#include "addition/AdditionSeries.h"

#include <algorithm>
#include <boost/math/tools/minima.hpp>
#include <cmath>
#include <numbers>
#include <numeric>

#include "statistics/Figures.h"
#include "statistics/StraightLine.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

constexpr double Percent = 100;
constexpr double PercentOfDecade = Percent * std::numbers::ln10;

double Square(double x) {
    return x * x;
}

/// What the electrode sees at one c, and how well that explains the potentials.
struct Fit {
    double squares = 0, eo = 0, slope = 0, slopeDeviation = 0;
    std::vector<double> residuals;
};

/// The squares over log10 c.
class Profile {
 public:
    explicit Profile(const AdditionSeries& series) : series_(series) {
        ml_.push_back(0);
        for (const double added : series.addedMl)
            ml_.push_back(ml_.back() + added);
    }

    Fit At(double logC) const {
        const double c = std::pow(10.0, logC);
        std::vector<double> seen;
        for (const double ml : ml_) {
            const double amount = series_.sampleAdded ? series_.standardPpm * series_.startMl + c * ml
                                                      : c * series_.startMl + series_.standardPpm * ml;
            seen.push_back(std::log10(amount / (series_.startMl + ml)));
        }
        Fit fit{.squares = 0, .eo = 0, .slope = series_.slope, .slopeDeviation = 0, .residuals = {}};
        const double n = static_cast<double>(seen.size());
        if (series_.fitSlope) {
            const auto line = FitStraightLine(seen, series_.mv);
            if (!line) return {.squares = Infinite, .eo = 0, .slope = 0, .slopeDeviation = 0, .residuals = {}};
            fit.slope = line->slope;
            fit.eo = line->intercept;
        } else {
            fit.eo = (std::accumulate(series_.mv.begin(), series_.mv.end(), 0.0) -
                      fit.slope * std::accumulate(seen.begin(), seen.end(), 0.0)) /
                     n;
        }
        for (std::size_t i = 0; i < seen.size(); ++i) {
            fit.residuals.push_back(series_.mv[i] - fit.eo - fit.slope * seen[i]);
            fit.squares += Square(fit.residuals.back());
        }
        return fit;
    }
    double Squares(double logC) const { return At(logC).squares; }

    /// log10 c of the least squares; none at an end of the search: no c explains the potentials.
    std::optional<double> Least() const {
        // A coarse look first: squares over c may have more than one valley where the slope is fitted.
        const double middle = std::log10(series_.standardPpm);
        double best = middle, least = Infinite;
        for (int i = -Looks; i <= Looks; ++i) {
            const double at = middle + Decades * i / Looks, squares = Squares(at);
            if (squares >= least) continue;
            least = squares;
            best = at;
        }
        if (std::abs(best - middle) >= Decades) return std::nullopt;
        return LeastNear(best, Decades / Looks);
    }
    double LeastNear(double logC, double within) const {
        constexpr int Bits = 40;
        const auto squares = [&](double x) { return Squares(x); };
        return boost::math::tools::brent_find_minima(squares, logC - within, logC + within, Bits).first;
    }

    /// How far from the least squares they have grown by `by`; none when they never do.
    std::optional<double> Reach(double from, double least, double by, double direction) const {
        double inside = 0, outside = 0;
        for (double step = FirstStep; step <= Decades; step *= 2) {
            if (Squares(from + direction * step) - least < by) {
                inside = step;
                continue;
            }
            outside = step;
            break;
        }
        if (outside == 0) return std::nullopt;
        for (int i = 0; i < Halvings; ++i) {
            const double middle = (inside + outside) / 2;
            (Squares(from + direction * middle) - least < by ? inside : outside) = middle;
        }
        return outside;
    }

 private:
    static constexpr double Decades = 8, FirstStep = 1e-6, Infinite = 1e300;
    static constexpr int Looks = 32, Halvings = 40;

    const AdditionSeries& series_;
    std::vector<double> ml_;  ///< added in all, from 0 on
};

/// How log10 c moves when something of the series is another.
template <typename Change>
double Moves(const AdditionSeries& series, double logC, Change change) {
    AdditionSeries other = series;
    change(other);
    constexpr double Far = 0.1;  // decades; what is known to a per cent or so moves it by less
    return Profile(other).LeastNear(logC, Far) - logC;
}

/// One addition with a given slope, as the form has it.
SeriesResult OfOne(const AdditionSeries& series) {
    const double startMl = series.startMl, addedMl = series.addedMl[0];
    Addition one{.sampleMl = series.sampleAdded ? addedMl : startMl,
                 .standardMl = series.sampleAdded ? startMl : addedMl,
                 .standardPpm = series.standardPpm,
                 .slope = series.slope,
                 .calibrationCelsius = 25,
                 .sampleCelsius = 25,
                 .before = series.mv[0],
                 .after = series.mv[1]};
    const auto formula = series.sampleAdded ? SampleAdditionTerms : StandardAdditionTerms;
    const AdditionResult worked = WorkOut(one, formula, series.scatter);
    SeriesResult result;
    result.ppm = worked.ppm;
    result.slope = worked.slope;
    result.residuals = {0, 0};
    if (!(worked.ppm > 0)) return result;
    result.eo = series.mv[0] - worked.slope * std::log10(series.sampleAdded ? series.standardPpm : worked.ppm);
    result.interval = SeriesResult::Interval{std::max(0.0, worked.ppm - worked.margin), worked.ppm + worked.margin};
    return result;
}

}  // namespace

double AdditionSeries::TotalMl(std::size_t additions) const {
    return std::accumulate(addedMl.begin(), addedMl.begin() + static_cast<std::ptrdiff_t>(additions), 0.0);
}

std::optional<SeriesResult> WorkOutSeries(const AdditionSeries& series) {
    if (series.addedMl.size() == 1 && !series.fitSlope) {
        SeriesResult one = OfOne(series);
        return one.ppm > 0 ? std::optional(one) : std::nullopt;
    }
    const Profile profile(series);
    const auto least = profile.Least();
    if (!least) return std::nullopt;
    const Fit fit = profile.At(*least);
    SeriesResult result;
    result.ppm = std::pow(10.0, *least);
    result.slope = fit.slope;
    result.eo = fit.eo;
    result.residuals = fit.residuals;
    const int unknowns = series.fitSlope ? 3 : 2;
    result.freedom = static_cast<int>(series.mv.size()) - unknowns;
    if (result.freedom > 0) result.residualDeviation = std::sqrt(fit.squares / result.freedom);

    // The scatter of a potential: that about this fit and that about the calibration's line, taken together unless
    // this one is larger (F at 98 %).
    double variance = Square(series.scatter.potential);
    int freedom = series.scatter.freedom;
    std::string source = freedom > 0 ? "scatter of the calibration" : "assumed";
    if (result.freedom > 0) {
        constexpr double Sure = 0.98;
        const double own = Square(result.residualDeviation);
        const bool apart = freedom == 0 || own > FisherF(result.freedom, freedom, Sure) * variance;
        variance = apart ? own : (own * result.freedom + variance * freedom) / (result.freedom + freedom);
        freedom = apart ? result.freedom : result.freedom + freedom;
        source = apart ? "scatter about this fit" : "scatter about this fit and of the calibration";
    }
    constexpr int FewestFreedom = 3;
    if (result.freedom < 2 && freedom < FewestFreedom) {
        result.why =
            series.fitSlope
                ? "three additions tell no scatter beside the slope: a fourth does, or a calibration of four standards"
                : "two additions tell too little of the scatter: a third does, or a calibration of four standards";
        return result;
    }
    const double s = std::sqrt(variance);
    if (!(s > 0)) {
        result.why = "the potentials lie exactly on the curve: no uncertainty can be told";
        return result;
    }
    // One standard deviation, both sides of it taken together.
    const auto down = profile.Reach(*least, fit.squares, variance, -1),
               up = profile.Reach(*least, fit.squares, variance, 1);
    const char* const NoEnd =
        "the additions do not bound the concentration: add more standard, or take the slope of a calibration";
    if (!down || !up) {
        result.why = NoEnd;
        return result;
    }
    result.budget.Add(
        {"potentials", source + ", s " + WithPlacesOf(s, s) + " mV", PercentOfDecade * (*down + *up) / 2, freedom});
    if (!series.fitSlope && series.scatter.slope > 0) {
        const double by = Moves(series, *least, [&](AdditionSeries& other) { other.slope += series.scatter.slope; });
        result.budget.Add(
            {"slope", "of the calibration, ± " + WithPlacesOf(series.scatter.slope, series.scatter.slope) + " mV/dec",
             PercentOfDecade * std::abs(by), series.scatter.freedom});
    }
    const double ofStart = Moves(series, *least, [](AdditionSeries& other) { other.startMl *= 1 + VolumeDeviation; });
    const double ofAdded = Moves(series, *least, [](AdditionSeries& other) {
        for (double& ml : other.addedMl)
            ml *= 1 + VolumeDeviation;
    });
    result.budget.Add(
        {"volumes", "1 % of the first and of all added (assumed)", PercentOfDecade * std::hypot(ofStart, ofAdded)});
    result.budget.Add({"standard",
                       series.standardsDeviation > 0
                           ? WithPlacesOf(series.standardsDeviation, series.standardsDeviation) + " %"
                           : "taken as exact",
                       series.standardsDeviation});

    const double t = result.budget.Coverage();
    double others = 0;
    for (std::size_t i = 1; i < result.budget.Parts().size(); ++i)
        others += Square(t * result.budget.Parts()[i].u / PercentOfDecade);
    const auto low = profile.Reach(*least, fit.squares, t * t * variance, -1);
    const auto high = profile.Reach(*least, fit.squares, t * t * variance, 1);
    if (!low || !high) {
        result.why = NoEnd;
        return result;
    }
    result.interval = SeriesResult::Interval{std::pow(10.0, *least - std::sqrt(Square(*low) + others)),
                                             std::pow(10.0, *least + std::sqrt(Square(*high) + others))};
    return result;
}

GranPlot GranPlotOf(const AdditionSeries& series, const SeriesResult& result) {
    GranPlot plot;
    const double amount = series.sampleAdded ? series.standardPpm * series.startMl : result.ppm * series.startMl;
    const double added = series.sampleAdded ? result.ppm : series.standardPpm;
    // (V0 + V)·10^(E/S) over its value at V = 0 on the line: 1 + B·V/A.
    double ml = 0;
    for (std::size_t i = 0; i < series.mv.size(); ++i) {
        if (i > 0) ml += series.addedMl[i - 1];
        plot.ml.push_back(ml);
        const double seen = std::pow(10.0, (series.mv[i] - result.eo) / result.slope);
        plot.ordinate.push_back((series.startMl + ml) * seen / amount);
    }
    plot.atZero = 1;
    plot.perMl = added / amount;
    plot.meetsAxisAt = -amount / added;
    return plot;
}

AdditionPlan PlanAdditions(const AdditionSeries& series, double expectedPpm, int additions) {
    constexpr double GoodStep = 20, SmallestStep = 15, LargestStep = 30;  // mV
    constexpr double MostShare = 0.5, SmallestMl = 0.05, LargestTimes = 10;
    AdditionPlan plan;
    plan.standardPpm = series.standardPpm;
    const double decade = std::abs(series.slope);
    const double n = additions;
    if (!series.sampleAdded) {
        // x goes from c to c·q^n, so V after k is c·V0·(q^k − 1)/(Ca − c·q^k).
        double step = GoodStep;
        const auto grown = [&](double k) { return std::pow(10.0, step * k / decade); };
        if (!(plan.standardPpm > 0)) {
            // In all a fifth of the sample: little is diluted, and the volumes can be measured.
            constexpr double Share = 0.2;
            const double exact = expectedPpm * (grown(n) * (1 + Share) - 1) / Share;
            const double power = std::pow(10.0, std::floor(std::log10(exact)));
            plan.standardPpm = std::ceil(exact / power) * power;
        }
        const auto total = [&](double k) {
            const double room = plan.standardPpm - expectedPpm * grown(k);
            return room > 0 ? expectedPpm * series.startMl * (grown(k) - 1) / room : HUGE_VAL;
        };
        // A weak standard reaches less: smaller steps are still good.
        while (step > SmallestStep && !(total(n) <= MostShare * series.startMl))
            step -= 1;
        plan.stepMv = step;
        for (int k = 1; k <= additions; ++k)
            plan.addedMl.push_back(total(k) - (k > 1 ? total(k - 1) : 0));
        if (!(total(n) <= MostShare * series.startMl))
            plan.words = "the standard is too weak for so many additions: take a stronger one, or fewer additions";
    } else {
        // The sample weakens or strengthens the standard towards itself, by at most the ratio of the two.
        if (!(plan.standardPpm > 0)) plan.standardPpm = expectedPpm / 20;
        const double most = decade * std::abs(std::log10(expectedPpm / plan.standardPpm));
        double step = std::min(GoodStep, 0.8 * most / n);
        plan.stepMv = step;
        const double sign = expectedPpm > plan.standardPpm ? 1 : -1;
        double before = 0;
        for (int k = 1; k <= additions; ++k) {
            const double x = plan.standardPpm * std::pow(10.0, sign * step * k / decade);
            const double ml = series.startMl * (x - plan.standardPpm) / (expectedPpm - x);
            plan.addedMl.push_back(ml - before);
            before = ml;
        }
        if (!(before <= LargestTimes * series.startMl) || !std::isfinite(before))
            plan.words = "so many additions need more than ten times the standard's volume: take fewer";
    }
    const auto [least, most] = std::minmax_element(plan.addedMl.begin(), plan.addedMl.end());
    if (plan.words.empty() && !(plan.stepMv >= SmallestStep && plan.stepMv <= LargestStep))
        plan.words = "an addition changes the potential by " + WithPlaces(plan.stepMv, 1) +
                     " mV only, less than 15: take fewer additions, or a standard that differs more";
    if (plan.words.empty() && *least < SmallestMl)
        plan.words = "the smallest addition is below 0.05 mL: take a weaker standard, or a larger volume of the sample";
    for (double& ml : plan.addedMl)
        if (!std::isfinite(ml)) ml = 0;
    return plan;
}

}  // namespace kelvo
