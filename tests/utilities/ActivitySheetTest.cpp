#include "utilities/ActivitySheet.h"

#include <cmath>
#include <map>

#include "utilities/ActivityCoefficient.h"
#include "utilities/Play.h"

namespace kelvo::test {
namespace {

const char* const Insufficient = "There is insufficient data to calculate";
const char* const OutOfRange = "Data out of range, please try again";
const char* const StrengthRefused = "Sorry, input value is invalid, cannot be calculated correctly.";

// J. Kielland, Individual Activity Coefficients of Ions in Aqueous Solutions, J. Am. Chem. Soc. 59 (1937) 1675-1678,
// table of coefficients by ion size. It has no linear term, so ours is divided out. The columns up to 0.01 mol/L are
// given to three figures, some in steps of 0.005: half a step is the tolerance.
TEST(ActivityCoefficientTest, AgreesWithKiellandWhereTheTermsCoincide) {
    const struct {
        const char* ion;
        double at0001, at0005, at001;
    } rows[] = {
        {"H", 0.967, 0.933, 0.914},   {"Na", 0.964, 0.928, 0.902},  {"OH", 0.964, 0.926, 0.900},
        {"F", 0.964, 0.926, 0.900},   {"SCN", 0.964, 0.926, 0.900}, {"ClO4", 0.964, 0.926, 0.900},
        {"K", 0.964, 0.925, 0.899},   {"Cl", 0.964, 0.925, 0.899},  {"Br", 0.964, 0.925, 0.899},
        {"I", 0.964, 0.925, 0.899},   {"CN", 0.964, 0.925, 0.899},  {"NO2", 0.964, 0.925, 0.899},
        {"NO3", 0.964, 0.925, 0.899}, {"Ag", 0.964, 0.924, 0.898},  {"NH4", 0.964, 0.924, 0.898},
        {"Ca", 0.870, 0.749, 0.675},  {"Cu", 0.870, 0.749, 0.675},  {"Ba", 0.868, 0.744, 0.670},
        {"Cd", 0.868, 0.744, 0.670},  {"Hg", 0.868, 0.744, 0.670},  {"S", 0.868, 0.744, 0.670},
        {"Pb", 0.868, 0.742, 0.665},  {"CO3", 0.868, 0.742, 0.665},
    };
    const IonTable ions = StandardIons();
    for (const auto& row : rows) {
        const IonSize& ion = IonSizes()[static_cast<std::size_t>(IonOf(ions, row.ion))];
        const auto withoutLinearTerm = [&](float strength) {
            return ActivityCoefficient(strength, ion) / std::pow(10.0, 0.1 * ion.charge * ion.charge * strength);
        };
        EXPECT_NEAR(withoutLinearTerm(0.001f), row.at0001, 0.0025) << row.ion;
        EXPECT_NEAR(withoutLinearTerm(0.005f), row.at0005, 0.0025) << row.ion;
        EXPECT_NEAR(withoutLinearTerm(0.01f), row.at001, 0.0025) << row.ion;
    }
}

// Mean activity coefficients of KCl at 25 °C, R. A. Robinson and R. H. Stokes, Electrolyte Solutions, 2nd ed. (1959),
// appendix 8.10, and CRC Handbook of Chemistry and Physics for the strengths below 0.1. K and Cl have one size and
// charge here, so the mean is either one's; the linear term takes part. Measured to 0.001, the equation to 0.1 mol/L
// to about as much.
TEST(ActivityCoefficientTest, AgreesWithMeasuredPotassiumChloride) {
    const struct {
        float strength;
        double measured;
    } rows[] = {{0.001f, 0.965}, {0.002f, 0.951}, {0.005f, 0.927}, {0.01f, 0.901},
                {0.02f, 0.869},  {0.05f, 0.816},  {0.1f, 0.770}};
    const IonTable ions = StandardIons();
    for (const auto& row : rows)
        for (const char* ion : {"K", "Cl"})
            EXPECT_NEAR(ActivityCoefficient(row.strength, IonSizes()[static_cast<std::size_t>(IonOf(ions, ion))]),
                        row.measured, 0.0015)
                << ion << " at " << row.strength;
}

TEST(ActivityCoefficientTest, RowsStandInTheOrderOfTheIonTable) {
    const IonTable ions = StandardIons();
    ASSERT_EQ(IonSizes().size(), 24u);
    for (std::size_t i = 0; i < 24; ++i)
        EXPECT_EQ(IonSizes()[i].ion, ions.names[i]);
    EXPECT_EQ(IonSizes()[16].size, 0.4f);  // NH3, in no published table under this charge
}

// By hand, Ca: √0.1 = 0.31623, 1 + 3.29·0.6·0.31623 = 1.62423, 0.51·4·0.31623 / 1.62423 = 0.39717,
// 0.39717 − 0.04 = 0.35717, γ = 0.439. K: 0.51·0.31623 / 1.31212 − 0.01 = 0.11291, γ = 0.771.
// ppm of a strength: the weight of Ca is 40.0779991 in 32 bits.
// Ca at 0.6: √0.6 = 0.77460, 2.04·0.77460 / 2.52906 − 0.24 = 0.38481, γ = 0.412.
TEST(ActivitySheetTest, FollowsTheTableOfBoxes) {
    const CalculatorCase rows[] = {
        {"no ion: refused in every box", "0=1! 2!",
         "1=", "Please select an Ion from the Ion-box.|Please select an Ion from the Ion-box.", ""},
        {"an empty strength in ppm hands on", "Ca 0!", "", "", "1"},
        {"an empty strength in mol/L", "Ca 1!", "", Insufficient, ""},
        {"an empty strength in mol/L beside a ppm that waits for Enter", "Ca 0=1 1!", "", "", ""},
        {"strength in mol/L", "Ca 1=0.1!", "0=4007.800 2=0.439", "", "3"},
        {"strength in ppm", "Ca 0=4007.8!", "1=1.000E-1 2=0.439", "", "3"},
        {"a charge of 1 takes a quarter of the linear term", "K 1=0.1!", "0=3909.830 2=0.771", "", "3"},
        {"a strength of nothing", "Ca 1=0!", "0=0.000 2=1.000", "", "3"},
        {"the coefficient's box does nothing", "Ca 1=0.1! 2!", "2=0.439", "", ""},
        {"an empty activity in ppm hands on", "Ca 3!", "", "", "4"},
        {"an empty activity in mol/L", "Ca 4!", "", Insufficient, ""},
        {"an activity without a coefficient is converted and told", "Ca 3=100!", "4=2.495E-3 5= 6=", Insufficient, ""},
        {"so is one in mol/L", "Ca 4=0.01!", "3=400.780 5= 6=", Insufficient, ""},
        {"activity in ppm to concentration", "Ca 1=0.1! 3=43.9!", "4=1.095E-3 5=100.000 6=2.495E-3", "", "list"},
        {"activity in mol/L to concentration: 400.780 / 0.439", "Ca 1=0.1! 4=0.01!", "3=400.780 5=912.938 6=2.278E-2",
         "", "list"},
        {"an activity typed first is taken up by the strength", "Ca 3=43.9 1=0.1!", "2=0.439 5=100.000 6=2.495E-3", "",
         "list"},
        {"an empty concentration in ppm hands on", "Ca 5!", "", "", "6"},
        {"an empty concentration in mol/L", "Ca 6!", "", Insufficient, ""},
        {"an empty concentration in mol/L beside an activity", "Ca 3=1 6!", "", "", ""},
        {"concentration in ppm to activity", "Ca 1=0.1! 5=100!", "3=43.900 4=1.095E-3 6=2.495E-3", "", "list"},
        {"concentration in mol/L to activity; its own box is rewritten from the ppm", "Ca 1=0.1! 6=0.01!",
         "5=400.780 6=1.000E-2 3=175.942 4=4.390E-3", "", "list"},
        {"the concentration asks for no coefficient: an empty one counts as 0", "Ca 5=100!", "3=0.000 6=2.495E-3", "",
         "list"},
        {"0.6 mol/L is calculated", "Ca 1=0.6!", "0=24046.799 2=0.412", "", "3"},
        {"0.6 mol/L by its ppm is calculated", "Ca 0=24046.8!", "1=6.000E-1 2=0.412", "", "3"},
        {"anything above is refused", "Ca 1=0.60000001!", "0=24046.800 2=", StrengthRefused, "1"},
        {"anything above by its ppm is refused", "Ca 0=24047!", "1=6.000E-1 2=", StrengthRefused, "1"},
        {"a refusal computes nothing", "Ca 1=0.1! 3=43.9! 1=0.7!", "0=28054.599 2=0.439 5=100.000", StrengthRefused,
         "1"},
    };
    for (const auto& row : rows)
        Play<ActivitySheet>(row);
}

TEST(ActivitySheetTest, KeepsItsQuirks) {
    const CalculatorCase rows[] = {
        {"a new ion on an empty sheet leads to mol/L", "Ca", "", "", "1"},
        // 3909.83 ppm: of K 0.1 mol/L. Of Ca 0.097556: √ 0.31234, 2.04·0.31234/1.61656 − 0.039022 = 0.35513, 0.441;
        // 77.1 ppm are 1.924E-3 mol/L; 77.1/0.441 = 174.830, which are 4.362E-3 mol/L.
        {"a new ion reworks everything from the strength in ppm and the activity in ppm", "K 0=3909.83! 3=77.1! Ca",
         "1=9.756E-2 2=0.441 4=1.924E-3 5=174.830 6=4.362E-3", "", ""},
        {"a new ion without an activity reworks the coefficient alone", "K 0=3909.83! Ca", "2=0.441 3= 4= 5= 6=", "",
         ""},
        {"a new ion whose strength is too high: the other wording, with a title", "Pb 0=100000! Ca", "1=4.826E-1",
         "[Activity Coefficients] Sorry, Ionic strength > 0.6(mol/L), cannot be calculated correctly, please select "
         "another ion.",
         ""},
        {"Refresh empties all and takes the ion away", "Ca 1=0.1! 3=43.9! refresh 1=0.1!",
         "0= 2= 3= 4= 5= 6=", "Please select an Ion from the Ion-box.", ""},
        {"Refresh leads to the ion list", "Ca 1=0.1! refresh", "1=", "", "list"},
    };
    for (const auto& row : rows)
        Play<ActivitySheet>(row);

    const std::string longNumber(1000, '9');
    for (const char* box : {"0=", "1=", "3=", "4=", "5=", "6="})
        Play<ActivitySheet>(
            {"1,000 digits overflow and are told", ("Ca " + (box + longNumber) + "!").c_str(), "2=", OutOfRange, ""});
    Play<ActivitySheet>(
        {"so they are when the ion changes", ("Ca 0=" + longNumber + " K").c_str(), "1= 2=", OutOfRange, ""});
}

TEST(ActivitySheetTest, EmptyingABoxEmptiesItsDependants) {
    const char* const filled = "Ca 1=0.1! 3=43.9! ";
    const struct {
        const char *name, *emptied, *shown;
    } rows[] = {
        {"strength in ppm, with the coefficient", "0=", "1= 2= 3=43.9 5=100.000"},
        {"strength in mol/L, with the coefficient", "1=", "0= 2= 3=43.9 5=100.000"},
        {"activity in ppm", "3=", "4= 5= 6= 2=0.439"},
        {"activity in mol/L", "4=", "3= 5= 6= 2=0.439"},
        {"concentration in ppm", "5=", "3= 4= 6= 2=0.439"},
        {"concentration in mol/L", "6=", "3= 4= 5= 2=0.439"},
    };
    for (const auto& row : rows)
        Play<ActivitySheet>({row.name, (std::string(filled) + row.emptied).c_str(), row.shown, "", ""});
}

TEST(ActivitySheetTest, RefusesKeysInItsOwnWords) {
    const AppState state;
    Listener listener;
    ActivitySheet sheet(listener, state.Ions);
    EXPECT_FALSE(sheet.KeyAllowed(0, U','));
    sheet.KeyRefused(0);
    EXPECT_EQ(listener.heard, "Wrong data type, please re-enter.");
}

TEST(ActivitySheetTest, HoldsInEveryOrder) {
    static const std::map<int, std::vector<int>> dependants = {{0, {1, 2}},    {1, {0, 2}},    {3, {4, 5, 6}},
                                                               {4, {3, 5, 6}}, {5, {3, 4, 6}}, {6, {3, 4, 5}}};
    RunEveryOrder<ActivitySheet>({0, 1, 3, 4, 5, 6}, [](int box) { return dependants.at(box); });
}

}  // namespace
}  // namespace kelvo::test
