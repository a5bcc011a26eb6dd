#include "calibration/LinearRange.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <span>

#include "calibration/Quality.h"
#include "statistics/InversePrediction.h"

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

/// Whether the standards beyond the run leave its line towards less response, each farther out the more.
/// @param outwards  their places from the run on
/// @param sign      of the surplus that is less response: 1 below the run, −1 above it
bool LevelsOff(const Standards& sorted, const Run& run, double within, std::span<const std::size_t> outwards,
               double sign) {
    double before = 0, logC = std::nan("");
    for (const std::size_t i : outwards) {
        const double surplus = sign * Surplus(sorted, run.line, i);
        if (surplus <= before && sorted.logC[i] != logC) return false;
        before = surplus;
        logC = sorted.logC[i];
    }
    return before * std::abs(run.line.slope) > within;
}

bool LevelsOffBelow(const Standards& sorted, const Run& run, double within) {
    std::vector<std::size_t> outwards(run.first);
    std::iota(outwards.rbegin(), outwards.rend(), std::size_t{0});
    return LevelsOff(sorted, run, within, outwards, 1);
}

/// One standard alone that lies low at the top may as well have been made up wrongly.
bool LevelsOffAbove(const Standards& sorted, const Run& run, double within) {
    const std::size_t end = run.first + run.count;
    if (end == sorted.Count() || sorted.logC[end] == sorted.logC.back()) return false;
    std::vector<std::size_t> outwards(sorted.Count() - run.first - run.count);
    std::iota(outwards.begin(), outwards.end(), end);
    return LevelsOff(sorted, run, within, outwards, -1);
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

/// Where the mean of the level's potentials lies on the line of the range.
std::optional<LinearRange::Interval> IntervalOfLimit(const StraightLine& line, std::span<const double> level) {
    constexpr double MostDecades = 2;
    const auto prediction = InversePrediction::Of(line);
    if (!prediction || ScatterVanishes(line)) return std::nullopt;
    const InverseEstimate at = prediction->Of(level);
    if (!(at.halfWidth <= MostDecades)) return std::nullopt;
    return LinearRange::Interval{at.x - at.halfWidth, at.x + at.halfWidth};
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
    range.saturates = LevelsOffAbove(sorted, *run, within);
    if (!LevelsOffBelow(sorted, *run, within)) return range;
    bool flat = false;
    const std::size_t count = LevelCount(sorted, *run, flat);
    const auto level = std::span(sorted.mv).first(count);
    const double mean = std::accumulate(level.begin(), level.end(), 0.0) / static_cast<double>(count);
    range.limit = flat ? LinearRange::Limit::Reached : LinearRange::Limit::AtMost;
    range.detectionLogC = (mean - run->line.intercept) / run->line.slope;
    if (flat) range.detection = IntervalOfLimit(run->line, level);
    return range;
}

std::optional<LowEndFit> FitLowEnd(const Standards& standards) {
    return OffsetLine::Of(standards.logC, standards.mv);
}

}  // namespace kelvo
