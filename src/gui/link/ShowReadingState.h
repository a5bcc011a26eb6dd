#pragma once

#include <initializer_list>

#include "link/ReadingState.h"

class QWidget;

namespace kelvo {

class Screen;

/// The one way in which a window shows what its reading is worth: unless it is live, the values are greyed and the
/// status bar says why. Called at the end of each tick with the boxes or labels that show readings.
void ShowReadingState(Screen& screen, std::initializer_list<QWidget*> values, const ReadingState& state);

/// Greys values or lets them look like measurements again.
void GreyValues(std::initializer_list<QWidget*> values, bool grey);

}  // namespace kelvo
