#include "ph/RecordingWords.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

/// pH as its boxes show it; a concentration with all the digits it has, for it may be small.
std::string ValueText(RecordingKind kind, float value) {
    return kind == RecordingKind::Ph ? Format(value, "#0.00") : TrimStr(value);
}

std::string TraceWords(const RecordingRun& run, int electrode) {
    const std::string name = " Electrode " + TrimStr(electrode + 1) + ": ";
    std::vector<float> values;
    for (const RecordingPoint& point : run.Points())
        if (const float value = point.value[static_cast<std::size_t>(electrode)]; std::isfinite(value))
            values.push_back(value);
    if (values.empty()) return name + "no value.";
    const auto [low, high] = std::minmax_element(values.begin(), values.end());
    const auto text = [&run](float value) { return ValueText(run.Kind(), value); };
    return name + "lowest " + text(*low) + ", highest " + text(*high) + ", last " + text(values.back()) +
           (run.Kind() == RecordingKind::Ph ? " pH." : " ppm.");
}

}  // namespace

std::string RecordingWords(const RecordingRun& run) {
    std::string words = TrimStr(run.Taken()) + " of " + TrimStr(run.PointCount() + 1) + " points.";
    if (run.Taken() == 0) return words;
    for (int electrode = 0; electrode < 2; ++electrode)
        if (run.On(electrode)) words += TraceWords(run, electrode);
    if (run.OldPoints() == 1) words += " 1 point is not fresh.";
    if (run.OldPoints() > 1) words += " " + TrimStr(run.OldPoints()) + " points are not fresh.";
    return words;
}

}  // namespace kelvo
