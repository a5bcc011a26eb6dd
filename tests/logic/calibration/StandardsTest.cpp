#include <cmath>
#include <random>

#include "app/AppState.h"
#include "calibration/BlankLimits.h"
#include "calibration/CaliFile.h"
#include "calibration/Calibration.h"
#include "calibration/CalibrationContext.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationStandards.h"
#include "calibration/StandardsPresenter.h"
#include "core/Clock.h"
#include "core/FactsFile.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/Files.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// ±0.3 mV about −58 mV a decade; the third of five lies 10 mV off.
AppState Five() {
    AppState state;
    state.IonIndex = 10;
    state.CaliPoints = 5;
    state.CaliLogC = {0, -5, -4, -3.5, -3, -2};
    state.CaliE = {0, 162.3f, 103.7f, 85, 45.7f, -11.7f};
    state.CaliPpm = {0, 0.19f, 1.9f, 6.01f, 19, 190};
    state.CaliMolar = {0, 1e-5f, 1e-4f, 3.16e-4f, 1e-3f, 1e-2f};
    return state;
}

std::string Reasons(const IseCalibration& calibration) {
    std::string text;
    for (const StandardEntry& standard : AllStandards(calibration))
        text += standard.leftOut.empty() ? "." : standard.leftOut;
    return Joined(calibration.CaliPoints, text);
}

TEST(StandardsTest, LeftOutOnesKeepTheirPlaceInTheFileAndComeBackAlone) {
    const AppState whole = Five();
    for (const std::string pattern : {"x....", "..x..", "....x", "xx.x.", ".x.x."}) {
        AppState state = Five();
        auto standards = AllStandards(state);
        for (std::size_t i = 0; i < pattern.size(); ++i)
            if (pattern[i] == 'x') standards[i].leftOut = "x";
        PutStandards(state, standards);
        EXPECT_EQ(Reasons(state), Joined(std::count(pattern.begin(), pattern.end(), '.'), pattern));
        const std::string bytes = IseBytes(state, DateTime());
        EXPECT_EQ(bytes, IseBytes(whole, DateTime())) << "the file holds them all";
        AppState back;
        ReadIse(back, bytes);
        EXPECT_EQ(TakeCalibrationFacts(back, CalibrationFactsBytes(state, "A.ISE", bytes), bytes), "");
        EXPECT_EQ(Joined(Reasons(back), back.CaliE.back()), Joined(Reasons(state), state.CaliE.back()));
    }
}

TEST(StandardsTest, FactsOfAnotherFileAreNotTaken) {
    AppState state = Five();
    auto standards = AllStandards(state);
    standards[2].leftOut = "bubble";
    PutStandards(state, standards);
    state.Told = {"1.5", "A12", "2026-10-01", "250 251 250.4"};
    state.BestFitCurve = 1;
    const std::string bytes = IseBytes(state, DateTime());
    const std::string facts = CalibrationFactsBytes(state, "A.ISE", bytes);
    const auto taken = [&](std::string of, const std::string& file) {
        AppState back;
        ReadIse(back, file);
        const std::string told = TakeCalibrationFacts(back, of, file);
        return Joined(Reasons(back), LotText(back.Told), back.Told.relativeU, back.SavedCurve, told.substr(0, 31));
    };
    std::string changed = bytes, newer = facts, senseless = facts;
    changed.replace(changed.find("162.3"), 5, "163.3");
    newer.replace(newer.find("\"version\":1"), 11, "\"version\":2");
    senseless.replace(senseless.find("\"1.5\""), 5, "\"1,5\"");
    for (int row : {1, 2, 4, 5}) {
        std::string line = facts.substr(facts.rfind("{\"row\""));
        senseless += line.replace(line.find(":3,"), 3, ":" + std::to_string(row) + ",");
    }
    EXPECT_EQ(taken(facts, bytes), "4|..bubble..|lot A12, expires 2026-10-01|1.5|best-fit curve|");
    EXPECT_EQ(taken(facts, changed), "5|.....||||The calibration was changed els");
    EXPECT_EQ(taken(newer, bytes), "5|.....||||What is known beside the calibr");
    EXPECT_EQ(taken(senseless, bytes), "5|.....|||best-fit curve|") << "no standard would be left";
}

TEST(StandardsTest, TheCurveThatWasSavedIsToldWhileTheLineIsInUse) {
    AppState state = Five();
    state.SavedCurve = "low-end fit";
    const auto lasting = [&] { return LastingStatus(state, CalibrationOf(state)); };
    state.LinearFit = 1;
    state.FactsRemark = "A.ISE.rows cannot be read.";
    EXPECT_TRUE(
        lasting().ends_with("It was saved with the low-end fit as its curve of results. A.ISE.rows cannot be read."))
        << lasting();
    state.LinearFit = 0;
    state.LowEndCurve = 1;
    EXPECT_EQ(lasting().find("It was saved"), std::string::npos);
    EXPECT_TRUE(lasting().ends_with("A.ISE.rows cannot be read.")) << "a chosen curve does not take this away";
}

TEST(StandardsTest, WhatChangesLaterIsKeptBesideItsOwnFileAlone) {
    ScratchFolder folder;
    AppState state = Five();
    EXPECT_EQ(AmendCalibrationFacts(state), "") << "not in a file";
    state.CaliFilePath = folder / (state.CaliFileName = "A.ISE");
    EXPECT_EQ(AmendCalibrationFacts(state).substr(0, 24), "This is not kept: A.ISE:");
    const std::string bytes = IseBytes(state, DateTime());
    ReplaceWholeFile(state.CaliFilePath, bytes + "x");
    state.FileCheck = "00000000";
    state.Told.lot = "B";
    EXPECT_EQ(AmendCalibrationFacts(state).substr(0, 27), "A.ISE was changed elsewhere");
    EXPECT_EQ(WriteCalibrationFacts(state, state.CaliFilePath, bytes), "");
    EXPECT_TRUE(FileExists(folder / "A.ISE.rows"));
    // Two programs hold the same calibration: what the other one has said since is not lost.
    ReplaceWholeFile(state.CaliFilePath, bytes);
    state.FileCheck = FactsCheck(bytes);
    AppState other = state;
    other.Told.lot = "of the other";
    EXPECT_EQ(AmendCalibrationFacts(other), "");
    EXPECT_EQ(AmendCalibrationFacts(other), "") << "its own is no stranger";
    EXPECT_EQ(AmendCalibrationFacts(state).substr(0, 27), "A.ISE was changed elsewhere");
    EXPECT_NE(folder.Get("A.ISE.rows").find("of the other"), std::string::npos);
    EXPECT_EQ(ReadCalibrationFacts(state, state.CaliFilePath, bytes), "");
    state.Told = {};
    WriteCalibrationFacts(state, state.CaliFilePath, bytes);
    EXPECT_FALSE(FileExists(folder / "A.ISE.rows")) << "nothing to say";
    folder.Put("A.ISE.rows", "the analyst's own");
    state.Told.lot = "B";
    EXPECT_EQ(WriteCalibrationFacts(state, state.CaliFilePath, bytes),
              "What is known beside the calibration is not kept: A.ISE.rows is another file.");
}

TEST(StandardsTest, BadTextsAreToldAndTwoConcentrationsStay) {
    const std::pair<StandardsTold, const char*> rows[] = {{{"", "", "", ""}, ""},
                                                          {{"0", "any", "2028-02-29", "-1E3 2.5"}, ""},
                                                          {{"100", "", "1900-01-31", ""}, ""},
                                                          {{"", "", "2000-02-29", ""}, ""},
                                                          {{"", "", "2026-01-32", ""}, "The expiry"},
                                                          {{"100.1", "", "", ""}, "The uncertainty"},
                                                          {{"-1", "", "", ""}, "The uncertainty"},
                                                          {{"1,5", "", "", ""}, "The uncertainty"},
                                                          {{"nan", "", "", ""}, "The uncertainty"},
                                                          {{"", "", "2026-02-29", ""}, "The expiry"},
                                                          {{"", "", "2100-02-29", ""}, "The expiry"},
                                                          {{"", "", "2026-13-01", ""}, "The expiry"},
                                                          {{"", "", "2026-00-01", ""}, "The expiry"},
                                                          {{"", "", "2026-04-31", ""}, "The expiry"},
                                                          {{"", "", "1/10/2026", ""}, "The expiry"},
                                                          {{"", "", "", "1 two"}, "Potentials"},
                                                          {{"", "", "", "1,5"}, "Potentials"},
                                                          {{"", "", "", "1 2E6"}, "The potential"}};
    for (const auto& [told, words] : rows)
        EXPECT_TRUE(WhyNotTold(told).starts_with(words) && WhyNotTold(told).empty() == std::string(words).empty())
            << Joined(told.relativeU, told.expires, told.blanks) << ": " << WhyNotTold(told);
    const StandardsTold expiring{"", "", "2026-10-01", ""};
    EXPECT_EQ(Joined(ExpiredText(expiring, "2026-10-01"), ExpiredText(expiring, "2026-10-02")),
              "|standards expired 2026-10-01");

    AppState state = Five();
    state.CaliLogC = {0, -5, -5, -5, -5, -4};
    ScriptedPrompts prompts;
    StandardsPresenter standards(state, prompts);
    standards.Begin();
    EXPECT_EQ(standards.LeaveOut(4), "Two standards of different concentrations must be left.");
    prompts.ExpectInput("Leave Out", " ");
    EXPECT_EQ(standards.LeaveOut(0), "A standard is left out for a reason alone.");
    prompts.ExpectInput("Leave Out", " old ");
    EXPECT_EQ(standards.LeaveOut(0), "");
    EXPECT_EQ(Joined(standards.Rows()[0][4], standards.Rows()[1][0]), "old|1");
    standards.TakeBack(0);
    standards.Tell({"", "", "", " 250 "});
    EXPECT_EQ(standards.BlanksText(), "1 blank; limits are told from three on");
    standards.AddBlank("251");
    EXPECT_EQ(standards.BlanksText(), "2 blanks, mean 250.50 mV, s 0.71 mV; limits are told from three on");
    standards.AddBlank("250.5 ");
    EXPECT_EQ(Joined(standards.Close(), standards.Told().blanks, standards.BlanksText()),
              "|250 251 250.5|3 blanks, mean 250.50 mV, s 0.50 mV");
}

std::string Text(const BlankLimits& limits) {
    if (!limits.detection) return limits.why;
    const auto [molar, low, high] = *limits.detection;
    const auto [molar2, low2, high2] = *limits.quantification;
    char text[200];
    std::snprintf(text, sizeof text, "%.4e %.4e %.4e, %.4e %.4e %.4e", molar, low, high, molar2, low2, high2);
    return text;
}

TEST(BlankLimitsTest, AreThreeAndTenDeviationsOfTheBlank) {
    const std::vector<double> logC = {-5, -4, -3, -2}, mv = {162.3, 103.7, 45.7, -11.7};
    const StraightLine line = *FitStraightLine(logC, mv);
    using Blanks = std::vector<double>;
    const auto of = [&](const Blanks& blanks) { return Text(BlankLimits::Of(blanks, line)); };
    // From the line, t and chi-squared in another language.
    EXPECT_EQ(of({219, 220, 221, 220}), "1.0213e-07 5.6197e-08 4.3841e-07, 3.8285e-07 2.0014e-07 2.3547e-06");
    EXPECT_EQ(of({219, 220}), "needs three blanks");
    EXPECT_EQ(of({220, 220, 220}), "all blanks are alike");
    EXPECT_EQ(of({5000, 5001, 5002}), "the blanks lie far off the standards");
    EXPECT_EQ(of({100, 400, 219}), "the blank is uncertain by more than a factor of 100 (95 %)");
    EXPECT_EQ(
        Text(BlankLimits::Of(Blanks{219, 220, 221}, *FitStraightLine(logC, std::vector<double>{162, 104, 46, -12}))),
        "the line tells no interval");
}

TEST(BlankLimitsTest, TheIntervalsHoldTheLimitsOf95Of100Calibrations) {
    constexpr int Draws = 4000, Blanks = 6;
    constexpr double S = -58, Eo = -128, Sigma = 0.5, B = 1e-6;
    std::mt19937 random(11);
    std::normal_distribution<double> noise(0, Sigma);
    const std::vector<double> logC = {-5, -4.5, -4, -3, -2};
    int held = 0, held2 = 0;
    for (int i = 0; i < Draws; ++i) {
        std::vector<double> mv, blanks;
        for (const double x : logC)
            mv.push_back(Eo + S * x + noise(random));
        for (int j = 0; j < Blanks; ++j)
            blanks.push_back(Eo + S * std::log10(B) + noise(random));
        const BlankLimits limits = BlankLimits::Of(blanks, *FitStraightLine(logC, mv));
        const auto holds = [&](const BlankLimits::Limit& limit, double k) {
            const double truth = B * (std::pow(10.0, k * Sigma / std::abs(S)) - 1);
            return limit.low <= truth && truth <= limit.high ? 1 : 0;
        };
        held += holds(*limits.detection, 3);
        held2 += holds(*limits.quantification, 10);
    }
    EXPECT_NEAR(1.0 * held / Draws, 0.95, 0.02);
    EXPECT_NEAR(1.0 * held2 / Draws, 0.95, 0.02);
}

}  // namespace
}  // namespace kelvo::test
