#pragma once

#include <array>

#include "utilities/CalculatorView.h"
#include "utilities/SelectivityForm.h"

namespace kelvo {

/// Selectivity and interference.
class frmselity : public CalculatorView {
    Q_OBJECT
 public:
    explicit frmselity(AppContext& context);

 private:
    explicit frmselity(AppContext& context, std::unique_ptr<SelectivityForm> form);

    void AddConcentration(QHBoxLayout* room);
    void AddRows(QGridLayout* grid);
    void AddTotal(QGridLayout* grid);
    void ShowAbsent();

    const SelectivityForm& sums_;
    std::array<EntryBox*, SelectivityForm::RowCount> coefficients_{};
};

}  // namespace kelvo
