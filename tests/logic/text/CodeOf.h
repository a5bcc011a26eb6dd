#pragma once

#include "text/RuntimeError.h"

namespace kelvo::test {

/// Number of the failure that a step ends in, 0 when it does not fail.
template <typename Step>
int CodeOf(Step step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        return error.Code();
    }
    return 0;
}

}  // namespace kelvo::test
