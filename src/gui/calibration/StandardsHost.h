#pragma once

#include <vector>

namespace kelvo {

struct StandardEntry;
struct StandardsTold;

/// The screen whose standards the dialog "Standards" asks for.
class StandardsHost {
 public:
    virtual ~StandardsHost() = default;
    virtual void TakeStandards(const std::vector<StandardEntry>& standards, const StandardsTold& told) = 0;
};

}  // namespace kelvo
