#pragma once

#include <optional>
#include <string>
#include <vector>

#include "statistics/Budget.h"
#include "statistics/Replicates.h"
#include "tables/DataTable.h"

namespace kelvo {

/// One of the rows that a result is made of.
struct ResultRow {
    int row = 0;                  ///< of the table
    std::optional<double> mv;     ///< as the row holds it, or corrected
    std::optional<double> value;  ///< concentration, in the unit of the result
    std::string struck;           ///< why the row was struck out and does not count; empty: it counts
    bool suspect = false;         ///< an outlier by Grubbs' test
    std::string correction;       ///< by how much mV is corrected for drift, in words; empty: it is as measured
};

/// The result of a sample: what its rows, its repeated measurements, say together. It is worked out of what the rows
/// knew when they were measured; a calibration made since changes nothing.
///
/// The concentration of the measured solution is that of the mean potential, by the one calibration that all rows were
/// read off; without one, the mean of the concentrations. The result is (concentration − blank)·dilution. Its budget is
/// in % of the measured concentration; the interval is a factor up and down, as that of a row is, with the blank and
/// the dilution taken in afterwards.
struct ReportedResult {
    std::string sample;  ///< number of the sample as the rows have it, "row 5" where a row has none
    std::string unit;    ///< "ppm", "mol/L"
    std::vector<ResultRow> rows;
    bool known = false;                ///< whether anything is known of a row beyond its cells
    int n = 0;                         ///< rows that count
    double measured = 0;               ///< concentration in the measured solution
    std::optional<Replicates> spread;  ///< of the concentrations, from two on
    std::optional<Grubbs> grubbs;      ///< from three on
    double dilution = 1, blank = 0, blankDeviation = 0;
    double value = 0;
    Budget budget;           ///< % of `measured`; empty where no interval is told
    double uncertainty = 0;  ///< one standard deviation of the result, in `unit`; 0 without an interval
    struct Interval {
        double low = 0, high = 0;
    };
    std::optional<Interval> interval;  ///< 95 %
    std::string basis;                 ///< what an interval without a budget rests on, as its one row has it
    std::string why;                   ///< why there is no interval
    std::string recovery;              ///< of a control sample, or of a spike; empty for others
    std::string words;                 ///< remarks on the rows and on the result, joined by "; "

    void TellRecovery(const DataTable& table);
    void TellSpike(const ReportedResult& plain, double added);
    /// Standard deviation of the results that the rows have one by one, and the same in % of the result.
    std::optional<double> Deviation() const;
    std::optional<double> RelativeDeviation() const;
    bool Corrected() const { return dilution != 1 || blank != 0; }
    /// Value and bounds with the same places; bounds empty without an interval.
    std::string ValueText() const, LowText() const, HighText() const;
    /// "35.50 ppm, 33.2 to 38.0 (95 %, t 4.30, 2 degrees of freedom)".
    std::string Line() const;
    /// "calibration line 71 %, repeatability 29 %", the parts that count; without a budget the basis.
    std::string Holds() const;
};

/// Whether results can be made of a table: samples of direct potentiometry or of an addition method, not of a
/// recording.
bool HasResults(const DataTable& table);

/// The results of all samples of a table, in the order in which these begin. Rows with one sample number are one
/// sample; a row without a number is one by itself.
///
/// The repeatability of a potential is the scatter of four or more rows of the sample; of fewer, that of the repeated
/// rows of this and the earlier samples of the same calibration, once these have four degrees of freedom; and until
/// then that of the standards. Rows that scatter more than that (F test at 98 %) count with their own. By
/// simulation 93.4 to 96.7 % of the intervals hold the true value (3, 4, 5, 10 standards; 1 to 5 rows).
std::vector<ReportedResult> ResultsOf(const DataTable& table);

}  // namespace kelvo
