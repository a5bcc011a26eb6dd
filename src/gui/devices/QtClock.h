#pragma once

#include "core/Clock.h"

namespace kelvo {

/// Local time of the machine.
class QtClock : public Clock {
 public:
    DateTime Now() const override;
};

}  // namespace kelvo
