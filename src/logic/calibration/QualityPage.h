#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "calibration/Calibration.h"
#include "core/DisplayList.h"

namespace kelvo {

/// All that the window "Calibration Quality", its page of the report and its copy show, as texts. No text holds a
/// "nan" or an "inf"; a figure that does not exist is "-".
struct QualityPage {
    struct Figure {
        const char* name;
        std::string value;
        std::string beside;  ///< its spread with its name, or what it rests on; may be empty
    };
    Verdict verdict;
    std::vector<Figure> figures;
    std::vector<std::string> heads;              ///< of the table of points
    std::vector<std::vector<std::string>> rows;  ///< one a point, the mark in the last cell
    std::vector<bool> marked;                    ///< by point
    DisplayList plot;
    bool lowEndPossible = false;  ///< the fit for low concentrations exists
};

/// @param lowEnd  the fit for low concentrations is drawn, and its residuals stand in the table
QualityPage MakeQualityPage(const Calibration& calibration, bool lowEnd);

/// The page as lines of cells joined by TAB, for the clipboard.
std::string QualityText(const QualityPage& page);

}  // namespace kelvo
