#include "calibration/DriftCheck.h"

#include <cmath>

#include "app/AppState.h"
#include "core/Settings.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// E = −128 − 58·LogC within 0.3 mV; LogC −4 was measured twice, at 103.7 and 104.3 mV.
std::shared_ptr<const Calibration> Fluoride(int ion = 10) {
    AppState state;
    state.IonIndex = static_cast<std::int16_t>(ion);
    state.LinearFit = 1;
    state.FileTemp = "25.0";
    state.CaliPoints = 5;
    state.CaliLogC = {0, -5, -4, -4, -3, -2};
    state.CaliE = {0, 162.3f, 103.7f, 104.3f, 45.7f, -11.7f};
    state.CaliPpm = {0, 0.19f, 1.9f, 1.9f, 19, 190};
    state.CaliMolar.assign(6, 0);
    state.CaliSlope = -58;
    return std::make_shared<const Calibration>(CalibrationOf(state));
}

TEST(DriftCheckTest, TakesTheStandardAsItWas) {
    const auto of = [](int number, int ion = 10) {
        const auto standard = CheckStandardOf(*Fluoride(ion), number);
        return Joined(standard->name, standard->expected);
    };
    const std::pair<int, const char*> rows[] = {{0, "1.90 ppm|104"},   {1, "0.19 ppm|162.3"},   {2, "1.90 ppm|104"},
                                                {4, "19.00 ppm|45.7"}, {5, "190.00 ppm|-11.7"}, {6, "1.90 ppm|104"}};
    for (const auto& [number, shown] : rows)
        EXPECT_EQ(of(number).substr(0, std::string(shown).size()), shown) << number;
    EXPECT_EQ(of(4, NoIon).substr(0, 14), "1.00E-3 mol/L|");
    EXPECT_FALSE(CheckStandardOf(CalibrationOf(AppState()), 0));
}

TEST(DriftCheckTest, JudgesByEachLimitThatIsSet) {
    struct Row {
        const char* what;
        double limitMv, limitPercent, mv;
        const char* words;
    };
    // 0.58 mV are a hundredth of a decade, 2.33 %.
    const Row rows[] = {{"at the limit", 1, 0, 105, "+1.00 mV, -3.9 %, within 1 mV"},
                        {"beyond it", 1, 0, 105.001, "+1.00 mV, -3.9 %, BEYOND 1 mV"},
                        {"down", 1, 0, 102.9, "-1.10 mV, +4.5 %, BEYOND 1 mV"},
                        {"in per cent", 0, 2.4, 103.42, "-0.58 mV, +2.3 %, within 2.4 %"},
                        {"beyond per cent alone", 1, 2.3, 103.42, "-0.58 mV, +2.3 %, BEYOND 1 mV, 2.3 %"},
                        {"beyond mV alone", 0.5, 2.4, 103.42, "-0.58 mV, +2.3 %, BEYOND 0.5 mV, 2.4 %"}};
    for (const Row& row : rows) {
        DriftSettings settings;
        settings.limitMv = row.limitMv;
        settings.limitPercent = row.limitPercent;
        DriftWatch watch;
        watch.Follow(Fluoride());
        const auto outcome =
            watch.Check({.logC = -4, .expected = 104, .name = "1.90 ppm"}, settings, row.mv, 0, "9:00");
        EXPECT_EQ(outcome.words, std::string("drift check with 1.90 ppm: ") + row.words) << row.what;
        EXPECT_EQ(outcome.good, outcome.words.find("within") != std::string::npos) << row.what;
        EXPECT_EQ(outcome.facts.Get(fact::CheckVerdict), outcome.good ? "good" : "failed");
        EXPECT_EQ(DriftText(outcome.facts).ends_with("exceeded"), !outcome.good);
        EXPECT_EQ(DriftText(outcome.facts).substr(0, 26), outcome.words.substr(0, 26));
    }
    // One standard and a slope that is known: no curve to read off. From a reading far away no concentration follows.
    AppState one;
    one.CaliPoints = 1;
    one.CaliLogC = {0, -4};
    one.CaliE = {0, 104};
    one.CaliPpm = {0, 1.9f};
    one.CaliMolar = {0, 1e-4f};
    one.CaliSlope = -58;
    DriftSettings percent;
    percent.limitPercent = 5;
    const std::pair<double, const char*> readings[] = {{103.42, ": -0.58 mV, +2.3 %, within 1 mV, 5 %"},
                                                       {105.16, ": +1.16 mV, -4.5 %, BEYOND 1 mV, 5 %"},
                                                       {504, ": +400.00 mV, BEYOND 1 mV, 5 %"}};
    for (const auto& [mv, words] : readings) {
        DriftWatch watch;
        watch.Follow(std::make_shared<const Calibration>(CalibrationOf(one)));
        EXPECT_EQ(watch.Check({.logC = -4, .expected = 104, .name = {}}, percent, mv, 0, "9:00").words,
                  std::string("drift check with ") + words);
    }
}

TEST(DriftWatchTest, CorrectsBetweenGoodChecksAloneAndCountsSinceTheLast) {
    const CheckStandard standard{.logC = -4, .expected = 104, .count = 2, .name = "1.90 ppm"};
    DriftSettings settings;
    settings.samples = 3;
    settings.minutes = 10;
    settings.bracket = true;
    DriftWatch watch;
    watch.Follow(Fluoride());
    EXPECT_FALSE(watch.Due(settings, 1e6)) << "nothing to cover";
    // The scatter of the line is 0.37826 mV; a check in the calibration counts twice, this one once.
    watch.Add(1, 50, 100);
    EXPECT_EQ(Joined(watch.Due(settings, 699.9), watch.Due(settings, 700)), "0|1") << "from the first sample on";
    watch.Add(2, 60, 110);
    EXPECT_FALSE(watch.Due(settings, 110));
    watch.Add(3, 70, 120);
    EXPECT_TRUE(watch.Due(settings, 120));
    const auto corrected = [](const DriftWatch::Outcome& outcome) {
        std::string text;
        for (const auto& [row, facts] : outcome.rows)
            text += std::to_string(row) + ":" + facts.Get(fact::Corrected) + facts.Get(fact::Uncovered) + "/" +
                    facts.Get(fact::DriftU) + " ";
        return text;
    };
    EXPECT_EQ(corrected(watch.Check(standard, settings, 104.8, 200, "9:10")),
              "1:50.000/0.0000 2:59.920/0.0463 3:69.840/0.0927 ");
    watch.Add(5, 50, 250);
    EXPECT_EQ(Joined(watch.Since(), watch.Due(settings, 799), watch.Due(settings, 800)), "1|0|1");
    // From +0.8 at 200 s to −0.2 at 300 s.
    const auto second = watch.Check(standard, settings, 103.8, 300, "9:15");
    EXPECT_EQ(corrected(second), "5:49.700/0.3783 ");
    EXPECT_EQ(second.rows[0].second.Get(fact::Correction), "-0.30 mV between 9:10 and 9:15");
    watch.Add(7, 50, 350);
    EXPECT_EQ(corrected(watch.Check(standard, settings, 102, 360, "9:16")), "7:drift of -2.00 mV found at 9:16/ ");
    watch.Add(9, 50, 370);
    EXPECT_EQ(watch.FactsNow().Get(fact::Uncovered), "drift of -2.00 mV found at 9:16");
    EXPECT_EQ(corrected(watch.Check(standard, settings, 104, 380, "9:17")), "") << "what went before is not known";
    EXPECT_TRUE(watch.FactsNow().Empty());
    watch.Add(11, 50, 390);
    settings.bracket = false;
    EXPECT_EQ(corrected(watch.Check(standard, settings, 104.5, 400, "9:18")), "11:/0.2887 ") << "0.5 by √3";

    // A row that was taken away, another table, another calibration.
    watch.Add(13, 50, 410);
    watch.Add(14, 50, 410);
    watch.Add(14, 51, 420);
    EXPECT_EQ(watch.Since(), 2);
    watch.Add(1, 50, 430);
    EXPECT_EQ(watch.Since(), 1);
    watch.Add(2, 60, 440);
    watch.Keep(1);
    EXPECT_EQ(corrected(watch.Check(standard, settings, 110, 450, "9:19")), "1:drift of +6.00 mV found at 9:19/ ")
        << "row 2 will be the check itself";
    watch.Keep(0);
    EXPECT_EQ(watch.Since(), 0);
    watch.Add(1, 50, 460);
    watch.Follow(Fluoride());
    EXPECT_EQ(watch.Since(), 1) << "the same, made anew";
    watch.Follow(Fluoride(NoIon));
    EXPECT_EQ(watch.Since(), 1);
    auto other = CalibrationOf(AppState());
    watch.Follow(std::make_shared<const Calibration>(other));
    EXPECT_EQ(watch.Since(), 0);
}

TEST(DriftSettingsTest, AreNumbersInTheirRangeAndComeBackFromTheSettings) {
    const std::pair<DriftSettings::Texts, const char*> rows[] = {
        {{"0", "0", "0", "0", "0"}, ""},
        {{"", "", "", "", ""}, ""},
        {{"100000", "0.5", "0.2", "1000", "10"}, ""},
        {{"-1", "", "1", "", ""}, "The number of samples is a whole number"},
        {{"100001", "", "1", "", ""}, "The number of samples"},
        {{"", "1,5", "1", "", ""}, "The number of minutes is a number from 0 to 100000, with a point."},
        {{"", "", "nan", "", ""}, "The limit in mV"},
        {{"", "", "", "1001", ""}, "The limit in per cent"},
        {{"", "", "", "", "11"}, "The number of the standard is a whole"},
        {{"5", "", "0", "", ""}, "A check needs a limit"},
        {{"", "5", "", "", ""}, "A check needs a limit"},
        {{"", "5", "", "3", ""}, ""}};
    for (const auto& [texts, words] : rows) {
        DriftSettings settings;
        const std::string told = settings.Take(texts);
        EXPECT_TRUE(told.starts_with(words) && told.empty() == std::string(words).empty()) << told;
    }
    ScratchFolder folder;
    const std::string ini = folder / "k.ini";
    EXPECT_TRUE(ReadDriftSettings(ini) == DriftSettings());
    DriftSettings settings;
    settings.Take({"5", "30", "0.8", "4", "2"});
    settings.bracket = true;
    EXPECT_TRUE(WriteDriftSettings(settings, ini));
    EXPECT_TRUE(ReadDriftSettings(ini) == settings);
    WriteSetting("Drift Checks", "LimitMv", "much", ini);
    EXPECT_FALSE(ReadDriftSettings(ini).On()) << "what makes no sense switches nothing on";
}

}  // namespace
}  // namespace kelvo::test
