#pragma once

#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "calibration/LinearRange.h"
#include "statistics/CurvePrediction.h"
#include "statistics/JoinedLines.h"
#include "statistics/OffsetLine.h"
#include "statistics/Parabola.h"

namespace kelvo {

/// A curve beside the straight line that samples can be read off, by what its interval is worked out from: LogC over
/// mV.
class ResultCurve {
 public:
    enum class Kind { Segments, BestFit, LowEnd };

    /// Of the text of `Text()`; none when it is no such text or the curve has no interval.
    static std::optional<ResultCurve> Of(const std::string& text);
    ResultCurve(Kind kind, Standards standards);

    /// Why no sample has an interval; empty when they do.
    const std::string& WhyNone() const { return whyNone_; }
    /// @return none where the curve tells nothing, and where the interval does not end within a factor of 100
    std::optional<CurveEstimate> Predict(std::span<const double> readings) const;
    std::optional<PlaceOnCurve> PlaceOf(double mv) const;
    /// Of the standards about the curve, mV, with its degrees of freedom.
    double Scatter() const;
    int Freedom() const;
    /// "scatter of 5 standards about the best-fit curve", what the curve's part of the interval holds.
    std::string Basis() const;
    /// The kind and all standards, joined by blanks: the curve is fitted again from them.
    std::string Text() const;
    const Standards& Points() const { return standards_; }

 private:
    std::string FindWhyNone() const;
    const FittedCurve* Fitted() const;

    Kind kind_;
    Standards standards_;
    Span within_;
    std::optional<JoinedLines> joined_;
    std::optional<Parabola> parabola_;
    std::optional<OffsetLine> lowEnd_;
    std::string whyNone_;
};

/// "segments", "best-fit curve" or "low-end fit".
const char* NameOf(ResultCurve::Kind kind);

}  // namespace kelvo
