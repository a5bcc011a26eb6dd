#pragma once

#include "core/DisplayList.h"
#include "help/HelpTopics.h"

namespace kelvo {

/// Size of every illustration in twips.
constexpr float IllustrationWidth = 5400, IllustrationHeight = 3900;

/// The illustration of a sheet, on a white ground.
DisplayList Illustration(HelpPicture picture);
/// A page with its corner turned: the way to the other sheet, 900 twips square.
DisplayList PageCorner(bool back);

}  // namespace kelvo
