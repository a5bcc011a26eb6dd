#include "calibration/LinearRange.h"

#include <algorithm>
#include <cmath>
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

std::optional<LowEndFit> FitLowEnd(const Standards& standards) {
    return OffsetLine::Of(standards.logC, standards.mv);
}

}  // namespace kelvo
