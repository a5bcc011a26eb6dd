#include "utilities/ConversionSheet.h"

#include <map>

#include "utilities/Play.h"

namespace kelvo::test {
namespace {

const char* const Insufficient = "Insufficient data, conversion cannot be finished";
const char* const Higher = "Please use higher concentration standard";
const char* const OutOfRange = "Data out of range, please try again";
const char* const NoIonChosen = "Please select an ion before starting the conversion";

// mol/L = ppm / (1000 · g/mol) with the weights of the ion table, LogC from the rounded mol/L; worked out by hand
// with 40 decimal digits. Back: ppm of 0.01 mol/L = 10 · g/mol.
TEST(ConversionSheetTest, ConvertsFourteenIonsAsByHand) {
    const struct {
        const char *ion, *ppm, *molar, *logC, *ppmOfHundredth;
    } rows[] = {
        {"Ag", "0.5", "4.635E-6", "-5.334", "1078.682"},  {"Ba", "137.3", "9.998E-4", "-3.000", "1373.270"},
        {"Br", "65", "8.135E-4", "-3.090", "799.040"},    {"Ca", "100", "2.495E-3", "-2.603", "400.780"},
        {"Cl", "19350", "5.458E-1", "-0.263", "354.527"}, {"Cu", "3.1", "4.878E-5", "-4.312", "635.460"},
        {"F", "1.5", "7.895E-5", "-4.103", "189.984"},    {"K", "390", "9.975E-3", "-2.001", "390.983"},
        {"Na", "10780", "4.689E-1", "-0.329", "229.898"}, {"NO3", "50", "8.064E-4", "-3.093", "620.049"},
        {"Pb", "0.01", "4.826E-8", "-7.316", "2071.900"}, {"NH4", "25", "1.386E-3", "-2.858", "180.386"},
        {"SCN", "1000", "1.722E-2", "-1.764", "580.819"}, {"CN", "0.2", "7.687E-6", "-5.114", "260.179"},
    };
    for (const auto& row : rows) {
        const std::string there = std::string(row.ion) + " 0=" + row.ppm + "!";
        const std::string shown = std::string("1=") + row.molar + " 12=" + row.logC;
        Play<ConversionSheet>({row.ion, there.c_str(), shown.c_str(), "", "2"});
        const std::string back = std::string(row.ion) + " 1=0.01!";
        const std::string ppm = std::string("0=") + row.ppmOfHundredth;
        Play<ConversionSheet>({row.ion, back.c_str(), ppm.c_str(), "", "2"});
    }
}

TEST(ConversionSheetTest, FollowsTheTableOfBoxes) {
    const CalculatorCase rows[] = {
        {"no ion: refused in every box", "0=100! 3!", "0=100 1= 12=",
         "Please select an ion before starting the conversion|Please select an ion before starting the conversion", ""},
        {"an empty ppm box hands on to mol/L", "Ca 0!", "", "", "1"},
        {"an empty mol/L box, ppm empty too", "Ca 1!", "", Insufficient, ""},
        {"an empty mol/L box beside a ppm that waits for Enter", "Ca 0=1 1!", "1=", "", ""},
        {"an empty density", "Ca 2!", "", Insufficient, ""},
        {"computed boxes do nothing", "Ca 3! 4! 10! 11! 12!", "3= 4= 10= 11= 12=", "", ""},
        {"density path from its own box", "Ca 0=120! 2=1.2!", "3=100.000 4=10.0000", "", "5"},
        {"density known: the ppm box runs on to the weight units", "Ca 0=120 2=1.2! 0=240!", "3=200.000 4=20.0000", "",
         "5"},
        {"density known: so does the mol/L box", "Ca 2=2 1=0.01!", "0=400.780 3=200.390 4=20.0390", "", "5"},
        {"mol/L does not write LogC", "Ca 0=100! 1=0.01!", "0=400.780 12=-2.603", "", "2"},
        // 40.134 ppm are 1.0014E-3 mol/L, whose own logarithm is -2.9994.
        {"LogC comes from the rounded mol/L", "Ca 0=40.134!", "1=1.001E-3 12=-3.000", "", "2"},
        {"an empty volume", "Ca 5!", "", Insufficient, ""},
        {"a volume alone asks for the wanted concentration", "Ca 5=100!", "10= 11=", "", "6"},
        {"an empty wanted ppm hands on", "Ca 6!", "", "", "7"},
        {"an empty wanted mol/L", "Ca 7!", "", Insufficient, ""},
        {"a wanted ppm asks for the standard", "Ca 5=100! 6=100!", "7=2.495E-3", "", "8"},
        {"a wanted mol/L asks for the standard", "Ca 5=100! 7=0.0025!", "6=100.195", "", "8"},
        {"an empty standard ppm hands on", "Ca 8!", "", "", "9"},
        {"an empty standard mol/L", "Ca 9!", "", Insufficient, ""},
        {"the whole dilution", "Ca 5=100! 6=10! 8=1000!", "7=2.495E-4 9=2.495E-2 10=1.000 11=100", "", "list"},
        {"the whole dilution in mol/L", "Na 5=250! 7=0.01! 9=0.1!", "6=229.898 8=2298.980 10=25.000 11=250", "",
         "list"},
        {"a standard without a volume: the ppm box sends to the ion list", "Ca 8=1000!", "9=2.495E-2 10=", "", "list"},
        {"a standard without a volume: the mol/L box stays", "Ca 9=0.1!", "8=4007.800 10=", "", ""},
        {"too weak, told from the standard's ppm; its mol/L is not written", "Ca 5=10 6=100! 8=50!", "9= 10=", Higher,
         ""},
        {"too weak, told from the standard's mol/L; its ppm is written", "Ca 5=10 6=1000! 9=0.01!",
         "8=400.780 10=", Higher, ""},
        {"too weak, told from the wanted ppm", "Ca 5=10 8=50! 6=100!", "7=2.495E-3 10=0.000", Higher, ""},
        {"too weak, told from the wanted mol/L", "Ca 5=10 8=50! 7=0.01!", "6=400.780 10=0.000", Higher, ""},
        {"too weak, let through from the volume alone", "Ca 6=100! 8=50 5=30!", "10=60.000 11=30", "", "list"},
        {"a standard as strong as the solution passes", "Ca 5=25 6=100! 8=100!", "10=25.000 11=25", "", "list"},
    };
    for (const auto& row : rows)
        Play<ConversionSheet>(row);
}

TEST(ConversionSheetTest, KeepsItsQuirks) {
    const CalculatorCase rows[] = {
        {"Refresh keeps LogC", "Ca 0=100! 5=10 refresh", "0= 1= 5= 12=-2.603", "", "list"},
        {"Refresh takes the ion away", "Ca refresh 0=100!", "1=", NoIonChosen, ""},
        {"emptying ppm keeps LogC", "Ca 0=100! 0=", "0= 1= 12=-2.603", "", ""},
        {"a new ion does not touch LogC", "Ca 0=100! Na", "1=4.350E-3 12=-2.603", "", "2"},
        {"a new ion reworks all three mol/L and leads to the last", "Ca 0=100! 6=10! 8=1000! Pb",
         "1=4.826E-4 7=4.826E-5 9=4.826E-3", "", "8"},
        {"a new ion with a standard only leads to ppm", "Ca 8=1000! Pb", "9=4.826E-3", "", "0"},
        {"a new ion on an empty sheet leads to ppm", "Ca", "0= 1=", "", "0"},
        {"the logarithm of nothing", "Ca 0=100! 0=0!", "12=-2.603", OutOfRange, ""},
        {"a density of 0", "Ca 0=100! 2=0!", "3= 4=", OutOfRange, ""},
        {"nothing by a density of 0", "Ca 2=0!", "3= 4=", OutOfRange, ""},
        {"a standard of 0 ppm", "Ca 6=0! 8=0 5=10!", "10= 11=", OutOfRange, ""},
        {"a dot is a zero", "Ca 0=.!", "12=", OutOfRange, ""},
    };
    for (const auto& row : rows)
        Play<ConversionSheet>(row);

    const std::string longNumber(1000, '9');
    Play<ConversionSheet>(
        {"1,000 digits overflow and are told", ("Ca 0=" + longNumber + "!").c_str(), "1= 12=", OutOfRange, ""});
}

TEST(ConversionSheetTest, EmptyingABoxEmptiesItsDependants) {
    const char* const filled = "Ca 2=1.2 0=120! 5=100! 6=10! 8=1000! ";
    const struct {
        const char *name, *emptied, *shown;
    } rows[] = {
        {"ppm", "0=", "1= 3=100.000 10=1.000"},    {"mol/L", "1=", "0= 3=100.000 10=1.000"},
        {"density", "2=", "3= 4= 0=120"},          {"volume", "5=", "10= 11= 6=10"},
        {"wanted ppm", "6=", "7= 10= 11= 8=1000"}, {"wanted mol/L", "7=", "6= 10= 11= 8=1000"},
        {"standard ppm", "8=", "9= 10= 11= 6=10"}, {"standard mol/L", "9=", "8= 10= 11= 6=10"},
    };
    for (const auto& row : rows)
        Play<ConversionSheet>({row.name, (std::string(filled) + row.emptied).c_str(), row.shown, "", ""});
}

TEST(ConversionSheetTest, LetsDigitsAndTheDotIn) {
    const AppState state;
    Listener listener;
    ConversionSheet sheet(listener, state.Ions);
    for (const char32_t key : std::u32string_view(U"0123456789.\b"))
        EXPECT_TRUE(sheet.KeyAllowed(0, key)) << static_cast<int>(key);
    for (const char32_t key : std::u32string_view(U"-+,eE x/:\t\u00b2\u0663"))
        EXPECT_FALSE(sheet.KeyAllowed(0, key)) << static_cast<int>(key);
    sheet.KeyRefused(0);
    EXPECT_EQ(listener.heard, "Wrong data type, please re-enter");
}

TEST(ConversionSheetTest, HoldsInEveryOrder) {
    static const std::map<int, std::vector<int>> dependants = {{0, {1}},         {1, {0}},         {2, {3, 4}},
                                                               {5, {10, 11}},    {6, {7, 10, 11}}, {7, {6, 10, 11}},
                                                               {8, {9, 10, 11}}, {9, {8, 10, 11}}};
    RunEveryOrder<ConversionSheet>({0, 1, 2, 5, 6, 7, 8, 9}, [](int box) { return dependants.at(box); });
}

}  // namespace
}  // namespace kelvo::test
