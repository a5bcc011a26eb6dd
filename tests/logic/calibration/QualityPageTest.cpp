#include "calibration/QualityPage.h"

#include <array>
#include <cmath>
#include <limits>
#include <regex>

#include "app/AppState.h"
#include "calibration/CaliList.h"
#include "calibration/CustomCharge.h"
#include "calibration/LowEndWords.h"
#include "calibration/QualityLimits.h"
#include "calibration/QualityPresenter.h"
#include "calibration/Sample.h"
#include "core/Settings.h"
#include "statistics/StudentT.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using Values = std::vector<float>;

/// A calibration as the screens leave it, of fluoride unless told.
AppState Calibrated(const Values& logC, const Values& mv, int ion = 10) {
    AppState state;
    state.IonIndex = static_cast<std::int16_t>(ion);
    state.CaliPoints = static_cast<std::int16_t>(logC.size());
    state.LinearFit = 1;
    state.FileTemp = "25.0";
    for (std::size_t i = 0; i < logC.size(); ++i) {
        state.CaliLogC.push_back(logC[i]);
        state.CaliE.push_back(mv[i]);
        state.CaliMolar.push_back(static_cast<float>(std::pow(10.0, logC[i])));
        state.CaliPpm.push_back(0);
    }
    return state;
}

/// Residuals of exactly ±0.3 mV about E = −128 − 58·LogC.
AppState Fluoride(int ion = 10) {
    return Calibrated({-5, -4, -3, -2}, {162.3f, 103.7f, 45.7f, -11.7f}, ion);
}

/// What is told of a sample, off the line that the points have.
std::string Told(AppState state, float mv, const char* celsius) {
    if (const auto line = CalibrationOf(state).Line()) {
        state.CaliSlope = static_cast<float>(line->slope);
        state.CaliEo = static_cast<float>(line->intercept);
    }
    const auto sample = MeasureSample(std::make_shared<const Calibration>(CalibrationOf(state)), mv, celsius);
    return sample ? IntervalText(sample->Facts()) : "";
}

std::string Valued(const QualityPage& page, const std::string& name) {
    for (const QualityPage::Figure& figure : page.figures)
        if (figure.name == name) return figure.value + (figure.beside.empty() ? "" : " | " + figure.beside);
    return "no such figure";
}

TEST(QualityPageTest, ShowsTheFigures) {
    const QualityPage page = MakeQualityPage(CalibrationOf(Fluoride()), false);
    // s = √(4·0.09/2) = 0.4243, Sxx = 5, mean LogC −3.5.
    const std::pair<const char*, const char*> rows[] = {
        {"Slope", "-58.00 mV/decade | ± 0.19 mV/decade (standard deviation)"},
        {"Theoretical slope", "-59.16 mV/decade | F⁻ at 25.0 °C"},
        {"Slope, % of theory", "98.0 %"},
        {"Intercept Eo", "-128.00 mV | ± 0.70 mV (standard deviation)"},
        {"Residual standard deviation", "0.424 mV"},
        {"r", "-0.99999"},
        {"r²", "0.99998"},
        {"Degrees of freedom", "2"},
        {"Linear range", "0.190 to 190 ppm | LogC -5.00 to -2.00"},
        {"Detection limit", "not reached | the lowest standards lie on the line"}};
    for (const auto& [name, shown] : rows)
        EXPECT_EQ(Valued(page, name), shown);
    ASSERT_EQ(page.rows.size(), 4u);
    // 0.3 mV at −58 mV a decade is −1.18 %; the leverage of an end 1/4 + 2.25/5. Without it the others have the squares
    // 0.36 − 0.09/0.3: t = 0.3/√(0.06·0.3) = √5.
    EXPECT_EQ(Joined(page.rows[0]), "1,0.190,-5.000,162.30,162.00,0.30,-1.2,0.700,2.2,");
    const QualityPage withFit = MakeQualityPage(CalibrationOf(Fluoride()), true);
    EXPECT_EQ(Joined(page.heads.size(), page.lowEndPossible, withFit.heads.size(), withFit.rows[0].size()),
              "10|1|11|11");
    EXPECT_GT(withFit.plot.Items().size(), page.plot.Items().size()) << "its curve and residuals";
}

TEST(QualityPageTest, ShowsTheFitForLowConcentrationsBesideTheLine) {
    Values logC, mv;
    for (float x = -8; x <= -1; ++x) {
        logC.push_back(x);
        mv.push_back(static_cast<float>(100 + 58 * std::log10(std::pow(10.0, double{x}) + 1e-6)));
    }
    const QualityPage page = MakeQualityPage(CalibrationOf(Calibrated(logC, mv, 19)), true);
    EXPECT_EQ(Valued(page, "Low-end fit, c").substr(0, 26), "0.0620 ppm (1.00E-6 mol/L)");
    EXPECT_EQ(Valued(page, "Detection limit").substr(0, 7), "0.0747 ");
    EXPECT_EQ(page.rows[0][9], "0.00") << "the residual that the fit leaves";
    EXPECT_NE(page.rows[0][5], "0.00");
}

bool HasNoNumber(const std::string& text) {
    static const std::regex word("(^|[^a-z])(nan|inf)", std::regex::icase);
    return std::regex_search(text, word);
}

TEST(QualityPageTest, HoldsNoNanWhateverTheCalibrationIs) {
    constexpr float Largest = std::numeric_limits<float>::max();
    AppState known = Calibrated({-3}, {50});
    known.CaliSlope = -58;
    AppState noIon = Fluoride();
    noIon.IonIndex = NoIon;
    AppState cold = Fluoride();
    cold.FileTemp = "-400";
    AppState weightless = Fluoride(CustomIonRow);
    weightless.Ions.weights[CustomIonRow] = -1;
    AppState curve = Fluoride();
    curve.LinearFit = 0;
    curve.BestFitCurve = 1;
    const AppState cases[] = {AppState(),
                              known,
                              noIon,
                              cold,
                              weightless,
                              curve,
                              Fluoride(),
                              Calibrated({-3, -2}, {50, -8}),
                              Calibrated({-3, -3, -3}, {1, 2, 3}),
                              Calibrated({-3, -2, -1}, {7, 7, 7}),
                              Calibrated({-5, -4, -3, -2}, {162, 104, 46, -12}),
                              Calibrated({0, 0, 0, 0}, {0, 0, 0, 0}),
                              Calibrated({-1e-30f, 0, 1e-30f}, {0, 1, 2}),
                              Calibrated({-5, std::nanf(""), -3, -2}, {162, 104, 46, -12}),
                              Calibrated({-5, -4, -3, -2}, {162, 104, std::nanf(""), -12}),
                              Calibrated({-Largest, 0, 1, Largest}, {-Largest, 0, 1, Largest}),
                              Calibrated({-5, -4, -3, -2}, {Largest, -Largest, Largest, -Largest})};
    int i = 0;
    for (const AppState& state : cases) {
        for (const bool lowEnd : {false, true}) {
            const QualityPage page = MakeQualityPage(CalibrationOf(state), lowEnd);
            EXPECT_FALSE(HasNoNumber(QualityText(page))) << i << QualityText(page);
            for (const auto& row : page.rows)
                EXPECT_EQ(row.size(), page.heads.size()) << i;
            for (const DisplayItem& item : page.plot.Items()) {
                EXPECT_FALSE(HasNoNumber(item.text)) << i;
                for (const float place : {item.x1, item.y1, item.x2, item.y2})
                    EXPECT_TRUE(place >= 0 && place <= 9400) << i << ": " << place;
            }
        }
        for (const float mv : {-1000.0f, 0.0f, 30.0f, 1000.0f})
            EXPECT_FALSE(HasNoNumber(Told(state, mv, "25"))) << i;
        ++i;
    }
}

TEST(QualityPageTest, ReadsWhatIsNoTemperatureAndShowsThreeDigits) {
    AppState state = Fluoride();
    const char* const rows[][3] = {{"abc", "", "F⁻ at 25.0 °C (assumed)"},
                                   {"N/A", " 20 ", "F⁻ at 20.0 °C"},
                                   {"", "", "F⁻ at 25.0 °C (assumed)"},
                                   {"30 C", "20", "F⁻ at 30.0 °C"}};
    for (const auto& [made, working, shown] : rows) {
        state.FileTemp = made;
        state.CaliTemp = working;
        EXPECT_TRUE(Valued(MakeQualityPage(CalibrationOf(state), false), "Theoretical slope").ends_with(shown)) << made;
    }
    const double weight = state.Ions.weights[10];
    for (std::size_t i = 1; i <= 4; ++i)
        state.CaliLogC[i] = static_cast<float>(std::log10(std::pow(10.0, static_cast<double>(i) - 2) / 1000 / weight));
    const QualityPage page = MakeQualityPage(CalibrationOf(state), false);
    EXPECT_EQ(Joined(page.rows[0][1], page.rows[1][1], page.rows[2][1], page.rows[3][1]), "0.100|1.00|10.0|100");
    // The rounded LogC of 100 ppm is 99.93; the second standard's ppm belongs to another LogC.
    state.CaliLogC[4] = -2.279f;
    state.CaliPpm = {0, 0.1f, 50, 10, 100};
    const QualityPage entered = MakeQualityPage(CalibrationOf(state), false);
    EXPECT_EQ(Joined(entered.rows[0][1], entered.rows[1][1], entered.rows[3][1],
                     Valued(entered, "Linear range").substr(0, 19)),
              "0.100|1.00|100.00|0.100 to 100.00 ppm");
    state.IonIndex = NoIon;
    const QualityPage noIon = MakeQualityPage(CalibrationOf(state), false);
    EXPECT_EQ(Joined(noIon.rows[3][1], Valued(noIon, "Linear range").substr(0, 24)), "-|5.26E-6 to 5.26E-3 mol/L");
    EXPECT_EQ(
        Joined(Valued(MakeQualityPage(CalibrationOf(AppState()), false), "Intercept Eo"),
               Valued(MakeQualityPage(CalibrationOf(Calibrated({-3, -2}, {50, -8})), false), "Intercept Eo"),
               Valued(MakeQualityPage(CalibrationOf(Calibrated({-4, -3, -2}, {108, 50, -8})), false), "Slope"),
               Valued(MakeQualityPage(CalibrationOf(Calibrated({-5, -4, -3, -2}, {10.1f, 10.4f, 9.9f, 10.2f})), false),
                      "Detection limit")),
        "-|-124.00 mV | not told|-58.00 mV/decade | not told|not told | the electrode does not answer");
}

TEST(QualityPlot, PutsEqualPotentialsInTheMiddle) {
    const QualityPage page = MakeQualityPage(CalibrationOf(Calibrated({-3, -2, -1}, {7, 7, 7})), false);
    for (const DisplayItem& item : page.plot.Items())
        EXPECT_TRUE(item.kind != DisplayItem::Kind::Dot || item.y1 > 4000 || std::abs(item.y1 - 2105) <= 1) << item.y1;
}

TEST(QualityPlot, DrawsThePointsWhereTheyLie) {
    AppState state = Fluoride();
    state.CaliE[2] += 3;
    const QualityPage page = MakeQualityPage(CalibrationOf(state), false);
    // LogC −5 to −2 over 900 to 9200 twips; the line above, residuals about the middle of the lower box, 5175.
    std::vector<const DisplayItem*> dots;
    for (const DisplayItem& item : page.plot.Items())
        if (item.kind == DisplayItem::Kind::Dot) dots.push_back(&item);
    ASSERT_EQ(dots.size(), 8u);
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_NEAR(dots[i]->x1, 900 + 8300 / 3.0 * static_cast<double>(i), 1);
        EXPECT_EQ(dots[i + 4]->x1, dots[i]->x1) << "the residual under its point";
    }
    EXPECT_GT(dots[1]->y1, dots[0]->y1) << "an anion's potentials fall";
    EXPECT_TRUE(dots[5]->y1 < 5175 && dots[6]->y1 > 5175) << "above the line and below it";
    EXPECT_EQ(dots[5]->colour == colour::LightRed, page.marked[1]);
    // The titles stand above their boxes; the line runs in pieces that join from the first standard to the last.
    std::string titles;
    const DisplayItem* last = nullptr;
    for (const DisplayItem& item : page.plot.Items()) {
        if (item.kind == DisplayItem::Kind::Text && item.text.ends_with("(mV)"))
            titles += Joined(item.text, item.y1) + " ";
        if (item.kind != DisplayItem::Kind::Line || std::abs(item.x2 - item.x1 - 83) > 0.01f) continue;
        EXPECT_TRUE(last == nullptr || (last->x2 == item.x1 && last->y2 == item.y1));
        last = &item;
    }
    EXPECT_EQ(titles, "E (mV)|130 Residual (mV)|3920 ");
    EXPECT_NEAR(last->x2, 9200, 100) << "a piece more would leave the box";
}

TEST(QualityTextTest, IsTheWindowAsLinesAndCells) {
    const std::string text = QualityText(MakeQualityPage(CalibrationOf(Fluoride()), false));
    EXPECT_EQ(
        text.substr(0, text.find('\n')),
        "Calibration Quality\tgood: the slope is 98.0 % of the theoretical one and a sample is uncertain by -7.8 to +8.4 % (95 %)");
    EXPECT_NE(
        text.find("\nNo.\tppm\tLogC\tmV\tFitted mV\tResidual mV\t% of conc.\tLeverage\tStudentised\tMark\n1\t0.190\t"),
        std::string::npos)
        << text;
}

// --- samples --------------------------------------------------------------------------------------------------------

TEST(SampleInterval, StandsInOneLine) {
    const AppState fluoride = Fluoride();
    AppState curve = fluoride;
    curve.LinearFit = 0;
    curve.PartlyLinearFit = 1;
    AppState none = curve;
    none.PartlyLinearFit = 0;
    AppState noIon = fluoride;
    noIon.IonIndex = NoIon;
    AppState noTemperature = fluoride;
    noTemperature.FileTemp.clear();
    AppState known = Calibrated({-3}, {50});
    known.CaliSlope = -58;
    const AppState wild = Calibrated({-4, -3, -2}, {0, 100, 20});
    const std::string twoPoints = "two points: no uncertainty can be told";
    const std::string flat = "; calibration doubtful: the slope is 71.0 % of the theoretical one";
    // E = −128 − 58·log10(x + 1E-6), to 0.1 mV: the four upper standards have the line −126.05 − 57.25·x, the two lower
    // ones the level 218.65 mV, which meets it at 1E-6.021 mol/L. There the electrode answers log10(2)·57.25 mV above.
    const AppState bent = Calibrated({-8, -7, -5, -4, -3, -2}, {219.7f, 217.6f, 159.6f, 103.7f, 46, -12});
    const std::string spoilt =
        ": no interval; calibration doubtful: the lowest standards leave the line, the others have a slope of 96.8 % of "
        "the theoretical one";
    // s 0.42426, S −58, t(2) 4.30265; at 30 mV LogC is −2.72414, 0.77586 from the middle: s_x =
    // 0.42426/58·√(1 + 1/4 + 0.60196/5) = 0.0085627, so the factor is 10^0.036842 = 1.08853.
    // 35.86 ppm /1.08853 = 32.93, ·1.08853 = 39.02. At −11.7 mV it is 1.49483 from the middle: 187.73 ppm and 1.0990.
    // The wide one: s 3.266, t(1) 12.706, s_x 0.06655 at 43.15 ppm, a factor of 7.009. With a slope of −42 the middle,
    // 6.008 ppm, has the factor 10^(4.30265·0.42426/42·√1.25) = 1.1184.
    const std::tuple<const char*, AppState, float, const char*, std::string> cases[] = {
        {"inside", fluoride, 30, "25", "35.9 ppm, 32.9 to 39.0 (95 %)"},
        {"2 degrees away", fluoride, 30, "27.0", "35.9 ppm, 32.9 to 39.0 (95 %)"},
        {"more than 2 degrees away", fluoride, 30, "22.9",
         "35.9 ppm, 32.9 to 39.0 (95 %); more than 2 °C from the calibration"},
        {"calibration without a temperature", noTemperature, 30, "40", "35.9 ppm, 32.9 to 39.0 (95 %)"},
        {"at the highest standard", fluoride, -11.7f, "25", "188 ppm, 171 to 206 (95 %)"},
        {"beyond it", fluoride, -11.8f, "25", "outside the calibrated range: no interval"},
        {"below the lowest", fluoride, 162.4f, "30",
         "outside the calibrated range: no interval; more than 2 °C from the calibration"},
        {"doubtful", Calibrated({-5, -4, -3, -2}, {210.3f, 167.7f, 125.7f, 84.3f}), 147, "25",
         "6.01 ppm, 5.37 to 6.72 (95 %)" + flat},
        {"at 5E-7 mol/L", bent, 209.8f, "25", "at or below the detection limit of 0.018 ppm" + spoilt},
        {"at 2E-6 mol/L", bent, 192.3f, "25", "below the linear range" + spoilt},
        {"saturated", Calibrated({-6, -5, -4, -3, -2, -1}, {454.2f, 394.8f, 336.2f, 276.8f, 223.0f, 173.0f}), 200, "25",
         "above the linear range: no interval; calibration doubtful: the highest standards leave the line: the "
         "electrode saturates, the others have a slope of 99.9 % of the theoretical one"},
        {"no ion", noIon, 30, "25", "0.00189 mol/L, 0.00173 to 0.00205 (95 %)"},
        {"two points", Calibrated({-3, -2}, {50, -8}), 20, "25", twoPoints},
        {"two points, 0 mV", Calibrated({-3, -2}, {50, -8}), 0, "25",
         twoPoints + "; exactly 0 mV with two points shows the empty row 0, not a result"},
        {"known slope", known, 20, "25", "one point with a known slope: no uncertainty can be told"},
        {"perfect fit", Calibrated({-4, -3, -2}, {100, 42, -16}), 20, "25",
         "the points lie exactly on the line (deviation 0): no uncertainty can be told"},
        {"slope not told from 0", wild, 40, "25",
         "the slope cannot be told from 0: no uncertainty can be told; calibration doubtful: the slope has the sign of "
         "a cation's, but F⁻ is an anion: are the standards in the right order?"},
        {"wide", Calibrated({-4, -3, -2}, {100, 38, -16}), 20, "25",
         "43.2 ppm, 6.2 to 302.4 (95 %); calibration doubtful: a sample is uncertain by -85.1 to +570.2 % (95 %); which "
         "standard is off, the figures cannot tell"},
        {"segments", curve, 30, "25",
         "each standard was measured once, so no interval on this curve; 'Linear Regression' has one"},
        {"no curve", none, 30, "25", ""},
        {"no standards", AppState(), 30, "25", ""}};
    for (const auto& [what, state, mv, celsius, line] : cases)
        EXPECT_EQ(Told(state, mv, celsius), line) << what;
    const SampleUncertainty told = CalibrationOf(fluoride).uncertainty;
    EXPECT_NEAR(*told.Concentration(30), 1000 * 18.9984 * std::pow(10.0, -158.0 / 58), 1e-4);
    EXPECT_FALSE(CalibrationOf(Calibrated({-3, -3}, {1, 2})).uncertainty.Concentration(1));
    // What goes with the row is enough to work out the same again, to the last digit.
    const auto line = SampleUncertainty::OfLine(told.Line());
    EXPECT_EQ(line->Of(30, {}).interval->low, told.Of(30, {}).interval->low);
    EXPECT_EQ(
        Joined(line->Line(), line->Of(-11.8, {}).words, line->Of(30, {}).basis),
        Joined(told.Line(), "outside the calibrated range: no interval", "scatter of 4 standards and of 1 reading"));
    EXPECT_FALSE(SampleUncertainty::OfLine("") || SampleUncertainty::OfLine("2 -58 -3.5 75 5 0.4 1 0 9"));
}

// The figures come from exact sums and nested intervals in another language.
TEST(SampleInterval, StandsOffEachCurve) {
    const auto on = [](AppState state, std::int16_t IseCalibration::*curve, float a = 0, double b = 0, double c = 0) {
        state.LinearFit = 0;
        state.*curve = 1;
        state.FitA = a;
        state.FitB = b;
        state.FitC = c;
        return state;
    };
    constexpr auto Segments = &IseCalibration::PartlyLinearFit, Best = &IseCalibration::BestFitCurve,
                   Low = &IseCalibration::LowEndCurve;
    const auto pairs = Calibrated({-5, -5, -4, -4, -3, -3}, {161.8f, 161.2f, 103.6f, 103.2f, 45.9f, 45.7f});
    const auto alike = Calibrated({-5, -5, -4, -4, -3, -3}, {161, 161, 103, 103, 45, 45});
    const auto bent = Calibrated({-5, -4, -3, -2, -1}, {150.4f, 100.1f, 46.5f, -12.3f, -72.9f});
    const auto level = Calibrated({-6, -5, -4.5f, -4, -3, -2}, {142.6f, 134.6f, 120.2f, 99.8f, 45.3f, -12});
    const auto curve = on(bent, Best, -1.8428571f, -66.957142857, -138.24);
    const std::tuple<const char*, AppState, float, const char*> cases[] = {
        {"between repeated standards", on(pairs, Segments), 80, "4.83 ppm, 4.63 to 5.06 (95 %)"},
        {"repeated standards alike", on(alike, Segments), 80,
         "the repeated standards agree exactly: no uncertainty can be told"},
        {"segments up and down", on(Calibrated({-5, -4, -3}, {100, 160, 40}), Segments), 90,
         "the potentials of the segments do not rise or fall all along: no interval"},
        {"best-fit curve", curve, 30, "36.6 ppm, 32.5 to 41.1 (95 %)"},
        {"three points", on(Calibrated({-5, -4, -3}, {160, 103, 44}), Best, -1, -66, -145), 103,
         "the best-fit curve passes through all three standards: no uncertainty can be told"},
        {"low-end fit", on(level, Low), 30, "35.5 ppm, 33.1 to 38.2 (95 %)"},
        {"where it levels off", on(level, Low), 120, "0.625 ppm, 0.558 to 0.699 (95 %)"},
        {"below c", on(level, Low), 139,
         "0.087 ppm, 0.052 to 0.122 (95 %); at or below the detection limit of 0.39 ppm"},
        {"above its level", on(level, Low), 145, ""},
        {"no low-end fit", on(Calibrated({-5, -4, -3}, {160, 103, 44}), Low), 103, ""}};
    for (const auto& [what, state, mv, line] : cases) {
        const auto calibration = std::make_shared<const Calibration>(CalibrationOf(state));
        const auto sample = MeasureSample(calibration, mv, "25");
        const std::string told = sample ? IntervalText(sample->Facts()) : "";
        EXPECT_EQ(told.substr(0, told.find("; calibration")), line) << what;
        // The same again from the row alone.
        const auto again = SampleUncertainty::OfLine(calibration->uncertainty.Line());
        if (!sample || !sample->uncertainty.interval) continue;
        ASSERT_TRUE(again) << what;
        EXPECT_NEAR(again->Of(mv, {}).interval->high / sample->uncertainty.interval->high, 1, 1e-12) << what;
        EXPECT_EQ(again->Of(mv, {}).basis, sample->uncertainty.basis) << what;
        const auto read = again->ReadOff(mv);
        const Uncertainty::Interval interval = *sample->uncertainty.interval;
        // One reading and the curve together are the deviation that the interval is t times of, but for its bend.
        const double half = StudentT(read->freedom) * std::hypot(read->deviation, read->scatter / read->mvPerDecade);
        EXPECT_NEAR(std::log10(interval.high / interval.low) / (2 * half), 1, 0.1) << what;
        EXPECT_NEAR(*again->Concentration(mv) / sample->value.ppm, 1, 1e-2) << what;
    }
    EXPECT_EQ(CalibrationOf(curve).uncertainty.Of(30, {}).basis,
              "scatter of 5 standards about the best-fit curve and of 1 reading");
    EXPECT_EQ(CalibrationOf(on(pairs, Segments)).uncertainty.Of(80, {}).basis,
              "scatter of repeated standards (3 degrees of freedom) and of 1 reading");
    const Calibration fit = CalibrationOf(on(level, Low));
    EXPECT_EQ(fit.uncertainty.Of(-12.1, {}).words, "outside the calibrated range: no interval");
    EXPECT_EQ(MeasureSample(std::make_shared<const Calibration>(fit), 30, "")->Facts().Get(fact::Curve), "low-end fit");
    EXPECT_EQ(CaliListRows(fit).back(), "c differs from 0 (F 5862.4, limit 10.1)");
    const LowEndWords words = WordsOf(*fit.quality.lowEnd, fit.gramsPerMole);
    // t 3.1824 of three degrees.
    EXPECT_EQ(Joined(words.c, words.slope, words.eo),
              Joined("0.394 ppm, 0.346 to 0.447 (95 %)", "-58.2 mV/decade, -59.4 to -57.0 (95 %)",
                     "-128.4 mV, -132.0 to -124.8 (95 %)"));
    // The line calls this calibration doubtful because of its low end, which the fit describes.
    EXPECT_EQ(std::string(CalibrationOf(level).verdict.Word()) + " " + fit.verdict.Word(), "doubtful good");
    for (const char* text : {"lowend", "lowend 1", "segments -5 160 -4 100 1", "lowend -5 160 -4 100 0", "other 1 2 3"})
        EXPECT_FALSE(SampleUncertainty::OfLine(text)) << text;
}

TEST(SampleInterval, OfALiveReadingHasItsConcentration) {
    AppState state = Fluoride();
    state.CaliEo = -128;
    state.CaliSlope = -58;
    // LogC (45.7 + 128)/−58 = −2.99483; s_x 0.42426/58·√(1.25 + 0.25522/5) = 0.0083455, a factor of 1.0862.
    const auto live = [&](float mv) {
        const auto sample = MeasureSample(std::make_shared<const Calibration>(CalibrationOf(state)), mv, "25");
        return sample ? sample->LiveLine() : "";
    };
    EXPECT_EQ(live(45.7f), "Live: 19.2 ppm, 17.7 to 20.9 (95 %)");
    state.CaliPoints = 2;
    EXPECT_EQ(live(45.7f), "Live: 19.23 ppm; two points: no uncertainty can be told; outside the calibrated range");
    EXPECT_EQ(live(1e9f), "") << "no result";
}

// --- limits and the charge of an ion of one's own --------------------------------------------------------------------

struct QualitySettings : ::testing::Test {
    ScratchFolder folder;
    ScriptedPrompts prompts;
    const std::string ini = folder / "KELVO.ini";
};

TEST_F(QualitySettings, ReplaceTheLimitsThatMakeSense) {
    EXPECT_EQ(ReadQualityLimits(ini).goodSlopeFrom, 95) << "without a file";
    const std::tuple<const char*, const char*, double QualityLimits::*, double> rows[] = {
        {"SlopeChange", "3.5", &QualityLimits::slopeChange, 3.5},
        {"SlopeChange", "0", &QualityLimits::slopeChange, 2},
        {"SlopeChange", "-1", &QualityLimits::slopeChange, 2},
        {"SlopeChange", "abc", &QualityLimits::slopeChange, 2},
        {"SlopeChange", "1E99", &QualityLimits::slopeChange, 2},
        {"GoodSlopeFrom", "97", &QualityLimits::goodSlopeFrom, 97},
        {"GoodSlopeFrom", "103", &QualityLimits::goodSlopeFrom, 95},
        {"UsableSlopeTo", "80", &QualityLimits::usableSlopeTo, 105},
        {"GoodResidual", "0.5", &QualityLimits::goodResidual, 0.5},
        {"GoodResidual", "5", &QualityLimits::goodResidual, 1},
        {"TemperatureWithin", "0.5", &QualityLimits::temperatureWithin, 0.5},
        {"LinearWithin", "1", &QualityLimits::linearWithin, 1}};
    for (const auto& [key, text, field, value] : rows) {
        WriteSetting(QualitySection, key, text, ini);
        EXPECT_EQ(ReadQualityLimits(ini).*field, value) << key << "=" << text;
        WriteSetting(QualitySection, key, "", ini);
    }
}

TEST_F(QualitySettings, KeepTheChargeOfACustomIon) {
    AppState state;
    state.IniPath = ini;
    state.Ions.names[CustomIonRow] = "Tl";
    EXPECT_EQ(CustomCharge(state), 0);
    const std::string title = "Calibration Quality";
    prompts.ExpectInput(title, std::nullopt);
    EXPECT_EQ(Joined(AskCustomCharge(state, prompts, 0), CustomCharge(state)), "0|0");
    for (const char* refused : {"0", "five", "5", "1.5", "", "-"}) {
        prompts.ExpectInput(title, refused);
        prompts.ExpectMessage("Please type the charge as a whole number from -4 to 4, not 0.");
    }
    prompts.ExpectInput(title, "2+");
    EXPECT_EQ(AskCustomCharge(state, prompts, 0), 2);
    EXPECT_EQ(Joined(prompts.lastInitial, CustomCharge(state)), "|2");
    prompts.ExpectInput(title, " -1 ");
    EXPECT_EQ(AskCustomCharge(state, prompts, 2), -1);
    EXPECT_EQ(Joined(prompts.lastInitial, CustomCharge(state)), "2|-1");
    state.Ions.names[CustomIonRow] = "Cs";
    EXPECT_EQ(CustomCharge(state), 0) << "that charge was another ion's";
    state.IniPath = folder / "gone/KELVO.ini";
    prompts.ExpectInput(title, "+1");
    EXPECT_EQ(AskCustomCharge(state, prompts, 0), 1) << "given, though it cannot be kept";
}

TEST_F(QualitySettings, CountForTheCalibrationInUseFromWhenTheyAreGiven) {
    AppState state = Fluoride(CustomIonRow);
    state.IniPath = ini;
    CalibrationInUse inUse(state);
    const auto untold = inUse.Get();
    EXPECT_EQ(untold, inUse.Get()) << "one as long as nothing has changed";
    prompts.ExpectInput("Calibration Quality", "-1");
    AskCustomCharge(state, prompts, 0);
    EXPECT_EQ(Joined(untold->quality.percent.has_value(), inUse.Get()->quality.percent.has_value()), "0|1");
    const auto told = inUse.Get();
    WriteSetting(QualitySection, "LinearWithin", "1", ini);
    EXPECT_EQ(told, inUse.Get()) << "limits wait until they are read";
    inUse.ReadSettings();
    EXPECT_EQ(Joined(told->limits.linearWithin, inUse.Get()->limits.linearWithin), "2|1");
    state.CaliE[1] += 1;
    EXPECT_NE(told->points[0], inUse.Get()->points[0]) << "and what was made does not change with the state";
}

TEST_F(QualitySettings, ArePartOfWhatTheWindowFollows) {
    AppState state = Fluoride(CustomIonRow);
    state.IniPath = folder / "gone/KELVO.ini";
    state.Ions.names[CustomIonRow] = "Tl";
    prompts.ExpectInput("Calibration Quality", "-1");
    QualityPresenter quality(state, prompts);
    quality.Open();
    EXPECT_EQ(Valued(quality.Page(), "Slope, % of theory"), "98.0 %") << "of a charge that lives as long as the window";
    EXPECT_FALSE(quality.Refresh());
    state.FileTemp = "20";
    EXPECT_TRUE(quality.Refresh());
    EXPECT_EQ(Valued(quality.Page(), "Slope, % of theory"), "99.7 %");
    state.Ions.names[CustomIonRow] = "Cs";
    EXPECT_TRUE(quality.Refresh());
    EXPECT_EQ(quality.Page().verdict.grade, Verdict::Grade::Untold) << "another ion";
    state.IonIndex = 10;
    EXPECT_TRUE(quality.Refresh());
    EXPECT_EQ(quality.Page().verdict.grade, Verdict::Grade::Good);
    quality.ChangeCharge();  // fluoride has its own: nothing is asked
    quality.ShowLowEnd(true);
    EXPECT_TRUE(quality.LowEndShown());
    state.CaliPoints = 3;
    EXPECT_TRUE(quality.Refresh() && !quality.LowEndShown());
}

}  // namespace
}  // namespace kelvo::test
