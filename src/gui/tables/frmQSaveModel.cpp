#include "tables/frmQSaveModel.h"

#include <algorithm>
#include <limits>

#include "tables/TableExport.h"

namespace kelvo {

TableModel::TableModel(const DataTable& table, QObject* parent)
    : QAbstractTableModel(parent), table_(&table), rows_(table.Rows() - 1), cols_(table.Cols()) {}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const std::string_view cell = table_->Cell(index.row() + 1, index.column());
    switch (role) {
        case Qt::DisplayRole: return QString::fromUtf8(cell.data(), static_cast<qsizetype>(cell.size()));
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignVCenter | (CellNumber(cell) ? Qt::AlignRight : Qt::AlignLeft));
        default: return {};
    }
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    const std::string_view head = table_->Cell(0, section);
    return QString::fromUtf8(head.data(), static_cast<qsizetype>(head.size()));
}

void TableModel::RowAdded(int row) {
    if (row == 0) {
        TableReset(*table_);
        return;
    }
    beginInsertRows({}, row - 1, row - 1);
    ++rows_;
    endInsertRows();
}

void TableModel::RowsRemoved(int first, int count) {
    if (first == 0) {
        TableReset(*table_);
        return;
    }
    beginRemoveRows({}, first - 1, first + count - 2);
    rows_ -= count;
    endRemoveRows();
}

void TableModel::RowChanged(int row) {
    if (row == 0) {
        emit headerDataChanged(Qt::Horizontal, 0, cols_ - 1);
        return;
    }
    emit dataChanged(index(row - 1, 0), index(row - 1, cols_ - 1));
}

void TableModel::TableReset(const DataTable& table) {
    beginResetModel();
    table_ = &table;
    rows_ = table.Rows() - 1;
    cols_ = table.Cols();
    endResetModel();
}

QString TableModel::Copied(const QItemSelection& selection) const {
    int top = std::numeric_limits<int>::max(), left = top, bottom = -1, right = -1;
    for (const QItemSelectionRange& range : selection) {
        top = std::min(top, range.top());
        left = std::min(left, range.left());
        bottom = std::max(bottom, range.bottom());
        right = std::max(right, range.right());
    }
    QString text;
    for (int row = top; row <= bottom; ++row) {
        for (int col = left; col <= right; ++col) {
            const QModelIndex cell = index(row, col);
            if (col > left) text += u'\t';
            if (selection.contains(cell)) text += data(cell, Qt::DisplayRole).toString();
        }
        text += u'\n';
    }
    return text;
}

}  // namespace kelvo
