#include "utilities/CalculatorSheet.h"

#include <algorithm>

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

CalculatorSheet::CalculatorSheet(int boxes, Prompts& prompts, const IonTable& ions, Words words,
                                 std::span<const Dependency> dependencies)
    : Sheet(boxes, prompts), ions_(ions), words_(words), dependencies_(dependencies) {}

void CalculatorSheet::Select(int, int row) {
    if (row < 0 || row >= IonCount) return;
    ion_ = row;
    Guarded([this] { IonChosen(); });
}

void CalculatorSheet::Press(int) {
    ion_ = NoIon;
    Refresh();
    FocusOnIonList();
}

bool CalculatorSheet::KeyAllowed(int, char32_t key) const {
    constexpr char32_t backspace = 8;
    return key == backspace || key == U'.' || (key >= U'0' && key <= U'9');
}

void CalculatorSheet::KeyRefused(int) {
    Say(words_.wrongKey);
}

void CalculatorSheet::Emptied(int i) {
    for (const auto& row : dependencies_)
        if (row.box == i)
            for (const int dependant : row.dependants)
                Set(dependant, "");
}

void CalculatorSheet::Guarded(const std::function<void()>& step) {
    try {
        step();
    } catch (const RuntimeError&) {
        Say(words_.outOfRange);
    }
}

double CalculatorSheet::Value(int i) const {
    return Val(Text(i));
}

void CalculatorSheet::Empty(int first, int last) {
    for (int i = first; i <= last; ++i)
        Set(i, "");
}

void CalculatorSheet::WriteMolar(int to, int from) {
    Set(to, Format(PpmToMolar(ions_, Value(from), ion_), "#.000E-0"));
}

void CalculatorSheet::WritePpm(int to, int from) {
    Set(to, Format(MolarToPpm(ions_, Value(from), ion_), "#0.000"));
}

bool CalculatorSheet::AnyHolds(const std::vector<int>& boxes) const {
    return std::ranges::any_of(boxes, [this](int i) { return Holds(i); });
}

}  // namespace kelvo
