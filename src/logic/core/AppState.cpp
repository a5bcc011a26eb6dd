#include "core/AppState.h"

namespace kelvo {

void ClearPaths(AppState& state) {
    state.IsePath.fill(0);
    state.PhPath.fill(0);
}

}  // namespace kelvo
