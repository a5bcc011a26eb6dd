#pragma once

#include <string>
#include <vector>

#include "tables/DataTable.h"

namespace kelvo {

/// Rows of the table taken as repeated measurements of one sample.
struct RowReplicates {
    /// One line for the foot: n, mean and standard deviation of mV and of the concentration, RSD and 95 % interval of
    /// the latter with what it holds, Grubbs' test. Rows that were read off one calibration line have the interval of
    /// their mean potential off that line, which holds the calibration's uncertainty too. Empty below two rows that
    /// hold a number.
    std::string line;
    /// The same as lines of cells joined by TAB, for the clipboard.
    std::string cells;
    int firstCol = 0, lastCol = 0;  ///< columns that were summed up, 0 none
};

/// @param rows  indices from 1 on; struck rows and cells without a number do not count
RowReplicates ReplicatesOf(const DataTable& table, std::vector<int> rows);

}  // namespace kelvo
