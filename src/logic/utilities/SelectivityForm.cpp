#include "utilities/SelectivityForm.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr CalculatorForm::Words Told = {"Wrong data type input, please re-entre it",
                                        "Data out of range, please re-entre it"};
constexpr const char* AbsentText = "must be absent";

/// Limits of the detected ion's concentration, ppm; both are refused themselves.
constexpr double LowLimit = 0.00001, HighLimit = 99000;

/// Above this many ppm a concentration for 10 % is shown in whole numbers.
constexpr double WholeAbove = 100;

/// Numbers of these ions' electrodes are lower bounds and are shown with a mark.
constexpr int CuIon = 9, PbIon = 21;

constexpr float Absent = 0;

struct Electrode {
    const char* ion;
    std::vector<Interferent> rows;
};

const std::array<Electrode, CalculatorForm::IonCount>& Electrodes() {
    static const std::array<Electrode, CalculatorForm::IonCount> electrodes = {{
        {"Ag", {{"Hg", Absent}, {"S", Absent}}},
        {"Ba",
         {{"Sr", 0.085f},
          {"K", 0.015f},
          {"Na", 0.015f},
          {"Mg", 0.006f},
          {"NH4", 0.003f},
          {"Ca", 0.002f},
          {"Li", 0.0016f}}},
        {"Br", {{"CN", Absent}, {"I", Absent}, {"S", Absent}, {"Cl", 0.0024f}, {"OH", 0.00003f}}},
        {"Ca",
         {{"Sr", 0.0075f},
          {"Ba", 0.005f},
          {"Cu", 0.002f},
          {"Na", 0.0005f},
          {"Mg", 0.00055f},
          {"K", 0.00005f},
          {"NH4", -0.000025f},
          {"Li", 0.000012f}}},
        {"Cd", {{"Ag", Absent}, {"Cu", Absent}, {"Hg", Absent}, {"Fe", 10}, {"Pb", 10}}},
        {"Cl", {{"Br", Absent}, {"CN", Absent}, {"I", Absent}, {"S", Absent}}},
        {"ClO4",
         {{"SCN", 0.03f}, {"I", 0.02f}, {"NO3", 0.02f}, {"Cl", 0.0003f}, {"H2PO4", 0.0002f}, {"CH3COO", 0.0001f}}},
        {"CN", {{"S", Absent}, {"I", 1}}},
        {"CO3",
         {{"SCN", 21},
          {"I", 0.93f},
          {"NO3", 0.17f},
          {"NO2", 0.063f},
          {"CH3COO", 0.012f},
          {"Br", 0.00096f},
          {"SO4", 0.0001f},
          {"Cl", 0.00007f}}},
        {"Cu", {{"Ag", Absent}, {"Hg", Absent}, {"S", Absent}, {"Br", -1}, {"Cl", -1}}},
        {"F", {{"OH", 0.1f}}},
        {"H", {}},
        {"Hg", {{"Ag", Absent}, {"S", Absent}}},
        {"I", {{"S", Absent}, {"CN", 1}}},
        {"K", {{"Cs", 0.35f}, {"NH4", 0.012f}, {"Na", 0.0004f}, {"Ca", 0.00025f}, {"Mg", 0.00025f}, {"Li", 0.0001f}}},
        {"Na", {}},
        {"NH3", {}},
        {"NH4", {{"K", 0.11f}, {"Na", 0.0016f}, {"Ca", 0.00006f}, {"Li", 0.00003f}}},
        {"NO2", {{"CH3COO", 0.001f}, {"F", 0.0008f}, {"Cl", 0.00005f}, {"NO3", 0.00001f}, {"SO4", 0.00001f}}},
        {"NO3", {{"Cl", 0.0056f}, {"HCO3", 0.005f}, {"CH3COO", 0.00045f}, {"F", 0.0001f}, {"SO4", 0.00001f}}},
        {"OH", {}},
        {"Pb", {{"Ag", Absent}, {"Cu", Absent}, {"Fe", Absent}, {"Hg", Absent}, {"S", Absent}, {"Cd", 1}}},
        {"S", {{"Ag", Absent}, {"Mg", Absent}}},
        {"SCN", {{"Cl", Absent}, {"I", Absent}, {"S", Absent}}},
    }};
    return electrodes;
}

}  // namespace

const std::vector<Interferent>& InterferentsOf(int ion) {
    return Electrodes().at(static_cast<std::size_t>(ion)).rows;
}

SelectivityForm::SelectivityForm(Prompts& prompts, const IonTable& ions)
    : CalculatorForm(BoxCount, prompts, ions, Told, {}) {
    Mutable(Total).readOnly = true;
    for (int row = 0; row < RowCount; ++row)
        for (const Column computed : {Name, Coefficient, TenPercent, Percent})
            Mutable(Cell(computed, row)).readOnly = true;
    LoadRows();
}

bool SelectivityForm::MustBeAbsent(int row) const {
    return row < Rows() && rows_[static_cast<std::size_t>(row)].k == Absent;
}

void SelectivityForm::LoadRows() {
    Empty(0, BoxCount - 1);
    rows_.clear();
    if (Ion() != NoIon) rows_ = InterferentsOf(Ion());
    for (int row = 0; row < RowCount; ++row) {
        const bool used = row < Rows(), absent = MustBeAbsent(row);
        for (const Column column : {Name, Coefficient})
            Mutable(Cell(column, row)).enabled = used;
        for (const Column column : {TenPercent, Entered, Percent})
            Mutable(Cell(column, row)).enabled = used && !absent;
        if (!used) continue;
        Set(Cell(Name, row), rows_[static_cast<std::size_t>(row)].ion);
        Set(Cell(Coefficient, row), absent ? AbsentText : Str(static_cast<float>(std::abs(K(row)))));
    }
}

void SelectivityForm::IonChosen() {
    LoadRows();
    FocusOn(Concentration);
}

void SelectivityForm::Refresh() {
    LoadRows();
}

void SelectivityForm::Enter(int i) {
    if (!At(i).enabled) return;
    if (i == Concentration) return Guarded([this] { EnterConcentration(); });
    if (i < FirstRow) return;
    const int row = (i - FirstRow) / ColumnCount;
    if (i == Cell(Entered, row)) Guarded([this, row] { EnterInterferent(row); });
}

void SelectivityForm::EnterConcentration() {
    const double typed = Value(Concentration);
    const auto concentration = static_cast<float>(std::min(typed, HighLimit));
    if (!(concentration > LowLimit && concentration < HighLimit)) {
        // The test stands twice in this step, and so does its message.
        Say(Told.outOfRange);
        Say(Told.outOfRange);
        return;
    }
    entered_ = concentration;
    if (Holds(Total) || Holds(Cell(Entered, 0))) return WorkOutAnew(concentration);
    WriteTenPercent(concentration);
    for (int row = 0; row < Rows(); ++row) {
        if (MustBeAbsent(row)) continue;
        return FocusOn(Cell(Entered, row));
    }
}

void SelectivityForm::WriteTenPercent(float concentration) {
    for (int row = 0; row < Rows(); ++row) {
        if (MustBeAbsent(row)) continue;
        const double ppm = Divide(concentration, std::abs(K(row)) * 10);
        Set(Cell(TenPercent, row), Marked(Format(ppm, ppm <= WholeAbove ? "#0.00" : "#,##0")));
        tenPercentFor_[static_cast<std::size_t>(row)] = concentration;
    }
}

void SelectivityForm::WorkOutAnew(float concentration) {
    // The total is taken first, over the rows that show a percentage at this moment, each with its sign; the
    // percentages themselves come out without it.
    const double total = TotalOfRows(concentration);
    totalMisses_ = false;
    for (int row = 0; row < Rows(); ++row) {
        if (!Holds(Cell(Entered, row))) continue;
        totalMisses_ = totalMisses_ || !Holds(Cell(Percent, row));
        tenPercentFor_[static_cast<std::size_t>(row)] = concentration;
        const double k = std::abs(K(row));
        Set(Cell(TenPercent, row), Marked(Format(Divide(concentration, k * 10), "#0.00")));
        Set(Cell(Percent, row), Marked(Format(PercentOf(row, k, concentration), "#,##0.00")));
    }
    WriteTotal(total);
    FocusOn(Concentration);
}

void SelectivityForm::EnterInterferent(int row) {
    const int next = row == Rows() - 1 ? Concentration : Cell(Entered, row + 1);
    if (Holds(Cell(Entered, row))) {
        const float concentration = ToSingle(Value(Concentration));
        Set(Cell(Percent, row), Marked(Format(PercentOf(row, K(row), concentration), "#,##0.00")));
        WriteTotal(TotalOfRows(concentration));
        totalMisses_ = false;
    }
    FocusOn(next);
}

std::string SelectivityForm::StatusMessage() const {
    std::string told;
    if (totalMisses_ && Holds(Total))
        told = "The total was taken before the percentages of this concentration: Enter in an amount sums them.";
    const auto earlier = [this](int row) {
        return Holds(Cell(TenPercent, row)) && tenPercentFor_[static_cast<std::size_t>(row)] != entered_;
    };
    for (int row = 0; row < Rows(); ++row) {
        if (!earlier(row)) continue;
        told += (told.empty() ? "" : " ");
        return told + "10% levels of rows without an amount are of an earlier concentration.";
    }
    return told;
}

double SelectivityForm::PercentOf(int row, double k, float concentration) const {
    return Divide(Finite(k * 100 * Value(Cell(Entered, row))), concentration);
}

double SelectivityForm::TotalOfRows(float concentration) const {
    double total = 0;
    for (int row = 0; row < Rows(); ++row)
        if (Holds(Cell(Percent, row))) total = Finite(total + PercentOf(row, K(row), concentration));
    return total;
}

void SelectivityForm::WriteTotal(double total) {
    Set(Total, Marked(Format(total, "#0.00")));
}

std::string SelectivityForm::Marked(const std::string& number) const {
    return Ion() == CuIon || Ion() == PbIon ? " > " + number : number;
}

void SelectivityForm::Emptied(int i) {
    if (i == Concentration) {
        for (int row = 0; row < Rows(); ++row) {
            Set(Cell(TenPercent, row), "");
            Set(Cell(Percent, row), "");
        }
        Set(Total, "");
        return;
    }
    for (int row = 0; row < RowCount; ++row)
        if (i == Cell(Entered, row)) Set(Cell(Percent, row), "");
}

}  // namespace kelvo
