#pragma once

#include <string>
#include <string_view>

#include "text/Backup.h"

namespace kelvo {

/// What a table file holds, by its bytes: the row of column heads, which alone begins with a TAB, ends the head.
struct TableHoldings {
    int headLines = 0;  ///< lines of the head; a whole one has 9 (older layout) to 12
    int rows = 0;       ///< lines below the column heads; 0 when there are none
    bool ShortHead() const { return headLines < 9; }
};
TableHoldings HoldingsOf(std::string_view bytes);

/// A backup that holds more rows, or a whole head where the file to be replaced has a short one, is not given up for
/// that file, unless all its rows stand in the new bytes anyway.
class TableBackupRule : public BackupRule {
 public:
    /// @param fresh  what the table's file is to hold, or holds; must outlive the rule
    explicit TableBackupRule(std::string_view fresh) : fresh_(fresh) {}
    bool GivesWay(std::string_view held, std::string_view given) const override;
    bool Needless(std::string_view given) const override;
    bool LooksOurs(std::string_view held) const override;

 private:
    std::string_view fresh_;
};

}  // namespace kelvo
