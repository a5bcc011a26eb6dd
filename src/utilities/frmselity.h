#pragma once

#include <array>

#include "utilities/SelectivitySheet.h"
#include "utilities/frmCalculator.h"

namespace kelvo {

/// Selectivity and interference.
class frmselity : public frmCalculator {
    Q_OBJECT
 public:
    explicit frmselity(House& house);

 private:
    explicit frmselity(House& house, std::unique_ptr<SelectivitySheet> sheet);

    void AddConcentration(QHBoxLayout* room);
    void AddRows(QGridLayout* grid);
    void AddTotal(QGridLayout* grid);
    void ShowAbsent();

    const SelectivitySheet& sums_;
    std::array<EntryBox*, SelectivitySheet::RowCount> coefficients_{};
};

}  // namespace kelvo
