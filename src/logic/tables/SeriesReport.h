#pragma once

#include <string>

#include "addition/SeriesForm.h"
#include "core/StateOf.h"
#include "tables/Reports.h"

namespace kelvo {

/// "Several Additions" on paper: the result, the additions, Gran's plot with its residuals, the budget, a line for the
/// signature. @return whether the document was handed over
bool PrintSeriesDocument(StateOf<const HardwareSettings, StatusMessages> state, const SeriesForm& form,
                         const std::string& title, const PrintServices& services);

/// The additions one a line: number, mL, mL in all, mV, residual.
std::vector<std::vector<std::string>> SeriesCells(const SeriesOutcome& outcome);

}  // namespace kelvo
