#pragma once

#include "utilities/CalculatorView.h"

namespace kelvo {

/// Conversion of concentration units and calculation of dilution factors.
class frmcnvs : public CalculatorView {
    Q_OBJECT
 public:
    explicit frmcnvs(AppContext& context);
};

}  // namespace kelvo
