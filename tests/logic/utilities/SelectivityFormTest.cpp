#include "utilities/SelectivityForm.h"

#include "text/Number.h"
#include "utilities/RunCases.h"

namespace kelvo::test {
namespace {

const std::string Once = "Data out of range, please re-entre it", Twice = Once + "|" + Once;

// The table as the source data give it; ions that are not named have no rows.
TEST(SelectivityFormTest, HoldsTheCoefficientsOfTheSource) {
    const char* const expected = R"(
Ag: Hg absent; S absent
Ba: Sr 0.085; K 0.015; Na 0.015; Mg 0.006; NH4 0.003; Ca 0.002; Li 0.0016
Br: CN absent; I absent; S absent; Cl 0.0024; OH 0.00003
Ca: Sr 0.0075; Ba 0.005; Cu 0.002; Na 0.0005; Mg 0.00055; K 0.00005; NH4 -0.000025; Li 0.000012
Cd: Ag absent; Cu absent; Hg absent; Fe 10; Pb 10
Cl: Br absent; CN absent; I absent; S absent
ClO4: SCN 0.03; I 0.02; NO3 0.02; Cl 0.0003; H2PO4 0.0002; CH3COO 0.0001
CN: S absent; I 1
CO3: SCN 21; I 0.93; NO3 0.17; NO2 0.063; CH3COO 0.012; Br 0.00096; SO4 0.0001; Cl 0.00007
Cu: Ag absent; Hg absent; S absent; Br -1; Cl -1
F: OH 0.1
Hg: Ag absent; S absent
I: S absent; CN 1
K: Cs 0.35; NH4 0.012; Na 0.0004; Ca 0.00025; Mg 0.00025; Li 0.0001
NH4: K 0.11; Na 0.0016; Ca 0.00006; Li 0.00003
NO2: CH3COO 0.001; F 0.0008; Cl 0.00005; NO3 0.00001; SO4 0.00001
NO3: Cl 0.0056; HCO3 0.005; CH3COO 0.00045; F 0.0001; SO4 0.00001
Pb: Ag absent; Cu absent; Fe absent; Hg absent; S absent; Cd 1
S: Ag absent; Mg absent
SCN: Cl absent; I absent; S absent
)";
    std::string found = "\n";
    for (int ion = 0; ion < CalculatorForm::IonCount; ++ion) {
        std::string before = StandardIons().names[static_cast<std::size_t>(ion)] + ": ";
        for (const Interferent& row : InterferentsOf(ion)) {
            found += before + row.ion + " " + (row.k == 0 ? "absent" : TrimStr(row.k));
            before = "; ";
        }
        if (!InterferentsOf(ion).empty()) found += "\n";
    }
    EXPECT_EQ(found, expected);
}

// Boxes: 0 concentration, 1 total; row r from 2 + 5r: name, coefficient, 10 %, entered, per cent. So row 0 is 2 to 6,
// row 1 is 7 to 11, row 3 is 17 to 21, row 5 is 27 to 31, row 6 is 32 to 36. Br and Cl have -1 in the table of Cu.
TEST(SelectivityFormTest, WorksOutTheRowsAndKeepsItsQuirks) {
    RunCases<SelectivityForm>({
        {"an ion shows its rows", "Ba", "2=Sr 3=_0.085 4= 7=K 32=Li 33=_0.0016 37=", "", "0"},
        {"a negative coefficient is shown without its sign", "Ca", "32=NH4 33=_0.000025", "", "0"},
        // 117.65, 666.67, 1666.67, 6250
        {"above 100 ppm whole, grouped", "Ba 0=100!", "4=118 9=667 19=1,667 34=6,250", "", "5"},
        {"up to 100 ppm with two digits", "Ba 0=8.5!", "4=10.00 9=56.67 14=56.67 19=142", "", "5"},
        {"100 itself with two digits", "CN 0=1000!", "9=100.00", "", "10"},
        {"the sign does not enter the concentration for 10 %", "Ca 0=100!", "34=400,000", "", "5"},
        {"absent rows stay empty and take no focus", "Br 0=2.4!", "4= 9= 14= 19=100.00 24=8,000", "", "20"},
        {"shares add up: 0.85 + 0.30", "Ba 0=100! 5=10! 10=20!", "6=0.85 11=0.30 1=1.15", "", "15"},
        {"the last row leads back to the concentration", "F 0=100! 5=3!", "6=0.30 1=0.30", "", "0"},
        {"shares are grouped, the total is not", "Cd 0=1! 20=2!", "21=2,000.00 1=2000.00", "", "25"},
        {"the upper limit itself", "Ba 0=99000!", "4=", Twice, ""},
        {"just below it", "Ba 0=98999!", "4=116,469", "", "5"},
        {"the lower limit itself", "Ba 0=0.00001!", "4=", Twice, ""},
        {"just above it", "Ba 0=0.00002!", "4=0.00", "", "5"},
        {"a refusal keeps what stands", "Ba 0=100! 5=10! 0=99000!", "4=118 6=0.85 1=0.85", Twice, ""},
        {"a share by nothing, told once", "Ba 5=10!", "6= 1=", Once, ""},
        {"1,000 digits of interferent", "Cd 0=1! 20=" + std::string(1000, '9') + "!", "21= 1=", Once, ""},
        {"Cu is marked", "Cu 0=10!", "4= 19=_>_1.00 24=_>_1.00", "", "20"},
        {"Pb is marked", "Pb 0=10! 30=1!", "29=_>_1.00 31=_>_10.00 1=_>_10.00", "", "0"},
        {"an entry keeps the sign", "Cu 0=10! 20=1!", "21=_>_-10.00 1=_>_-10.00", "", "25"},
        {"a new concentration only in the total", "Cu 0=10! 20=1! 0=20!", "21=_>_5.00 1=_>_-5.00", "", "0"},
        {"it reworks rows with an entry alone", "Ba 0=100! 5=10! 0=50!", "4=58.82 6=1.70 9=667 1=1.70", "", "0"},
        {"and does not group them: 1000 / 0.85", "Ba 0=100! 5=100! 0=1000!", "4=1176.47 6=0.85", "", "0"},
        {"a first row with an entry is enough", "Ba 5=10 0=50!", "4=58.82 6=1.70 9= 1=0.00", "", "0"},
        {"an entry in a later row is not", "CN 10=5 0=10!", "9=1.00 11= 1=", "", "10"},
        {"the total comes before the shares", "Ba 0=100! 5=10! 0= 0=50!", "6=1.70 1=0.00", "", "0"},
        {"an emptied concentration keeps the entries", "Ba 0=100! 5=10! 0=", "1= 4= 5=10 6= 9= 2=Sr", "", ""},
        {"an emptied entry takes its share alone", "Ba 0=100! 5=10! 5=", "4=118 6= 1=0.85", "", ""},
        {"Refresh empties all five columns", "Ba 0=100! 5=10! refresh", "0= 1= 2= 3= 4= 5= 6=", "", "list"},
    });
}

TEST(SelectivityFormTest, HoldsInEveryOrder) {
    using S = SelectivityForm;
    std::map<int, std::vector<int>> dependants = {{S::Concentration, {S::Total}}};
    for (int row = 0; row < S::RowCount; ++row) {
        dependants[S::Cell(S::Entered, row)] = {S::Cell(S::Percent, row)};
        dependants[S::Concentration].push_back(S::Cell(S::TenPercent, row));
        dependants[S::Concentration].push_back(S::Cell(S::Percent, row));
    }
    RunEveryOrder<S>(dependants);
}

// The total is taken before the percentages, and levels of rows without an amount are not worked out anew. Boxes 5 and
// 10 are the amounts of rows 0 and 1.
TEST(SelectivityFormTest, TellsWhatIsOfAnEarlierConcentration) {
    const std::string total = "The total was taken before", levels = "10% levels of rows without an amount";
    RunStatusCases<SelectivityForm>({{"Ba 0=100! 5=10!", ""},
                                     {"Ba 0=100! 5=10! 0= 0=200!", total},
                                     {"Ba 0=100! 5=10! 0= 0=200! 5!", ""},
                                     {"Ba 0=100! 5=10! 0=200!", levels},
                                     {"Ba 0=100! 5=10! 5= 0=200!", levels},
                                     {"Ba 0=100! 5=10! 0=200! 0=100!", ""},
                                     {"Ba 0=100! 5=10! 0=200! Br", ""},
                                     {"Ba 0=100! 5=10! 0=200! 0=", ""}});
}

}  // namespace
}  // namespace kelvo::test
