#include <algorithm>
#include <cmath>

#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/TableState.h"
#include "ph/RecordingPresenter.h"
#include "text/Number.h"

// The quiet lines of a recording: what is measured between two points, and the remarks on the points and their keeping.

namespace kelvo {
namespace {

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

/// "1 point is", "3 points are".
std::string Points(int count) {
    return TrimStr(count) + (count == 1 ? " point is" : " points are");
}

void Add(std::string& text, const std::string& remark) {
    if (!remark.empty()) text += (text.empty() ? "" : " ") + remark;
}

std::string Number(float number, const char* mask) {
    return std::isfinite(number) ? Format(number, mask) : "N/A";
}

/// Age of a frame, in seconds, above which it is no value of now.
constexpr double LiveSeconds = 3;

}  // namespace

void RecordingPresenter::ShowLive() {
    face_.live.clear();
    if (now_ != State::Running && now_ != State::Stopped) return;
    const auto age = inputs_.frameAge();
    std::string values;
    if (const auto point = run_.Peek())
        for (int k = 0; k < 2; ++k) {
            if (!run_.On(k)) continue;
            values += (values.empty() ? "" : ";  ") +
                      (run_.On(0) && run_.On(1) ? "electrode " + TrimStr(k + 1) + ": " : "") +
                      Number(point->value[At(k)], "#0.00") + " " + face_.lblScale + ", " +
                      Number(point->mv[At(k)], "#0.00") + " mV, " + Number(point->celsius[At(k)], "#0.0") + " °C";
        }
    if (values.empty())
        face_.live = "No reading yet";
    else
        face_.live = (*age > LiveSeconds ? Format(*age, "0") + " s ago:  " : "Now:  ") + values;
    face_.live += "     " + TrimStr(run_.Taken()) + " of " + TrimStr(run_.PointCount() + 1) + " points";
    if (now_ == State::Stopped) {
        face_.live += ", paused";
        return;
    }
    const int seconds = std::max(0, static_cast<int>(std::ceil(schedule_.ToPoint(clock_.SteadySeconds()) - 0.01)));
    const int hours = seconds / 3600, minutes = seconds / 60 % 60;
    face_.live += ", the next in " + Format(double(hours), "00") + ":" + Format(double(minutes), "00") + ":" +
                  Format(double(seconds % 60), "00");
}

std::string RecordingPresenter::PointRemark(int n) const {
    const PointQuality& quality = run_.Quality(n);
    const RecordingPoint& point = run_.Points()[At(n)];
    std::string remark = "Point " + TrimStr(n) + (point.time.empty() ? "" : ", " + point.time);
    const char* before = ": ";
    const auto add = [&](const std::string& words) {
        remark += before + words;
        before = "; ";
    };
    const bool both = run_.On(0) && run_.On(1);
    for (int k = 0; k < 2; ++k) {
        const std::string& words = quality.words[At(k)];
        if (run_.On(k) && !words.empty()) add((both ? "electrode " + TrimStr(k + 1) + ", " : "") + words);
    }
    if (!quality.remark.empty()) add(quality.remark);
    return remark + (quality.Fresh() ? "." : "; hollow in the graph.");
}

void RecordingPresenter::ShowStatus() {
    std::string text = lookedUp_;
    Add(text, FileRemarks());
    if (now_ != State::Viewing) Add(text, KeepingRemarks());
    Add(text, PointsRemarks());
    for (int k = 0; k < 2; ++k)
        Add(text, SensorRemarks(k));
    if (const int beyond = PointsBeyond(run_, ScaleRow(Kind(), face_.scaleIndex)); beyond > 0)
        Add(text, Points(beyond) + " beyond the scale, drawn at its edge.");
    face_.status = text;
}

std::string RecordingPresenter::FileRemarks() const {
    std::string text;
    const int rows = static_cast<int>(fileRows_.size());
    if (now_ == State::Complete)
        Add(text,
            "The recording has ended: " + TrimStr(run_.Taken()) + " of " + TrimStr(run_.PointCount() + 1) + " points.");
    if (now_ == State::Viewing && PointsOfFile(rows, 0) == 0 && !face_.wholeFile)
        Add(text, "All " + TrimStr(rows) + " points of the file are shown.");
    if (face_.wholeFile)
        Add(text, "The file holds " + TrimStr(rows) + " points, of which " + TrimStr(run_.Taken()) +
                      " are shown; Option, \"Show Whole File\" shows the others.");
    return text;
}

std::string RecordingPresenter::KeepingRemarks() const {
    std::string text = changed_;
    if (keeper_.Waiting() > 0)
        Add(text, Points(keeper_.Waiting()) + " still to be written to " + tableState_.TableFile +
                      (keeper_.Safe() ? ", and kept safe meanwhile." : "."));
    else if (run_.Taken() > 0 && !keeper_.Live() && !keeper_.Safe())
        Add(text, "The recording is kept in memory alone.");
    if (Kind() == RecordingKind::Ise) Add(text, OnePointRemark(calibration_));
    return text;
}

std::string RecordingPresenter::PointsRemarks() const {
    std::string text;
    if (const int old = run_.OldPoints(); old > 0) Add(text, Points(old) + " of an old frame (hollow).");
    if (run_.AsleepPoints() > 0) Add(text, Points(run_.AsleepPoints()) + " missing: the machine was asleep.");
    if (run_.AsleepPoints() == 0 && run_.Slept() > 0)
        Add(text, "The machine slept for " + Format(run_.Slept(), "0") + " s; no point is missing for it.");
    if (run_.HeldUpPoints() > 0) Add(text, Points(run_.HeldUpPoints()) + " missing: the program was held up.");
    if (const int remarked = run_.RemarkedPoints(); now_ == State::Viewing && remarked > 0)
        Add(text, TrimStr(remarked) + (remarked == 1 ? " point has" : " points have") +
                      " a remark on what lies before; \"Data Number\" and the table tell it.");
    return text;
}

std::string RecordingPresenter::SensorRemarks(int k) const {
    std::string text;
    const std::string number = TrimStr(k + 1);
    const int out = run_.SensorOutPoints(k);
    if (out > 0 && now_ != State::Viewing && run_.Quality(run_.Taken() - 1).SensorOut(k))
        Add(text, "Temperature sensor " + number + " is not connected: its °C are not real.");
    else if (out > 0)
        Add(text, Points(out) + " without temperature sensor " + number + ".");
    if (now_ == State::Viewing) {
        const int estimated = run_.EstimatedPoints(k);
        if (estimated > 0 && Kind() == RecordingKind::Ise)
            Add(text, Points(estimated) + " by a one-point calibration: no concentration to rely on.");
        else if (estimated > 0)
            Add(text, Points(estimated) + " estimated: electrode " + number + " had no calibration.");
        return text;
    }
    if (run_.On(k) && run_.Uncalibrated(k))
        Add(text, "Electrode " + number + " has no calibration: its pH is an estimate.");
    if (const std::string& doubt = doubts_[At(k)]; run_.On(k) && !doubt.empty())
        Add(text, "Electrode " + number + ": " + doubt + ".");
    if (run_.Taken() > 0 && !run_.Quality(run_.Taken() - 1).Recorded(k))
        Add(text, "Electrode " + number + " is not recorded: its pH of 0.00 in the rows is none.");
    return text;
}

}  // namespace kelvo
