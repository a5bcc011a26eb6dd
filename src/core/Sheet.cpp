#include "core/Sheet.h"

#include <utility>

namespace kelvo {

void Sheet::Edited(int i, std::string text) {
    Box& box = Mutable(i);
    const bool emptied = !box.text.empty() && text.empty();
    box.text = std::move(text);
    if (emptied) Emptied(i);
}

int Sheet::TakeFocus() {
    return std::exchange(focus_, NoFocus);
}

void Sheet::LeadTo(int i) {
    for (int k = 0; k < Size(); ++k)
        Mutable(k).lead = k == i;
}

}  // namespace kelvo
