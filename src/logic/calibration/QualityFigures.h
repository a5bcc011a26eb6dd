#pragma once

#include <vector>

#include "calibration/QualityPage.h"

namespace kelvo {

// Figures of the page "Calibration Quality" that say more than the line does. Each adds those that exist.

/// Whether the standards lie on a straight line (Mandel), and where some are repeated whether the line fits them.
void AddLinearity(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);
/// Limits of detection and of quantification from blanks, where these were measured.
void AddBlankLimits(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);
/// How many standards count, and what is told of them.
void AddToldStandards(std::vector<QualityPage::Figure>& figures, const Calibration& calibration);

/// "0.0203 ppm", or mol/L without a weight of the ion, with as many places as the interval is worth.
std::string LimitText(double molar, double low, double high, double gramsPerMole);

}  // namespace kelvo
