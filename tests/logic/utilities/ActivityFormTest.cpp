#include "utilities/ActivityForm.h"

#include <cmath>

#include "utilities/ActivityCoefficient.h"
#include "utilities/RunCases.h"

namespace kelvo::test {
namespace {

const char* const Insufficient = "There is insufficient data to calculate";
const char* const NoIonChosen = "Please select an Ion from the Ion-box.";
const char* const OutOfRange = "Data out of range, please try again";
const char* const Refused = "Sorry, input value is invalid, cannot be calculated correctly.";

const IonSize& SizeOf(const std::string& ion) {
    return IonSizes()[static_cast<std::size_t>(IonOf(StandardIons(), ion))];
}

// J. Kielland, Individual Activity Coefficients of Ions in Aqueous Solutions, J. Am. Chem. Soc. 59 (1937) 1675-1678,
// table of coefficients by ion size. It has no linear term, so ours is divided out. The columns up to 0.01 mol/L are
// given to three figures, some in steps of 0.005: half a step is the tolerance.
TEST(ActivityCoefficientTest, AgreesWithKiellandWhereTheTermsCoincide) {
    const std::tuple<const char*, double, double, double> rows[] = {
        {"H", 0.967, 0.933, 0.914},           {"Na", 0.964, 0.928, 0.902},
        {"OH F SCN ClO4", 0.964, 0.926, 0.9}, {"K Cl Br I CN NO2 NO3", 0.964, 0.925, 0.899},
        {"Ag NH4", 0.964, 0.924, 0.898},      {"Ca Cu", 0.870, 0.749, 0.675},
        {"Ba Cd Hg S", 0.868, 0.744, 0.670},  {"Pb CO3", 0.868, 0.742, 0.665},
    };
    for (const auto& [names, at0001, at0005, at001] : rows) {
        std::istringstream ions(names);
        for (std::string name; ions >> name;) {
            const IonSize& ion = SizeOf(name);
            const auto withoutLinearTerm = [&](float strength) {
                return ActivityCoefficient(strength, ion) / std::pow(10.0, 0.1 * ion.charge * ion.charge * strength);
            };
            EXPECT_NEAR(withoutLinearTerm(0.001f), at0001, 0.0025) << name;
            EXPECT_NEAR(withoutLinearTerm(0.005f), at0005, 0.0025) << name;
            EXPECT_NEAR(withoutLinearTerm(0.01f), at001, 0.0025) << name;
        }
    }
    EXPECT_EQ(SizeOf("NH3").size, 0.4f) << "in no published table under this charge";
}

// Mean activity coefficients of KCl at 25 °C, R. A. Robinson and R. H. Stokes, Electrolyte Solutions, 2nd ed. (1959),
// appendix 8.10, and CRC Handbook of Chemistry and Physics for the strengths below 0.1. K and Cl have one size and
// charge here, so the mean is either one's; the linear term takes part. Measured to 0.001, the equation to 0.1 mol/L
// to about as much.
TEST(ActivityCoefficientTest, AgreesWithMeasuredPotassiumChloride) {
    const std::pair<float, double> rows[] = {{0.001f, 0.965}, {0.002f, 0.951}, {0.005f, 0.927}, {0.01f, 0.901},
                                             {0.02f, 0.869},  {0.05f, 0.816},  {0.1f, 0.770}};
    for (const auto& [strength, measured] : rows)
        for (const char* ion : {"K", "Cl"})
            EXPECT_NEAR(ActivityCoefficient(strength, SizeOf(ion)), measured, 0.0015) << ion << " at " << strength;
}

// By hand, Ca: √0.1 = 0.31623, 1 + 3.29·0.6·0.31623 = 1.62423, 0.51·4·0.31623 / 1.62423 = 0.39717,
// 0.39717 − 0.04 = 0.35717, γ = 0.439. K: 0.51·0.31623 / 1.31212 − 0.01 = 0.11291, γ = 0.771.
// ppm of a strength: the weight of Ca is 40.0779991 in 32 bits.
// Ca at 0.6: √0.6 = 0.77460, 2.04·0.77460 / 2.52906 − 0.24 = 0.38481, γ = 0.412.
TEST(ActivityFormTest, FollowsTheTableOfBoxesAndKeepsItsQuirks) {
    RunCases<ActivityForm>({
        {"no ion", "0=1!", "1=", NoIonChosen, ""},
        {"an empty strength in ppm hands on", "Ca 0!", "", "", "1"},
        {"an empty strength in mol/L", "Ca 1!", "", Insufficient, ""},
        {"an empty box in mol/L beside a ppm that waits for Enter", "Ca 0=1 1! 3=1 4! 6!", "", "", ""},
        {"strength in mol/L", "Ca 1=0.1!", "0=4007.800 2=0.439", "", "3"},
        {"a charge of 1 takes a quarter of the linear term", "K 1=0.1!", "0=3909.830 2=0.771", "", "3"},
        {"an activity without a coefficient is converted and told", "Ca 3=100!", "4=2.495E-3 5= 6=", Insufficient, ""},
        {"activity in ppm", "Ca 1=0.1! 3=43.9!", "4=1.095E-3 5=100.000 6=2.495E-3", "", "list"},
        {"activity in mol/L: 400.780 / 0.439", "Ca 1=0.1! 4=0.01!", "3=400.780 5=912.938 6=2.278E-2", "", "list"},
        {"an activity typed first", "Ca 3=43.9 1=0.1!", "2=0.439 5=100.000 6=2.495E-3", "", "list"},
        {"concentration in mol/L", "Ca 1=0.1! 6=0.01!", "5=400.780 6=1.000E-2 3=175.942 4=4.390E-3", "", "list"},
        {"an empty coefficient counts as 0 for the concentration", "Ca 5=100!", "3=0.000 6=2.495E-3", "", "list"},
        {"0.6 mol/L is calculated", "Ca 1=0.6!", "0=24046.799 2=0.412", "", "3"},
        {"0.6 mol/L by its ppm is calculated", "Ca 0=24046.8!", "1=6.000E-1 2=0.412", "", "3"},
        {"anything above is refused", "Ca 1=0.60000001!", "0=24046.800 2=", Refused, "1"},
        {"anything above by its ppm is refused", "Ca 0=24047!", "1=6.000E-1 2=", Refused, "1"},
        {"a refusal computes nothing", "Ca 1=0.1! 3=43.9! 1=0.7!", "0=28054.599 2=0.439 5=100.000", Refused, "1"},
        // 3909.83 ppm: of K 0.1 mol/L. Of Ca 0.097556: √ 0.31234, 2.04·0.31234/1.61656 − 0.039022 = 0.35513, 0.441;
        // 77.1 ppm are 1.924E-3 mol/L; 77.1/0.441 = 174.830, which are 4.362E-3 mol/L.
        {"a new ion reworks everything", "K 0=3909.83! 3=77.1! Ca",
         "1=9.756E-2 2=0.441 4=1.924E-3 5=174.830 6=4.362E-3", "", ""},
        {"a new ion whose strength is too high: another wording", "Pb 0=100000! Ca", "1=4.826E-1",
         "[Activity Coefficients] Sorry, Ionic strength > 0.6(mol/L), cannot be calculated correctly, please select "
         "another ion.",
         ""},
        {"Refresh takes the ion away", "Ca 1=0.1! 3=43.9! refresh 1=0.1!", "0= 2= 3= 4= 5= 6=", NoIonChosen, ""},
        {"an emptied strength takes no activity along", "Ca 1=0.1! 3=43.9! 0=", "1= 2= 3=43.9 5=100.000", "", ""},
        {"an ion for 1,000 digits", "Ca 0=" + std::string(1000, '9') + " K", "1= 2=", OutOfRange, ""},
    });
}

TEST(ActivityFormTest, HoldsInEveryOrder) {
    RunEveryOrder<ActivityForm>(
        {{0, {1, 2}}, {1, {0, 2}}, {3, {4, 5, 6}}, {4, {3, 5, 6}}, {5, {3, 4, 6}}, {6, {3, 4, 5}}});
}

// A refused strength leaves the coefficient of the one before.
TEST(ActivityFormTest, TellsThatTheCoefficientIsOfAnEarlierStrength) {
    const std::string earlier = "The coefficient, and what was worked out";
    RunStatusCases<ActivityForm>({{"Ca 1=0.1!", ""},
                                  {"Ca 1=0.7!", ""},
                                  {"Ca 1=0.1! 1=0.7!", earlier},
                                  {"Ca 1=0.1! 1=0.7! 1=0.2!", ""},
                                  {"Ca 1=0.1! 1=0.7! 1=", ""},
                                  {"Ca 1=0.5! F", earlier},
                                  {"Ca 1=0.5! F Ca", ""}});
}

}  // namespace
}  // namespace kelvo::test
