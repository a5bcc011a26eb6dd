#pragma once

#include <array>
#include <string>

#include "core/DisplayList.h"
#include "core/StateOf.h"
#include "statistics/OffsetLine.h"

namespace kelvo {

// The calibration graph: E upwards, LogC to the right, in twips of the drawing surface, y downwards. Screen and
// page are drawn by the same routines. What does not lie in the frame is skipped silently.

namespace frame {
constexpr float Left = 480, Right = 9080, Top = 400, Bottom = 6400;
}

/// Captions of the scales by index, as the menus show them.
extern const std::array<const char*, 6> MvCaptions;
extern const std::array<const char*, 4> LogCCaptions;

/// Rows of the mV list of the setup, by index.
extern const std::array<const char*, 6> MvRows;
/// Row of the LogC list of the setup: the range and the same range in ppm of the selected ion. For fluoride index 0
/// is " -3 .. +1  (0,019...189,984)": mask "0,000" from 1 ppm up, "0.00" below.
/// @throws RuntimeError 9 for an index outside 0..3.
std::string LogCRow(const IonSettings& ion, int index);

/// Ends of a scale: mol/L as LogC, and mV. An index without a row gives −7, 1, 0 and −1000.
float ScaleLeft(int logCIndex);
float ScaleRight(int logCIndex);
float ScaleTop(int mvIndex);
float ScaleBottom(int mvIndex);

/// Fills `YRange`, `YSpan`, `XDecades` and `XOrigin`. @throws RuntimeError 9 for an index without a row.
void SetScaleConstants(GraphState& graph, int mvIndex, int logCIndex);

/// Position by the scale constants now held (and `MvScaleIndex`). LogC 0 of scale 3 is 8005; 0 mV of scale 2 is
/// 3400. Never fails: a value too large for the surface lands far outside the frame.
float XFromLogC(const GraphState& graph, float v);
float YFromE(const CalibrationState& state, float e);

/// Whether a place lies in the frame, its edges included.
bool InFrame(float x, float y);

/// Axes and ticks, 22 black lines.
void DrawFrame(DisplayList& picture);
/// Figures and titles, the ion's name included.
void DrawAxes(const IonSettings& ion, DisplayList& picture, int mvIndex, int logCIndex);
/// The same with another ion in the title than the one in use.
void DrawAxes(const IonSettings& ion, DisplayList& picture, int mvIndex, int logCIndex, int ionIndex);
/// A black dot for every point in the frame, a hollow one for a standard that is left out.
void PlotPoints(const CalibrationState& state, DisplayList& picture);

/// A quiet line on the standards and samples that the scale in use does not hold: "2 of 5 standards lie outside the
/// scale and are not drawn."; empty when all are drawn.
std::string ScaleRemark(const CalibrationState& state);

/// Stores a sample and draws its cross, whose vertical arm runs down to the axis.
/// @throws RuntimeError 9 when 101 samples are held; nothing is then drawn or stored.
void DrawSample(CalibrationState& state, DisplayList& picture, float e, float logC, int colour);
/// The crosses of the samples that are stored, by the scale constants now held.
void DrawStoredSamples(const CalibrationState& state, DisplayList& picture, int colour);

/// Line of the linear and known-slope modes, clipped to the frame.
/// @return false when the clipping divides by a slope of 0: nothing is drawn.
bool DrawLine(const CalibrationState& state, DisplayList& picture, int colour);

/// The best-fit curve from `MinLogC` to `MaxLogC` in 100 short lines of colour 12.
void DrawBestCurve(const CalibrationState& state, DisplayList& picture);
/// The low-end fit in the same way, of colour 13.
void DrawLowEnd(const CalibrationState& state, DisplayList& picture, const OffsetLine& fit);
/// Lines of colour 9 between neighbouring points, in the order of the arrays.
void DrawPartlyLinear(const CalibrationState& state, DisplayList& picture);

}  // namespace kelvo
