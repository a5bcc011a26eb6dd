#include "addition/AdditionMethod.h"

namespace kelvo {

const AdditionMethod StandardAddition = {
    .screen = ScreenCode::frmStanad01,
    .name = "standard addition",
    .caption = "Kelvo : Standard Addition Method",
    .formula = StandardAdditionTerms,
    .volumeTimes = 1,
    .volumeOver = 10,
    .concentrationFactor = 20,
    .smallestStandardMl = 1,
    .largestStandardMl = 99,
    .volumeMask = "#0.0",
    .outOfRange = "Data out of range, pleas re-enter",
    .missing = "Data missing, there are no value in some of the boxes, please complete",
    .bad = "Bad measurement, please re-do the procedure",
    .commentHeight = 280,
    .repeatHeight = 560,
    .keyInIonBoxMovesOn = true,
    .ionIsFixed = false,
    .firstPrompt = "Please immerse the electrode in the sample,",
    .secondPrompt = "Please add standard to the sample,",
    .dialogLeft = 4420,
    .file = &StandardMethodFile,
    .tableFilter = "All Data(*.sdt)|*.sdt",
    .tablePattern = "*.sdt",
    .tableExtension = ".sdt",
};

const AdditionMethod SampleAddition = {
    .screen = ScreenCode::frmSampa,
    .name = "sample addition",
    .caption = "Kelvo : Sample Addition Method",
    .formula = SampleAdditionTerms,
    .volumeTimes = 10,
    .volumeOver = 1,
    .concentrationFactor = 0.05,
    .smallestStandardMl = 10,
    .largestStandardMl = 1000,
    .volumeMask = "#0.00",
    .outOfRange = "Data out of range, please re-enter",
    .missing = "Data missing, there are no values in some of the boxes, please complete",
    .bad = "Bad measurement, please re-do the procedure.",
    .commentHeight = 285,
    .repeatHeight = 570,
    .keyInIonBoxMovesOn = false,
    .ionIsFixed = true,
    .firstPrompt = "Please immerse the electrode in the standard solution,",
    .secondPrompt = "Please add sample to the standard,",
    .dialogLeft = 4400,
    .file = &SampleMethodFile,
    .tableFilter = "All Data(*.smt)|*.smt",
    .tablePattern = "*.smt",
    .tableExtension = ".smt",
};

}  // namespace kelvo
