#include "core/Tables.h"

#include <gtest/gtest.h>

#include "calibration/CaliTestPoints.h"
#include "support/Joined.h"

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
    EXPECT_EQ(ions.weights[21], 207.19f);
    EXPECT_EQ(ions.weights[16], 17.03061f);
}

TEST(Tables, SensorToCelsius) {
    struct Row {
        const char* name;
        float reading;
        double celsius;
    };
    const Row rows[] = {
        {"first point", 966.8f, 0},
        {"last point", 205.5f, 80},
        {"inner point", 745.8f, 25},
        {"half of the first segment", 930.4f, 5},
        {"second point", 894, 10},
        {"just below it: (894 - 893.5) / 9.44 + 10", 893.5f, 10.052966},
        {"just above the third: (894 - 800) / 9.44 + 10", 800, 19.957627},
        {"a segment of 5 degrees: 26.9 / 10.76 + 20", 772.7f, 22.5},
        {"not connected: (966.8 - 1000) / 7.28", 1000, -4.560440},
        {"beyond 80: 171.9 / 6.64 + 70", 100, 95.888554},
        {"nothing: 271.9 / 6.64 + 70", 0, 110.948795},
    };
    const SensorTable table = StandardSensor();
    // Half a unit of a 32-bit reading below 1024 is 3.1e-5; two of them over the flattest segment, 6.64 a degree.
    for (const Row& row : rows)
        EXPECT_NEAR(SensorToCelsius(table, row.reading), row.celsius, 1.4e-5) << row.name;
    SensorTable flat = table;
    flat.celsius[1] = 0;
    EXPECT_EQ(SensorToCelsius(flat, 930), 0) << "a segment without degrees";
}

TEST(Tables, Fahrenheit) {
    const float pairs[][2] = {{0, 32}, {37, 98.6f}, {25, 77}, {100, 212}, {-40, -40}, {99.9f, 211.82f}};
    for (const auto& [celsius, fahrenheit] : pairs) {
        EXPECT_FLOAT_EQ(CelsiusToFahrenheit(celsius), fahrenheit);
        EXPECT_FLOAT_EQ(FahrenheitToCelsius(fahrenheit), celsius);
    }
}

TEST(Tables, ConcentrationsByWeight) {
    const IonTable ions = StandardIons();
    EXPECT_EQ(PpmToMolar(ions, 0.1, HydrogenIon), 0.0001f);
    EXPECT_FLOAT_EQ(PpmToMolar(ions, 18.9984, 10), 0.001f);
    EXPECT_DOUBLE_EQ(MolarToPpm(ions, 0.0123456789, CustomIonRow), 1234.56789) << "a double, not a 32-bit float";
    EXPECT_NEAR(MolarToPpm(ions, 0.5, 21), 103595, 0.005) << "0.5 · 207190, its weight known to 8e-6";
    EXPECT_EQ(PpmToMolar(ions, 5, NoIon), 0);
    EXPECT_EQ(MolarToPpm(ions, 5, NoIon), 0);
    IonTable weightless = ions;
    weightless.weights[25] = 0;
    struct Row {
        const char* name;
        std::function<void()> step;
        int error;
    };
    const Row rows[] = {
        {"row 26", [&] { PpmToMolar(ions, 1, 26); }, 9},
        {"row -2", [&] { MolarToPpm(ions, 1, -2); }, 9},
        {"no weight", [&] { PpmToMolar(weightless, 1, 25); }, 11},
        {"beyond 32 bits", [&] { PpmToMolar(ions, 1e42, HydrogenIon); }, 6},
        {"beyond 64 bits", [&] { MolarToPpm(ions, 1e306, CustomIonRow); }, 6},
        {"log of 0", [] { Log10(0); }, 5},
        {"log below 0", [] { Log10(-1); }, 5},
    };
    for (const Row& row : rows)
        EXPECT_EQ(CodeOf(row.step), row.error) << row.name;
    EXPECT_DOUBLE_EQ(Log10(1000), 3);
    EXPECT_DOUBLE_EQ(Log10(2), 0.30102999566398120);
    EXPECT_EQ(Log10(1), 0);
}

TEST(Tables, HelpTitlesKeepTheirSpelling) {
    EXPECT_EQ(Joined(HelpTitles()),
              "Calibration,Direct Potentiometry,Standard Addtion,Sample Addtion,Selectivity,Conversion of "
              "Concentration,Activity Cofficients,pH Measurement");
}

}  // namespace
}  // namespace kelvo::test
