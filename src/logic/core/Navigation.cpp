#include "core/Navigation.h"

namespace kelvo {

void ClearPaths(Navigation& navigation) {
    navigation.IsePath.fill(0);
    navigation.PhPath.fill(0);
}

}  // namespace kelvo
