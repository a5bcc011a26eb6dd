#include "core/Tables.h"

#include <gtest/gtest.h>

#include "support/Joined.h"
#include "text/CodeOf.h"

namespace kelvo::test {
namespace {

TEST(Tables, IonsInTheOrderOfEveryList) {
    const IonTable ions = StandardIons();
    double sum = 0, weighted = 0;
    for (std::size_t i = 0; i < ions.names.size(); ++i) {
        sum += ions.weights[i];
        weighted += static_cast<double>(i) * ions.weights[i];
    }
    EXPECT_EQ(Joined(ions.names),
              "Ag,Ba,Br,Ca,Cd,Cl,ClO4,CN,CO3,Cu,F,H,Hg,I,K,Na,NH3,NH4,NO2,NO3,OH,Pb,S,SCN,pH(Hydrogen),Custom");
    // Sums over the printed table; 26 weights rounded to 32 bits are off by less than 8e-6 each, 25 times that in the
    // second sum. A digit wrong or two rows exchanged moves them by 1e-5 and by the difference of the two at least.
    EXPECT_NEAR(sum, 1730.07748, 5e-5);
    EXPECT_NEAR(weighted, 19867.03306, 5e-4);
}

TEST(Tables, SensorToCelsius) {
    // By hand, as 966.8 - 1000 over 7.28 for a sensor that is not connected, 171.9 / 6.64 + 70 beyond the last point.
    const std::pair<float, double> rows[] = {{966.8f, 0},       {205.5f, 80},        {745.8f, 25},     {930.4f, 5},
                                             {894, 10},         {893.5f, 10.052966}, {800, 19.957627}, {772.7f, 22.5},
                                             {1000, -4.560440}, {100, 95.888554},    {0, 110.948795}};
    SensorTable table = StandardSensor();
    // Half a unit of a 32-bit reading below 1024 is 3.1e-5; two of them over the flattest segment, 6.64 a degree.
    for (const auto& [reading, celsius] : rows)
        EXPECT_NEAR(SensorToCelsius(table, reading), celsius, 1.4e-5) << reading;
    table.celsius[1] = 0;
    EXPECT_EQ(SensorToCelsius(table, 930), 0) << "a segment without degrees";
}

TEST(Tables, FahrenheitAndConcentrations) {
    EXPECT_FLOAT_EQ(CelsiusToFahrenheit(99.9f), 211.82f);
    EXPECT_FLOAT_EQ(FahrenheitToCelsius(98.6f), 37);
    const IonTable ions = StandardIons();
    EXPECT_EQ(PpmToMolar(ions, 0.1, HydrogenIon), 0.0001f);
    EXPECT_DOUBLE_EQ(MolarToPpm(ions, 0.0123456789, CustomIonRow), 1234.56789) << "a double, not a 32-bit float";
    EXPECT_NEAR(MolarToPpm(ions, 0.5, 21), 103595, 0.005) << "0.5 · 207190, its weight known to 8e-6";
    EXPECT_EQ(PpmToMolar(ions, 5, NoIon) + MolarToPpm(ions, 5, NoIon), 0);
    IonTable weightless = ions;
    weightless.weights[25] = 0;
    EXPECT_EQ(CodeOf([&] { PpmToMolar(ions, 1, 26); }), 9);
    EXPECT_EQ(CodeOf([&] { PpmToMolar(weightless, 1, 25); }), 11);
    EXPECT_EQ(CodeOf([&] { PpmToMolar(ions, 1e42, HydrogenIon); }), 6);
    EXPECT_EQ(CodeOf([&] { MolarToPpm(ions, 1e306, CustomIonRow); }), 6);
    EXPECT_EQ(CodeOf([] { Log10(0); }), 5);
    EXPECT_EQ(Log10(0.01), -2) << "exact, unlike ln 0.01 / ln 10";
}

}  // namespace
}  // namespace kelvo::test
