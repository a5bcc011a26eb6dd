#include "statistics/OffsetLine.h"

#include <algorithm>
#include <boost/math/tools/minima.hpp>
#include <cmath>
#include <cstdint>
#include <limits>
#include <set>
#include <utility>

#include "statistics/StudentT.h"

namespace kelvo {
namespace {

constexpr double DecadesBelow = 4, Step = 0.25;

}  // namespace

/// The line at one c; none when the 10^x + c cannot be told apart.
std::optional<StraightLine> OffsetLine::LineAt(double at, std::vector<double>& logs) const {
    for (std::size_t i = 0; i < concentrations_.size(); ++i)
        logs[i] = std::log10(concentrations_[i] + at);
    return FitStraightLine(logs, y_);
}

double OffsetLine::SquaresAt(double logC, std::vector<double>& logs) const {
    const auto line = LineAt(std::pow(10.0, logC), logs);
    return line ? line->residualSquares : std::numeric_limits<double>::max();
}

std::optional<OffsetLine> OffsetLine::Of(std::span<const double> x, std::span<const double> y) {
    constexpr std::size_t Least = 4;
    if (x.size() != y.size() || std::set<double>(x.begin(), x.end()).size() < Least) return std::nullopt;
    std::vector<double> concentrations;
    for (const double value : x)
        concentrations.push_back(std::pow(10.0, value));
    OffsetLine fit(std::move(concentrations), {y.begin(), y.end()});
    fit.n = static_cast<int>(x.size());

    std::vector<double> logs(x.size());
    const auto squares = [&](double logC) { return fit.SquaresAt(logC, logs); };

    // Far below the lowest x c changes nothing. The sum of squares may have more than one valley, so the
    // deepest is looked for step by step before it is measured out.
    const auto [lowest, highest] = std::minmax_element(x.begin(), x.end());
    fit.lowestLog_ = *lowest - DecadesBelow;
    fit.highestLog_ = *highest;
    const int steps = static_cast<int>(std::ceil((*highest - fit.lowestLog_) / Step));
    int deepest = 0;
    double least = std::numeric_limits<double>::max();
    for (int i = 0; i <= steps; ++i) {
        const double value = squares(fit.lowestLog_ + i * Step);
        if (value >= least) continue;
        least = value;
        deepest = i;
    }
    if (deepest == steps) return std::nullopt;

    constexpr int HalfTheBits = std::numeric_limits<double>::digits / 2;  // a minimum is no sharper than that
    constexpr std::uintmax_t MostSteps = 60;
    std::uintmax_t rounds = MostSteps;
    const double middle = fit.lowestLog_ + deepest * Step;
    const auto [logOfC, found] =
        boost::math::tools::brent_find_minima(squares, middle - Step, middle + Step, HalfTheBits, rounds);

    // A c that does no better than none is none.
    constexpr double Visibly = 1 - 1e-6;
    auto line = FitStraightLine(x, y);
    if (!line) return std::nullopt;
    fit.straightSquares = line->residualSquares;
    if (deepest > 0 && found < Visibly * line->residualSquares) {
        fit.c = std::pow(10.0, logOfC);
        line = fit.LineAt(fit.c, logs);
        if (!line) return std::nullopt;
    }
    fit.slope = line->slope;
    fit.intercept = line->intercept;
    fit.residualSquares = line->residualSquares;
    fit.line_ = *line;
    fit.parameters = fit.c > 0 ? 3 : 2;
    fit.residualDeviation = std::sqrt(line->residualSquares / fit.Freedom());
    if (fit.c == 0) return fit;
    std::vector<Three> rows;
    for (const double concentration : fit.concentrations_)
        rows.push_back(fit.Derivatives(concentration));
    fit.columns_ = ThreeColumns::Of(rows);
    if (!fit.columns_) return std::nullopt;
    return fit;
}

/// By intercept, slope and ln c.
Three OffsetLine::Derivatives(double concentration) const {
    const double sum = concentration + c;
    return {1, std::log10(sum), slope / std::log(10.0) * c / sum};
}

double OffsetLine::At(double x) const {
    return intercept + slope * std::log10(std::pow(10.0, x) + c);
}

double OffsetLine::SlopeAt(double x) const {
    const double concentration = std::pow(10.0, x);
    return slope * concentration / (concentration + c);
}

double OffsetLine::Spread(double x) const {
    return columns_ ? columns_->Spread(Derivatives(std::pow(10.0, x))) : line_.Leverage(x);
}

double OffsetLine::SlopeDeviation() const {
    return columns_ ? residualDeviation * std::sqrt(columns_->Spread({0, 1, 0})) : line_.slopeDeviation;
}

double OffsetLine::InterceptDeviation() const {
    return columns_ ? residualDeviation * std::sqrt(columns_->Spread({1, 0, 0})) : line_.interceptDeviation;
}

double OffsetLine::FLimit() const {
    return FisherF(1, n - 3, Confidence);
}

std::optional<OffsetLine::Interval> OffsetLine::CInterval() const {
    const double t = StudentT(n - 3);
    const double most = residualSquares + t * t * Variance();
    std::vector<double> logs(concentrations_.size());
    // From the best c outwards to where the squares first pass the limit.
    const auto crossing = [&](double from, double step, double end) -> std::optional<double> {
        double inside = from, outside = from;
        do {
            inside = outside;
            outside += step;
            if ((outside - end) * step > 0) return std::nullopt;
        } while (SquaresAt(outside, logs) <= most);
        constexpr int Halvings = 50;
        for (int i = 0; i < Halvings; ++i) {
            const double middle = (inside + outside) / 2;
            (SquaresAt(middle, logs) <= most ? inside : outside) = middle;
        }
        return std::pow(10.0, inside);
    };
    const double best = c > 0 ? std::log10(c) : lowestLog_;
    const auto high = crossing(best, Step / 4, highestLog_);
    if (!high) return std::nullopt;
    const auto low = straightSquares > most ? crossing(best, -Step / 4, lowestLog_ - 1) : 0.0;
    return Interval{low.value_or(0), *high};
}

}  // namespace kelvo
