#include "tables/RowUncertainty.h"

#include "calibration/SampleUncertainty.h"
#include "support/Joined.h"
#include "tables/RowReplicates.h"
#include "tables/TableFixture.h"

namespace kelvo::test {
namespace {

/// A table of direct potentiometry. Rows 1 and 2 were read off standards of ±0.3 mV about −58 mV a decade, row 3 beyond
/// them; of row 4 nothing is known, and row 5 has no result.
class SampleRows : public TableTest {
 protected:
    SampleRows() {
        logic.AddRow(" 1\tTap\t09:05\t30\t35.85\t1.89E-3\t25\t77.0\t7.5", Known("35.9", "32.9", "39.0", ""));
        logic.AddRow(" 2\t\t09:06\t30.5\t35.14\t1.85E-3\t22\t71.6\t7.5", Known("35.2", "32.3", "38.3", Colder));
        logic.AddRow(" 3\t\t09:07\t-20\t261.01\t1.37E-2\t25\t77.0\t7.5", {{fact::Remark, "outside"}});
        logic.AddRow(" 4\t\t09:08\t30\t36.5\t1.92E-3\t25\t77.0\t7.5");
        logic.AddRow(" 5\t\t09:09\t30\t\t\t25\t77.0\t7.5");
    }
    static RowFacts Known(const char* value, const char* low, const char* high, const char* remark) {
        RowFacts facts = {{fact::Value, value}, {fact::Low, low}, {fact::High, high}, {fact::Unit, "ppm"}};
        facts.Set(fact::Basis, "scatter of 4 standards and of 1 reading");
        // Standards, slope, mean LogC and mV, Sxx, s, ppm of 1 mol/L, lowest and highest mV.
        facts.Set(fact::Line, "4 -58 -3.5 75 5 0.4242640687 18998.4 -11.7 162.3");
        facts.Set(fact::Remark, remark);
        return facts;
    }
    std::string Csv() const {
        Progress none;
        return *TableCsv(table, none, FactColumns(table));
    }
    static constexpr const char* Colder = "more than 2 °C from the calibration";
};

TEST_F(SampleRows, TellWhatGoesWithThemAndNothingElse) {
    const char* lines[] = {"",
                           "35.9 ppm, 32.9 to 39.0 (95 %)",
                           "35.2 ppm, 32.3 to 38.3 (95 %); more than 2 °C from the calibration",
                           "outside",
                           "no interval goes with this row",
                           "",
                           "",
                           ""};
    for (int row = -1; row < 8; ++row)
        EXPECT_EQ(TextBeside(table, row), row < 0 ? "" : lines[row]) << row;
    EXPECT_TRUE(HasRemarks(table));
    const std::string holds = ",scatter of 4 standards and of 1 reading,";
    EXPECT_EQ(
        Csv().substr(0, Csv().find('\r')),
        "Row,Sample Number,Time,mV,ppm,mol/L,°C,°F,pH,Result (ppm),95 % from (ppm),95 % to (ppm),Interval holds,Remark");
    for (const std::string& row :
         {"7.5,35.9,32.9,39.0" + holds, "7.5,35.2,32.3,38.3" + holds + Colder, std::string("7.5,,,,,outside"),
          std::string("36.5,1.92E-3,25,77.0,7.5,,,,,no interval goes with this row"),
          std::string("30,,,25,77.0,7.5,,,,,")})
        EXPECT_NE(Csv().find(row + "\r\n"), std::string::npos) << row << " in " << Csv();
    table.SetFacts(4, {{fact::Quality1, "frame 12 s old"}, {fact::Quality2, "not recorded"}});
    EXPECT_EQ(Joined(TextBeside(table, 4), HasRemark(table.Facts(4)), HasRemark({{fact::Quality2, "not recorded"}})),
              "electrode 1: frame 12 s old|1|0");
    table.SetFacts(5, {{fact::Low, "16.9"}, {fact::High, "18.0"}, {fact::Unit, "ppm"}, {fact::Slope, "-58"}});
    EXPECT_EQ(TextBeside(table, 5), "16.9 to 18.0 ppm (95 %); slope -58 mV/decade") << "an addition's, on paper too";
    table.SetFacts(5, {});
    EXPECT_NE(Csv().find("Interval holds,Quality 1,Quality 2,Remark\r\n"), std::string::npos);
    EXPECT_NE(Csv().find(",7.5,,,,,frame 12 s old,not recorded,\r\n"), std::string::npos) << Csv();
    table.SetFacts(4, {});
    RowFacts molar = Known("0.00189", "0.00173", "0.00205", "");
    molar.Set(fact::Unit, "mol/L");
    table.SetFacts(2, molar);
    EXPECT_NE(Csv().find(",,,," + holds.substr(1) + "\"0.00189 mol/L, 0.00173 to 0.00205 (95 %)\"\r\n"),
              std::string::npos)
        << "not in the unit of the head: " << Csv();
    // Of other tables whatever any row has, and no more.
    table.SetHeads({"No.", "Time", "Elect.1 (pH)", "Elect.1 (mV)", "Temp.1 °C", "Temp.1 °F"});
    for (int row = 1; row <= 4; ++row)
        table.SetFacts(row, row == 2 ? RowFacts{{fact::Quality1, "old"}} : RowFacts());
    EXPECT_EQ(Joined(FactColumns(table).heads, HasRemarks(table), TextBeside(table, 4)), "Quality 1|1|");
    // A row that holds more cells than there are columns, the first one empty, is cut behind the last column.
    table.AddItem("\ta\tb\tc\td\te\tf\tg", 1);
    EXPECT_EQ(table.RowLine(1), "\ta\tb\tc\td\te\tf");
}

TEST_F(SampleRows, AreSummedUpAsReplicates) {
    // 35.85 and 35.14: mean 35.495, s 0.50205; mV 30 and 30.5: s 0.35355. Their mean potential lies 0.77155 from the
    // middle: t(2)·0.42426/58·√(1/2 + 1/4 + 0.59530/5) = 0.029341, 35.503 ppm within a factor of 1.06990.
    EXPECT_EQ(
        ReplicatesOf(table, {1, 2}).line,
        "n 2; mean 30.25 mV, s 0.35; mean 35.50 ppm, s 0.50, RSD 1.41 %, 95 % 33.2 to 38.0 (scatter of 4 standards "
        "and of 2 readings); Grubbs: needs three values; more than 2 °C from the calibration");
    // Without the calibration in all of them: t(1) 12.706, 35.495 ± 4.511.
    RowFacts other = table.Facts(2);
    other.Set(fact::Line, "4 -58 -3.5 75 5 0.5 18998.4 -11.7 162.3");
    for (const RowFacts& facts : {other, RowFacts()}) {
        table.SetFacts(2, facts);
        const std::string line = ReplicatesOf(table, {1, 2}).line;
        EXPECT_NE(line.find("95 % 30.98 to 40.01 (scatter of these readings alone)"), std::string::npos) << line;
    }
    const RowReplicates four = ReplicatesOf(table, {1, 2, 3, 4, 5, 6});
    EXPECT_NE(four.line.find("n 4; mean 20 mV, s 22; mean 92 ppm, s 113"), std::string::npos) << four.line;
    // Three alike and one far: G is (n − 1)/√n = 1.5 at most; the limit of four is 1.481.
    EXPECT_NE(four.line.find("Grubbs: row 3 is an outlier (G 1.500, limit 1.481)"), std::string::npos) << four.line;
    EXPECT_EQ(four.cells.substr(0, four.cells.find("\nMean")), "Replicates\tmV\tppm\nn\t5\t4");
    // Row 3 was refused an interval: the scatter of the readings is no way round it. Each remark is told once.
    table.SetFacts(2, Known("35.2", "32.3", "38.3", "outside; old"));
    const RowReplicates refused = ReplicatesOf(table, {1, 3, 2});
    EXPECT_NE(refused.line.find(" %, no 95 % interval; Grubbs"), std::string::npos) << refused.line;
    EXPECT_TRUE(refused.line.ends_with("); outside; old")) << refused.line;
    EXPECT_NE(refused.cells.find("\nInterval holds\tscatter of these readings alone\t\n"), std::string::npos);
    for (const std::vector<int>& tooFew : {std::vector<int>{}, {1}, {1, 6, 10}})
        EXPECT_EQ(ReplicatesOf(table, tooFew).line, "") << tooFew.size();
    table.SetCell(2, 3, "30");
    table.SetCell(2, 4, "35.85");
    EXPECT_EQ(ReplicatesOf(table, {1, 2, 4}).cells.find("nan"), std::string::npos);
    EXPECT_NE(ReplicatesOf(table, {1, 2, 5}).line.find("s 0; mean"), std::string::npos);
}

}  // namespace
}  // namespace kelvo::test
