#pragma once

#include "addition/frmAddition.h"

namespace kelvo {

/// "Kelvo : Sample Addition Method".
class frmSampa : public frmAddition {
    Q_OBJECT
 public:
    explicit frmSampa(AppContext& context);
};

}  // namespace kelvo
