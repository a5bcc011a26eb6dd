#pragma once

#include <string>
#include <vector>

#include "core/DisplayList.h"
#include "tables/ReportedResult.h"

namespace kelvo {

class Sheets;
class Workbook;

// What window, paper and exports show of results; each takes it from the same texts.

/// Heads and cells of a list, one row of cells a line.
struct Cells {
    std::vector<std::string> heads;
    std::vector<std::vector<std::string>> rows;
};

/// What a line of results holds: sample, n, result, bounds, unit, combined uncertainty, s, RSD, blank, dilution,
/// coverage, what the interval holds, remark (or why there is no interval).
const std::vector<std::string>& ResultHeads();
std::vector<std::string> ResultLine(const ReportedResult& result);
/// The results, one a line.
Cells ResultCells(const std::vector<ReportedResult>& results);
/// The rows of one result: row, mV, concentration, and why a row does not count or is suspected.
Cells RowCells(const ReportedResult& result);
/// The budget of one result: part, u in %, share in %, degrees of freedom, source.
Cells BudgetCells(const ReportedResult& result);

/// Twips of the surface that `BudgetBars` draws on.
constexpr float BarsWidth = 9400;
float BarsHeight(const Budget& budget);
/// The budget as bars of their shares, the source below each. @param none  what is told where there is none
DisplayList BudgetBars(const Budget& budget, const std::string& none);
/// The same in words.
std::string BudgetWords(const ReportedResult& result);

/// Whether the results say more than the rows do: a sample of several rows, one that is corrected, or one whose
/// row was struck out. Of rows that nothing is known of they say nothing more.
bool WorthTelling(const std::vector<ReportedResult>& results);

/// Lines of cells joined by TAB, for the clipboard.
std::string ResultsText(const std::vector<ReportedResult>& results);
std::string ResultsCsv(const std::vector<ReportedResult>& results);
/// {"format":"kelvo-results","version":1,"results":[...]}, numbers unrounded, with rows and budget.
std::string ResultsJson(const std::vector<ReportedResult>& results);
/// The sheets "Results", "Budget".
void AddResultSheets(Workbook& book, const std::vector<ReportedResult>& results);
/// From the current position down: the list, then each result with its bars and its rows.
void PrintResults(const std::vector<ReportedResult>& results, Sheets& page);

}  // namespace kelvo
