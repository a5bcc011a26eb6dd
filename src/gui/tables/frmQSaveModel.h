#pragma once

#include <QAbstractTableModel>
#include <QItemSelection>

#include "tables/DataTable.h"

namespace kelvo {

/// The rows of the data table for a view. Row 0 of the table is the view's header, so its row 1 is row 0 here.
class TableModel : public QAbstractTableModel {
    Q_OBJECT
 public:
    explicit TableModel(const DataTable& table, QObject* parent = nullptr);

    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : rows_; }
    int columnCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : cols_; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    // What the table has just done.
    void RowAdded(int row);
    void RowsRemoved(int first, int count);
    void RowChanged(int row);
    /// Everything is to be read anew, from this table on.
    void TableReset(const DataTable& table);

    /// The cells of a selection as lines of TAB-joined texts; cells between that are not selected are empty.
    QString Copied(const QItemSelection& selection) const;

 private:
    const DataTable* table_;
    int rows_, cols_;
};

}  // namespace kelvo
