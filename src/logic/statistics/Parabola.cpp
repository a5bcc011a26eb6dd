#include "statistics/Parabola.h"

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

namespace kelvo {
namespace {

double MeanOf(std::span<const double> values) {
    double sum = 0;
    for (const double value : values)
        sum += value;
    return sum / static_cast<double>(values.size());
}

}  // namespace

std::optional<Parabola> Parabola::Of(std::span<const double> x, std::span<const double> y) {
    if (x.size() != y.size() || std::set<double>(x.begin(), x.end()).size() < 3) return std::nullopt;
    const double middle = MeanOf(x);
    std::vector<Three> rows;
    for (const double value : x)
        rows.push_back({1, value - middle, (value - middle) * (value - middle)});
    const auto columns = ThreeColumns::Of(rows);
    if (!columns) return std::nullopt;
    Parabola out(*columns);
    out.n = static_cast<int>(x.size());
    out.middle_ = middle;
    const Three theta = columns->Solve(rows, y);
    out.mean_ = theta[0];
    out.first_ = theta[1];
    out.a = theta[2];
    out.b = out.first_ - 2 * out.a * middle;
    out.c = out.mean_ - middle * (out.first_ - out.a * middle);
    for (std::size_t i = 0; i < x.size(); ++i)
        out.residualSquares += (y[i] - out.At(x[i])) * (y[i] - out.At(x[i]));
    if (out.Freedom() > 0) out.residualDeviation = std::sqrt(out.residualSquares / out.Freedom());
    const double checks[] = {out.a, out.b, out.c, out.residualSquares};
    if (!std::all_of(std::begin(checks), std::end(checks), [](double value) { return std::isfinite(value); }))
        return std::nullopt;
    return out;
}

double Parabola::At(double x) const {
    const double from = x - middle_;
    return mean_ + from * (first_ + a * from);
}

double Parabola::Spread(double x) const {
    const double from = x - middle_;
    return columns_.Spread({1, from, from * from});
}

}  // namespace kelvo
