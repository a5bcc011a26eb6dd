#include "core/FormModel.h"

#include <utility>

namespace kelvo {

void FormModel::Edited(int i, std::string text) {
    Box& box = Mutable(i);
    const bool emptied = !box.text.empty() && text.empty();
    box.text = std::move(text);
    if (emptied) Emptied(i);
}

int FormModel::TakeFocus() {
    return std::exchange(focus_, NoFocus);
}

void FormModel::SetNextField(int i) {
    for (int k = 0; k < Size(); ++k)
        Mutable(k).nextField = k == i;
}

}  // namespace kelvo
