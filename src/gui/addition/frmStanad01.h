#pragma once

#include "addition/frmAddition.h"

namespace kelvo {

/// "Kelvo : Standard Addition Method".
class frmStanad01 : public frmAddition {
    Q_OBJECT
 public:
    explicit frmStanad01(AppContext& context);
};

}  // namespace kelvo
