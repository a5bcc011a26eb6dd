#pragma once

#include <string>

#include "core/DisplayList.h"

namespace kelvo {

/// The display list as an SVG document, UTF-8: lines, marks and texts as such, on a white ground, at the surface's own
/// size of `width` × `height` twips and sharp at any other.
std::string DisplayListSvg(const DisplayList& list, float width, float height, const std::string& title);

}  // namespace kelvo
