#pragma once

#include "utilities/CalculatorView.h"

namespace kelvo {

/// Activity coefficients: a measured activity into a concentration and back.
class frmacft : public CalculatorView {
    Q_OBJECT
 public:
    explicit frmacft(AppContext& context);
};

}  // namespace kelvo
