#include "calibration/LinearRange.h"

#include <algorithm>
#include <boost/math/tools/minima.hpp>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <span>

namespace kelvo {
namespace {

constexpr std::size_t LeastOnLine = 3;
constexpr int LeastForLimit = 4;

/// The standards from the lowest concentration up.
Standards Sorted(const Standards& standards) {
    std::vector<std::size_t> order(standards.Count());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [&](std::size_t a, std::size_t b) { return standards.logC[a] < standards.logC[b]; });
    Standards sorted;
    for (const std::size_t i : order) {
        sorted.logC.push_back(standards.logC[i]);
        sorted.mv.push_back(standards.mv[i]);
    }
    return sorted;
}

struct Run {
    std::size_t first = 0, count = 0;
    StraightLine line;
};

std::optional<StraightLine> LineOf(const Standards& sorted, std::size_t first, std::size_t count) {
    return FitStraightLine(std::span(sorted.logC).subspan(first, count), std::span(sorted.mv).subspan(first, count));
}

bool PassesWithin(const Standards& sorted, const Run& run, double within) {
    for (std::size_t i = run.first; i < run.first + run.count; ++i)
        if (std::abs(run.line.Residual(sorted.logC[i], sorted.mv[i])) > within) return false;
    return true;
}

/// Three standards of one concentration have no line, and those of two say nothing on its straightness.
bool ThreeDiffer(const Standards& sorted, std::size_t first, std::size_t count) {
    int different = 1;
    for (std::size_t i = first + 1; i < first + count; ++i)
        different += sorted.logC[i] != sorted.logC[i - 1] ? 1 : 0;
    return different >= static_cast<int>(LeastOnLine);
}

std::optional<Run> LongestRun(const Standards& sorted, double within, double leastSlope) {
    std::optional<Run> best;
    for (std::size_t count = sorted.Count(); count >= LeastOnLine && !best; --count) {
        for (std::size_t first = 0; first + count <= sorted.Count(); ++first) {
            if (!ThreeDiffer(sorted, first, count)) continue;
            const auto line = LineOf(sorted, first, count);
            if (!line || line->slope == 0 || std::abs(line->slope) < leastSlope) continue;
            const Run run{first, count, *line};
            if (!PassesWithin(sorted, run, within)) continue;
            if (!best || line->residualSquares < best->line.residualSquares) best = run;
        }
    }
    return best;
}

/// By how many decades more than it has the electrode seems to see a standard.
double Surplus(const Standards& sorted, const StraightLine& line, std::size_t i) {
    return line.Residual(sorted.logC[i], sorted.mv[i]) / line.slope;
}

/// Whether every standard below the run leaves its line towards less response, the lower the more.
bool LevelsOff(const Standards& sorted, const Run& run, double within) {
    if (run.first == 0) return false;
    double above = 0;
    for (std::size_t i = run.first; i-- > 0;) {
        const double surplus = Surplus(sorted, run.line, i);
        if (surplus <= above && sorted.logC[i] != sorted.logC[i + 1]) return false;
        above = surplus;
    }
    return above * std::abs(run.line.slope) > within;
}

/// Standards at the low end that form a level, at least the lowest itself.
std::size_t LevelCount(const Standards& sorted, const Run& run, bool& flat) {
    constexpr double FlatShare = 1.0 / 3;
    std::size_t count = 1;
    flat = false;
    while (count <= run.first) {
        const double rise = sorted.mv[count] - sorted.mv[count - 1];
        const double decades = sorted.logC[count] - sorted.logC[count - 1];
        if (decades > 0) {
            if (std::abs(rise) >= FlatShare * std::abs(run.line.slope) * decades) break;
            flat = true;
        }
        if (count == run.first) break;  // the next one is the range's own
        ++count;
    }
    return count;
}

/// Sum of squares at one c, with the line it has; none when the x + c cannot be told apart.
std::optional<StraightLine> LineAtC(const std::vector<double>& x, const Standards& standards, double c,
                                    std::vector<double>& logs) {
    for (std::size_t i = 0; i < x.size(); ++i)
        logs[i] = std::log10(x[i] + c);
    return FitStraightLine(logs, standards.mv);
}

}  // namespace

int DifferentLogCs(const Standards& standards) {
    std::vector<double> values = standards.logC;
    std::sort(values.begin(), values.end());
    return static_cast<int>(std::unique(values.begin(), values.end()) - values.begin());
}

LinearRange FindLinearRange(const Standards& standards, double within, double leastSlope) {
    LinearRange range;
    const Standards sorted = Sorted(standards);
    const auto run = LongestRun(sorted, within, leastSlope);
    if (!run) return range;
    range.found = true;
    range.line = run->line;
    range.fromLogC = sorted.logC[run->first];
    range.toLogC = sorted.logC[run->first + run->count - 1];
    range.below = static_cast<int>(run->first);
    if (DifferentLogCs(standards) < LeastForLimit) return range;
    range.limit = LinearRange::Limit::NotReached;
    if (!LevelsOff(sorted, *run, within)) return range;
    bool flat = false;
    const std::size_t count = LevelCount(sorted, *run, flat);
    const double level =
        std::accumulate(sorted.mv.begin(), sorted.mv.begin() + static_cast<std::ptrdiff_t>(count), 0.0) /
        static_cast<double>(count);
    range.limit = flat ? LinearRange::Limit::Reached : LinearRange::Limit::AtMost;
    range.detectionLogC = (level - run->line.intercept) / run->line.slope;
    return range;
}

double LowEndFit::At(double logC) const {
    return eo + slope * std::log10(std::pow(10.0, logC) + c);
}

std::optional<LowEndFit> FitLowEnd(const Standards& standards) {
    if (DifferentLogCs(standards) < LeastForLimit) return std::nullopt;
    std::vector<double> x;
    for (const double logC : standards.logC)
        x.push_back(std::pow(10.0, logC));
    std::vector<double> logs(x.size());
    const auto squares = [&](double logOfC) {
        const auto line = LineAtC(x, standards, std::pow(10.0, logOfC), logs);
        return line ? line->residualSquares : std::numeric_limits<double>::max();
    };

    // Far below the lowest standard c changes nothing. The sum of squares may have more than one valley, so the
    // deepest is looked for step by step before it is measured out.
    constexpr double DecadesBelow = 4, Step = 0.25;
    const auto [lowest, highest] = std::minmax_element(standards.logC.begin(), standards.logC.end());
    const double from = *lowest - DecadesBelow;
    const int steps = static_cast<int>(std::ceil((*highest - from) / Step));
    int deepest = 0;
    double least = std::numeric_limits<double>::max();
    for (int i = 0; i <= steps; ++i) {
        const double value = squares(from + i * Step);
        if (value >= least) continue;
        least = value;
        deepest = i;
    }
    if (deepest == steps) return std::nullopt;

    constexpr int HalfTheBits = std::numeric_limits<double>::digits / 2;  // a minimum is no sharper than that
    constexpr std::uintmax_t MostSteps = 60;
    std::uintmax_t rounds = MostSteps;
    const double middle = from + deepest * Step;
    const auto [logOfC, found] =
        boost::math::tools::brent_find_minima(squares, middle - Step, middle + Step, HalfTheBits, rounds);

    // A c that does no better than none is none.
    constexpr double Visibly = 1 - 1e-6;
    auto line = FitStraightLine(standards.logC, standards.mv);
    if (!line) return std::nullopt;
    const bool better = deepest > 0 && found < Visibly * line->residualSquares;
    LowEndFit fit;
    if (better) {
        fit.c = std::pow(10.0, logOfC);
        line = LineAtC(x, standards, fit.c, logs);
        if (!line) return std::nullopt;
    }
    const int freedom = static_cast<int>(x.size()) - (better ? 3 : 2);
    fit.slope = line->slope;
    fit.eo = line->intercept;
    fit.residualSquares = line->residualSquares;
    fit.residualDeviation = std::sqrt(line->residualSquares / freedom);
    for (std::size_t i = 0; i < x.size(); ++i)
        fit.residuals.push_back(standards.mv[i] - fit.At(standards.logC[i]));
    return fit;
}

}  // namespace kelvo
