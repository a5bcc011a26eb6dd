#include <algorithm>
#include <cmath>

#include "addition/SeriesForm.h"
#include "statistics/Figures.h"
#include "text/Number.h"

// Gran's plot with its residuals: how several additions look.

namespace kelvo {
namespace {

constexpr float Left = 1000, Right = 9200, UpperTop = 560, UpperBottom = 4000, LowerTop = 4700, LowerBottom = 6000;
constexpr float FigureSize = 8.25f, TitleSize = 10, DotSize = 110, Tick = 70;
constexpr int Grey = 8;

/// Values laid out between two edges.
struct Axis {
    double low, high;
    float start, end;
    float At(double value) const {
        const double share = std::clamp((value - low) / (high - low), -1.0, 2.0);
        return static_cast<float>(start + share * (end - start));
    }
};

/// 1, 2 or 5 times a power of ten, at least `least`.
double Step(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

void FiguresBelow(DisplayList& picture, const Axis& x, float y) {
    constexpr int Most = 8;
    const double step = Step((x.high - x.low) / Most);
    for (double value = step * std::ceil(x.low / step); value <= x.high; value += step) {
        const double shown = std::abs(value) < step / 2 ? 0 : value;
        picture.Line(x.At(shown), y, x.At(shown), y + Tick, colour::Black);
        picture.Text(x.At(shown) - 120, y + Tick + 30, WithPlacesOf(shown, 10 * step), FigureSize);
    }
}

void FiguresBeside(DisplayList& picture, const Axis& y) {
    constexpr int Most = 5;
    const double step = Step((y.high - y.low) / Most);
    for (double value = step * std::ceil(y.low / step); value <= y.high * (1 + 1e-9); value += step) {
        const double shown = std::abs(value) < step / 2 ? 0 : value;
        picture.Line(Left - Tick, y.At(shown), Left, y.At(shown), colour::Black);
        picture.Text(60, y.At(shown) - 90, WithPlacesOf(shown, 10 * step), FigureSize, colour::Black, 800);
    }
}

}  // namespace

DisplayList SeriesOutcome::Plot() const {
    DisplayList picture;
    if (!result) {
        picture.Text(Left, UpperTop, "There is no plot yet: " + why, TitleSize, colour::Black, Right - Left);
        return picture;
    }
    const GranPlot plot = GranPlotOf(series, *result);
    const double lastMl = plot.ml.back();
    // The point where the line meets the axis is what the plot is for; far off it is told and not drawn.
    constexpr double Farthest = 3, Room = 0.06;
    const bool meets = -plot.meetsAxisAt < Farthest * lastMl;
    const double from = meets ? plot.meetsAxisAt : -lastMl * Room;
    const Axis x{from - Room * (lastMl - from), lastMl + Room * (lastMl - from), Left, Right};
    const double highest =
        std::max(*std::max_element(plot.ordinate.begin(), plot.ordinate.end()), plot.atZero + plot.perMl * lastMl);
    const Axis y{0, highest * (1 + Room), UpperBottom, UpperTop};
    picture.Text(60, UpperTop - 430, "(V0 + V)·10^(E/S), 1 before the additions", TitleSize);
    picture.Line(x.start, y.start, x.end, y.start, colour::Black);
    picture.Line(Left, y.start, Left, y.end, colour::Black);
    picture.Line(x.At(0), y.start, x.At(0), y.end, Grey);
    FiguresBeside(picture, y);
    FiguresBelow(picture, x, UpperBottom);
    picture.Text(Right - 1500, UpperBottom + 330, "mL added", TitleSize);
    picture.Line(x.At(from), y.At(plot.atZero + plot.perMl * from), x.At(lastMl),
                 y.At(plot.atZero + plot.perMl * lastMl), colour::Black);
    for (std::size_t i = 0; i < plot.ml.size(); ++i)
        picture.Dot(x.At(plot.ml[i]), y.At(plot.ordinate[i]), colour::Black, DotSize);
    const std::string at = "meets the axis at " + WithPlacesOf(plot.meetsAxisAt, plot.meetsAxisAt / 10) + " mL";
    if (meets) picture.Mark(x.At(from), y.At(0), colour::LightBlue, DisplayItem::Shape::Square, DotSize, true);
    picture.Text(Left + 200, UpperTop, at, FigureSize, colour::LightBlue);

    const auto size = [](double a, double b) { return std::abs(a) < std::abs(b); };
    const double most = std::max(PotentialDeviation,
                                 std::abs(*std::max_element(result->residuals.begin(), result->residuals.end(), size)));
    const Axis residual{-most * (1 + Room), most * (1 + Room), LowerBottom, LowerTop};
    picture.Text(60, LowerTop - 330, "Residual (mV)", TitleSize);
    picture.Line(Left, residual.start, Left, residual.end, colour::Black);
    picture.Line(x.start, residual.At(0), x.end, residual.At(0), colour::Black);
    FiguresBeside(picture, residual);
    for (std::size_t i = 0; i < plot.ml.size(); ++i) {
        const float across = x.At(plot.ml[i]), height = residual.At(result->residuals[i]);
        picture.Line(across, residual.At(0), across, height, colour::Black);
        picture.Dot(across, height, colour::Black, DotSize);
    }
    return picture;
}

std::string SeriesOutcome::PlotWords() const {
    if (!result) return "Gran's plot: " + why;
    const GranPlot plot = GranPlotOf(series, *result);
    std::string words = "Gran's plot of " + std::to_string(series.addedMl.size()) +
                        " additions: the line meets the axis at " +
                        WithPlacesOf(plot.meetsAxisAt, plot.meetsAxisAt / 10) + " mL. Residuals in mV:";
    for (const double residual : result->residuals)
        words += " " + WithPlaces(residual, 2);
    return words + ".";
}

}  // namespace kelvo
