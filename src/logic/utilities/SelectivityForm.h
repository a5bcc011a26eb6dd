#pragma once

#include <array>
#include <string>
#include <vector>

#include "utilities/CalculatorForm.h"

namespace kelvo {

/// An ion that disturbs an electrode.
struct Interferent {
    const char* ion;
    float k;  ///< selectivity coefficient; 0 when it must be absent; the sign is a mark of the source data
};

/// Interferents of the electrode of ion 0 to 23, at most 8; none for H, Na, NH3 and OH.
const std::vector<Interferent>& InterferentsOf(int ion);

/// Selectivity and interference (`frmselity`): which ions disturb the chosen ion's electrode, how much of each makes
/// an error of 10 % at the analyst's concentration, and the error that stated amounts make.
///
/// Ba at 100 ppm, interferent Sr (K 0.085): 10 % at 118 ppm; 10 ppm of Sr make 0.85 %.
class SelectivityForm : public CalculatorForm {
 public:
    static constexpr int RowCount = 8;
    enum Column { Name, Coefficient, TenPercent, Entered, Percent, ColumnCount };
    static constexpr int Concentration = 0, Total = 1, FirstRow = 2;
    /// Box of a column in row 0 to 7.
    static constexpr int Cell(Column column, int row) { return FirstRow + row * ColumnCount + column; }
    static constexpr int BoxCount = FirstRow + RowCount * ColumnCount;

    SelectivityForm(Prompts& prompts, const IonTable& ions);

    void Enter(int i) override;
    void Emptied(int i) override;
    std::string StatusMessage() const override;

    /// Whether the row's ion must be absent; its words are then set in small type.
    bool MustBeAbsent(int row) const;

 private:
    void IonChosen() override;
    void Refresh() override;

    void EnterConcentration();
    void EnterInterferent(int row);
    void WorkOutAnew(float concentration);
    void WriteTenPercent(float concentration);
    void WriteTotal(double total);
    double TotalOfRows(float concentration) const;
    double PercentOf(int row, double k, float concentration) const;
    std::string Marked(const std::string& number) const;
    void LoadRows();
    int Rows() const { return static_cast<int>(rows_.size()); }
    double K(int row) const { return double{rows_[static_cast<std::size_t>(row)].k}; }

    std::vector<Interferent> rows_;                ///< of the chosen ion
    float entered_ = 0;                            ///< concentration entered last
    std::array<float, RowCount> tenPercentFor_{};  ///< concentration that each 10 % level belongs to
    bool totalMisses_ = false;  ///< the total was taken before some of the percentages that stand now
};

}  // namespace kelvo
