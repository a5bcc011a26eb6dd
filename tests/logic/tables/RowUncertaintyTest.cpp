#include "tables/RowUncertainty.h"

#include "tables/RowReplicates.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// A table of direct potentiometry with standards of ±0.3 mV about −58 mV a decade.
class SampleRows : public TableTest {
 protected:
    SampleRows() {
        table.SetHeads({"Sample Number", "Time", "mV", "ppm", "mol/L", "°C", "°F", "pH"});
        table.txtData[1] =
            "0.189984\t1.89984\t18.9984\t189.984\t\r\n162.3\t103.7\t45.7\t-11.7\t\r\n-58.60\t-58.00\t-57.40\t";
        table.txtData[2] = "25";
        for (const char* row :
             {" 1\tTap\t09:05\t30\t35.85\t1.89E-3\t25\t77.0\t7.5", " 2\t\t09:06\t30.5\t35.14\t1.85E-3\t22\t71.6\t7.5",
              " 3\t\t09:07\t-20\t261.01\t1.37E-2\t25\t77.0\t7.5", " 4\t\t09:08\t30\t36.5\t1.92E-3\t25\t77.0\t7.5",
              " 5\t\t09:09\t30\t\t\t25\t77.0\t7.5", ""})
            table.AddItem(row, table.Rows());
        first = table.Rows() - 6;
    }
    int first = 0;
};

TEST_F(SampleRows, HaveTheIntervalOfTheHeadsOwnStandards) {
    const RowUncertainty told(table, {});
    ASSERT_TRUE(told.Applies());
    // At 30 mV 35.85 ppm within a factor of 1.0885, see the interval of the calibration screen; at −20 mV, 1.63793 from
    // the middle, 261.01 within 1.1017.
    const char* lines[] = {"35.85 ppm, 32.9 to 39.0 (95 %)",
                           "35.14 ppm, 32.3 to 38.3 (95 %); more than 2 °C from the calibration",
                           "261.01 ppm, 237 to 288 (95 %); outside the calibrated range",
                           "not read off the straight line of the table's head: no uncertainty can be told",
                           "",
                           ""};
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(told.Line(first + i), lines[i]) << i;
    EXPECT_EQ(told.Line(0) + told.Line(table.Rows()) + told.Line(-1), "");
    const RowUncertainty::Cells cells = told.Of(first + 1);
    EXPECT_EQ(cells.low + "|" + cells.high + "|" + cells.words, "32.3|38.3|more than 2 °C from the calibration");
    EXPECT_EQ(told.Of(first + 4).words, "");
    Progress none;
    const std::string csv = *TableCsv(table, none, UncertaintyColumns(table, {}));
    EXPECT_EQ(csv.substr(0, csv.find('\r')),
              "Row,Sample Number,Time,mV,ppm,mol/L,°C,°F,pH,95 % from (ppm),95 % to (ppm),Uncertainty");
    EXPECT_NE(csv.find("35.14,1.85E-3,22,71.6,7.5,32.3,38.3,more than 2 °C from the calibration\r\n"),
              std::string::npos)
        << csv;
}

TEST_F(SampleRows, SayWhyTheyHaveNone) {
    const char* const NoStandards = "the head of the table holds no standards: no uncertainty can be told";
    const std::tuple<const char*, const char*, const char*> rows[] = {
        {"an older head", "N/A\r\nN/A\r\n-58", NoStandards},
        {"no calibration", "", NoStandards},
        {"a standard too many", "1\t10\t100\t\r\n1\t2\t\r\n", NoStandards},
        {"a ppm without a logarithm", "0\t10\t100\t\r\n1\t2\t3\t\r\n", NoStandards},
        {"two points", "1.89984\t189.984\t\r\n103.7\t-11.7\t\r\n", "two points: no uncertainty can be told"},
        {"one point", "18.9984\t\r\n45.7\t\r\n-58\t", "one point with a known slope: no uncertainty can be told"}};
    for (const auto& [what, box, line] : rows) {
        table.txtData[1] = box;
        EXPECT_EQ(RowUncertainty(table, {}).Line(first), line) << what;
        EXPECT_EQ(UncertaintyColumns(table, {}).heads.empty(), line == NoStandards) << what;
    }
    table.SetHeads({"No.", "Time", "Elect.1 (pH)", "Elect.1 (mV)", "Temp.1 °C", "Temp.1 °F"});
    EXPECT_FALSE(RowUncertainty(table, {}).Applies());
    EXPECT_EQ(RowUncertainty(table, {}).Line(first), "");
}

TEST_F(SampleRows, AreSummedUpAsReplicates) {
    // 35.85 and 35.14: mean 35.495, s 0.50205, t(1) 12.706: ± 4.511. mV 30 and 30.5: s 0.35355.
    EXPECT_EQ(
        ReplicatesOf(table, {first, first + 1}).line,
        "n 2; mean 30.25 mV, s 0.35; mean 35.50 ppm, s 0.50, RSD 1.41 %, 95 % 30.98 to 40.01; Grubbs: needs three values");
    const RowReplicates four = ReplicatesOf(table, {first, first + 1, first + 2, first + 3, first + 4, first + 5});
    EXPECT_NE(four.line.find("n 4; mean 20 mV, s 22; mean 92 ppm, s 113"), std::string::npos) << four.line;
    // Three alike and one far: G is (n − 1)/√n = 1.5 at most; the limit of four is 1.481.
    EXPECT_NE(four.line.find("Grubbs: row 4 is an outlier (G 1.500, limit 1.481)"), std::string::npos) << four.line;
    EXPECT_EQ(four.cells.substr(0, four.cells.find("\nMean")), "Replicates\tmV\tppm\nn\t5\t4");
    for (const std::vector<int>& tooFew : {std::vector<int>{}, {first}, {first, first + 5, table.Rows() + 3}})
        EXPECT_EQ(ReplicatesOf(table, tooFew).line, "") << tooFew.size();
    table.SetCell(first + 1, 3, "30");
    table.SetCell(first + 1, 4, "35.85");
    EXPECT_EQ(ReplicatesOf(table, {first, first + 1, first + 3}).cells.find("nan"), std::string::npos);
    EXPECT_NE(ReplicatesOf(table, {first, first + 1, first + 4}).line.find("s 0; mean"), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
