#include "statistics/Linearity.h"

#include <algorithm>
#include <cmath>

#include "statistics/JoinedLines.h"
#include "statistics/Parabola.h"
#include "statistics/StraightLine.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

std::optional<FTest> TestOf(double above, int upper, double below, int lower) {
    FTest test{.f = above / upper / (below / lower), .upper = upper, .lower = lower};
    if (!std::isfinite(test.f)) return std::nullopt;
    test.limit = FisherF(upper, lower, LinearityConfidence);
    return test;
}

}  // namespace

std::optional<FTest> MandelTest(std::span<const double> x, std::span<const double> y) {
    const auto line = FitStraightLine(x, y);
    const auto parabola = Parabola::Of(x, y);
    if (!line || !parabola || parabola->Freedom() < 1) return std::nullopt;
    const double saved = std::max(0.0, line->residualSquares - parabola->residualSquares);
    return TestOf(saved, 1, parabola->residualSquares, parabola->Freedom());
}

std::optional<FTest> LackOfFitTest(std::span<const double> x, std::span<const double> y) {
    const auto line = FitStraightLine(x, y);
    const PureError error = PureErrorOf(x, y);
    if (!line || error.freedom < 1 || error.different < 3) return std::nullopt;
    const double lack = std::max(0.0, line->residualSquares - error.squares);
    return TestOf(lack, error.different - 2, error.squares, error.freedom);
}

}  // namespace kelvo
