#include "addition/frmSampa.h"

namespace kelvo {

frmSampa::frmSampa(AppContext& context)
    : frmAddition(context, SampleAddition,
                  {"frmSampa", "chksmptl", "cmdsmrslt", "labsmrlt", "Labcomet", "Suggest Volume", "Actual  Volume",
                   "Actual  Concentration", "Standard", "Standard + Sample"}) {}

}  // namespace kelvo
