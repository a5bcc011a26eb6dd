#include "addition/frmStanad01.h"

namespace kelvo {

frmStanad01::frmStanad01(AppContext& context)
    : frmAddition(context, StandardAddition,
                  {"frmStanad01", "chkptl", "cmdstrslt", "labrslt", "labcomet", "Suggest  Volume", "Actual Volume",
                   "Actual Concentration", "Sample", "Sample + Standard"}) {}

}  // namespace kelvo
