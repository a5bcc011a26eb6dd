#include "statistics/Replicates.h"

#include <algorithm>
#include <cmath>

#include "statistics/StudentT.h"

namespace kelvo {

std::optional<Replicates> Summarise(std::span<const double> values) {
    if (values.size() < 2) return std::nullopt;
    const auto n = static_cast<double>(values.size());
    Replicates out;
    out.n = static_cast<int>(values.size());
    for (const double value : values)
        out.mean += value / n;
    // Equal values have exactly themselves as mean, so that rounding invents no spread.
    if (std::all_of(values.begin(), values.end(), [&](double value) { return value == values[0]; }))
        out.mean = values[0];
    double squares = 0;
    for (const double value : values)
        squares += (value - out.mean) * (value - out.mean);
    out.deviation = std::sqrt(squares / (n - 1));
    const double halfWidth = StudentT(out.n - 1) * out.deviation / std::sqrt(n);
    out.low = out.mean - halfWidth;
    out.high = out.mean + halfWidth;
    if (!std::isfinite(out.low) || !std::isfinite(out.high)) return std::nullopt;
    const double relative = 100 * out.deviation / std::abs(out.mean);
    if (std::isfinite(relative)) out.relative = relative;
    return out;
}

std::optional<Grubbs> GrubbsTest(std::span<const double> values) {
    if (values.size() < 3) return std::nullopt;
    const auto summary = Summarise(values);
    if (!summary || summary->deviation == 0) return std::nullopt;
    Grubbs test;
    for (std::size_t i = 0; i < values.size(); ++i) {
        const double g = std::abs(values[i] - summary->mean) / summary->deviation;
        if (g <= test.g) continue;
        test.g = g;
        test.suspect = i;
    }
    const auto n = static_cast<double>(values.size());
    constexpr double TwoSided = 1 - Confidence;
    const double t = StudentT(summary->n - 2, 1 - TwoSided / n);
    test.limit = (n - 1) / std::sqrt(n) * std::sqrt(t * t / (n - 2 + t * t));
    return test;
}

}  // namespace kelvo
