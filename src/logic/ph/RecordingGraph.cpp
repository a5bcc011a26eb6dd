#include "ph/RecordingGraph.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

using namespace recording;

constexpr int Grey = 7;
constexpr float FigurePoints = 8, TitlePoints = 9;
/// Twips of a letter of the figures, for setting them to the right.
constexpr float FigureWidth = 92, FigureHeight = 190;
constexpr float SpeckSize = 50;
constexpr float Right = PlotLeft + PlotWidth, Bottom = PlotTop + PlotHeight;

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

struct Trace {
    int colour;
    DisplayItem::Shape shape;
    float markSize;
    const char* name;
};
/// The square, drawn second, leaves a ring of the round mark in sight where the traces meet.
constexpr std::array<Trace, 2> Traces = {{{colour::LightRed, DisplayItem::Shape::Round, 150, "Electrode 1"},
                                          {colour::LightBlue, DisplayItem::Shape::Square, 95, "Electrode 2"}}};

float XOf(int n, int pointCount) {
    return PlotLeft + std::clamp(static_cast<float>(n) * PlotWidth / static_cast<float>(pointCount), 0.0f, PlotWidth);
}

float YOf(float value, const RecordingScale& scale) {
    const float fromTop = PlotHeight - (value - scale.low) / scale.span * PlotHeight;
    return PlotTop + std::clamp(fromTop, 0.0f, PlotHeight);
}

void Mark(const RecordingRun& run, const Trace& trace, int n, float x, float y, DisplayList& list) {
    const bool fresh = run.Quality(n).Fresh();
    // The marks of the two traces take turns, so that they do not hide one another where the traces meet.
    const int step = MarkStep(run.PointCount());
    const int turn = trace.shape == DisplayItem::Shape::Square ? step / 2 : 0;
    const bool large = !fresh || n % step == turn || n == run.Taken() - 1;
    list.Mark(x, y, trace.colour, trace.shape, large ? trace.markSize : SpeckSize, !fresh);
}

}  // namespace

int MarkStep(int pointCount) {
    return std::max(1, pointCount / 50);
}

void DrawRecordingFrame(const RecordingRun& run, const RecordingScale& scale, DisplayList& list) {
    const bool ph = run.Kind() == RecordingKind::Ph;
    const int rows = ph ? 7 : 5;
    for (int i = 0; i <= rows; ++i) {
        const float part = static_cast<float>(i) / static_cast<float>(rows);
        const float y = Bottom - part * PlotHeight;
        list.Line(PlotLeft, y, Right, y, i == 0 ? colour::Black : Grey);
        const std::string figure = TrimStr(scale.low + part * scale.span);
        list.Text(PlotLeft - 90 - FigureWidth * static_cast<float>(figure.size()), y - FigureHeight / 2, figure,
                  FigurePoints);
    }
    constexpr int Columns = 10;
    for (int i = 0; i <= Columns; ++i) {
        const int n = run.PointCount() * i / Columns;
        const float x = XOf(n, run.PointCount());
        list.Line(x, PlotTop, x, Bottom, i == 0 ? colour::Black : Grey);
        const std::string figure = TrimStr(n);
        list.Text(x - FigureWidth * static_cast<float>(figure.size()) / 2, Bottom + 70, figure, FigurePoints);
    }
    list.Text(PlotLeft - 620, 170, ph ? "pH" : "ppm", TitlePoints);
    list.Text(PlotLeft + PlotWidth / 2 - 450, Bottom + 330, "Data Point", TitlePoints);
    float x = PlotLeft + 100;
    for (int k = 0; k < 2; ++k) {
        if (!run.On(k)) continue;
        const Trace& trace = Traces[At(k)];
        list.Line(x, 290, x + 360, 290, trace.colour);
        list.Mark(x + 180, 290, trace.colour, trace.shape, trace.markSize, false);
        list.Text(x + 450, 180, trace.name, TitlePoints);
        x += 2000;
    }
}

void DrawRecordingPoint(const RecordingRun& run, const RecordingScale& scale, int n, DisplayList& list) {
    for (int k = 0; k < 2; ++k) {
        if (!run.On(k)) continue;
        const float value = run.Points()[At(n)].value[At(k)];
        if (!std::isfinite(value)) continue;
        const float x = XOf(n, run.PointCount()), y = YOf(value, scale);
        const float before = n == 0 ? value : run.Points()[At(n - 1)].value[At(k)];
        if (n > 0 && std::isfinite(before))
            list.Line(XOf(n - 1, run.PointCount()), YOf(before, scale), x, y, Traces[At(k)].colour);
        Mark(run, Traces[At(k)], n, x, y, list);
    }
}

void SetTiles(const RecordingRun& run, const RecordingScale& scale, DisplayList& list) {
    list.Clear();
    DrawRecordingFrame(run, scale, list);
    for (int n = 0; n < run.Taken(); ++n)
        DrawRecordingPoint(run, scale, n, list);
}

int PointsBeyond(const RecordingRun& run, const RecordingScale& scale) {
    int beyond = 0;
    for (const RecordingPoint& point : run.Points())
        for (int k = 0; k < 2; ++k) {
            const float value = point.value[At(k)];
            if (run.On(k) && std::isfinite(value) && (value < scale.low || value > scale.low + scale.span)) ++beyond;
        }
    return beyond;
}

}  // namespace kelvo
