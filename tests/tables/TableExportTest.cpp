#include "tables/TableExport.h"

#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

TEST(TableExport, CellsThatAreNumbers) {
    const std::pair<const char*, std::optional<double>> rows[] = {
        {"3.14", 3.14}, {" 2", 2.0},   {"-61.5", -61.5}, {"1.65E-4", 0.000165}, {".5", 0.5},  {"0", 0.0},
        {"0.50", 0.5},  {"", {}},      {"N/A", {}},      {"09:05", {}},         {"007", {}},  {"1 2", {}},
        {"-", {}},      {"1E", {}},    {"nan", {}},      {"-inf", {}},          {"0x10", {}}, {"+5", {}},
        {"1e400", {}},  {"F - 0", {}},
    };
    for (const auto& [cell, number] : rows)
        EXPECT_EQ(CellNumber(cell), number) << cell;
}

TEST(TableExport, QuotesOnlyWhereTheFormatAsks) {
    DataTable table;
    table.SetHeads({"A,B", "C"});
    table.AddItem("1\tx\r\ny\t\"q\"\tbeyond", 1);
    table.AddItem("2", 2);
    EXPECT_EQ(TableCsv(table), "Row,\"A,B\",C\r\n1,\"x\r\ny\",\"\"\"q\"\"\"\r\n2,,\r\n");
}

}  // namespace
}  // namespace kelvo::test
