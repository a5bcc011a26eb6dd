#pragma once

#include "addition/frmAddition.h"

namespace kelvo {

/// "Kelvo : Standard Addition Method".
class frmStanad01 : public frmAddition {
    Q_OBJECT
 public:
    explicit frmStanad01(AppContext& context)
        : frmAddition(context, StandardAddition,
                      {"frmStanad01", "chkptl", "cmdstrslt", "labrslt", "labcomet", "Suggest  Volume", "Actual Volume",
                       "Actual Concentration", "Sample", "Sample + Standard"}) {}
};

}  // namespace kelvo
