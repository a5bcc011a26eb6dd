#include "calibration/CaliGraph.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "calibration/GraphState.h"
#include "core/IonSettings.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr float FigureSize = 8.25f, TitleSize = 12;
constexpr float FigureWidth = 380;  // left of the ticks, which start at 400
constexpr float CrossArm = 50;

struct MvScale {
    float top, bottom, range, span;
    int figureStart, figureStep;
};
constexpr std::array<MvScale, 6> MvScales = {{{500, 0, 500, 6000, 550, -50},
                                              {1000, 0, 1000, 6000, 1100, -100},
                                              {500, -500, 500, 3000, 600, -100},
                                              {1000, -1000, 1000, 3000, 1200, -200},
                                              {0, -500, 500, 6000, 50, -50},
                                              {0, -1000, 1000, 6000, 100, -100}}};

struct LogCScale {
    float left, right, decades, origin, figureStep;
    const char* range;
};
constexpr std::array<LogCScale, 4> LogCScales = {{{-3, 1, 4, 6450, 0.5f, " -3 .. +1  "},
                                                  {-5, -1, 4, 10750, 0.5f, " -5 ... -1  "},
                                                  {-7, -3, 4, 15050, 0.5f, " -7 ... -3  "},
                                                  {-7, 1, 8, 7525, 1, " -7 .. +1  "}}};

std::size_t At(int i) {
    return static_cast<std::size_t>(i);
}

template <typename Rows>
const auto& Row(const Rows& rows, int index) {
    if (index < 0 || At(index) >= rows.size()) throw RuntimeError(ErrorNumber::Subscript);
    return rows[At(index)];
}

/// The row of an index, or the row that every other index has the ends of.
template <typename Rows>
const auto& RowOrLast(const Rows& rows, int index) {
    return index < 0 || At(index) >= rows.size() ? rows.back() : rows[At(index)];
}

/// As a 32-bit float; beyond its range the largest one, which is as far outside the frame as any.
float Saturated(double value) {
    constexpr double largest = std::numeric_limits<float>::max();
    return static_cast<float>(std::clamp(value, -largest, largest));
}

/// An end of the line at one side of the frame, moved along the line to the top or the bottom edge when it lies
/// beyond: `edge` −1 cut at the top, 1 at the bottom, 0 not at all.
struct LineEnd {
    float x, y;
    int edge;
};

LineEnd ClippedEnd(const CalibrationState& state, float x, float logC) {
    const float y = YFromE(state, Saturated(double{state.CaliSlope} * logC + state.CaliEo));
    if (y >= frame::Top && y <= frame::Bottom) return {x, y, 0};
    const bool above = y < frame::Top;
    const float limit = above ? ScaleTop(state.MvScaleIndex) : ScaleBottom(state.MvScaleIndex);
    const float cut = Saturated(Divide(limit - state.CaliEo, state.CaliSlope));
    return {XFromLogC(state, cut), above ? frame::Top : frame::Bottom, above ? -1 : 1};
}

void LineInFrame(DisplayList& picture, float x1, float y1, float x2, float y2, int colour) {
    if (InFrame(x1, y1) && InFrame(x2, y2)) picture.Line(x1, y1, x2, y2, colour);
}

void DrawCross(const CalibrationState& state, DisplayList& picture, float e, float logC, int colour) {
    const float x = XFromLogC(state, logC);
    const float y = YFromE(state, e);
    if (!InFrame(x, y)) return;
    picture.Line(x - CrossArm, y, x + CrossArm, y, colour);
    picture.Line(x, y - CrossArm, x, frame::Bottom, colour);
}

std::string PpmLimit(const IonSettings& ion, float logC) {
    const double ppm = MolarToPpm(ion.Ions, std::pow(10.0, double{logC}), ion.IonIndex);
    return Format(ppm, ppm >= 1 ? "0,000" : "0.00");
}

}  // namespace

const std::array<const char*, 6> MvCaptions = {"    0 ... +500",  "    0 ... +1000", " -500 ... +500",
                                               "-1000 ... +1000", " -500 ... 0",     "-1000 ... 0"};
const std::array<const char*, 4> LogCCaptions = {"-3 ... +1", "-5 ... -1", "-7 ... -3", "-7 ... +1"};
const std::array<const char*, 6> MvRows = {"  0    ... +500 ",  "  0    ... +1000 ", " -500  ... +500 ",
                                           " -1000 ... +1000 ", " -500  ...  0 ",    " -1000 ...  0 "};

std::string LogCRow(const IonSettings& ion, int index) {
    const LogCScale& scale = Row(LogCScales, index);
    return std::string(scale.range) + '(' + PpmLimit(ion, scale.left) + "..." + PpmLimit(ion, scale.right) + ')';
}

float ScaleLeft(int logCIndex) {
    return RowOrLast(LogCScales, logCIndex).left;
}
float ScaleRight(int logCIndex) {
    return RowOrLast(LogCScales, logCIndex).right;
}
float ScaleTop(int mvIndex) {
    return RowOrLast(MvScales, mvIndex).top;
}
float ScaleBottom(int mvIndex) {
    return RowOrLast(MvScales, mvIndex).bottom;
}

void SetScaleConstants(GraphState& graph, int mvIndex, int logCIndex) {
    const MvScale& mv = Row(MvScales, mvIndex);
    const LogCScale& logC = Row(LogCScales, logCIndex);
    graph.YRange = mv.range;
    graph.YSpan = mv.span;
    graph.XDecades = logC.decades;
    graph.XOrigin = logC.origin;
}

float XFromLogC(const GraphState& graph, float v) {
    const float x = Saturated(v * 8600.0 / graph.XDecades + 480);
    return v == 0 ? 480 + graph.XOrigin : Saturated(double{x} + graph.XOrigin);
}

float YFromE(const CalibrationState& state, float e) {
    const double d = std::abs(double{e}) * state.YSpan / state.YRange;
    // Scales 0 to 3 have 0 mV one span below the top, scales 4 and 5 have it at the top.
    const double zero = (state.MvScaleIndex < 4 ? double{state.YSpan} : 0) + 400;
    return Saturated(e < 0 ? zero + d : zero - d);
}

bool InFrame(float x, float y) {
    return x >= frame::Left && x <= frame::Right && y >= frame::Top && y <= frame::Bottom;
}

void DrawFrame(DisplayList& picture) {
    picture.Line(480, 400, 480, 6400, colour::Black);
    for (int i = 0; i <= 10; ++i) {
        const float y = 400.0f + 600.0f * static_cast<float>(i);
        picture.Line(400, y, 480, y, colour::Black);
    }
    picture.Line(480, 6400, 9080, 6400, colour::Black);
    for (int i = 0; i <= 8; ++i) {
        const float x = 480.0f + 1075.0f * static_cast<float>(i);
        picture.Line(x, 6400, x, 6500, colour::Black);
    }
}

void DrawAxes(const IonSettings& ion, DisplayList& picture, int mvIndex, int logCIndex) {
    DrawAxes(ion, picture, mvIndex, logCIndex, ion.IonIndex);
}

void DrawAxes(const IonSettings& ion, DisplayList& picture, int mvIndex, int logCIndex, int ionIndex) {
    const MvScale& mv = Row(MvScales, mvIndex);
    int potential = mv.figureStart;
    for (int i = 0; i <= 10; ++i) {
        potential += mv.figureStep;
        picture.Text(10, 350.0f + 600.0f * static_cast<float>(i), Str(potential), FigureSize, colour::Black,
                     FigureWidth);
    }
    picture.Text(50, 80, "E (mV)", TitleSize);

    const LogCScale& logC = RowOrLast(LogCScales, logCIndex);
    float figure = logC.left;
    picture.Text(500, 6220, Str(figure), FigureSize);
    for (int k = 0; k <= 7; ++k) {
        figure += logC.figureStep;
        picture.Text(1420.0f + 1075.0f * static_cast<float>(k), 6220, Str(figure), FigureSize);
    }
    const bool listed = ionIndex >= 0 && ionIndex < IonRows;
    const std::string name = ionIndex == HydrogenIon
                                 ? std::string("(pH)")
                                 : "(" + (listed ? ion.Ions.names[At(ionIndex)] : std::string()) + ") ";
    picture.Text(8400, 5930, name + "LogC", TitleSize);
}

namespace {

std::string NotDrawn(int outside, int all, const char* what) {
    if (outside == 0) return {};
    return TrimStr(outside) + " of " + TrimStr(all) + " " + what + " " +
           (outside == 1 ? "lies outside the scale and is" : "lie outside the scale and are") + " not drawn.";
}

}  // namespace

void PlotPoints(const CalibrationState& state, DisplayList& picture) {
    for (int i = 1; i <= state.CaliPoints; ++i) {
        const float x = XFromLogC(state, state.CaliLogC[At(i)]);
        const float y = YFromE(state, state.CaliE[At(i)]);
        if (InFrame(x, y)) picture.Dot(x, y, colour::Black);
    }
    constexpr float Diameter = 90;
    for (const LeftOutStandard& left : state.LeftOut) {
        const float x = XFromLogC(state, left.logC), y = YFromE(state, left.mv);
        if (state.CaliPoints > 0 && InFrame(x, y))
            picture.Mark(x, y, colour::Black, DisplayItem::Shape::Round, Diameter, true);
    }
}

std::string ScaleRemark(const CalibrationState& state) {
    const float left = ScaleLeft(state.LogCScaleIndex), right = ScaleRight(state.LogCScaleIndex);
    const float bottom = ScaleBottom(state.MvScaleIndex), top = ScaleTop(state.MvScaleIndex);
    const auto beyond = [&](float logC, float e) {
        return !(logC >= left && logC <= right && e >= bottom && e <= top);
    };
    int standards = 0, samples = 0;
    for (int i = 1; i <= state.CaliPoints; ++i)
        if (beyond(state.CaliLogC[At(i)], state.CaliE[At(i)])) ++standards;
    for (int i = 0; i < state.SampleCount; ++i)
        if (beyond(state.SampleLogC[At(i)], state.SampleE[At(i)])) ++samples;
    const std::string ofStandards = NotDrawn(standards, state.CaliPoints, "standards");
    const std::string ofSamples = NotDrawn(samples, state.SampleCount, "samples");
    return ofStandards + (ofStandards.empty() || ofSamples.empty() ? "" : " ") + ofSamples;
}

void DrawSample(CalibrationState& state, DisplayList& picture, float e, float logC, int colour) {
    if (state.SampleCount < 0 || At(state.SampleCount) >= state.SampleE.size())
        throw RuntimeError(ErrorNumber::Subscript);
    state.SampleE[At(state.SampleCount)] = e;
    state.SampleLogC[At(state.SampleCount)] = logC;
    ++state.SampleCount;
    DrawCross(state, picture, e, logC, colour);
}

void DrawStoredSamples(const CalibrationState& state, DisplayList& picture, int colour) {
    for (int i = 0; i < state.SampleCount; ++i)
        DrawCross(state, picture, state.SampleE[At(i)], state.SampleLogC[At(i)], colour);
}

bool DrawLine(const CalibrationState& state, DisplayList& picture, int colour) {
    try {
        LineEnd left = ClippedEnd(state, frame::Left, ScaleLeft(state.LogCScaleIndex));
        LineEnd right = ClippedEnd(state, frame::Right, ScaleRight(state.LogCScaleIndex));
        if (left.edge != 0 && left.edge == right.edge) return true;  // passes the frame by
        // A cut in a corner may fall beside the frame by the rounding of a 32-bit float.
        left.x = std::clamp(left.x, frame::Left, frame::Right);
        right.x = std::clamp(right.x, frame::Left, frame::Right);
        picture.Line(left.x, left.y, right.x, right.y, colour);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

void DrawBestCurve(const CalibrationState& state, DisplayList& picture) {
    const auto potential = [&](double x) { return Saturated(state.FitA * x * x + state.FitB * x + state.FitC); };
    double x = MinLogC(state);
    const double step = (MaxLogC(state) - x) / 100;
    for (int i = 0; i < 100; ++i) {
        const double next = x + step;
        LineInFrame(picture, XFromLogC(state, Saturated(x)), YFromE(state, potential(x)),
                    XFromLogC(state, Saturated(next)), YFromE(state, potential(next)), colour::LightRed);
        x = next;
    }
}

void DrawLowEnd(const CalibrationState& state, DisplayList& picture, const OffsetLine& fit) {
    constexpr int Pieces = 100;
    const double low = MinLogC(state), step = (MaxLogC(state) - low) / Pieces;
    for (int i = 0; i < Pieces; ++i) {
        const double from = low + i * step, to = from + step;
        LineInFrame(picture, XFromLogC(state, Saturated(from)), YFromE(state, Saturated(fit.At(from))),
                    XFromLogC(state, Saturated(to)), YFromE(state, Saturated(fit.At(to))), colour::LightMagenta);
    }
}

void DrawPartlyLinear(const CalibrationState& state, DisplayList& picture) {
    for (int i = 1; i < state.CaliPoints; ++i) {
        LineInFrame(picture, XFromLogC(state, state.CaliLogC[At(i)]), YFromE(state, state.CaliE[At(i)]),
                    XFromLogC(state, state.CaliLogC[At(i + 1)]), YFromE(state, state.CaliE[At(i + 1)]),
                    colour::LightBlue);
    }
}

}  // namespace kelvo
