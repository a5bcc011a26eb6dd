#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// What a table file holds, by its bytes: the row of column heads, which alone begins with a TAB, ends the head.
struct TableHoldings {
    int headLines = 0;  ///< lines of the head; a whole one has 9 (older layout) to 12
    int rows = 0;       ///< lines below the column heads; 0 when there are none
    bool ShortHead() const { return headLines < 9; }
};
TableHoldings HoldingsOf(std::string_view bytes);

/// Replaces a table file and keeps what stood there as "NAME~". A backup that holds more rows, or a whole head where
/// the file to be replaced has a short one, is not given up for that file, which then becomes "NAME~2" and so on,
/// unless all its rows stand in the new bytes anyway.
/// @throws RuntimeError as ReplaceWholeFile; then the file and older backups are as they were.
/// @return false when the previous version could not be kept.
bool ReplaceTableFile(const std::string& path, std::string_view bytes);

}  // namespace kelvo
