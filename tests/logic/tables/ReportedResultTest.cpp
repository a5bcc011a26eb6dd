#include "tables/ReportedResult.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <random>
#include <tuple>

#include "calibration/SampleUncertainty.h"
#include "support/Joined.h"
#include "tables/ControlSample.h"
#include "tables/ResultsPage.h"
#include "tables/ResultsPresenter.h"
#include "tables/RowFactsFile.h"
#include "tables/RowUncertainty.h"
#include "tables/TableFixture.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo::test {
namespace {

/// Samples read off four standards of ±0.42 mV about −58 mV a decade, by their potentials.
class ResultRows : public TableTest {
 protected:
    void Add(const char* sample, std::initializer_list<const char*> potentials, RowFacts more = {},
             const char* celsius = "25") {
        for (const char* mv : potentials) {
            RowFacts facts = more;
            facts.Set(fact::Low, "1");
            facts.Set(fact::High, "2");
            facts.Set(fact::Unit, "ppm");
            // Standards, slope, mean LogC and mV, Sxx, s, ppm of 1 mol/L, lowest and highest mV.
            facts.Set(fact::Line, "4 -58 -3.5 75 5 0.4242640687 18998.4 -11.7 162.3");
            facts.Set(fact::CaliCelsius, "25");
            const double ppm = 18998.4 * std::pow(10.0, -3.5 + (Val(mv) - 75) / -58);
            logic.AddRow(
                std::string(" 1\t") + sample + "\t09:05\t" + mv + "\t" + Format(ppm, "#0.00") + "\t1.89E-3\t" + celsius,
                facts);
        }
    }
    ReportedResult Of(std::size_t i) const { return ResultsOf(table).at(i); }
};

/// Figures worked out outside the program from the formulas.
TEST_F(ResultRows, CarryTheirBudget) {
    Add("two", {"30", "30.5"});
    Add("four", {"30", "30.5", "29.8", "30.2"});
    RowFacts told = {
        {fact::StandardsU, "0.5"}, {fact::Standards, "lot 12"}, {fact::Dilution, "10"}, {fact::Blank, "1.2"}};
    told.Set(fact::BlankU, "0.3");
    Add("all", {"30", "30.5", "29.8", "30.2"}, told, "26.5");
    struct Row {
        std::size_t at;
        double value, low, high, u;
        const char *line, *holds;
    };
    const Row rows[] = {
        {0, 35.503302, 33.183895, 37.984826, 0.55748, "35.5 ppm, 33.2 to 38.0 (95 %, t 4.30, 2 degrees of freedom)",
         "calibration line 42 %, repeatability 58 %"},
        {1, 35.679924, 34.361211, 37.049247, 0.42222, "35.7 ppm, 34.4 to 37.0 (95 %, t 3.18, 3 degrees of freedom)",
         "calibration line 75 %, repeatability 25 %"},
        {2, 344.799243, 328.148592, 362.264961, 8.50510, "345 ppm, 328 to 362 (95 %, t 2.00, 54 degrees of freedom)",
         "calibration line 18 %, repeatability 6 %, standards 4 %, temperature 59 %, blank 12 %"},
    };
    for (const Row& row : rows) {
        const ReportedResult result = Of(row.at);
        ASSERT_TRUE(result.interval) << row.at;
        EXPECT_NEAR(result.value, row.value, 1e-4);
        EXPECT_NEAR(result.interval->low, row.low, 1e-4);
        EXPECT_NEAR(result.interval->high, row.high, 1e-4);
        EXPECT_NEAR(result.uncertainty, row.u, 1e-4);
        EXPECT_EQ(Joined(result.Line(), result.Holds()), Joined(row.line, row.holds));
    }
    EXPECT_NEAR(*Of(2).Deviation(), 10 * Of(2).spread->deviation, 1e-9) << "of the results, not of what was measured";
    EXPECT_EQ(Joined(BudgetCells(Of(2)).rows[2]), "standards,0.50,4.4,,stock and volumes, 0.5 % (lot 12)");
}

/// The budget against 100,000 draws of everything that it is made of: line, readings, standards, temperature,
/// resolution and blank vary, and the results that follow scatter by its combined uncertainty.
TEST_F(ResultRows, ScatterInASimulationByTheirUncertainty) {
    const RowFacts blank = {{fact::Blank, "1.2"}, {fact::BlankU, "0.3"}, {fact::Dilution, "10"}};
    const RowFacts both = {{fact::StandardsU, "1.5"}, {fact::Blank, "5"}, {fact::BlankU, "0.5"}};
    Add("one", {"30"});
    Add("far", {"-10"}, {}, "27");
    Add("four", {"75", "75.9", "74.6", "75.2"});
    Add("stock", {"75", "75.1", "74.9", "75.05"}, {{fact::StandardsU, "2"}});
    Add("blank", {"60", "60.4", "60.3", "60.1"}, blank);
    Add("both", {"30", "30.5", "29.8", "30.2", "30.1"}, both, "25.5");
    const auto results = ResultsOf(table);
    std::mt19937_64 source(1);
    std::normal_distribution<double> normal;
    std::uniform_real_distribution<double> evenly(-1, 1);
    for (const ReportedResult& result : results) {
        double mean = 0, sd = 0;
        for (const ResultRow& row : result.rows)
            mean += *row.mv / result.n;
        // Of fewer than four rows the repeatability is that of the standards.
        for (const ResultRow& row : result.rows)
            sd += (*row.mv - mean) * (*row.mv - mean) / std::max(1, result.n - 1);
        sd = result.n < 4 ? 0.4242640687 : std::sqrt(sd);
        const double standards = Val(table.Facts(result.rows[0].row).Get(fact::StandardsU)) / 100;
        const double off = Val(std::string(table.Cell(result.rows[0].row, 6))) - 25;
        constexpr int Draws = 100'000;
        double sum = 0, squares = 0;
        for (int draw = 0; draw < Draws; ++draw) {
            const double s = 0.4242640687, slope = -58 + s / std::sqrt(5.0) * normal(source),
                         middle = 75 + s / 2 * normal(source);
            const double read = mean + sd / std::sqrt(result.n) * normal(source) + 0.005 * evenly(source);
            const double logC = -3.5 + (read - middle) / slope;
            const double seen = logC + std::abs(logC) * off / 298.15 * evenly(source);
            const double value = (18998.4 * std::pow(10.0, seen) * (1 + standards * normal(source)) - result.blank -
                                  result.blankDeviation * normal(source)) *
                                 result.dilution;
            sum += value - result.value;
            squares += (value - result.value) * (value - result.value);
        }
        const double found = std::sqrt(squares / Draws - sum / Draws * (sum / Draws));
        EXPECT_NEAR(result.uncertainty / found, 1, 0.015) << result.sample;
    }
}

TEST_F(ResultRows, TakeTheirRepeatabilityFromWhereItIsKnown) {
    Add("a", {"60", "60.6", "61", "60.2"});
    Add("b", {"30", "30.5"});
    Add("c", {"40", "40.4"});
    Add("wild", {"50", "58"});
    Add("late", {"50"});
    Add("a ", {"60.4"});
    const char* sources[] = {
        "5 rows of this sample, s 0.38 mV", "pooled from 2 samples, s 0.38 mV", "pooled from 3 samples, s 0.36 mV",
        "2 rows of this sample, which scatter more than others, s 5.7 mV", "pooled from 3 samples, s 0.36 mV"};
    for (std::size_t i = 0; i < std::size(sources); ++i)
        EXPECT_EQ(BudgetCells(Of(i)).rows[1].back(), sources[i]);
}

TEST_F(ResultRows, TellNoIntervalWhereNoneFollows) {
    const auto add = [&](const char* sample, const char* ppm, const RowFacts& facts) {
        logic.AddRow(std::string(" 1\t") + sample + "\t09:05\t30\t" + ppm + "\t1.89E-3\t25", facts);
    };
    for (const char* ppm : {"10", "12", "14"})
        add("old", ppm, {});
    add("refused", "35", {{fact::Remark, "outside the calibrated range"}});
    add("gone", "35", {{fact::Struck, "bubble"}});
    add("empty", "", {{fact::Remark, "no result"}});
    add("one", "35", {});
    const char* lines[] = {"12.0 ppm, 7.0 to 17.0 (95 %, t 4.30, 2 degrees of freedom)",
                           "35.00 ppm; no 95 % interval: no interval goes with its row", "all rows are struck out",
                           "no concentration",
                           "35.00 ppm; no 95 % interval: nothing is known of its row but the value"};
    for (std::size_t i = 0; i < std::size(lines); ++i)
        EXPECT_EQ(Of(i).Line(), lines[i]);
    EXPECT_EQ(Of(0).words, "the interval is the scatter of the rows; what the calibration adds is not in it");
    EXPECT_EQ(Of(1).words, "outside the calibrated range");
    // Half of what is measured is the blank, and that is known badly: the result may be none at all.
    Add("blank", {"30"}, {{fact::Blank, "30"}, {fact::BlankU, "5"}});
    EXPECT_EQ(Joined(Of(5).LowText(), Of(5).words), "0|not to be told from the blank");
    EXPECT_FALSE(WorthTelling({Of(0), Of(1)})) << "of rows that nothing is known of";
    EXPECT_TRUE(WorthTelling({Of(2)}) && WorthTelling({Of(5)}));
    table.SetHeads({"No.", "Time", "mV"});
    EXPECT_TRUE(ResultsOf(table).empty());
}

TEST_F(ResultRows, AreStruckOutWithAReasonAndCorrectedBesideTheFile) {
    Add("a", {"30", "30.5", "38"});
    Add("b", {"60"});
    ResultsPresenter results(state, logic, prompts, files);
    results.Refresh();
    for (const auto& answer : {std::optional<std::string>(), std::optional<std::string>(" ")}) {
        prompts.ExpectInput("Strike Out", answer);
        EXPECT_EQ(results.Strike(2), answer ? "A row is struck out with a reason only; nothing has been changed." : "");
        EXPECT_TRUE(table.Facts(3).Get(fact::Struck).empty());
    }
    prompts.ExpectInput("Strike Out", "bubble");
    EXPECT_EQ(results.Strike(2), "");
    EXPECT_EQ(TextBeside(table, 3), "struck out: bubble; 1 to 2 ppm (95 %)");
    results.Refresh();
    EXPECT_EQ(Joined(results.InHand()->n, RowCells(*results.InHand()).rows[2].back()), "2|struck out: bubble");
    EXPECT_EQ(results.TakeBack(2), "");
    EXPECT_EQ(table.Facts(3).Get(fact::Struck), "");

    const std::tuple<const char*, const char*, const char*, const char*> refused[] = {
        {"0", "", "", "A dilution factor is a number above 0."},
        {"1,5", "", "", "A dilution factor is a number above 0, with a point instead of the comma."},
        {"2", "-1", "", "A blank is a number of 0 or above."},
        {"2", "1", "x", "The deviation of a blank is a number of 0 or above."}};
    for (const auto& [dilution, blank, deviation, told] : refused)
        EXPECT_EQ(results.Correct(dilution, blank, deviation), told);
    EXPECT_TRUE(table.Facts(1).Get(fact::Dilution).empty()) << "nothing is taken of what is refused";

    // Of a table that has its file it stands beside that at once, and what others have said meanwhile stays.
    ASSERT_EQ(SaveTo("RUN.TAB"), SaveOutcome::Saved);
    state.TableOpen = 0;
    results.Select(1);
    EXPECT_EQ(results.Correct(" 10", "1.2", "0"), "");
    const auto beside = [&] { return ReadWholeFile(folder / "RUN.TAB.rows"); };
    EXPECT_NE(beside().find("\"blank\":\"1.2\""), std::string::npos);
    EXPECT_EQ(beside().find("blanku"), std::string::npos);
    DataTable other = table;
    other.SetFacts(1, {{fact::Struck, "by another"}});
    WriteFactsBeside(other, folder / "RUN.TAB", 3, {});
    EXPECT_EQ(results.Correct("", "", ""), "");
    EXPECT_NE(beside().find("by another"), std::string::npos);
    EXPECT_EQ(table.Facts(1).Get(fact::Struck), "by another");
    std::ofstream(folder / "RUN.TAB", std::ios::app) << "9";
    EXPECT_EQ(results.Correct("5", "", ""),
              "RUN.TAB has been changed elsewhere: open it again first. Nothing has been changed.");
    EXPECT_EQ(table.Facts(4).Get(fact::Dilution), "");
}

TEST_F(ResultRows, GoIntoOtherProgramsAndOntoPaper) {
    Add("=1", {"30", "30.5"});
    Add("late", {"60"}, {{fact::Struck, "bubble"}});
    ResultsPresenter results(state, logic, prompts, files);
    results.Refresh();
    for (const char* name : {"R.csv", "R.json", "R.xlsx"}) {
        files.Expect(folder / name);
        results.Export(std::filesystem::path(name).extension());
        EXPECT_EQ(state.StatusMessage, "Exported to " + std::string(name) + ".");
    }
    EXPECT_EQ(
        ReadWholeFile(folder / "R.csv"),
        "Sample,n,Result,95 % from,95 % to,Unit,u,s,RSD (%),Blank,Dilution,Coverage,Interval holds,Recovery,Remark\r\n"
        "'=1,2,35.5,33.2,38.0,ppm,0.56,0.50,1.41,,,\"t 4.30, 2 degrees of freedom\",\"calibration line 42 %, "
        "repeatability 58 %\",,\r\n"
        "late,0,,,,ppm,,,,,,,,,no 95 % interval: all rows are struck out\r\n");
    const auto json = nlohmann::json::parse(ReadWholeFile(folder / "R.json"));
    const auto& first = json.at("results").at(0);
    EXPECT_NEAR(first.at("low").get<double>(), 33.183895, 1e-4);
    EXPECT_NEAR(first.at("coverage_factor").get<double>(), 4.302653, 1e-4);
    EXPECT_EQ(first.at("budget").at(1).at("degrees"), 2);
    EXPECT_EQ(json.at("results").at(1).at("rows").at(0).at("struck"), "bubble");
    EXPECT_FALSE(json.at("results").at(1).contains("value"));
    const DisplayList bars = BudgetBars(results.Results()[0].budget, {});
    const auto share = std::find_if(bars.Items().begin(), bars.Items().end(), [](const DisplayItem& item) {
        return item.kind == DisplayItem::Kind::Line && item.size > 1;
    });
    EXPECT_NEAR((share->x2 - share->x1 + 150) / 57, 42.46, 0.01) << "the line's part, 57 twips a per cent";
}

TEST_F(ResultRows, TellWhatControlsAndSpikesRecover) {
    std::string told;
    const auto controls = *ControlsOf(" QC 36 90 110;; qcb 36 99 101 ;", told);
    EXPECT_EQ(ControlsText(controls), "QC 36 90 110; qcb 36 99 101");
    for (const char* wrong : {"QC 36 90", "QC 36 90 110 5", "QC 0 90 110", "QC 36 110 90", "QC 3,6 90 110"}) {
        EXPECT_FALSE(ControlsOf(wrong, told));
        EXPECT_TRUE(told.starts_with("\"QC\" needs a target")) << told;
    }
    state.IniPath = folder / "KELVO.ini";
    prompts.ExpectInput("Control Samples", "QC 36");
    prompts.ExpectMessage(
        "\"QC\" needs a target above 0 and two limits in per cent, the lower one first: QC 10 90 110.");
    prompts.ExpectInput("Control Samples", ControlsText(controls));
    logic.AskControls();
    EXPECT_EQ(ReadControls(state.IniPath), controls);
    Add("", {"30"});
    logic.NumberRow("qc-1");
    EXPECT_EQ(logic.NextSample(), "qc-1: recovery 99.6 % of 36 (2.8 to 5.6), within 90 to 110 %");
    EXPECT_EQ(TextBeside(table, 1), "recovery 99.6 % of 36 (2.8 to 5.6), within 90 to 110 %; 1 to 2 ppm (95 %)");
    Add("", {"29"});
    EXPECT_TRUE(logic.TypeNumber(2, "QCB2"));
    EXPECT_TRUE(state.StatusMessage.ends_with("OUTSIDE 99 to 101 %.")) << state.StatusMessage;
    EXPECT_EQ(Of(1).Line(),
              "37.3 ppm, 34.3 to 40.6 (95 %, t 4.30, 2 degrees of freedom); recovery 103.6 % of 36 (95.2 to "
              "112.8), OUTSIDE 99 to 101 %");
    EXPECT_TRUE(logic.TypeNumber(2, "Tap"));
    EXPECT_EQ(table.Facts(2).Get(fact::Control), "") << "no longer one";
    WriteControls({}, state.IniPath);
    EXPECT_NE(TextBeside(table, 1).find("within 90 to 110"), std::string::npos) << "it was one when it was measured";

    Add("A", {"60"});
    Add("A+10", {"43.8"});
    Add("B+1", {"43.8"});
    EXPECT_EQ(Of(3).recovery, "spike recovery 98.3 % of 10 added to A (79.4 to 118.2)");
    EXPECT_EQ(Of(4).recovery, "") << "there is no sample B";
    EXPECT_FALSE(SpikeOf("A+") || SpikeOf("+10") || SpikeOf("A+x") || SpikeOf("A"));
}

}  // namespace
}  // namespace kelvo::test
