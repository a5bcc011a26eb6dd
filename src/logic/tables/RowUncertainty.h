#pragma once

#include <optional>
#include <string>

#include "calibration/SampleUncertainty.h"
#include "tables/DataTable.h"
#include "tables/TableExport.h"

namespace kelvo {

/// The 95 % interval of every row of a table of direct potentiometry, from the standards that the table's own head
/// holds. So it is the same for the working table and for one opened from a file, and never comes from a calibration
/// that the rows were not measured with: a row whose ppm is not what the line of the head gives has none.
class RowUncertainty {
 public:
    RowUncertainty(const DataTable& table, const QualityLimits& limits);

    /// Whether the rows are samples of direct potentiometry at all.
    bool Applies() const { return applies_; }
    /// Whether the head holds standards to judge them by.
    bool HasStandards() const { return source_.has_value(); }

    /// Cells of a row, as an export adds them behind the others.
    struct Cells {
        std::string low, high;  ///< ppm; empty without an interval
        std::string words;
    };
    Cells Of(int row) const;
    /// The line at the foot for the row in hand, "35.60 ppm, 34.1 to 37.2 (95 %)"; empty for a row without a
    /// measurement and where it does not apply.
    std::string Line(int row) const;

 private:
    std::optional<Uncertainty> Told(int row) const;

    const DataTable& table_;
    bool applies_ = false;
    std::optional<SampleUncertainty> source_;
};

/// The same as columns of an export: "95 % from (ppm)", "95 % to (ppm)", "Uncertainty"; none for a table whose head
/// holds no standards. The table is to outlive them.
AddedColumns UncertaintyColumns(const DataTable& table, const QualityLimits& limits);

}  // namespace kelvo
