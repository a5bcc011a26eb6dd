#include "tables/TableOrder.h"

#include <algorithm>

#include "tables/TableExport.h"
#include "tables/Workbook.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// What a row is sorted by.
struct SortKey {
    int row;
    int kind;  ///< 0 number, 1 text, 2 empty
    double number;
    std::string text;
};

bool Before(const SortKey& a, const SortKey& b) {
    if (a.kind != b.kind) return a.kind < b.kind;
    return a.kind == 0 ? a.number < b.number : a.text < b.text;
}

}  // namespace

std::vector<int> RowsInOrderOf(const DataTable& table, int col, bool descending) {
    std::vector<SortKey> keys;
    const int last = table.Rows() - 1;
    const bool emptyLast = last > 0 && table.RowIsEmpty(last);
    for (int row = 1; row <= last - (emptyLast ? 1 : 0); ++row) {
        const std::string_view cell = table.Cell(row, col);
        const bool number = NumberText(cell);
        keys.push_back({row, number ? 0 : cell.empty() ? 2 : 1, number ? Val(cell) : 0, Upper(cell)});
    }
    std::stable_sort(keys.begin(), keys.end(), [descending](const SortKey& a, const SortKey& b) {
        const bool swapped = descending && a.kind != 2 && b.kind != 2;
        return swapped ? Before(b, a) : Before(a, b);
    });
    std::vector<int> order;
    order.reserve(keys.size() + 1);
    for (const SortKey& key : keys)
        order.push_back(key.row);
    if (emptyLast) order.push_back(last);
    return order;
}

std::optional<CellPlace> FindCell(const DataTable& table, const std::vector<int>& order, const std::string& text,
                                  CellPlace after, bool forward) {
    const std::string wanted = Upper(text);
    const int rows = static_cast<int>(order.size()), cols = table.Cols();
    if (wanted.empty() || rows == 0) return std::nullopt;
    const auto at = std::find(order.begin(), order.end(), after.first);
    const bool known = at != order.end();
    const int start = known ? static_cast<int>(at - order.begin()) : forward ? 0 : rows - 1;
    const auto holds = [&](int row, int col) { return Upper(table.Cell(row, col)).find(wanted) != std::string::npos; };
    // The row in hand comes twice: its cells beyond the present one first, the others when the search has been around.
    for (int step = 0; step <= rows; ++step) {
        const int place = ((start + (forward ? step : -step)) % rows + rows) % rows;
        const int row = order[static_cast<std::size_t>(place)];
        if (Upper(table.RowText(row)).find(wanted) == std::string::npos) continue;
        for (int i = 1; i < cols; ++i) {
            const int col = forward ? i : cols - i;
            const bool beyond = forward ? col > after.second : col < after.second;
            if (known && step == 0 && !beyond) continue;
            if (known && step == rows && beyond) continue;
            if (holds(row, col)) return CellPlace{row, col};
        }
    }
    return std::nullopt;
}

}  // namespace kelvo
