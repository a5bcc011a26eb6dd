#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>
#include <functional>
#include <string_view>
#include <vector>

#include "tables/DataTable.h"

namespace kelvo {

/// A text as a screen shows it: of a very long one the beginning, and "…".
QString Shortened(std::string_view text);

/// The rows of the data table for a view. Row 0 of the table is the view's header, so its row 1 is row 0 here, or
/// another one while the rows are looked at in the order of a column. The numbers at the left are the table's own.
class TableModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    explicit TableModel(const DataTable& table, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : cols_; }
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    /// A sample number that has been typed, handed to whoever takes it.
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    /// Who says which numbers may be typed, and who takes them, by rows of the table.
    void TakeNumbers(std::function<bool(int row)> open, std::function<bool(int row, const std::string&)> take);
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // What the table has just done.
    void RowAdded(int row);
    void RowsRemoved(int first, int count);
    void RowChanged(int row);
    /// Everything is to be read anew, from this table on.
    void TableReset(const DataTable& table);

    /// Shows the rows in the order of a column, or in the table's own with column -1. A row that comes or goes brings
    /// the own order back.
    void SortBy(int col, bool descending);
    bool Sorted() const { return !order_.empty(); }
    /// -1 in the table's own order.
    int SortColumn() const { return Sorted() ? sortColumn_ : -1; }
    bool SortedDescending() const { return descending_; }
    /// Table rows as they are shown.
    std::vector<int> Order() const;
    /// Row of the table that is shown in a row of the view, and the other way round, -1 when it is not there.
    int TableRow(int row) const { return Sorted() ? order_[static_cast<std::size_t>(row)] : row + 1; }
    int ViewRow(int tableRow) const;

    /// The cells of a selection as lines of TAB-joined texts; cells between that are not selected are empty.
    QString Copied(const QItemSelection& selection) const;

 private:
    /// A row with a remark stands in italics, one that is struck out is crossed as well.
    QVariant FontOf(int row) const;

    std::function<bool(int)> open_;
    std::function<bool(int, const std::string&)> take_;
    const DataTable* table_;
    int rows_, cols_;
    int sortColumn_ = -1;
    bool descending_ = false;
    std::vector<int> order_;  ///< table rows in the order of a column, empty in the table's own
};

}  // namespace kelvo
