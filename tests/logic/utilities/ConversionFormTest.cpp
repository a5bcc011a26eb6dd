#include "utilities/ConversionForm.h"

#include "app/AppState.h"
#include "utilities/RunCases.h"

namespace kelvo::test {
namespace {

const char* const Insufficient = "Insufficient data, conversion cannot be finished";
const char* const Higher = "Please use higher concentration standard";
const char* const OutOfRange = "Data out of range, please try again";
const char* const NoIonChosen = "Please select an ion before starting the conversion";

// mol/L = ppm / (1000 · g/mol) with the weights of the ion table, LogC from the rounded mol/L; worked out by hand
// with 40 decimal digits. Back: ppm of 0.01 mol/L = 10 · g/mol.
TEST(ConversionFormTest, ConvertsFourteenIonsAsByHand) {
    const std::array<std::string, 5> rows[] = {
        {"Ag", "0.5", "4.635E-6", "-5.334", "1078.682"},  {"Ba", "137.3", "9.998E-4", "-3.000", "1373.270"},
        {"Br", "65", "8.135E-4", "-3.090", "799.040"},    {"Ca", "100", "2.495E-3", "-2.603", "400.780"},
        {"Cl", "19350", "5.458E-1", "-0.263", "354.527"}, {"Cu", "3.1", "4.878E-5", "-4.312", "635.460"},
        {"F", "1.5", "7.895E-5", "-4.103", "189.984"},    {"K", "390", "9.975E-3", "-2.001", "390.983"},
        {"Na", "10780", "4.689E-1", "-0.329", "229.898"}, {"NO3", "50", "8.064E-4", "-3.093", "620.049"},
        {"Pb", "0.01", "4.826E-8", "-7.316", "2071.900"}, {"NH4", "25", "1.386E-3", "-2.858", "180.386"},
        {"SCN", "1000", "1.722E-2", "-1.764", "580.819"}, {"CN", "0.2", "7.687E-6", "-5.114", "260.179"},
    };
    for (const auto& [ion, ppm, molar, logC, ppmOfHundredth] : rows)
        RunCases<ConversionForm>({{ion, ion + " 0=" + ppm + "!", "1=" + molar + " 12=" + logC, "", "2"},
                                  {ion, ion + " 1=0.01!", "0=" + ppmOfHundredth, "", "2"}});
}

TEST(ConversionFormTest, FollowsTheTableOfBoxesAndKeepsItsQuirks) {
    RunCases<ConversionForm>({
        {"an empty ppm box hands on to mol/L", "Ca 0!", "", "", "1"},
        {"an empty standard ppm hands on", "Ca 8!", "", "", "9"},
        {"an empty mol/L box, ppm empty too", "Ca 1!", "", Insufficient, ""},
        {"an empty mol/L box beside a ppm that waits for Enter", "Ca 0=1 1!", "1=", "", ""},
        {"density path from its own box", "Ca 0=120! 2=1.2!", "3=100.000 4=10.0000", "", "5"},
        {"density known: ppm runs on", "Ca 0=120 2=1.2! 0=240!", "3=200.000 4=20.0000", "", "5"},
        {"density known: so does mol/L", "Ca 2=2 1=0.01!", "0=400.780 3=200.390 4=20.0390", "", "5"},
        {"mol/L does not write LogC", "Ca 0=100! 1=0.01!", "0=400.780 12=-2.603", "", "2"},
        // 40.134 ppm are 1.0014E-3 mol/L, whose own logarithm is -2.9994.
        {"LogC comes from the rounded mol/L", "Ca 0=40.134!", "1=1.001E-3 12=-3.000", "", "2"},
        {"the whole dilution", "Ca 5=100! 6=10! 8=1000!", "7=2.495E-4 9=2.495E-2 10=1.000 11=100", "", "list"},
        {"the same in mol/L", "Na 5=250! 7=0.01! 9=0.1!", "6=229.898 8=2298.980 10=25.000 11=250", "", "list"},
        {"no volume: the standard's ppm sends to the ion list", "Ca 8=1000!", "9=2.495E-2 10=", "", "list"},
        {"nor is there a volume of nothing by its mol/L", "Ca 6=100! 9=0.1!", "8=4007.800 10= 11=", "", ""},
        {"too weak by the standard's ppm; its mol/L is not written", "Ca 5=10 6=100! 8=50!", "9= 10=", Higher, ""},
        {"too weak by its mol/L; its ppm is written", "Ca 5=10 6=1000! 9=0.01!", "8=400.780 10=", Higher, ""},
        {"too weak by the wanted ppm", "Ca 5=10 8=50! 6=100!", "7=2.495E-3 10=0.000", Higher, ""},
        {"too weak, let through from the volume alone", "Ca 6=100! 8=50 5=30!", "10=60.000 11=30", "", "list"},
        {"a standard as strong as the solution passes", "Ca 5=25 6=100! 8=100!", "10=25.000 11=25", "", "list"},
        {"Refresh keeps LogC", "Ca 0=100! 5=10 refresh", "0= 1= 5= 12=-2.603", "", "list"},
        {"Refresh takes the ion away", "Ca refresh 0=100!", "1=", NoIonChosen, ""},
        {"a new ion does not touch LogC", "Ca 0=100! Na", "1=4.350E-3 12=-2.603", "", "2"},
        {"a new ion reworks all mol/L", "Ca 0=100! 6=10! 8=1000! Pb", "1=4.826E-4 7=4.826E-5 9=4.826E-3", "", "8"},
        {"the logarithm of nothing", "Ca 0=100! 0=0!", "12=-2.603", OutOfRange, ""},
        {"a density of 0", "Ca 0=100! 2=0!", "3= 4=", OutOfRange, ""},
    });
}

TEST(ConversionFormTest, LetsDigitsAndTheDotIn) {
    const AppState state;
    Listener listener;
    const ConversionForm form(listener, state.Ions);
    std::u32string allowed;
    for (char32_t key = 0; key < 0x1000; ++key)
        if (form.KeyAllowed(0, key)) allowed += key;
    EXPECT_EQ(allowed, U"\b.0123456789");
}

TEST(ConversionFormTest, HoldsInEveryOrder) {
    const std::map<int, std::vector<int>> dependants = {{0, {1}},         {1, {0}},         {2, {3, 4}},
                                                        {5, {10, 11}},    {6, {7, 10, 11}}, {7, {6, 10, 11}},
                                                        {8, {9, 10, 11}}, {9, {8, 10, 11}}};
    RunEveryOrder<ConversionForm>(dependants);
}

// LogC is neither emptied nor worked out anew with its mol/L.
TEST(ConversionFormTest, TellsThatLogCIsOfAnEarlierMolarity) {
    const std::string earlier = "LogC is of an earlier mol/L";
    RunStatusCases<ConversionForm>({{"Ca 0=100!", ""},
                                    {"Ca 0=100! 0=", earlier},
                                    {"Ca 0=100! 1=0.1!", earlier},
                                    {"Ca 0=100! K", earlier},
                                    {"Ca 0=100! refresh", earlier},
                                    {"Ca 0=100! K 0!", ""},
                                    {"Ca 1=0.1!", ""}});
}

}  // namespace
}  // namespace kelvo::test
