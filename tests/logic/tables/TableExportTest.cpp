#include "tables/TableExport.h"

#include <gtest/gtest.h>

namespace kelvo::test {
namespace {

TEST(TableExport, CellsThatAreNumbers) {
    const std::pair<const char*, std::optional<double>> rows[] = {
        {" 2", 2.0}, {"-61.5", -61.5}, {"1.65E-4", 0.000165}, {".5", 0.5}, {"0", 0.0},
        {"", {}},    {"09:05", {}},    {"007", {}},           {"1 2", {}}, {"-", {}},
        {"1E", {}},  {"-inf", {}},     {"0x10", {}},          {"+5", {}},  {"1e400", {}},
    };
    for (const auto& [cell, number] : rows)
        EXPECT_EQ(CellNumber(cell), number) << cell;
}

}  // namespace
}  // namespace kelvo::test
