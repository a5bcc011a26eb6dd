#pragma once

#include <string>

#include "calibration/CalibrationState.h"
#include "core/StateOf.h"

namespace kelvo {

class Prompts;

/// What the calibration screen and the setup do to the state and to `Graph`, so that they stay thin.
///
/// Only a frame drawn anew clears the surface (`DrawEmpty`, `DrawOpened`, `Refresh`, a change of scale), since old
/// figures would show through; a curve asked for is drawn on top of what is there. A failing fit shows its message
/// and leaves the graph alone.
class CaliSession {
 public:
    CaliSession(CalibrationState& state, Prompts& prompts) : state_(state), prompts_(prompts) {}

    // --- entry of points ---------------------------------------------------------------------------------------
    /// Makes room for n points, all 0, and forgets what was found out about earlier ones. @throws RuntimeError 9
    /// outside 1..10.
    void StartPoints(int n);
    /// Stores a point, i from 1, as 32-bit floats. @throws RuntimeError 9 outside 1..`CaliPoints`, 6 when a value
    /// does not fit; nothing is stored then.
    void StorePoint(int i, double e, double ppm, double molar, double logC);
    /// Notes whether it crosses pairs, sorts `CaliE` with `CaliPpm` (and these alone), sets the scale constants
    /// and plots the points. The fit of two points or more is the calibration screen's.
    void AfterLastPoint();
    /// The line of a new one-point calibration, by the slope just typed (`KnownSlope`) carried to `PointTemp`;
    /// a slope of an earlier calibration does not count. Colour 13, `LinearFit` 1.
    /// @return false after the message of `DataOutOfRange`; the slope is then 0.
    bool ShowKnownSlopeLine();

    // --- the graph ---------------------------------------------------------------------------------------------
    /// Nothing at all: the state of the screen at its opening, no curve active.
    void ClearGraph();
    /// Frame and axes of the present scales.
    void DrawEmpty();
    /// Frame, axes and points, as after opening a file.
    void DrawOpened();
    /// Clears, forgets the samples drawn, and draws frame, axes, points and the active curve.
    void Refresh();
    /// New scale: frame, axes and points, and of the curves only the linear one; the others wait for
    /// `Refresh`. The samples are marked again.
    /// @throws RuntimeError 9 for an index without a row.
    void ChangeMvScale(int index);
    void ChangeLogCScale(int index);

    // --- the curves: each makes itself the active one, then fits and draws ---------------------------------------
    // @return false when the fit failed (its message has been shown) or there are no points.
    /// Linear for two points or more; for one point the known-slope line at `CaliTemp`. Black.
    bool ShowLinear();
    bool ShowPartlyLinear();
    /// With two points it is the partly linear one that is drawn and made active.
    bool ShowBestCurve();
    /// The fit for low concentrations; stays as it was, without a message, where the points have none.
    bool ShowLowEnd();

    /// Marks a sample in red. @return false when the graph holds 101 samples already and the mark is left out; the
    /// sample itself is none the worse.
    bool MarkSample(float e, float logC);

 private:
    void SetFlags(int linear, int partlyLinear, int bestFit, int lowEnd = 0);
    bool DrawLowEndFit();
    void RedrawScales();
    bool FitOnePoint(const std::string& temperature);
    bool DrawLinear();

    CalibrationState& state_;
    Prompts& prompts_;
};

}  // namespace kelvo
