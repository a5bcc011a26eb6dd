#include "tables/RowUncertainty.h"

#include <string_view>
#include <utility>
#include <vector>

#include "calibration/DriftCheck.h"
#include "calibration/Sample.h"
#include "calibration/SampleUncertainty.h"
#include "ph/RecordingQuality.h"
#include "tables/ControlSample.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr int MvCol = 3, PpmCol = 4, CelsiusCol = 6, AdditionPpmCol = 11;

const char* const NoInterval = "no interval goes with this row";

/// Not a fact of its own: what `DriftText` makes of several.
constexpr const char* DriftColumn = "drift";

/// A fact as a column of an export.
struct FactColumn {
    const char* name;
    const char* head;
    bool unit;      ///< the head names the unit of the interval
    bool ofSample;  ///< every table of samples has it
};
constexpr FactColumn Columns[] = {
    {fact::Value, "Result", true, true},
    {fact::Low, "95 % from", true, true},
    {fact::High, "95 % to", true, true},
    {fact::Basis, "Interval holds", false, true},
    {fact::Slope, "Slope (mV/decade)", false, false},
    {fact::Celsius, "Slope at °C", false, false},
    {fact::Quality1, "Quality 1", false, false},
    {fact::Quality2, "Quality 2", false, false},
    {fact::Dilution, "Dilution", false, false},
    {fact::Blank, "Blank", true, false},
    {fact::Struck, "Struck out", false, false},
    {fact::Control, "Control", false, false},
    {DriftColumn, "Drift", false, false},
    {fact::Remark, "Remark", false, true},
};

bool IsSample(const DataTable& table, int row) {
    return HoldsSamples(table) && CellNumber(table.Cell(row, MvCol)) && CellNumber(table.Cell(row, PpmCol));
}

/// Text of the first row that has the fact, empty when none does.
std::string FirstOf(const DataTable& table, const char* name) {
    for (int row = 1; row < table.Rows(); ++row) {
        std::string text = name == DriftColumn ? DriftText(table.Facts(row)) : table.Facts(row).Get(name);
        if (!text.empty()) return text;
    }
    return {};
}

std::string FactCell(const DataTable& table, int row, const FactColumn& column, const std::string& unit) {
    const RowFacts& facts = table.Facts(row);
    // A bound in another unit than the head names would be read in that one: it is told in words.
    const bool otherUnit = !facts.Get(fact::Low).empty() && facts.Get(fact::Unit) != unit;
    if (column.unit && otherUnit) return {};
    const bool inWords = column.name == std::string_view(fact::Remark) && (otherUnit || !facts.KnownWhenMeasured());
    if (column.name == std::string_view(fact::Control)) return ControlText(table, row);
    if (column.name == DriftColumn) return DriftText(facts);
    return inWords ? TextBeside(table, row) : facts.Get(column.name);
}

/// What is told of the electrodes at a point of a recording. That one of them was not recorded at all is no remark on
/// the row: it is so in every one.
std::string QualityText(const RowFacts& facts) {
    const PointQuality quality = QualityOf(facts);
    std::string text;
    for (int k = 0; k < 2; ++k) {
        const std::string& words = quality.words[static_cast<std::size_t>(k)];
        if (words.empty() || !quality.Recorded(k)) continue;
        text += (text.empty() ? "" : "; ") + std::string("electrode ") + TrimStr(k + 1) + ": " + words;
    }
    return text;
}

/// "slope -58 mV/decade at 25.0 °C", what the result of an addition was worked out with.
std::string SlopeText(const RowFacts& facts) {
    const std::string slope = facts.Get(fact::Slope), celsius = facts.Get(fact::Celsius);
    if (slope.empty()) return {};
    return "slope " + slope + " mV/decade" + (celsius.empty() ? "" : " at " + celsius + " °C");
}

/// "struck out: bubble under the membrane".
std::string StruckText(const RowFacts& facts) {
    const std::string reason = facts.Get(fact::Struck);
    return reason.empty() ? reason : "struck out: " + reason;
}

}  // namespace

bool HoldsSamples(const DataTable& table) {
    return table.Cols() > CelsiusCol && table.Cell(0, MvCol) == "mV" && table.Cell(0, PpmCol) == "ppm";
}

std::string ControlText(const DataTable& table, int row) {
    const RowFacts& facts = table.Facts(row);
    if (facts.Get(fact::Control).empty()) return {};
    const int col = HoldsSamples(table) ? PpmCol : AdditionPpmCol;
    const auto value = col < table.Cols() ? CellNumber(table.Cell(row, col)) : std::nullopt;
    return RecoveryText(facts, value, CellNumber(facts.Get(fact::Low)), CellNumber(facts.Get(fact::High)));
}

bool IsStruck(const RowFacts& facts) {
    return !facts.Get(fact::Struck).empty();
}

std::string TextBeside(const DataTable& table, int row) {
    if (row < 1 || row >= table.Rows()) return {};
    const RowFacts& facts = table.Facts(row);
    const std::string bare = !facts.KnownWhenMeasured() && IsSample(table, row) ? NoInterval : "";
    std::string told;
    for (const std::string& text : {StruckText(facts), ControlText(table, row), DriftText(facts), QualityText(facts),
                                    IntervalText(facts), SlopeText(facts), bare})
        if (!text.empty()) told += (told.empty() ? "" : "; ") + text;
    return told;
}

bool HasRemark(const RowFacts& facts) {
    return !facts.Get(fact::Remark).empty() || !QualityText(facts).empty() || IsStruck(facts) ||
           !facts.Get(fact::Control).empty() || !DriftText(facts).empty();
}

bool HasRemarks(const DataTable& table) {
    for (int row = 1; row < table.Rows(); ++row)
        if (HasRemark(table.Facts(row))) return true;
    return false;
}

AddedColumns FactColumns(const DataTable& table) {
    const bool samples = HoldsSamples(table);
    std::string unit = FirstOf(table, fact::Unit);
    if (unit.empty()) unit = "ppm";
    AddedColumns added;
    std::vector<FactColumn> columns;
    for (const FactColumn& column : Columns) {
        if (!(samples && column.ofSample) && FirstOf(table, column.name).empty()) continue;
        columns.push_back(column);
        added.heads.push_back(column.head + (column.unit ? " (" + unit + ")" : std::string()));
    }
    if (columns.empty()) return added;
    added.cells = [&table, columns = std::move(columns), unit = std::move(unit)](int row) {
        std::vector<std::string> cells;
        for (const FactColumn& column : columns)
            cells.push_back(FactCell(table, row, column, unit));
        return cells;
    };
    return added;
}

}  // namespace kelvo
