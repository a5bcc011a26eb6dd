#include "tables/TableOrder.h"

#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

DataTable Table() {
    DataTable table;
    table.SetHeads({"Sample Number", "mV"});
    int row = 1;
    for (const char* cells : {"\tTap 10\t-9", "\tbrook\t-100", "\tTap 2\t1E1", "\t\tN/A", "\tBrook\t-9", "\tÄrger\t"})
        table.AddItem(cells, row++);
    return table;
}

TEST(TableOrder, NumbersByValueTextsByLettersEmptyLastEqualAsTheyStand) {
    const DataTable table = Table();
    const std::tuple<int, bool, std::vector<int>> rows[] = {
        {2, false, {2, 1, 5, 3, 4, 6, 7}},
        {2, true, {4, 3, 1, 5, 2, 6, 7}},
        {1, false, {2, 5, 1, 3, 6, 4, 7}},
        {1, true, {6, 3, 1, 2, 5, 4, 7}},
    };
    for (const auto& [col, descending, order] : rows)
        EXPECT_EQ(RowsInOrderOf(table, col, descending), order) << col << descending;
    DataTable file = Table();
    file.RemoveItem(7);
    EXPECT_EQ(RowsInOrderOf(file, 2, true).back(), 6) << "a file has no empty last row to keep there";
}

TEST(TableOrder, FindsOnAndAroundInTheOrderLookedAt) {
    const DataTable table = Table();
    const std::vector<int> own = {1, 2, 3, 4, 5, 6, 7}, sorted = {2, 5, 1, 3, 6, 4, 7};
    // what is looked for, in which order, after which cell, forward; the cell found
    const std::tuple<const char*, const std::vector<int>&, CellPlace, bool, std::optional<CellPlace>> rows[] = {
        {"BROOK", own, {0, 0}, true, CellPlace{2, 1}},  {"brook", own, {2, 1}, true, CellPlace{5, 1}},
        {"brook", own, {5, 1}, true, CellPlace{2, 1}},  {"brook", own, {2, 1}, false, CellPlace{5, 1}},
        {"-9", own, {1, 1}, true, CellPlace{1, 2}},     {"-9", own, {1, 2}, true, CellPlace{5, 2}},
        {"tap", sorted, {1, 1}, true, CellPlace{3, 1}}, {"tap", sorted, {1, 1}, false, CellPlace{3, 1}},
        {"ärger", own, {6, 1}, true, CellPlace{6, 1}},  {"n/a", own, {4, 2}, false, CellPlace{4, 2}},
        {"p\t1", own, {0, 0}, true, std::nullopt},      {"none", own, {0, 0}, true, std::nullopt},
        {"", own, {0, 0}, true, std::nullopt},
    };
    for (const auto& [text, order, after, forward, found] : rows)
        EXPECT_EQ(FindCell(table, order, text, after, forward), found)
            << text << " after " << after.first << "," << after.second;
}

}  // namespace
}  // namespace kelvo::test
