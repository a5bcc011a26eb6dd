#pragma once

#include "utilities/frmCalculator.h"

namespace kelvo {

/// Conversion of concentration units and calculation of dilution factors.
class frmcnvs : public frmCalculator {
    Q_OBJECT
 public:
    explicit frmcnvs(AppContext& context);
};

}  // namespace kelvo
