#include "calibration/Sample.h"

#include <utility>
#include "calibration/CalibrationStandards.h"

#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {

std::optional<Sample> MeasureSample(std::shared_ptr<const Calibration> calibration, float mv,
                                    const std::string& celsius) {
    const SampleOutcome outcome = SampleFromPotential(*calibration, mv);
    if (!outcome.value) return std::nullopt;
    Uncertainty told =
        calibration->uncertainty.Of(mv, Trim(celsius).empty() ? std::nullopt : std::optional(Val(celsius)));
    told.Hold(calibration->ion != NoIon ? outcome.value->ppm : outcome.value->molar);
    return Sample{mv, celsius, *outcome.value, std::move(told), std::move(calibration)};
}

RowFacts Sample::Facts() const {
    RowFacts facts;
    facts.Set(fact::Remark, uncertainty.words);
    if (IsEmptyRow(*calibration, mv)) facts.Remark("exactly 0 mV with two points shows the empty row 0, not a result");
    facts.Set(fact::Curve, calibration->CurveName());
    if (!uncertainty.interval) return facts;
    const auto [low, high] = *uncertainty.interval;
    const IntervalTexts texts = WithInterval(calibration->ion != NoIon ? value.ppm : value.molar, low, high);
    facts.Set(fact::Value, texts.value);
    facts.Set(fact::Low, texts.low);
    facts.Set(fact::High, texts.high);
    facts.Set(fact::Unit, calibration->Unit());
    facts.Set(fact::Basis, uncertainty.basis);
    facts.Set(fact::Line, calibration->uncertainty.Line());
    facts.Set(fact::CaliCelsius, calibration->celsius);
    facts.Set(fact::StandardsU, calibration->told.relativeU);
    facts.Set(fact::Standards, LotText(calibration->told));
    return facts;
}

std::string Sample::LiveLine() const {
    const RowFacts facts = Facts();
    const std::string line = IntervalText(facts);
    if (!facts.Get(fact::Low).empty()) return "Live: " + line;
    const bool ion = calibration->ion != NoIon;
    return "Live: " + (ion ? Format(value.ppm, "#0.00") : Format(value.molar, "#.00E-0")) + " " + calibration->Unit() +
           (line.empty() ? "" : "; " + line);
}

std::string IntervalText(const RowFacts& facts) {
    const std::string low = facts.Get(fact::Low), value = facts.Get(fact::Value);
    if (low.empty()) return facts.Get(fact::Remark);
    const std::string unit = " " + facts.Get(fact::Unit);
    std::string line = (value.empty() ? "" : value + unit + ", ") + low + " to " + facts.Get(fact::High) +
                       (value.empty() ? unit : "") + " (95 %)";
    const std::string words = facts.Get(fact::Remark);
    if (!words.empty()) line += "; " + words;
    return line;
}

}  // namespace kelvo
