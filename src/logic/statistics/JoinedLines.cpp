#include "statistics/JoinedLines.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <tuple>

#include "statistics/Replicates.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

std::map<double, std::vector<double>> GroupsOf(std::span<const double> x, std::span<const double> y) {
    std::map<double, std::vector<double>> groups;
    for (std::size_t i = 0; i < x.size(); ++i)
        groups[x[i]].push_back(y[i]);
    return groups;
}

}  // namespace

double PureError::Deviation() const {
    return freedom > 0 ? std::sqrt(squares / freedom) : 0;
}

PureError PureErrorOf(std::span<const double> x, std::span<const double> y) {
    PureError out;
    for (const auto& [at, values] : GroupsOf(x, y)) {
        ++out.different;
        const auto summary = Summarise(values);
        if (!summary) continue;
        out.freedom += summary->n - 1;
        out.squares += summary->deviation * summary->deviation * (summary->n - 1);
    }
    return out;
}

std::optional<JoinedLines> JoinedLines::Of(std::span<const double> x, std::span<const double> y) {
    if (x.size() != y.size() || x.size() < 2) return std::nullopt;
    JoinedLines out;
    for (const auto& [at, values] : GroupsOf(x, y)) {
        const auto summary = Summarise(values);
        out.joints_.push_back({at, summary ? summary->mean : values.front(), static_cast<int>(values.size())});
    }
    if (out.joints_.size() < 2) return std::nullopt;
    if (out.joints_.front().y > out.joints_.back().y) std::reverse(out.joints_.begin(), out.joints_.end());
    for (std::size_t i = 1; i < out.joints_.size(); ++i)
        if (!(out.joints_[i].y > out.joints_[i - 1].y)) return std::nullopt;
    const auto [lowest, highest] = std::minmax_element(y.begin(), y.end());
    out.lowest_ = *lowest;
    out.highest_ = *highest;
    out.error_ = PureErrorOf(x, y);
    return out;
}

std::size_t JoinedLines::LineAt(double y) const {
    std::size_t i = 1;
    while (i + 1 < joints_.size() && joints_[i].y < y)
        ++i;
    return i;
}

double JoinedLines::XAt(double y) const {
    const Joint &to = joints_[LineAt(y)], &from = joints_[LineAt(y) - 1];
    return from.x + (y - from.y) * (to.x - from.x) / (to.y - from.y);
}

std::optional<PlaceOnCurve> JoinedLines::PlaceOf(double y) const {
    if (y < lowest_ || y > highest_) return std::nullopt;
    const Joint &to = joints_[LineAt(y)], &from = joints_[LineAt(y) - 1];
    const double share = (y - from.y) / (to.y - from.y);
    return PlaceOnCurve{XAt(y), (to.y - from.y) / (to.x - from.x),
                        (1 - share) * (1 - share) / from.count + share * share / to.count};
}

std::optional<CurveEstimate> JoinedLines::Predict(std::span<const double> readings) const {
    if (error_.freedom < 1) return std::nullopt;
    const double s = error_.Deviation(), t = StudentT(error_.freedom);
    const MeanOfReadings own = MeanOf(readings, s, error_.freedom);
    const auto at = PlaceOf(own.mean);
    if (!at) return std::nullopt;
    const double half = std::hypot(own.limit, t * s * std::sqrt(at->spread));
    CurveEstimate out{.x = at->x, .readings = own.readings, .scattersMore = own.scattersMore};
    out.deviation = std::hypot(own.deviation, s * std::sqrt(at->spread)) / std::abs(at->slope);
    std::tie(out.low, out.high) = std::minmax({XAt(own.mean - half), XAt(own.mean + half)});
    if (!std::isfinite(out.low) || !std::isfinite(out.high)) return std::nullopt;
    return out;
}

}  // namespace kelvo
