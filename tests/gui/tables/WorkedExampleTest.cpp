#include <cmath>
#include <fstream>
#include <sstream>

#include "calibration/CaliSession.h"
#include "calibration/DriftCheck.h"
#include "support/Joined.h"
#include "support/ScreenFixture.h"
#include "support/SourceDir.h"
#include "tables/ControlSample.h"
#include "tables/ReportedResult.h"
#include "tables/ResultsPage.h"

namespace kelvo::test {
namespace {

/// The example of the manual's chapter "From reading to signed result", typed as it stands there.
class WorkedExample : public ScreenFixture {
 protected:
    /// Lines of the n-th block between fences of the page, from 0.
    static std::vector<std::string> Block(int n) {
        std::ifstream page(SourceDir() + "docs/manual-result.md");
        std::vector<std::string> lines;
        int fences = 0;
        for (std::string line; std::getline(page, line);) {
            if (line.starts_with("```"))
                ++fences;
            else if (fences == 2 * n + 1)
                lines.push_back(line);
        }
        return lines;
    }
    Screen* Calibrate() {
        state.Channel[1] = 1;
        state.IonIndex = 10;
        state.PointTemp = state.CaliTemp = "25";
        state.CaliDirty = 1;
        CaliSession session(state, prompts);
        session.DrawEmpty();
        const auto lines = Block(0);
        session.StartPoints(static_cast<int>(lines.size()) - 1);
        // The lowest potential first, as the entry takes them.
        for (std::size_t i = 1; i < lines.size(); ++i) {
            double ppm = 0, mv = 0;
            std::istringstream(lines[lines.size() - i]) >> ppm >> mv;
            const double logC = std::round(1000 * std::log10(ppm / 18998.4)) / 1000;
            session.StorePoint(static_cast<int>(i), mv, ppm, std::pow(10.0, logC), logC);
        }
        session.AfterLastPoint();
        prompts.ExpectAskToSave("Would you like to save the calibration", true);
        files.Expect((folder / "f.ise").string());
        screens.Show(ScreenCode::fmISEcli);
        return Shown(ScreenCode::fmISEcli);
    }
};

TEST_F(WorkedExample, ComesOutAsTheManualSays) {
    DriftSettings drift;
    ASSERT_EQ(drift.Take({"4", "0", "1", "0", "0"}), "");
    drift.bracket = true;
    WriteDriftSettings(drift, state.IniPath);
    WriteControls({{"QC", 5, 90, 110}}, state.IniPath);
    Screen* main = Calibrate();
    Choose(main, "mnuQuality");
    EXPECT_TRUE(Find<QLabel>(Shown(ScreenCode::frmQuality), "lblReason")->text().contains("point 2 lies 2.6 mV off"))
        << FromQt(Find<QLabel>(Shown(ScreenCode::frmQuality), "lblReason")->text());
    OnModal([&](Screen* dialog) {
        Find<QTableWidget>(dialog, "grdStandards")->setCurrentCell(1, 0);
        prompts.ExpectInput("Leave Out", "air bubble");
        Click(dialog, "cmdLeaveOut");
        Find<EntryBox>(dialog, "txtTold(0)")->SetText(std::string("0.8"));
        Find<EntryBox>(dialog, "txtTold(1)")->SetText(std::string("F-26-11"));
        Find<EntryBox>(dialog, "txtTold(2)")->SetText(std::string("2027-05-31"));
        Click(dialog, "cmdStandards(0)");
    });
    Choose(main, "mnuStandards");
    prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", true);
    files.Expect((folder / "run.tab").string());
    Choose(main, "mnuPotentiometry(0)");
    int samples = 0;
    std::string check;
    for (const std::string& line : Block(1)) {
        const std::string name = line.substr(0, line.find("  ")), mv = line.substr(line.rfind(' ') + 1);
        clock.Pass(60);
        if (name != "standard" && ++samples % 4 == 0)
            prompts.ExpectAsk(
                "4 samples have been measured since the last good check. Would you like to measure the standard of 10.00 ppm now?",
                true);
        auto* box = Find<EntryBox>(main, "txtT(0)");
        box->SetText(mv);
        QTest::keyClick(box, Qt::Key_Return);
        if (mv == "62.7") check = main->StatusText();
        EXPECT_TRUE(name == "standard" || table.TypeNumber(table.RowCount(), name)) << name;
    }
    for (int row = 1; row <= table.RowCount(); ++row) {
        if (table.Working().Cell(row, 1) != "Brook") continue;
        RowFacts facts = table.FactsOf(row);
        facts.Set(fact::Dilution, "10");
        table.SetFactsOf(row, facts);
    }
    const std::string beside = Content("RUN.TAB.rows");
    EXPECT_NE(beside.find("\"checkdrift\":\"+0.30\""), std::string::npos) << "the last check is on the disk";
    EXPECT_TRUE(check.starts_with("1 of 5 standards is left out (Option, Standards).")) << check;
    EXPECT_TRUE(check.ends_with("Drift check with 10.00 ppm: +0.50 mV, -2.0 %, within 1 mV.")) << check;
    std::vector<std::string> told, budget;
    for (const ReportedResult& result : ResultsOf(table.Working())) {
        told.push_back(result.sample + ": " + result.Line());
        if (result.sample != "Tap") continue;
        // Measured a minute after the first sample, the check with 0.5 mV four minutes after it.
        EXPECT_EQ(Joined(RowCells(result).rows[0]),
                  "2,124.475,0.8378,drift corrected by -0.12 mV between the calibration and 09:10");
        for (std::size_t i = 0; i < result.budget.Parts().size(); ++i) {
            const Contribution& part = result.budget.Parts()[i];
            budget.push_back(BudgetCells(result).rows[i][2] + " %  " + part.name + ": " + part.source);
        }
    }
    EXPECT_EQ(told, Block(2));
    EXPECT_EQ(budget, Block(3));
    state.TableOpen = 0;
}

}  // namespace
}  // namespace kelvo::test
