#pragma once

namespace kelvo {

/// A window that stands beside the table screen and shows something of its rows.
class TableFollower {
 public:
    virtual ~TableFollower() = default;
    /// Rows have come, gone or changed, or another table is shown.
    virtual void TableChanged() = 0;
};

}  // namespace kelvo
