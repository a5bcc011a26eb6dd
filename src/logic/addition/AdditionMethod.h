#pragma once

#include "addition/Addition.h"
#include "addition/MethodFile.h"
#include "core/ScreenCode.h"
#include "core/Tables.h"

namespace kelvo {

/// All that tells the two addition methods apart: limits, factors, texts, formats, names. Form model, presenter and
/// view are one implementation that reads it.
struct AdditionMethod {
    ScreenCode screen;    ///< also the `ReturnScreen` under which its table is kept
    const char* name;     ///< in words
    const char* caption;  ///< of the window

    AdditionFormula formula;

    // Suggested volume of the standard: that of the sample times `volumeTimes`, over `volumeOver`; suggested
    // concentration: the expected one times `concentrationFactor`. (A tenth as a factor would leave 0.3 as
    // 0.30000000000000004.)
    double volumeTimes, volumeOver, concentrationFactor;
    double smallestStandardMl, largestStandardMl;
    const char* volumeMask;  ///< of the standard's volume worked out after its ppm

    const char *outOfRange, *missing, *bad;
    float commentHeight, repeatHeight;  ///< of the comment, twips; they go into the file of the screen

    bool keyInIonBoxMovesOn;  ///< any key in the ion box leads to the expected concentration
    bool ionIsFixed;          ///< the ion box keeps to the ion of the hardware setup while there is one

    const char *firstPrompt, *secondPrompt;  ///< of the reading dialog
    int dialogLeft;                          ///< its place across the screen, twips of 12000

    const MethodFile* file;
    const char *tableFilter, *tablePattern, *tableExtension;
};

extern const AdditionMethod StandardAddition, SampleAddition;

}  // namespace kelvo
