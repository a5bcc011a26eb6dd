#include <gtest/gtest.h>

#include <cmath>

#include "calibration/LinearRange.h"
#include "calibration/Nernst.h"
#include "calibration/Quality.h"
#include "calibration/QualityVerdict.h"
#include "support/Joined.h"

namespace kelvo {
namespace {

using Values = std::vector<double>;
using test::Joined;
using Limit = LinearRange::Limit;
using Grade = Verdict::Grade;

constexpr int Ca = 3, F = 10, Ammonia = 16;

/// An electrode that sees c beside each standard, one standard a decade from 10^`from` up to 10^`to`.
Standards Decades(int from, int to, double eo, double slope, double c = 0, Values noise = {}) {
    Standards standards;
    for (int logC = from; logC <= to; ++logC) {
        const std::size_t i = standards.Count();
        standards.logC.push_back(logC);
        standards.mv.push_back(eo + slope * std::log10(std::pow(10.0, logC) + c) + (i < noise.size() ? noise[i] : 0));
    }
    return standards;
}

TEST(Nernst, GivesTheTheoreticalSlopeWithItsSign) {
    // R·T·ln 10/F is 59.1597 mV at 25 °C, 58.1675 at 20 °C (Bates, Determination of pH).
    const std::tuple<int, double, double, const char*> rows[] = {
        {0, 25, 59.1597, "Ag⁺"},        {Ca, 25, 29.5799, "Ca²⁺"}, {F, 20, -58.1676, "F⁻"},  {8, 25, -29.5799, "CO₃²⁻"},
        {Ammonia, 25, -59.1597, "NH₃"}, {24, 25, 59.1597, "H⁺"},   {22, 25, -29.5799, "S²⁻"}};
    for (const auto& [row, celsius, slope, label] : rows) {
        const IonResponse ion = ResponseOf(row);
        EXPECT_NEAR(*NernstSlope(ion.charge, celsius), slope, 1e-3) << label;
        EXPECT_EQ(ion.label, label);
    }
    EXPECT_EQ(
        Joined(ResponseOf(25).charge, ResponseOf(-1).charge, ResponseOf("Tl", 3).label, ResponseOf("X", -1).label),
        "0|0|Tl³⁺|X⁻");
    EXPECT_FALSE(NernstSlope(0, 25) || NernstSlope(1, -273.15) || NernstSlope(1, 1e30));
}

TEST(LinearRangeTest, FindsRangeAndDetectionLimit) {
    // limit, detection limit, from, to, standards below
    const std::tuple<const char*, Standards, Limit, double, int, int, int> rows[] = {
        // The level of standards far below c stands at Eo + S·log10(c), so the lines meet at c.
        {"no bend", Decades(-6, -1, 100, 58), Limit::NotReached, 0, -6, -1, 0},
        {"level of two", Decades(-8, -1, 100, 58, 1e-6), Limit::Reached, -6, -5, -1, 3},
        {"the same, an anion's", Decades(-8, -1, 100, -58, 1e-6), Limit::Reached, -6, -5, -1, 3},
        {"level of one", Decades(-7, -1, 100, 58, 1e-6), Limit::Reached, -5.96, -5, -1, 2},
        {"the lowest only bends", Decades(-5, -1, 100, 58, 1e-5), Limit::AtMost, -4.7, -4, -1, 1},
        {"more response at the low end", Decades(-5, -1, 100, 58, 0, {-30}), Limit::NotReached, 0, -4, -1, 1},
        {"the top bends", Decades(-5, -1, 100, 58, 0, {0, 0, 0, 0, -20}), Limit::NotReached, 0, -5, -2, 0},
        {"saturates", Decades(-5, -0, 100, 58, 0, {0, 0, 0, 0, -8, -20}), Limit::NotReached, 0, -5, -2, 0},
        {"the top falls and comes back", Decades(-5, 0, 100, -58, 0, {0, 0, 0, 0, 9, 7}), Limit::NotReached, 0, -5, -2,
         0},
        {"more response at the top", Decades(-5, 0, 100, -58, 0, {0, 0, 0, 0, -8, -20}), Limit::NotReached, 0, -5, -2,
         0},
        {"three standards", Decades(-3, -1, 100, 58), Limit::CannotTell, 0, -3, -1, 0},
        {"no three on a line", Decades(-3, -1, 100, 58, 0, {0, 40, 0}), Limit::CannotTell, 0, 0, 0, 0}};
    for (const auto& [what, standards, limit, detection, from, to, below] : rows) {
        const LinearRange range = FindLinearRange(standards, 2);
        EXPECT_EQ(range.limit, limit) << what;
        // The lowest standards of the range still bend by up to 2 mV, which tilts its line, and the upper of the level
        // stands 2.4 mV above it.
        EXPECT_NEAR(range.detectionLogC, detection, 0.1) << what;
        EXPECT_EQ(Joined(range.fromLogC, range.toLogC, range.below), Joined(from, to, below)) << what;
        EXPECT_EQ(range.saturates, std::string_view(what).starts_with("saturates")) << what;
    }
}

TEST(LinearRangeTest, TakesStandardsInAnyOrderAndTwice) {
    Standards shuffled{{-1, -8, -3, -7, -2, -5, -4, -6, -8}, {}};
    for (const double logC : shuffled.logC)
        shuffled.mv.push_back(100 + 58 * std::log10(std::pow(10.0, logC) + 1e-6));
    const LinearRange range = FindLinearRange(shuffled, 2);
    EXPECT_EQ(range.limit, Limit::Reached);
    EXPECT_NEAR(range.detectionLogC, -6, 0.1);
    // The potentials of the level, −8 twice, −7 and −6, scatter more than the line does: their own t(3) counts.
    ASSERT_TRUE(range.detection);
    EXPECT_NEAR(range.detection->low, -6.18140, 1e-5);
    EXPECT_NEAR(range.detection->high, -5.71286, 1e-5);
    Standards twice = Decades(-5, -1, 100, 58, 1e-5);
    twice.logC.push_back(-5);
    twice.mv.push_back(twice.mv[0]);
    EXPECT_EQ(FindLinearRange(twice, 2).limit, Limit::AtMost) << "one standard measured twice is no level";
    EXPECT_FALSE(FindLinearRange(Standards{{-5, -5, -3}, {162, 161, 46}}, 2).found) << "two concentrations";
    EXPECT_TRUE(FindLinearRange(Standards{{-5, -4, -3}, {162, 104, 46}}, 2, 58).found);
    EXPECT_FALSE(FindLinearRange(Standards{{-5, -4, -3}, {162, 104, 46}}, 2, 58.1).found) << "flatter than that";
}

TEST(LowEndFitTest, FindsTheConcentrationBesideTheStandards) {
    for (const auto& [slope, c] : {std::pair{58, 1e-6}, {-58, 3e-5}, {29, 2e-4}, {58, 1e-9}}) {
        const auto fit = FitLowEnd(Decades(-7, -1, 100, slope, c));
        ASSERT_TRUE(fit);
        // Half the digits of a double locate a minimum.
        EXPECT_NEAR(fit->c / c, 1, 1e-4);
        EXPECT_NEAR(fit->slope, slope, 1e-4);
        EXPECT_NEAR(fit->intercept, 100, 1e-3);
        EXPECT_LT(fit->residualDeviation, 1e-4);
    }
    // With noise it lies below both neighbours.
    const Standards noisy = Decades(-7, -2, 100, 58, 1e-6, {0.4, -0.3, 0.5, -0.6, 0.2, 0.1});
    const auto fit = FitLowEnd(noisy);
    const auto squares = [&](double c) {
        Values logs;
        for (const double logC : noisy.logC)
            logs.push_back(std::log10(std::pow(10.0, logC) + c));
        return FitStraightLine(logs, noisy.mv)->residualSquares;
    };
    EXPECT_LT(fit->residualSquares, squares(fit->c * 1.001));
    EXPECT_LT(fit->residualSquares, squares(fit->c * 0.999));
    EXPECT_NEAR(fit->residualDeviation, std::sqrt(fit->residualSquares / 3), 1e-9) << "six standards, three unknowns";
}

TEST(LowEndFitTest, IsTheLineWhereNothingBendsAndNoneWhereNothingFits) {
    const auto bentOtherWay = FitLowEnd(Decades(-5, -1, 100, 58, 0, {-20}));
    ASSERT_TRUE(bentOtherWay);
    EXPECT_EQ(bentOtherWay->c, 0);
    EXPECT_NEAR(bentOtherWay->slope, 58 + 20 * 2 / 10.0, 1e-9) << "the slope of the line";
    EXPECT_FALSE(FitLowEnd(Decades(-3, -1, 100, 58)));
    EXPECT_FALSE(FitLowEnd(Standards{{-4, -3, -2, -1, 0}, {0, 1e-4, 2e-3, 0.05, 20}}))
        << "linear in the concentration and beyond";
}

// --- the judgement ------------------------------------------------------------------------------------------------

QualityInput Input(Standards standards, int ion = F, std::optional<double> celsius = 25) {
    QualityInput input;
    input.standards = std::move(standards);
    input.ion = ResponseOf(ion);
    input.celsius = celsius;
    return input;
}

/// Percent of the theoretical slope of fluoride at 25 °C, with residuals of ±`scatter`.
QualityInput Fluoride(double percent, double scatter = 0.3) {
    // These four are at right angles to a line: the residuals are what is added.
    return Input(Decades(-5, -2, 100, -59.15973 * percent / 100, 0, {scatter, -scatter, -scatter, scatter}));
}

QualityInput KnownSlope(double slope) {
    QualityInput input = Input(Standards{{-3}, {20}});
    input.knownSlope = slope;
    return input;
}

const QualityLimits limits;

Verdict Judged(const QualityInput& input) {
    return JudgeCalibration(JudgeQuality(input, limits), input.ion, input.crossed, limits);
}

TEST(VerdictTest, NamesTheGradeAndItsReason) {
    QualityInput noCharge = Fluoride(98);
    noCharge.ion = {};
    QualityInput crossed = Fluoride(-98);
    crossed.crossed = true;
    // The reason is a part of the line.
    const std::tuple<const char*, QualityInput, Grade, const char*> cases[] = {
        {"good", Fluoride(98), Grade::Good,
         "the slope is 98.0 % of the theoretical one and a sample is uncertain by -7.8 to +8.4 % (95 %)"},
        {"lower end of good", Fluoride(94.96), Grade::Good, "95.0 %"},
        {"below good", Fluoride(94.9), Grade::Usable, "94.9 %"},
        {"upper end of good", Fluoride(102), Grade::Good, "102.0 %"},
        {"above good", Fluoride(102.1), Grade::Usable, "102.1 %"},
        {"lower end of usable", Fluoride(85), Grade::Usable, "85.0 %"},
        {"below usable", Fluoride(84.9), Grade::Doubtful, "84.9 %"},
        {"upper end of usable", Fluoride(105), Grade::Usable, "105.0 %"},
        {"above usable", Fluoride(105.1), Grade::Doubtful, "105.1 %"},
        // Four standards: s is √2 of the scatter, and a sample is uncertain by 0.11734 decades per mV of it.
        {"interval below 10 %", Fluoride(98, 0.35), Grade::Good, "+9.9 %"},
        {"interval above 10 %", Fluoride(98, 0.36), Grade::Usable, "a sample is uncertain by -9.3 to +10.2 % (95 %)"},
        {"interval below 50 %", Fluoride(98, 1.49), Grade::Usable, "+49.6 %"},
        {"interval above 50 %", Fluoride(98, 1.52), Grade::Doubtful, "the figures cannot tell"},
        {"0.7 mV of eight", Input(Decades(-9, -2, 100, -57.977, 0, {.7, -.7, -.7, .7, .7, -.7, -.7, .7})), Grade::Good,
         "a sample is uncertain by -8.0 to +8.7 % (95 %)"},
        {"0.7 mV of three", Input(Decades(-4, -2, 100, -57.977, 0, {-.35, .7, -.35})), Grade::Doubtful,
         "a sample is uncertain by -39.3 to +64.8 % (95 %)"},
        {"slope not told from 0", Input(Standards{{-4, -3, -2}, {100, -60, -16}}), Grade::Doubtful,
         "the slope cannot be told from 0"},
        {"no answer", Input(Standards{{-5, -4, -3, -2}, {10.1, 10.4, 9.9, 10.2}}), Grade::Doubtful,
         "doubtful: the potentials differ by 0.5 mV over 3.0 decades: the electrode does not answer"},
        {"no answer of two", Input(Standards{{-4, -2}, {3, 14.8}}), Grade::Doubtful, "does not answer"},
        {"two concentrations twice", Input(Standards{{-3, -3, -2, -2}, {46.2, 45.8, -12.2, -11.8}}), Grade::Usable,
         "two concentrations alone"},
        {"wrong sign", Input(Decades(-5, -2, 100, -29, 0, {0.3, -0.3}), Ca), Grade::Doubtful,
         "the slope has the sign of an anion's, but Ca²⁺ is a cation: are the standards in the right order?"},
        {"wrong sign of an anion", Fluoride(-98), Grade::Doubtful,
         "the slope has the sign of a cation's, but F⁻ is an anion"},
        {"wrong sign by sorting", crossed, Grade::Doubtful, "fell as they were entered"},
        {"no charge", noCharge, Grade::Untold, "the charge of the ion is not known"},
        {"perfect fit", Fluoride(98, 0), Grade::Usable,
         "the points lie exactly on the line (deviation 0): no uncertainty can be told"},
        {"saturates", Input(Decades(-9, -1, 100, -59, 0, {.2, -.2, .2, -.2, .2, -.2, .2, 4, 9})), Grade::Usable,
         "the highest standards leave the line: the electrode saturates"},
        {"saturates and spoils", Input(Decades(-6, -1, 100, -59, 0, {.2, -.2, .2, -.2, 22, 55})), Grade::Doubtful,
         "saturates, the others have a slope of 99.9 % of the theoretical one"},
        {"two points", Input(Decades(-3, -2, 100, -58)), Grade::Usable, "two points: no uncertainty can be told"},
        {"two points, bad slope", Input(Decades(-3, -2, 100, -40)), Grade::Doubtful, "67.6 %"},
        {"one point", KnownSlope(-58), Grade::Untold, "one point with a known slope: no uncertainty can be told"},
        {"one point, wrong sign", KnownSlope(58), Grade::Doubtful, "are the standards in the right order?"},
        {"no point", Input({}), Grade::Untold, "there are no standards"},
        {"one concentration", Input(Standards{{-3, -3, -3}, {1, 2, 3}}), Grade::Doubtful, "the same concentration"},
        {"one potential", Input(Standards{{-3, -2, -1}, {0.1, 0.1, 0.1}}), Grade::Doubtful, "all potentials are equal"},
        {"all equal", Input(Standards{{-3, -3}, {1, 1}}), Grade::Doubtful, "the same concentration"},
        {"below absolute zero", Input(Decades(-5, -2, 100, -58), F, -300), Grade::Untold, "temperature"}};
    for (const auto& [what, input, grade, reason] : cases) {
        const Verdict verdict = Judged(input);
        EXPECT_EQ(verdict.grade, grade) << what << ": " << verdict.Line();
        EXPECT_NE(verdict.Line().find(reason), std::string::npos) << what << ": " << verdict.Line();
        EXPECT_FALSE(verdict.next.empty() || (grade == Grade::Doubtful && verdict.causes.empty())) << what;
    }
}

TEST(VerdictTest, TellsTheGravestFirstAndItsOwnRemedy) {
    const Verdict verdict = Judged(Fluoride(80, 0.5));
    EXPECT_EQ(DoubtOf(verdict), "calibration doubtful: the slope is 80.0 % of the theoretical one");
    EXPECT_TRUE(verdict.reason.starts_with(verdict.decisive + "; a sample is uncertain by ")) << verdict.reason;
    for (const std::string& cause : verdict.causes)
        EXPECT_EQ(cause.find("few standards"), std::string::npos) << "a cause of the lesser finding";
    EXPECT_EQ(DoubtOf(Judged(Fluoride(86))), "") << "usable";
}

TEST(VerdictTest, NamesWhatIsWrongBeforeTheElectrode) {
    // Calcium from 0.01 to 1000 ppm, of which the lowest two are below the detection limit; worked out by hand.
    const auto calcium = [](Values mv) {
        return Input(Standards{{-6.603, -5.603, -4.603, -3.603, -2.603, -1.603}, std::move(mv)}, Ca, 20);
    };
    const auto fluoride = [](Values logC, Values mv) {
        QualityInput input = Input(Standards{std::move(logC), std::move(mv)});
        input.gramsPerMole = 18.9984;
        return input;
    };
    // Eo 100 and −58 mV a decade but for the one that is wrong; at the end of four it is off by 20 mV with the residual
    // 6 where its neighbour has −8. How the reason begins, a later part, how the advice begins, number of causes.
    const std::tuple<QualityInput, const char*, const char*, const char*, std::size_t> rows[] = {
        {fluoride({-5, -4, -3, -2}, {390.2, 273.8, 332.1, 215.9}), "the points 2 and 3 fit the line", "", "Compare", 2},
        {fluoride({-4, -3, -2}, {274, 332, 216}), "the points 1 and 2 fit the line", "", "Compare the two", 2},
        {fluoride({-5, -4, -3, -5}, {390, 332, 274, 216}), "point 4 lies 174.0 mV", "g/L had been", "Compare", 2},
        {fluoride({-5, -4, -3, 2.279}, {390, 332, 274, 216}), "point 4 lies 248.2", "as mol/L", "Compare", 2},
        {fluoride({-5, -4, -3, -2}, {410, 332.3, 273.7, 216.2}), "point 1 lies 19.8", "0.46 times", "Measure this", 2},
        {fluoride({-5, -4, -3}, {390, 342, 274}), "point 2 lies 10.0 mV off", "", "Measure this standard", 2},
        {fluoride({-5, -4, -3}, {400, 332, 274}), "point 1 lies 10.0 mV off", "", "Measure this standard", 2},
        {fluoride({-5, -4, -3}, {390, 334, 274}), "a sample is uncertain by", "cannot tell", "Measure the standards",
         4},
        {fluoride({-7, -6, -5, -4, -3, -2}, {506.1, 447.9, 393, 332.1, 273.9, 216.1}), "point 3 lies 3.0", "", "Go on",
         6},
        {calcium({-62.1, -58.7, -40.2, -12.5, 16.1, 45.3}),
         "the lowest standards leave the line, the others have a slope of 98.0 %", "; the slope is 77.5 %",
         "Calibrate without the lowest standards", 3},
        {calcium({-25, -22, -15, 0, 15, 30}), "the slope is 39.4 %", "lowest", "Clean and condition", 7},
        {calcium({-93, -67, -40, -12, 16, 44}), "the slope is 94.", "point 1 lies 2.2", "Go on", 9}};
    for (const auto& [input, reason, part, next, causes] : rows) {
        const Verdict verdict = Judged(input);
        EXPECT_TRUE(verdict.reason.starts_with(reason)) << verdict.reason;
        EXPECT_NE(verdict.reason.find(part), std::string::npos) << verdict.reason;
        EXPECT_TRUE(verdict.next.starts_with(next)) << reason << ": " << verdict.next;
        EXPECT_EQ(verdict.causes.size(), causes) << reason;
    }
}

TEST(QualityFigures, ComeFromTheLine) {
    const CalibrationQuality quality = JudgeQuality(Input(Decades(-5, -1, 100, -58, 0, {0, 0, 4, 0, 0})), limits);
    EXPECT_NEAR(quality.slope, -58, 1e-9) << "a residual in the middle leaves the slope";
    EXPECT_NEAR(quality.largestResidual, 3.2, 1e-9);
    EXPECT_EQ(Joined(quality.wrong.first, quality.points[2].marked), "2|1");
    EXPECT_NEAR(quality.wrong.distance, 4, 1e-9);
    // 3.2 mV at −58 mV a decade: 10^(−0.05517) = 0.8807.
    EXPECT_NEAR(quality.points[2].percent, -11.93, 0.01);
    EXPECT_NEAR(quality.points[0].leverage, 0.6, 1e-12);
    EXPECT_NEAR(*quality.percent, 100 * 58 / 59.1597, 1e-3);

    const Standards standards = Decades(-5, -1, 100, -58, 0, {0.9});
    const CalibrationQuality tilted = JudgeQuality(Input(standards, F, std::nullopt), limits);
    // Without the first point the slope is −58 again; with it −58 − 0.18.
    EXPECT_NEAR(*tilted.points[0].slopeChange, 100 * 0.18 / 58.18, 1e-9);
    EXPECT_FALSE(tilted.points[0].marked) << "0.31 %";
    EXPECT_EQ(Joined(tilted.celsiusAssumed, tilted.celsius), "1|25");
    QualityLimits strict;
    strict.slopeChange = 0.3;
    EXPECT_TRUE(JudgeQuality(Input(standards), strict).points[0].marked);
    const CalibrationQuality carried = JudgeQuality(Input(Standards{{-3, -3, -1}, {1, 2, -100}}), limits);
    EXPECT_TRUE(carried.points[2].marked) << "alone at its concentration";
    EXPECT_FALSE(carried.points[2].slopeChange);
    EXPECT_FALSE(JudgeQuality(Input(Decades(-2, -1, 0, 58)), limits).points[0].marked) << "two points: none is odd";
}

}  // namespace
}  // namespace kelvo
