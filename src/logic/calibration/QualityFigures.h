#pragma once

#include <string>
#include <vector>

#include "calibration/QualityPage.h"
#include "statistics/Figures.h"

namespace kelvo {

// Figures of the page "Calibration Quality" that say more than the line does. Each adds those that exist.

/// Whether the standards lie on a straight line (Mandel), and where some are repeated whether the line fits them.
void AddLinearity(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);
/// Limits of detection and of quantification from blanks, where these were measured.
void AddBlankLimits(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);
/// How many standards count, and what is told of them.
void AddToldStandards(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);

/// A limit and its bounds with as many places as these are worth: ppm, or mol/L without a weight of the ion.
struct LimitTexts {
    IntervalTexts texts;
    const char* unit;
    /// "1.8E-4 to 1.29E-3 ppm (95 %)".
    std::string Bounds() const { return texts.low + " to " + texts.high + " " + unit + " (95 %)"; }
};
LimitTexts TextsOfLimit(double molar, double low, double high, double gramsPerMole);

}  // namespace kelvo
