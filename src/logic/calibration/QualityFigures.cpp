#include "calibration/QualityFigures.h"

#include <cmath>

#include "calibration/BlankLimits.h"
#include "calibration/CalibrationStandards.h"
#include "statistics/Figures.h"
#include "statistics/Linearity.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double LeastScatter = 0.0005;  ///< mV, as of `ScatterVanishes`

std::string Against(const FTest& test) {
    return " (F " + WithPlaces(test.f, 2) + ", limit " + WithPlaces(test.limit, 2) + ")";
}

void AddLimit(std::vector<QualityPage::Figure>& figures, const char* name, const BlankLimits::Limit& limit,
              double gramsPerMole, const std::string& basis) {
    const LimitTexts told = TextsOfLimit(limit.molar, limit.low, limit.high, gramsPerMole);
    figures.push_back({name, told.texts.value + " " + told.unit, told.Bounds() + ", " + basis});
}

}  // namespace

LimitTexts TextsOfLimit(double molar, double low, double high, double gramsPerMole) {
    constexpr double GramsPerLitre = 1000;
    const double factor = gramsPerMole > 0 ? GramsPerLitre * gramsPerMole : 1;
    return {WithInterval(factor * molar, factor * low, factor * high), gramsPerMole > 0 ? "ppm" : "mol/L"};
}

void AddLinearity(std::vector<QualityPage::Figure>& figures, const Calibration& calibration) {
    const CalibrationQuality& quality = calibration.quality;
    if (quality.basis != CalibrationQuality::Basis::Line || !quality.answers) return;
    const Standards& standards = calibration.input.standards;
    const char* const Mandel = "Straight or bent (Mandel)";
    if (const auto bent = MandelTest(standards.logC, standards.mv)) {
        // Σe² of the line are those of the parabola and F times its s².
        const double left = quality.line.residualSquares / (bent->f + bent->lower);
        if (std::sqrt(left) < LeastScatter)
            figures.push_back({Mandel, "not told", "the points lie exactly on a parabola"});
        else
            figures.push_back(
                {Mandel, bent->Significant() ? "bent" : "straight",
                 (bent->Significant() ? "a parabola fits better" : "a parabola fits no better") + Against(*bent)});
    }
    if (const auto lack = LackOfFitTest(standards.logC, standards.mv))
        figures.push_back({"Lack of fit", lack->Significant() ? "seen" : "none seen",
                           (lack->Significant() ? "standards lie farther off the line than repeated ones differ"
                                                : "standards lie off the line as repeated ones differ") +
                               Against(*lack)});
}

void AddBlankLimits(std::vector<QualityPage::Figure>& figures, const Calibration& calibration) {
    const auto blanks = BlanksOf(calibration.told.blanks);
    const auto line = calibration.Line();
    if (!blanks || blanks->empty() || !line) return;
    const LinearRange& range = calibration.quality.range;
    const BlankLimits limits = BlankLimits::Of(*blanks, range.found ? range.line : *line);
    const char *const Detection = "Detection limit, 3s", *const Quantification = "Quantification limit, 10s";
    if (!limits.detection) {
        figures.push_back({Detection, "not told", limits.why});
        return;
    }
    const std::string basis =
        std::to_string(limits.n) + " blanks, s " + WithPlacesOf(limits.deviation, limits.deviation) + " mV";
    AddLimit(figures, Detection, *limits.detection, calibration.gramsPerMole, basis);
    AddLimit(figures, Quantification, *limits.quantification, calibration.gramsPerMole, "beyond the blank");
}

void AddToldStandards(std::vector<QualityPage::Figure>& figures, const Calibration& calibration) {
    const std::string lot = LotText(calibration.told), u = calibration.told.relativeU;
    const std::size_t left = calibration.leftOut.size(), all = left + calibration.points.size();
    if (lot.empty() && u.empty() && left == 0) return;
    const std::string count =
        left == 0 ? "all count" : std::to_string(all - left) + " of " + std::to_string(all) + " count";
    std::string beside = u.empty() ? "" : "uncertain by " + u + " % (standard deviation)";
    if (!lot.empty()) beside += (beside.empty() ? "" : "; ") + lot;
    figures.push_back({"Standards", count, beside});
}

}  // namespace kelvo
