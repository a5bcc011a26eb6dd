#include "calibration/QualityPlot.h"

#include <algorithm>
#include <cmath>

#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float Left = 900, Right = 9200;
constexpr float UpperTop = 560, UpperBottom = 3650, LowerTop = 4350, LowerBottom = 6000;
constexpr float FigureSize = 8.25f, TitleSize = 10;
constexpr int Grey = 8;
constexpr float Tick = 70;

/// One axis: values from `low` to `high` in steps that read well.
struct Scale {
    double low = 0, high = 1, step = 1;
    float start = 0, end = 1;  ///< twips of low and high

    float At(double value) const {
        const double share = (value - low) / (high - low);
        return static_cast<float>(start + std::clamp(share, -1.0, 2.0) * (end - start));
    }
    int Steps() const { return static_cast<int>(std::lround((high - low) / step)); }
    int Places() const { return std::clamp(static_cast<int>(std::ceil(-std::log10(step) - 1e-9)), 0, 6); }
};

/// 1, 2 or 5 times a power of ten, at least `least`.
double NiceStep(double least) {
    const double power = std::pow(10.0, std::floor(std::log10(least)));
    for (const double factor : {1.0, 2.0, 5.0})
        if (factor * power >= least) return factor * power;
    return 10 * power;
}

Scale ScaleOver(double low, double high, int steps, float start, float end) {
    // Equal values stand in the middle of a scale of their own, not of one that shows their rounding.
    constexpr double Least = 1e-3, Room = 1;
    if (high - low < Least) {
        low -= Room;
        high += Room;
    }
    const double step = NiceStep((high - low) / steps);
    Scale scale{.low = step * std::floor(low / step), .high = step * std::ceil(high / step), .step = step};
    if (scale.high <= scale.low) scale.high = scale.low + step;
    scale.start = start;
    scale.end = end;
    return scale;
}

Scale LogCScaleOver(const Standards& standards) {
    const auto [low, high] = std::minmax_element(standards.logC.begin(), standards.logC.end());
    double first = std::floor(*low), last = std::ceil(*high);
    if (first == last) {
        first -= 1;
        last += 1;
    }
    constexpr int MostSteps = 10;
    return ScaleOver(first, last, std::min(MostSteps, static_cast<int>(last - first)), Left, Right);
}

void DrawBox(DisplayList& picture, const Scale& x, const Scale& y, const char* title) {
    picture.Line(x.start, y.start, x.start, y.end, colour::Black);
    picture.Line(x.start, y.start, x.end, y.start, colour::Black);
    for (int i = 0; i <= y.Steps(); ++i) {
        const double value = y.low + i * y.step;
        picture.Line(x.start - Tick, y.At(value), x.start, y.At(value), colour::Black);
        constexpr float FigureUp = 90, FigureWidth = 700;
        picture.Text(60, y.At(value) - FigureUp, WithPlaces(value, y.Places()), FigureSize, colour::Black, FigureWidth);
    }
    for (int i = 0; i <= x.Steps(); ++i) {
        const float at = x.At(x.low + i * x.step);
        picture.Line(at, y.start, at, y.start + Tick, colour::Black);
    }
    constexpr float TitleUp = 430;
    picture.Text(60, y.end - TitleUp, title, TitleSize);
}

void DrawLogCFigures(DisplayList& picture, const Scale& x) {
    constexpr float FigureLeft = 90, FigureDown = 110;
    for (int i = 0; i <= x.Steps(); ++i) {
        const double value = x.low + i * x.step;
        picture.Text(x.At(value) - FigureLeft, LowerBottom + FigureDown, WithPlaces(value, x.Places()), FigureSize);
    }
    picture.Text(Right - 500, LowerBottom + 330, "LogC", TitleSize);
}

/// A function of LogC as short lines, kept inside the box.
template <typename Function>
void DrawFunction(DisplayList& picture, const Scale& x, const Scale& y, int colour, Function function) {
    constexpr int Pieces = 100;
    const double step = (x.high - x.low) / Pieces;
    for (int i = 0; i < Pieces; ++i) {
        const double a = x.low + i * step, b = a + step;
        const double ya = function(a), yb = function(b);
        const bool inside = std::min(ya, yb) >= y.low && std::max(ya, yb) <= y.high;
        if (inside) picture.Line(x.At(a), y.At(ya), x.At(b), y.At(yb), colour);
    }
}

constexpr float DotSize = 110, MarkSize = 130;

/// A marked point is known by its shape as well as by its colour.
void DrawPoint(DisplayList& picture, float x, float y, bool marked) {
    if (marked)
        picture.Mark(x, y, colour::LightRed, DisplayItem::Shape::Square, MarkSize, false);
    else
        picture.Dot(x, y, colour::Black, DotSize);
}

void DrawUpper(DisplayList& picture, const Scale& x, const CalibrationQuality& quality, const Standards& standards,
               const LowEndFit* lowEnd) {
    const auto [low, high] = std::minmax_element(standards.mv.begin(), standards.mv.end());
    constexpr int Steps = 5;
    const Scale y = ScaleOver(*low, *high, Steps, UpperBottom, UpperTop);
    DrawBox(picture, x, y, "E (mV)");
    if (quality.line.n > 1)
        DrawFunction(picture, x, y, colour::Black, [&](double logC) { return quality.line.At(logC); });
    if (lowEnd != nullptr)
        DrawFunction(picture, x, y, colour::LightBlue, [&](double logC) { return lowEnd->At(logC); });
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        const bool marked = i < quality.points.size() && quality.points[i].marked;
        DrawPoint(picture, x.At(standards.logC[i]), y.At(standards.mv[i]), marked);
    }
}

Scale ResidualScale(const CalibrationQuality& quality, const QualityLimits& limits, const LowEndFit* lowEnd) {
    double most = std::max(quality.largestResidual, limits.goodResidual);
    if (lowEnd != nullptr)
        for (const QualityPoint& point : quality.points)
            most = std::max(most, std::abs(point.mv - lowEnd->At(point.logC)));
    constexpr int Steps = 2;
    const double step = NiceStep(most / Steps);
    const double end = step * std::ceil(most / step);
    return {.low = -end, .high = end, .step = step, .start = LowerBottom, .end = LowerTop};
}

void DrawLower(DisplayList& picture, const Scale& x, const CalibrationQuality& quality, const QualityLimits& limits,
               const LowEndFit* lowEnd) {
    const Scale y = ResidualScale(quality, limits, lowEnd);
    DrawBox(picture, x, y, "Residual (mV)");
    for (const double limit : {-limits.goodResidual, limits.goodResidual})
        picture.Line(x.start, y.At(limit), x.end, y.At(limit), Grey);
    picture.Line(x.start, y.At(0), x.end, y.At(0), colour::Black);
    constexpr float BesideDot = 100, AboveDot = 180, Narrow = 30;
    for (std::size_t i = 0; i < quality.points.size(); ++i) {
        const QualityPoint& point = quality.points[i];
        const int ink = point.marked ? colour::LightRed : colour::Black;
        const float at = x.At(point.logC), height = y.At(point.residual);
        picture.Line(at, y.At(0), at, height, ink);
        DrawPoint(picture, at, height, point.marked);
        if (point.marked) picture.Text(at + BesideDot, height - AboveDot, TrimStr(static_cast<int>(i) + 1), FigureSize);
        if (lowEnd == nullptr) continue;
        const float beside = at + DotSize + Narrow;
        const float other = y.At(point.mv - lowEnd->At(point.logC));
        picture.Line(beside, y.At(0), beside, other, colour::LightBlue);
        picture.Mark(beside, other, colour::LightBlue, DisplayItem::Shape::Round, DotSize, true);
    }
}

}  // namespace

void DrawQuality(DisplayList& picture, const CalibrationQuality& quality, const Standards& standards,
                 const QualityLimits& limits, const LowEndFit* lowEnd) {
    if (standards.Count() == 0) return;
    const Scale x = LogCScaleOver(standards);
    DrawUpper(picture, x, quality, standards, lowEnd);
    DrawLower(picture, x, quality, limits, lowEnd);
    DrawLogCFigures(picture, x);
}

}  // namespace kelvo
