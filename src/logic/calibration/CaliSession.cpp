#include "calibration/CaliSession.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "calibration/CaliFile.h"
#include "calibration/CaliGraph.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationState.h"
#include "calibration/CurveFit.h"
#include "core/Dialogs.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// LogC and potential of every point, whatever their order: a standard that was read twice may change places with
/// itself.
std::vector<std::pair<float, float>> Pairs(const IseCalibration& calibration) {
    std::vector<std::pair<float, float>> pairs;
    for (std::size_t i = 1; i < calibration.CaliE.size(); ++i)
        pairs.emplace_back(calibration.CaliLogC[i], calibration.CaliE[i]);
    std::sort(pairs.begin(), pairs.end());
    return pairs;
}

}  // namespace

void CaliSession::StartPoints(int n) {
    if (n < 1 || n > MaxCaliPoints) throw RuntimeError(ErrorNumber::Subscript);
    const auto size = static_cast<std::size_t>(n) + 1;
    for (auto* column : {&state_.CaliE, &state_.CaliLogC, &state_.CaliPpm, &state_.CaliMolar})
        column->assign(size, 0.0f);
    state_.CaliPoints = static_cast<std::int16_t>(n);
    state_.PairsCrossed = state_.LineRefused = state_.CurveRefused = false;
    state_.CaliFileName.clear();
    state_.CaliFilePath.clear();
    state_.FactsRemark.clear();
    state_.LeftOut.clear();
    state_.Told = {};
    state_.SavedCurve.clear();
}

void CaliSession::StorePoint(int i, double e, double ppm, double molar, double logC) {
    if (i < 1 || i > state_.CaliPoints) throw RuntimeError(ErrorNumber::Subscript);
    const float singles[] = {ToSingle(e), ToSingle(ppm), ToSingle(molar), ToSingle(logC)};
    const auto at = static_cast<std::size_t>(i);
    state_.CaliE[at] = singles[0];
    state_.CaliPpm[at] = singles[1];
    state_.CaliMolar[at] = singles[2];
    state_.CaliLogC[at] = singles[3];
}

void CaliSession::AfterLastPoint() {
    const auto pairs = Pairs(state_);
    SortPairs(1, state_.CaliPoints, state_.CaliE, state_.CaliPpm);
    state_.PairsCrossed = Pairs(state_) != pairs;
    SetScaleConstants(state_, state_.MvScaleIndex, state_.LogCScaleIndex);
    PlotPoints(state_, state_.Graph);
}

bool CaliSession::ShowKnownSlopeLine() {
    SetFlags(1, 0, 0);
    state_.CaliSlope = 0;
    if (!FitOnePoint(state_.PointTemp)) return false;
    DrawLine(state_, state_.Graph, colour::LightMagenta);
    return true;
}

void CaliSession::ClearGraph() {
    state_.Graph.Clear();
    SetFlags(0, 0, 0);
}

void CaliSession::DrawEmpty() {
    state_.Graph.Clear();
    DrawFrame(state_.Graph);
    DrawAxes(state_, state_.Graph, state_.MvScaleIndex, state_.LogCScaleIndex);
}

void CaliSession::DrawOpened() {
    DrawEmpty();
    SetScaleConstants(state_, state_.MvScaleIndex, state_.LogCScaleIndex);
    PlotPoints(state_, state_.Graph);
}

void CaliSession::Refresh() {
    state_.SampleCount = 0;
    DrawOpened();
    if (state_.LinearFit == 1) DrawLinear();
    if (state_.PartlyLinearFit == 1) DrawPartlyLinear(state_, state_.Graph);
    if (state_.BestFitCurve == 1 && FitBestCurve(state_, prompts_)) DrawBestCurve(state_, state_.Graph);
    if (state_.LowEndCurve == 1) DrawLowEndFit();
}

void CaliSession::ChangeMvScale(int index) {
    SetScaleConstants(state_, index, state_.LogCScaleIndex);
    state_.MvScaleIndex = static_cast<std::int16_t>(index);
    RedrawScales();
}

void CaliSession::ChangeLogCScale(int index) {
    SetScaleConstants(state_, state_.MvScaleIndex, index);
    state_.LogCScaleIndex = static_cast<std::int16_t>(index);
    RedrawScales();
}

void CaliSession::RedrawScales() {
    DrawOpened();
    if (state_.LinearFit == 1) DrawLinear();
    DrawStoredSamples(state_, state_.Graph, colour::Red);
}

bool CaliSession::ShowLinear() {
    if (state_.CaliPoints < 1) return false;
    SetFlags(1, 0, 0);
    return DrawLinear();
}

bool CaliSession::ShowPartlyLinear() {
    if (state_.CaliPoints < 1) return false;
    SetFlags(0, 1, 0);
    DrawPartlyLinear(state_, state_.Graph);
    return true;
}

bool CaliSession::ShowBestCurve() {
    if (state_.CaliPoints == 2) return ShowPartlyLinear();
    if (state_.CaliPoints < 1) return false;
    SetFlags(0, 0, 1);
    if (!FitBestCurve(state_, prompts_)) return false;
    DrawBestCurve(state_, state_.Graph);
    return true;
}

bool CaliSession::ShowLowEnd() {
    if (!DrawLowEndFit()) return false;
    SetFlags(0, 0, 0, 1);
    return true;
}

bool CaliSession::DrawLowEndFit() {
    const auto fit = CalibrationOf(state_).quality.lowEnd;
    if (!fit) return false;
    DrawLowEnd(state_, state_.Graph, *fit);
    return true;
}

bool CaliSession::MarkSample(float e, float logC) {
    try {
        DrawSample(state_, state_.Graph, e, logC, colour::Red);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

void CaliSession::SetFlags(int linear, int partlyLinear, int bestFit, int lowEnd) {
    state_.LinearFit = static_cast<std::int16_t>(linear);
    state_.PartlyLinearFit = static_cast<std::int16_t>(partlyLinear);
    state_.BestFitCurve = static_cast<std::int16_t>(bestFit);
    state_.LowEndCurve = static_cast<std::int16_t>(lowEnd);
}

bool CaliSession::FitOnePoint(const std::string& temperature) {
    try {
        FitKnownSlope(state_, Val(temperature));
        return true;
    } catch (const RuntimeError&) {
        prompts_.Message(DataOutOfRange);
        return false;
    }
}

bool CaliSession::DrawLinear() {
    if (!(state_.CaliPoints > 1 ? FitLinear(state_, prompts_) : FitOnePoint(state_.CaliTemp))) return false;
    DrawLine(state_, state_.Graph, colour::Black);
    return true;
}

}  // namespace kelvo
