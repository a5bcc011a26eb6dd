// The tool beside the screens' own presenters over the same files: every text is the same to its last digit.
#include <cmath>
#include <ctime>
#include <regex>

#include "addition/SeriesForm.h"
#include "app/AppState.h"
#include "batch/BatchFixture.h"
#include "batch/Rows.h"
#include "calibration/CaliFile.h"
#include "calibration/CalibrationEntry.h"
#include "calibration/CalibrationFakes.h"
#include "calibration/CalibrationPresenter.h"
#include "calibration/CurveFit.h"
#include "calibration/PointForm.h"
#include "core/Settings.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "tables/ResultsPage.h"
#include "tables/RowFactsFile.h"
#include "tables/TableExport.h"
#include "tables/TableFixture.h"
#include "text/Files.h"
#include "utilities/ActivityForm.h"
#include "utilities/ConversionForm.h"
#include "utilities/RunCases.h"
#include "utilities/SelectivityForm.h"

namespace kelvo::test {
namespace {

/// Potentials and concentrations as they are typed, these in the box of their unit.
struct Calibration {
    const char *name, *ion;
    int box;
    std::vector<std::pair<const char*, const char*>> standards;
};
const std::vector<Calibration> Calibrations = {
    {"fluoride in ppm, curved at the low end",
     "F",
     PointForm::Ppm,
     {{"-54.2", "1000"}, {"4.1", "100"}, {"61.7", "10"}, {"117.9", "1"}, {"150.05", "0.1"}}},
    {"calcium in mol/L",
     "Ca",
     PointForm::Molar,
     {{"-93.1", "1E-5"}, {"-64", "1E-4"}, {"-35.2", "1E-3"}, {"-5.9", "1E-2"}}},
    {"nitrate in LogC, two points", "NO3", PointForm::LogC, {{"120", "-3.5"}, {"175.5", "-4.5"}}},
    {"potassium, one point", "K", PointForm::Ppm, {{"17.3", "39.1"}}},
};

/// An analyst at the calibration screen.
struct Bench : CalibrationBench {
    Bench() {
        state = AppState();
        state.AppPath = state.DataPath = folder.Path();
        state.IniPath = folder.Put("NONE.ini", "");
        state.CaliTemp = "25";
        screens.onModal = [this](ScreenCode code) { Dialog(code); };
    }

    /// Types the calibration into the point dialog and saves it. @return its file
    std::string Enter(const Calibration& calibration) {
        typed = calibration;
        CaliSetup setup(state, prompts);
        setup.mvIndex = 2;
        setup.logCIndex = 3;
        setup.ionIndex = IonOf(state.Ions, calibration.ion);
        setup.txtspin = std::to_string(typed.standards.size());
        setup.ticked = {true, false, false};
        CalibrationEntry entry(context, setup, [] {});
        EXPECT_TRUE(entry.Ok());
        CalibrationPresenter presenter(context, view);
        presenter.Activate();
        prompts.ExpectAskToSave("Would you like to save the calibration", true);
        files.Expect(folder / "SCREEN.ISE");
        presenter.AskToSave();
        return folder / "SCREEN.ISE";
    }

    void Dialog(ScreenCode code) {
        if (code == ScreenCode::frmknosp) state.KnownSlope = "56.5", state.KnownSlopeTemp = "20";
        if (code != ScreenCode::fmpaidat) return;
        PointForm form(state, prompts);
        form.Begin();
        const auto& [mv, concentration] = typed.standards.at(static_cast<std::size_t>(state.CurrentPoint) - 1);
        form.Edited(PointForm::Potential, mv);
        form.Enter(PointForm::Potential);
        form.Edited(typed.box, concentration);
        form.Enter(typed.box);
        EXPECT_TRUE(form.Ok());
    }

    ScratchFolder folder;
    Calibration typed;
};

/// The same as a file of points, the highest potential first.
std::string Points(const Calibration& calibration) {
    const char* const names[] = {"mV", "ppm", "mol/L", "LogC"};
    std::string csv = std::string(names[calibration.box]) + ";mV\n";
    for (auto each = calibration.standards.rbegin(); each != calibration.standards.rend(); ++each)
        csv += std::string(each->second) + ";" + each->first + "\n";
    return csv;
}

std::string FitWords(const Calibration& calibration) {
    const bool one = calibration.standards.size() == 1;
    return std::string("fit ~P.csv --ion ") + calibration.ion + (one ? " --slope 56.5 --slope-temperature 20" : "");
}

/// The number behind a name of a JSON object, as it stands.
std::string Member(const std::string& json, const std::string& name) {
    std::smatch match;
    const std::regex member("\"" + name + "\": ([^,}]+)");
    return std::regex_search(json, match, member) ? match[1].str() : "none";
}

/// The clock's date and time as a file holds them.
std::string Now() {
    const std::time_t now = std::time(nullptr);
    char text[40];
    std::strftime(text, sizeof text, "\"%d/%m/%Y %H:%M\"", std::localtime(&now));
    return text;
}

TEST(ToolAndScreens, AFitIsThatOfThePointDialogAndItsFileIsTheSame) {
    for (const Calibration& calibration : Calibrations) {
        SCOPED_TRACE(calibration.name);
        Bench b;
        const std::string screen = b.folder.Get(LastPart(b.Enter(calibration)));
        b.folder.Put("P.csv", Points(calibration));
        const std::string before = Now();
        const BatchRun run = Batch(b.folder, FitWords(calibration) + " --json --out ~TOOL");
        const std::string after = Now();
        ASSERT_EQ(run.code, 0) << run.err;
        EXPECT_EQ(Member(run.out, "slope"), TrimStr(b.state.CaliSlope));
        EXPECT_EQ(Member(run.out, "intercept"), TrimStr(b.state.CaliEo));
        // The scales are a matter of taste, and the date is that of the clock.
        auto ours = LinesOf(b.folder.Get("TOOL.ISE")), theirs = LinesOf(screen);
        ASSERT_EQ(ours.size(), theirs.size());
        const std::size_t date = 5 + 4 * calibration.standards.size();
        EXPECT_TRUE(ours[date] == before || ours[date] == after) << ours[date];
        for (auto* lines : {&ours, &theirs})
            (*lines)[0] = (*lines)[1] = (*lines)[date] = "";
        EXPECT_EQ(ours, theirs);
        // What was written is read back and fits to the same.
        Batch(b.folder, "convert ~TOOL.ISE --to csv");
        if (calibration.standards.size() == 1) continue;
        const BatchRun again = Batch(b.folder, std::string("fit ~TOOL.csv --json --ion ") + calibration.ion);
        EXPECT_EQ(again.out, run.out);
    }
}

TEST(ToolAndScreens, AMeasuredPotentialIsThatOfTheSampleBoxes) {
    const char* const potentials[] = {"-54.2", "-60",   "30",  "4.1",   "0",      "61.699", "117.9",
                                      "150",   "-93.1", "-35", "175.5", "160.25", "0.01",   "1E2"};
    const std::pair<const char*, void (CalibrationPresenter::*)()> curves[] = {
        {"line", &CalibrationPresenter::Linear},
        {"segments", &CalibrationPresenter::PartlyLinear},
        {"quadratic", &CalibrationPresenter::BestCurve}};
    for (const Calibration& calibration : Calibrations) {
        for (const auto& [curve, draw] : curves) {
            if (calibration.standards.size() == 1 && draw != &CalibrationPresenter::Linear) continue;
            SCOPED_TRACE(testing::Message() << calibration.name << ", " << curve);
            Bench b;
            const std::string file = b.Enter(calibration);
            b.state.IonIndex = NoIon;
            CalibrationPresenter presenter(b.context, b.view);
            b.files.Expect(file);
            presenter.OpenCalibration();
            (presenter.*draw)();
            presenter.Samples().Begin(false);
            std::string input;
            for (const char* potential : potentials)
                input += std::string(potential) + "\r\n";
            const BatchRun run =
                Batch(b.folder, "measure ~SCREEN.ISE --temperature 25 --curve " + std::string(curve), input);
            const auto lines = LinesOf(run.out);
            ASSERT_EQ(lines.size(), std::size(potentials) + 1) << run.err;
            for (std::size_t i = 0; i < std::size(potentials); ++i) {
                std::vector<std::string> cells;
                SplitFields(lines[i + 1], ',', cells);
                ASSERT_EQ(cells.size(), 7u) << lines[i + 1];
                SampleForm& form = presenter.Samples();
                form.Edited(SampleForm::Potential, potentials[i]);
                if (cells[1].empty()) b.prompts.ExpectMessage(cells[6]);
                form.Enter(SampleForm::Potential);
                ASSERT_TRUE(b.prompts.Done()) << lines[i + 1];
                if (cells[1].empty()) continue;
                EXPECT_EQ(Joined(form.Text(SampleForm::LogC), form.Text(SampleForm::Molar), form.Text(SampleForm::Ppm)),
                          Joined(cells[1], cells[2], cells[3]))
                    << potentials[i];
                std::string interval = cells[6];
                std::string shown = form.IntervalLine();
                if (!cells[4].empty()) {
                    interval = cells[4] + " to " + cells[5] + " (95 %)" + (interval.empty() ? "" : "; ") + interval;
                    // In front stands the value again, with as many places as its bounds.
                    shown = shown.substr(std::min(shown.find(", "), shown.size() - 2) + 2);
                }
                const bool emptyRow = calibration.standards.size() == 2 && std::string(potentials[i]) == "0" &&
                                      draw == &CalibrationPresenter::Linear;
                EXPECT_EQ(emptyRow ? b.view.status : shown, interval) << potentials[i];
            }
        }
    }
}

class ToolAndTable : public TableTest {};

TEST_F(ToolAndTable, TheCsvOfATableIsTheExportOfItsScreen) {
    std::string sure = Golden("SAMPLES.TAB");
    sure.replace(sure.find("\t1\t10\t10\t"), 9, "\t1\t10\t100\t1000\t");
    sure.replace(sure.find("-179.5\t-120.5\t-119\t"), 19, "-180.1\t-120.5\t-61.9\t-2.8\t");
    const std::tuple<const char*, ScreenCode, int, std::string> rows[] = {
        {"SAMPLES.TAB", ScreenCode::fmISEcli, 0, Golden("SAMPLES.TAB")},
        {"SURE.TAB", ScreenCode::fmISEcli, 0, sure},
        {"RECORD.TAB", ScreenCode::fmISEcli, 0, Golden("RECORD.TAB")},
        {"ONEPOINT.tab~", ScreenCode::fmISEcli, 0, Golden("ONEPOINT.TAB")},
        {"ADDED.SMT", ScreenCode::frmSampa, 0, Golden("SAMPLES.TAB")},
        {"ADDED.SDT", ScreenCode::frmStanad01, 0, Golden("SAMPLES.TAB")},
        {"RUN.PHC", ScreenCode::frmPHMe, -1, Golden("RECORD.PHC")},
        {"LIVE.PHT", ScreenCode::frmDsply, -1, Golden("LIVE.PHT")},
    };
    folder.Put("SURE.TAB.rows", FactsHeading("SURE.TAB") + FactsLine(2, "another row", {{fact::Remark, "lost"}}) +
                                    FactsLine(1, "1\tTap 1\t09:05\t-150.2\t3.14\t1.65E-4\t25\t77.0\t7.5",
                                              {{fact::Low, "3.0"}, {fact::High, "3.3"}, {fact::Unit, "ppm"}}));
    for (const auto& [name, owner, pHMode, bytes] : rows) {
        SCOPED_TRACE(name);
        folder.Put(name, bytes);
        const BatchRun run = Batch(folder, std::string("convert --force --to=csv ~") + name);
        ASSERT_EQ(run.code, 0) << run.err;
        const bool facts = bytes == sure;
        EXPECT_EQ(run.err.find("SURE.TAB: 1 row is not as measured") != std::string::npos, facts) << run.err;
        EXPECT_EQ(folder.Get("SURE.csv").find(",3.0,3.3,") != std::string::npos && facts, facts);
        Own(owner, pHMode);
        TablePresenter screen(state, table, prompts, files, clock);
        files.Expect(folder / name);
        ASSERT_TRUE(screen.LookAtFile());
        files.Expect(folder / "EXPORT.csv");
        for (const char* there : {"EXPORT.csv", "EXPORT-head.csv"})
            if (FileExists(folder / there)) prompts.ExpectReplace(folder / there, true);
        Progress progress;
        ASSERT_TRUE(ExportCsv(state, screen.Shown(), prompts, files, progress));
        const auto written = LinesOf(run.out);
        ASSERT_EQ(written.size(), 2u);
        EXPECT_EQ(folder.Get(LastPart(written[0])), folder.Get("EXPORT.csv"));
        EXPECT_EQ(folder.Get(LastPart(written[1])), folder.Get("EXPORT-head.csv"));
    }
}

TEST_F(ToolAndTable, TheResultsOfATableAreThoseOfItsWindow) {
    folder.Put("RUN.TAB", Golden("SAMPLES.TAB"));
    files.Expect(folder / "RUN.TAB");
    ASSERT_TRUE(logic.LookAtFile());
    RowFacts facts = {{fact::Low, "3.0"}, {fact::High, "3.3"}, {fact::Unit, "ppm"}};
    facts.Set(fact::Line, "4 -58 -3.5 75 5 0.4242640687 18998.4 -170 162.3");
    logic.Shown().SetFacts(1, facts);
    WriteFactsBeside(logic.Shown(), folder / "RUN.TAB", 2, {});
    const auto results = ResultsOf(logic.Shown());
    ASSERT_TRUE(results.at(0).interval);
    const BatchRun csv = Batch(folder, "result ~RUN.TAB --csv"), json = Batch(folder, "result ~RUN.TAB --json");
    EXPECT_EQ(csv.out, ResultsCsv(results));
    EXPECT_EQ(json.out, ResultsJson(results));
    EXPECT_EQ(csv.code, static_cast<int>(ExitCode::RowsRefused)) << "nothing is known of the second sample";
    EXPECT_NE(Batch(folder, "result ~RUN.TAB").out.find(results[0].ValueText()), std::string::npos);
    folder.Put("LIVE.PHT", Golden("LIVE.PHT"));
    for (const auto& [line, told] : {std::pair{"result ~LIVE.PHT", "results are made of tables of samples"},
                                     {"result ~RUN.TAB --csv --json", "two ways of writing"}})
        EXPECT_NE(Batch(folder, line).err.find(told), std::string::npos) << line;
}

TEST_F(ToolAndTable, TheChecksOfATableAreThoseBesideItsRows) {
    folder.Put("RUN.TAB", Golden("SAMPLES.TAB"));
    files.Expect(folder / "RUN.TAB");
    ASSERT_TRUE(logic.LookAtFile());
    const auto check = [&](const char* verdict) {
        logic.Shown().SetFacts(1, {{fact::CheckStandard, "1.90 ppm"},
                                   {fact::CheckDrift, "+0.60"},
                                   {fact::CheckLimit, "1 mV"},
                                   {fact::CheckVerdict, verdict}});
        WriteFactsBeside(logic.Shown(), folder / "RUN.TAB", 2, {});
        return Batch(folder, "check ~RUN.TAB --json");
    };
    EXPECT_EQ(Batch(folder, "check ~RUN.TAB").code, static_cast<int>(ExitCode::RowsRefused)) << "nothing was checked";
    const BatchRun good = check("good");
    EXPECT_EQ(good.code, 0);
    EXPECT_NE(good.out.find("\"1.90 ppm\", null, -150.2, \"+0.60\", null, \"1 mV\", \"good\"]"), std::string::npos)
        << good.out;
    logic.Shown().SetFacts(2, {{fact::Uncovered, "drift of +3.20 mV found at 9:10"}});
    const BatchRun failed = check("failed");
    EXPECT_EQ(failed.code, static_cast<int>(ExitCode::RowsRefused));
    for (const char* part : {"\"failed\"]", "drift of +3.20 mV found at 9:10", "\"not_covered\": 1"})
        EXPECT_NE(failed.out.find(part), std::string::npos) << failed.out;
}

TEST(ToolAndScreens, SeveralAdditionsComeOutAsInTheirWindow) {
    ScratchFolder folder;
    ScriptedPrompts messages;
    SeriesForm form(messages);
    SeriesStart start;
    start.startMl = "100", start.standardPpm = "1000", start.slope = "-58", start.celsius = "25";
    form.Begin(start);
    const double ppm = 10, mv[] = {50, 0, 0, 0};
    for (int i = 0; i < 4; ++i) {
        const double e = mv[0] - 58 * std::log10((ppm * 100 + 1000 * i) / (100 + i) / ppm) + (i % 2 == 0 ? 0.1 : -0.1);
        form.Edited(SeriesForm::FirstMv + i, Format(e, "0.00"));
        if (i > 0) form.Edited(SeriesForm::FirstMl + i - 1, "1");
    }
    folder.Put("A.additions", form.Bytes());
    const SeriesOutcome outcome = form.Outcome();
    ASSERT_TRUE(outcome.interval);
    const BatchRun text = Batch(folder, "addition ~A.additions"), json = Batch(folder, "addition ~A.additions --json");
    EXPECT_EQ(Joined(text.code, json.code), "0|0") << text.err;
    EXPECT_NE(text.out.find(outcome.Line()), std::string::npos) << text.out;
    for (const std::string& part : {"\"ppm\": " + TrimStr(outcome.ppm), "\"low\": " + TrimStr(outcome.interval->low),
                                    outcome.budget.Parts().at(0).source})
        EXPECT_NE(json.out.find(part), std::string::npos) << part << json.out;
    start.sampleAdded = true;
    form.Begin(start);
    folder.Put("S.additions", form.Bytes());
    EXPECT_NE(Batch(folder, "addition ~S.additions --json").out.find("\"sample addition\""), std::string::npos);
    folder.Put("B.additions", "{}");
    EXPECT_EQ(Batch(folder, "addition ~B.additions").code, static_cast<int>(ExitCode::File));
}

TEST(ToolAndScreens, ACalculatorShowsWhatItsBoxesDo) {
    struct Row {
        const char *words, *ion, *doings, *members;  ///< of the JSON, each with the box that shows the same
    };
    const AppState state;
    const auto run = [&]<typename Form>(std::vector<Row> rows, Form*) {
        for (const Row& row : rows) {
            SCOPED_TRACE(row.words);
            ScratchFolder folder;
            Listener listener;
            Form form(listener, state.Ions);
            Perform(form, state.Ions, std::string(row.ion) + " " + row.doings);
            const BatchRun tool = Batch(folder, std::string(row.words) + " --json --ion " + row.ion);
            EXPECT_EQ(tool.code, listener.heard.empty() ? 0 : 4) << tool.err;
            // What a screen says twice is told once.
            const std::string heard = listener.heard.substr(0, listener.heard.find('|'));
            EXPECT_NE(tool.err.find(heard), std::string::npos) << tool.err;
            std::istringstream members(row.members);
            int box = 0;
            for (std::string member; members >> member >> box;) {
                EXPECT_FALSE(form.Text(box).empty()) << member;
                EXPECT_EQ(NumberOf(Member(tool.out, member)), NumberOf(form.Text(box))) << member;
            }
        }
    };
    run({{"dilute --ppm 100 --density 1.02", "Ca", "0=100! 2=1.02!", "molar 1 logc 12 ppm_by_weight 3"},
         {"dilute --standard-ppm 1000 --volume 100 --wanted-ppm 10", "Ca", "5=100! 6=10! 8=1000!",
          "standard_ml 10 final_ml 11"},
         {"dilute --volume 100 --wanted-molar 1E-3 --standard-molar 0.1", "F", "5=100! 7=1E-3! 9=0.1!",
          "standard_ml 10 wanted_ppm 6"},
         {"dilute --volume 100 --wanted-ppm 10 --standard-ppm 1", "F", "5=100! 6=10! 8=1!", ""}},
        static_cast<ConversionForm*>(nullptr));
    run({{"activity --strength-molar 0.1 --activity-ppm 43.9", "Ca", "1=0.1! 3=43.9!",
          "coefficient 2 concentration_ppm 5 concentration_molar 6"},
         {"activity --strength-ppm 500 --concentration-molar 2E-3", "Na", "0=500! 6=2E-3!", "activity_ppm 3"},
         {"activity --strength-molar 0.7", "Na", "1=0.7!", ""}},
        static_cast<ActivityForm*>(nullptr));
    run({{"select --ppm 100 --interferent Sr=10 --interferent k=20", "Ba", "0=100! 5=10! 10=20!", "total_percent 1"},
         {"select --ppm 0", "Ba", "0=0!", ""}},
        static_cast<SelectivityForm*>(nullptr));
}

}  // namespace
}  // namespace kelvo::test
