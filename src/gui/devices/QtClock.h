#pragma once

#include "core/Clock.h"

namespace kelvo {

/// Local time of the machine, and the time since it was started.
class QtClock : public Clock {
 public:
    DateTime Now() const override;
    double SteadySeconds() const override;
};

}  // namespace kelvo
