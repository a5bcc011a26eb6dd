#include "utilities/CalculatorForm.h"

#include <algorithm>

#include "core/Dialogs.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {

CalculatorForm::CalculatorForm(int boxes, Prompts& prompts, const IonTable& ions, Words words,
                               std::span<const Dependency> dependencies)
    : FormModel(boxes, prompts), ions_(ions), words_(words), dependencies_(dependencies) {}

void CalculatorForm::Select(int, int row) {
    if (row < 0 || row >= IonCount) return;
    ion_ = row;
    Guarded([this] { IonChosen(); });
}

void CalculatorForm::Press(int) {
    ion_ = NoIon;
    Refresh();
    FocusOnIonList();
}

bool CalculatorForm::KeyAllowed(int, char32_t key) const {
    constexpr char32_t backspace = 8;
    return key == backspace || key == U'.' || (key >= U'0' && key <= U'9');
}

void CalculatorForm::KeyRefused(int) {
    Say(words_.wrongKey);
}

void CalculatorForm::Emptied(int i) {
    for (const auto& row : dependencies_)
        if (row.box == i)
            for (const int dependant : row.dependants)
                Set(dependant, "");
}

void CalculatorForm::Guarded(const std::function<void()>& step) {
    try {
        step();
    } catch (const RuntimeError&) {
        Say(words_.outOfRange);
    }
}

void CalculatorForm::Say(const char* text) {
    prompts_.Message(text);
}

double CalculatorForm::Value(int i) const {
    return Val(Text(i));
}

void CalculatorForm::Empty(int first, int last) {
    for (int i = first; i <= last; ++i)
        Set(i, "");
}

void CalculatorForm::WriteMolar(int to, int from) {
    Set(to, Format(PpmToMolar(ions_, Value(from), ion_), "#.000E-0"));
}

void CalculatorForm::WritePpm(int to, int from) {
    Set(to, Format(MolarToPpm(ions_, Value(from), ion_), "#0.000"));
}

bool CalculatorForm::AnyHolds(const std::vector<int>& boxes) const {
    return std::ranges::any_of(boxes, [this](int i) { return Holds(i); });
}

}  // namespace kelvo
