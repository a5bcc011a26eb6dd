#include "addition/Addition.h"

#include <gtest/gtest.h>

#include "text/CodeOf.h"

namespace kelvo::test {
namespace {

/// Ten digits: the sums are plain double arithmetic, the expected figures were worked out with more.
constexpr double Digits = 1e-9;

const AdditionFormula Std = StandardAdditionTerms, Smp = SampleAdditionTerms;

TEST(Addition, WorkedByHand) {
    const double ppm = 2000 / (52 * 3.1622776601683795 - 50), q = 2.2122162910704493, warm = 298.15 / 293.15;
    const Addition worked = {50, 2, 1000, -58, 25, 25, 80, 51}, cold = {50, 2, 1000, -58, 20, 25, 80, 80 - 29 * warm},
                   cation = {100, 10, 1000, 58, 25, 25, -100, -42}, equal = {1, 10, 100, -58, 25, 25, 120, 120},
                   mixed = {5, 50, 5, -58, 25, 25, 120, 100}, negative = {5, 50, 5, -58, 25, 25, 100, 120};
    // name, formula, addition, scatter, ppm, slope, uncertainty
    const std::tuple<const char*, AdditionFormula, Addition, Scatter, double, double, double> rows[] = {
        // ΔE −29 of S −58: Q = √10; c = 2000 / (52·√10 − 50). The terms of u: 2000·(Q − 1)/114.438²·0.5 twice, and
        // 104000/114.438²·Q·ln 10/58·√0.02.
        {"standard to sample", Std, worked, {}, ppm, -58, 0.272763},
        {"the slope's deviation adds ΔE/S·u(S)", Std, worked, {0.1, 0.5}, ppm, -58, 0.369486},
        {"scatter", Std, worked, {0.5, 0.5}, ppm, -58, 0.783329},
        // ΔE 58.0 of S 58 at its own temperature: Q = 10.
        {"a cation", Std, cation, {}, 10, 58, 0.141471},
        // 20 °C to 25 °C: S = −58·298.15/293.15, ΔE half of it.
        {"slope of 20 °C", Std, cold, {}, ppm, -58 * warm, 0.271548},
        {"no change: the standard is the sample", Smp, equal, {}, 100, -58, 6.175831},
        // Q = 10^(20/58) = 2.2122176; the terms of u: 5·50·1.2122/25·0.05 twice, and 55·Q·ln 10/58·√0.02.
        {"sample to standard", Smp, mixed, {}, 5 * (11 * q - 10), -58, 1.096074},
        {"a result below 0", Smp, negative, {}, 5 * (11 / q - 10), -58, 0.411845},
    };
    for (const auto& [name, formula, addition, scatter, concentration, slope, uncertainty] : rows) {
        const AdditionResult result = WorkOut(addition, formula, scatter);
        EXPECT_NEAR(result.ppm, concentration, std::abs(concentration) * Digits) << name;
        EXPECT_NEAR(result.slope, slope, Digits * 100) << name;
        EXPECT_NEAR(result.uncertainty, uncertainty, 5e-6) << name;
        EXPECT_NEAR(result.margin, 1.959964 * uncertainty, 2e-5) << name;
    }
    // The electrode's part of u is 0.7477, that of the volumes 0.2335; t of 3 is 3.18245 (NIST/SEMATECH e-Handbook,
    // 1.3.6.7.2): √((3.18245·0.7477)² + (1.95996·0.2335)²).
    EXPECT_NEAR(WorkOut(worked, Std, {0.5, 0.5, 3}).margin, 2.423184, 2e-5);
}

TEST(Addition, WhatHasNoResultThrows) {
    const std::tuple<const char*, AdditionFormula, Addition, int> rows[] = {
        {"slope 0", Std, {50, 2, 1000, 0, 25, 25, 80, 51}, 11},
        {"sample at absolute zero", Std, {50, 2, 1000, -58, 25, -273.15, 80, 51}, 11},
        {"calibration at absolute zero", Smp, {50, 2, 1000, -58, -273.15, 25, 80, 51}, 11},
        {"10^x beyond a double", Smp, {5, 50, 5, -0.1, 25, 25, 80, -500}, 6},
        {"(Vs + Va)·Q equals Vs", Std, {50, 0, 1000, -58, 25, 25, 80, 80}, 11},
        {"no sample", Smp, {0, 50, 5, -58, 25, 25, 120, 100}, 11},
    };
    for (const auto& [name, formula, addition, code] : rows)
        EXPECT_EQ(CodeOf([&, f = formula, a = addition] { WorkOut(a, f); }), code) << name;
}

TEST(Addition, Grades) {
    using enum AdditionGrade;
    const std::tuple<double, double, float, AdditionGrade> rows[] = {
        {0, 20, -999, Bad},
        {39.9, 10, 2.99f, Good},
        {10, 40, 3, Acceptable},
        {11, 1, 10, Acceptable},
        {1, 11.01, 10.01f, Repeat},
        {20, -10, 3, Acceptable},
        // Equal in 32 bits is equal.
        {20.0000001, 20, 0, Good},
    };
    for (const auto& [ppm, expected, wanted, grade] : rows) {
        const float deviation = AdditionDeviation(ppm, expected);
        EXPECT_FLOAT_EQ(deviation, wanted) << ppm << " of " << expected;
        EXPECT_EQ(GradeOf(deviation), grade) << ppm << " of " << expected;
    }
    EXPECT_THROW(AdditionDeviation(20, 0), RuntimeError);
    EXPECT_THROW(AdditionDeviation(1e39, 20), RuntimeError);
}

}  // namespace
}  // namespace kelvo::test
