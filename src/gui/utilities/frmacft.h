#pragma once

#include "utilities/frmCalculator.h"

namespace kelvo {

/// Activity coefficients: a measured activity into a concentration and back.
class frmacft : public frmCalculator {
    Q_OBJECT
 public:
    explicit frmacft(AppContext& context);
};

}  // namespace kelvo
