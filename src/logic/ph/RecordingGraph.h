#pragma once

#include <string>

#include "core/DisplayList.h"
#include "ph/RecordingRun.h"

namespace kelvo {

// The graph of a recording as a display list: value upwards, number of the point to the right. Electrode 1 is red with
// round marks, electrode 2 blue with square ones; a point of an old frame is hollow. A value beyond the scale is drawn
// at the edge.

namespace recording {
/// Surface in twips, and the plot in it.
constexpr float Width = 9880, Height = 6900;
constexpr float PlotLeft = 950, PlotTop = 550, PlotWidth = 8530, PlotHeight = 5600;
}  // namespace recording

/// Grid, figures, titles and legend.
void DrawRecordingFrame(const RecordingRun& run, const RecordingScale& scale, DisplayList& list);
/// One point of every trace, with the line from the point before it.
void DrawRecordingPoint(const RecordingRun& run, const RecordingScale& scale, int n, DisplayList& list);
/// The whole recording: frame and all points, in the order in which they were taken.
void SetTiles(const RecordingRun& run, const RecordingScale& scale, DisplayList& list);

/// Points of all traces that lie beyond the scale.
int PointsBeyond(const RecordingRun& run, const RecordingScale& scale);

/// Every how many points a trace bears its large mark, so that marks keep apart: 1 up to 50 points, 2 for 100, 4 for
/// 200. Hollow points always bear theirs.
int MarkStep(int pointCount);

}  // namespace kelvo
