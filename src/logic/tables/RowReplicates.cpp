#include "tables/RowReplicates.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>

#include "calibration/SampleUncertainty.h"
#include "statistics/Figures.h"
#include "statistics/Replicates.h"
#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"

namespace kelvo {
namespace {

/// Columns that repeated measurements are summed up by, by their heads: a potential, and the result with its unit.
struct Column {
    const char* head;
    const char* unit;
};
constexpr std::array<Column, 2> PotentialColumns = {{{"mV", "mV"}, {"Elect.1 (mV)", "mV"}}};
constexpr std::array<Column, 4> ResultColumns = {
    {{"ppm", "ppm"}, {"Elect.1 (ppm)", "ppm"}, {"Sample (ppm)", "ppm"}, {"Elect.1 (pH)", "pH"}}};

/// The numbers of one column, and which row each is of.
struct Quantity {
    std::string unit;
    int col = 0;
    std::vector<double> values;
    std::vector<int> rows;
    std::optional<Replicates> summary;
    std::string low, high, holds;  ///< 95 % interval and what it contains
};

std::string Places(double value, const Replicates& summary) {
    return WithPlacesOf(value, summary.deviation);
}

template <typename Columns>
Quantity Collect(const DataTable& table, const std::vector<int>& rows, const Columns& columns) {
    Quantity quantity;
    for (int col = 1; col < table.Cols() && quantity.unit.empty(); ++col) {
        for (const Column& column : columns) {
            if (table.Cell(0, col) != column.head) continue;
            quantity.unit = column.unit;
            quantity.col = col;
            for (const int row : rows) {
                const auto number = row >= 1 && row < table.Rows() ? CellNumber(table.Cell(row, col)) : std::nullopt;
                if (!number) continue;
                quantity.values.push_back(*number);
                quantity.rows.push_back(row);
            }
            break;
        }
    }
    quantity.summary = Summarise(quantity.values);
    if (!quantity.summary) return quantity;
    quantity.low = Places(quantity.summary->low, *quantity.summary);
    quantity.high = Places(quantity.summary->high, *quantity.summary);
    quantity.holds = "scatter of these readings alone";
    return quantity;
}

/// The calibration line that all of these rows were read off; none when it is not one, or an interval of theirs was not
/// to be told.
std::optional<SampleUncertainty> CommonLine(const DataTable& table, const std::vector<int>& rows) {
    const std::string line = table.Facts(rows.front()).Get(fact::Line);
    const bool common = std::all_of(rows.begin(), rows.end(), [&](int row) {
        return !table.Facts(row).Get(fact::Low).empty() && table.Facts(row).Get(fact::Line) == line;
    });
    return common ? SampleUncertainty::OfLine(line) : std::nullopt;
}

/// Whether a sample is among the rows that was refused an interval when it was measured: its remark says why, and the
/// scatter of the readings is no way round it.
bool IsRefused(const DataTable& table, const std::vector<int>& rows) {
    return HoldsSamples(table) && std::any_of(rows.begin(), rows.end(), [&](int row) {
               return table.Facts(row).KnownWhenMeasured() && table.Facts(row).Get(fact::Low).empty();
           });
}

/// The concentration with the interval that its mean potential has off the calibration line, where the rows have one.
Quantity WithCalibration(const DataTable& table, const Quantity& potential, Quantity result) {
    if (!result.summary) return result;
    if (IsRefused(table, result.rows)) {
        result.low = result.high = result.holds = "";
        return result;
    }
    if (!potential.summary || potential.rows != result.rows) return result;
    const auto line = CommonLine(table, result.rows);
    if (!line) return result;
    const Uncertainty told = line->Of(potential.values, std::nullopt);
    if (!told.interval) return result;
    const auto [low, high] = *told.interval;
    const IntervalTexts texts = WithInterval(line->Concentration(potential.summary->mean).value_or(low), low, high);
    result.low = texts.low;
    result.high = texts.high;
    result.holds = told.basis;
    return result;
}

std::string Deviation(const Replicates& summary) {
    return WithPlacesOf(summary.deviation, summary.deviation);
}

/// How the analyst finds the row again: by its sample number, else by its place.
std::string NameOf(const DataTable& table, int row) {
    const std::string_view number = table.Cell(row, 1);
    return number.empty() ? "row " + std::to_string(row) : "sample " + std::string(number);
}

std::string GrubbsText(const DataTable& table, const Quantity& quantity) {
    const auto test = GrubbsTest(quantity.values);
    if (!test) return quantity.values.size() < 3 ? "Grubbs: needs three values" : "Grubbs: all values are equal";
    const std::string figures = " (G " + WithPlaces(test->g, 3) + ", limit " + WithPlaces(test->limit, 3) + ")";
    if (!test->Outlier()) return "Grubbs: no outlier" + figures;
    return "Grubbs: " + NameOf(table, quantity.rows[test->suspect]) + " is an outlier" + figures;
}

std::string LineOf(const DataTable& table, const Quantity& potential, const Quantity& result) {
    const bool both = potential.summary && result.summary;
    const Quantity& main = result.summary ? result : potential;
    const Replicates& summary = *main.summary;
    std::string line = "n " + std::to_string(summary.n);
    if (both)
        line +=
            "; mean " + Places(potential.summary->mean, *potential.summary) + " mV, s " + Deviation(*potential.summary);
    line += "; mean " + Places(summary.mean, summary) + " " + main.unit + ", s " + Deviation(summary);
    if (summary.relative) line += ", RSD " + WithPlaces(*summary.relative, 2) + " %";
    line +=
        main.low.empty() ? ", no 95 % interval" : ", 95 % " + main.low + " to " + main.high + " (" + main.holds + ")";
    RowFacts remarks;
    for (const int row : main.rows)
        remarks.Remark(table.Facts(row).Get(fact::Remark));
    const std::string told = remarks.Get(fact::Remark);
    return line + "; " + GrubbsText(table, main) + (told.empty() ? "" : "; " + told);
}

std::string CellsOf(const DataTable& table, const std::vector<const Quantity*>& shown) {
    std::string text;
    const auto line = [&](const char* name, auto cell) {
        text += name;
        for (const Quantity* quantity : shown)
            text += "\t" + cell(*quantity);
        text += "\n";
    };
    line("Replicates", [](const Quantity& q) { return q.unit; });
    line("n", [](const Quantity& q) { return std::to_string(q.summary->n); });
    line("Mean", [](const Quantity& q) { return Places(q.summary->mean, *q.summary); });
    line("Standard deviation", [](const Quantity& q) { return Deviation(*q.summary); });
    line("RSD (%)", [](const Quantity& q) { return q.summary->relative ? WithPlaces(*q.summary->relative, 2) : ""; });
    line("95 % from", [](const Quantity& q) { return q.low; });
    line("95 % to", [](const Quantity& q) { return q.high; });
    line("Interval holds", [](const Quantity& q) { return q.holds; });
    line("Outlier", [&](const Quantity& q) { return GrubbsText(table, q); });
    return text;
}

}  // namespace

RowReplicates ReplicatesOf(const DataTable& table, std::vector<int> rows) {
    std::erase_if(rows, [&](int row) { return row >= 0 && row < table.Rows() && IsStruck(table.Facts(row)); });
    if (rows.size() < 2) return {};
    const Quantity potential = Collect(table, rows, PotentialColumns);
    const Quantity result = WithCalibration(table, potential, Collect(table, rows, ResultColumns));
    std::vector<const Quantity*> shown;
    for (const Quantity* quantity : {&potential, &result})
        if (quantity->summary) shown.push_back(quantity);
    if (shown.empty()) return {};
    const auto [first, last] = std::minmax(shown.front()->col, shown.back()->col);
    return {LineOf(table, potential, result), CellsOf(table, shown), first, last};
}

}  // namespace kelvo
