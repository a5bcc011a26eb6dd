#include "tables/RowUncertainty.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {

namespace {

constexpr int MvCol = 3, PpmCol = 4, CelsiusCol = 6;
constexpr std::size_t StandardsBox = 1, CelsiusBox = 2;

const char* const NoStandards = "the head of the table holds no standards: no uncertainty can be told";
const char* const NotOnTheLine = "not read off the straight line of the table's head: no uncertainty can be told";

/// The numbers of one line of the head's standards, cells ended by TABs; empty when one is no number.
std::vector<double> NumbersOf(std::string_view line) {
    std::vector<double> numbers;
    while (!line.empty()) {
        const std::size_t end = std::min(line.find('\t'), line.size());
        const auto number = CellNumber(line.substr(0, end));
        if (!number) return {};
        numbers.push_back(*number);
        line.remove_prefix(std::min(end + 1, line.size()));
    }
    return numbers;
}

/// The line of a text of several lines, counted from 0.
std::string_view LineOf(std::string_view text, int index) {
    for (; index > 0; --index) {
        const std::size_t end = text.find('\n');
        if (end == std::string_view::npos) return {};
        text.remove_prefix(end + 1);
    }
    text = text.substr(0, text.find('\n'));
    return text.ends_with('\r') ? text.substr(0, text.size() - 1) : text;
}

/// Standards of the head, as log10 of ppm and mV; none when the lines do not pair up or a ppm has no logarithm.
Standards StandardsOfHead(const std::string& box) {
    const std::vector<double> ppm = NumbersOf(LineOf(box, 0)), mv = NumbersOf(LineOf(box, 1));
    if (ppm.size() != mv.size()) return {};
    Standards standards;
    for (std::size_t i = 0; i < ppm.size(); ++i) {
        constexpr double Beyond = 1e6;
        if (!(ppm[i] > 0) || std::abs(mv[i]) > Beyond) return {};
        standards.logC.push_back(std::log10(ppm[i]));
        standards.mv.push_back(mv[i]);
    }
    return standards;
}

/// Whether a ppm cell is the concentration, but for the two places of its mask and the rounding of the boxes.
bool Agrees(double cell, double concentration) {
    constexpr double HalfAPlace = 0.0051, Share = 0.002;
    return std::abs(cell - concentration) <= HalfAPlace + Share * concentration;
}

}  // namespace

RowUncertainty::RowUncertainty(const DataTable& table, const QualityLimits& limits) : table_(table) {
    applies_ = table.Cols() > CelsiusCol && table.Cell(0, MvCol) == "mV" && table.Cell(0, PpmCol) == "ppm";
    if (!applies_) return;
    const Standards standards = StandardsOfHead(table.txtData[StandardsBox]);
    if (standards.Count() == 0) return;
    source_.emplace(standards, CellNumber(Trim(table.txtData[CelsiusBox])), limits);
}

std::optional<Uncertainty> RowUncertainty::Told(int row) const {
    const auto mv = CellNumber(table_.Cell(row, MvCol)), ppm = CellNumber(table_.Cell(row, PpmCol));
    if (!applies_ || row < 1 || !mv || !ppm) return std::nullopt;
    if (!source_) return Uncertainty{std::nullopt, NoStandards};
    Uncertainty told = source_->Of(*mv, CellNumber(table_.Cell(row, CelsiusCol)));
    if (!told.interval) return told;
    const auto concentration = source_->Concentration(*mv);
    if (!concentration || !Agrees(*ppm, *concentration)) return Uncertainty{std::nullopt, NotOnTheLine};
    return told;
}

RowUncertainty::Cells RowUncertainty::Of(int row) const {
    const auto told = Told(row);
    if (!told) return {};
    if (!told->interval) return {{}, {}, told->words};
    const auto [low, high] = *told->interval;
    const double halfWidth = (high - low) / 2;
    return {BoundWithPlacesOf(low, halfWidth), BoundWithPlacesOf(high, halfWidth), told->words};
}

AddedColumns UncertaintyColumns(const DataTable& table, const QualityLimits& limits) {
    const RowUncertainty rows(table, limits);
    if (!rows.HasStandards()) return {};
    return {{"95 % from (ppm)", "95 % to (ppm)", "Uncertainty"}, [rows](int row) {
                const RowUncertainty::Cells cells = rows.Of(row);
                return std::vector<std::string>{cells.low, cells.high, cells.words};
            }};
}

std::string RowUncertainty::Line(int row) const {
    const auto told = row >= 1 && row < table_.Rows() ? Told(row) : std::nullopt;
    return told ? UncertaintyText(std::string(table_.Cell(row, PpmCol)), "ppm", *told) : std::string();
}

}  // namespace kelvo
