#include "tables/frmQSaveModel.h"

#include <QFont>
#include <algorithm>
#include <limits>
#include <numeric>

#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"
#include "tables/TableOrder.h"
#include "tables/Workbook.h"

namespace kelvo {
namespace {

constexpr int NumberColumn = 1;

}  // namespace

QString Shortened(std::string_view text) {
    constexpr std::size_t Longest = 2000;
    if (text.size() <= Longest) return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(Longest)) + u'\u2026';
}

TableModel::TableModel(const DataTable& table, QObject* parent)
    : QAbstractTableModel(parent), table_(&table), rows_(table.Rows() - 1), cols_(table.Cols()) {}

QVariant TableModel::data(const QModelIndex& index, int role) const {
    if (!index.isValid()) return {};
    const std::string_view cell = table_->Cell(TableRow(index.row()), index.column());
    switch (role) {
        // A cell of a broken file may be a megabyte long, which no screen lays out in time.
        case Qt::DisplayRole: return Shortened(cell);
        case Qt::EditRole: return QString::fromUtf8(cell.data(), static_cast<qsizetype>(cell.size()));
        case Qt::TextAlignmentRole:
            return QVariant(Qt::AlignVCenter |
                            (IsMeasured(*table_, index.column()) && NumberText(cell) ? Qt::AlignRight : Qt::AlignLeft));
        case Qt::FontRole: return FontOf(TableRow(index.row()));
        // For the pointer and for screen readers; the status line tells it of the row in hand.
        case Qt::ToolTipRole:
        case Qt::AccessibleDescriptionRole: return QString::fromStdString(TextBeside(*table_, TableRow(index.row())));
        default: return {};
    }
}

void TableModel::TakeNumbers(std::function<bool(int)> open, std::function<bool(int, const std::string&)> take) {
    open_ = std::move(open);
    take_ = std::move(take);
}

Qt::ItemFlags TableModel::flags(const QModelIndex& index) const {
    const Qt::ItemFlags shown = QAbstractTableModel::flags(index);
    const bool number = index.isValid() && index.column() == NumberColumn && open_ && open_(TableRow(index.row()));
    return number ? shown | Qt::ItemIsEditable : shown;
}

bool TableModel::setData(const QModelIndex& index, const QVariant& value, int role) {
    if (role != Qt::EditRole || !(flags(index) & Qt::ItemIsEditable)) return false;
    return take_(TableRow(index.row()), value.toString().toStdString());
}

QVariant TableModel::FontOf(int row) const {
    if (!HasRemark(table_->Facts(row))) return {};
    QFont font;
    font.setItalic(true);
    font.setStrikeOut(IsStruck(table_->Facts(row)));
    return font;
}

QVariant TableModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (role != Qt::DisplayRole) return {};
    if (orientation == Qt::Vertical) {
        const int row = TableRow(section);
        return row == table_->Rows() - 1 && table_->RowIsEmpty(row) ? QVariant(QString()) : QVariant(row);
    }
    const std::string_view head = table_->Cell(0, section);
    return QString::fromUtf8(head.data(), static_cast<qsizetype>(head.size()));
}

void TableModel::RowAdded(int row) {
    if (row == 0 || Sorted()) {
        TableReset(*table_);
        return;
    }
    beginInsertRows({}, row - 1, row - 1);
    ++rows_;
    endInsertRows();
}

void TableModel::RowsRemoved(int first, int count) {
    if (first == 0 || Sorted()) {
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
    const int shown = ViewRow(row);
    emit dataChanged(index(shown, 0), index(shown, cols_ - 1));
}

void TableModel::TableReset(const DataTable& table) {
    beginResetModel();
    table_ = &table;
    order_.clear();
    rows_ = table.Rows() - 1;
    cols_ = table.Cols();
    endResetModel();
}

void TableModel::SortBy(int col, bool descending) {
    beginResetModel();
    sortColumn_ = col;
    descending_ = descending;
    order_ = col < 0 ? std::vector<int>() : RowsInOrderOf(*table_, col, descending);
    endResetModel();
}

std::vector<int> TableModel::Order() const {
    if (Sorted()) return order_;
    std::vector<int> own(static_cast<std::size_t>(rows_));
    std::iota(own.begin(), own.end(), 1);
    return own;
}

int TableModel::ViewRow(int tableRow) const {
    if (!Sorted()) return tableRow - 1;
    const auto at = std::find(order_.begin(), order_.end(), tableRow);
    return at == order_.end() ? -1 : static_cast<int>(at - order_.begin());
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
            if (selection.contains(cell)) text += data(cell, Qt::EditRole).toString();
        }
        text += u'\n';
    }
    return text;
}

}  // namespace kelvo
