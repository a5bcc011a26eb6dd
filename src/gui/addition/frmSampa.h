#pragma once

#include "addition/frmAddition.h"

namespace kelvo {

/// "Kelvo : Sample Addition Method".
class frmSampa : public frmAddition {
    Q_OBJECT
 public:
    explicit frmSampa(AppContext& context)
        : frmAddition(context, SampleAddition,
                      {"frmSampa", "chksmptl", "cmdsmrslt", "labsmrlt", "Labcomet", "Suggest Volume", "Actual  Volume",
                       "Actual  Concentration", "Standard", "Standard + Sample"}) {}
};

}  // namespace kelvo
