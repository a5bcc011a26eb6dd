#include "utilities/ActivityForm.h"

#include "core/Dialogs.h"
#include "text/Number.h"
#include "text/RuntimeError.h"
#include "utilities/ActivityCoefficient.h"

namespace kelvo {
namespace {

constexpr CalculatorForm::Words Told = {"Wrong data type, please re-enter.", "Data out of range, please try again"};
constexpr const char* NoIonChosen = "Please select an Ion from the Ion-box.";
constexpr const char* Insufficient = "There is insufficient data to calculate";

// One refusal in two wordings: after an entry the remedy is another value, after a new ion it is another ion.
constexpr const char* StrengthRefused = "Sorry, input value is invalid, cannot be calculated correctly.";
constexpr const char* IonRefused =
    "Sorry, Ionic strength > 0.6(mol/L), cannot be calculated correctly, please select another ion.";
constexpr const char* IonRefusedTitle = "Activity Coefficients";

/// The limit in the width of the value at hand: 0.6 as it stands in 32 bits is not above 0.6.
bool TooStrong(double strength) {
    return strength > HighestStrength;
}
bool TooStrong(float strength) {
    return strength > static_cast<float>(HighestStrength);
}

}  // namespace

const std::vector<CalculatorForm::Dependency> ActivityForm::Dependencies = {
    {StrengthPpm, {StrengthMolar, Coefficient}},
    {StrengthMolar, {StrengthPpm, Coefficient}},
    {ActivityPpm, {ActivityMolar, ConcentrationPpm, ConcentrationMolar}},
    {ActivityMolar, {ActivityPpm, ConcentrationPpm, ConcentrationMolar}},
    {ConcentrationPpm, {ActivityPpm, ActivityMolar, ConcentrationMolar}},
    {ConcentrationMolar, {ActivityPpm, ActivityMolar, ConcentrationPpm}},
};

const std::vector<CalculatorForm::Rule<ActivityForm>> ActivityForm::Rules = {
    // box          when empty: go to, else insufficient unless   when it holds text
    {StrengthPpm, StrengthMolar, {}, &ActivityForm::FromStrengthPpm},
    {StrengthMolar, NoFocus, {StrengthPpm}, &ActivityForm::FromStrengthMolar},
    {ActivityPpm, ActivityMolar, {}, &ActivityForm::FromActivityPpm},
    {ActivityMolar, NoFocus, {ActivityPpm}, &ActivityForm::FromActivityMolar},
    {ConcentrationPpm, ConcentrationMolar, {}, &ActivityForm::FromConcentrationPpm},
    {ConcentrationMolar,
     NoFocus,
     {ActivityPpm, ActivityMolar, ConcentrationPpm},
     &ActivityForm::FromConcentrationMolar},
};

ActivityForm::ActivityForm(Prompts& prompts, const IonTable& ions)
    : CalculatorForm(BoxCount, prompts, ions, Told, Dependencies) {
    Mutable(Coefficient).readOnly = true;
}

void ActivityForm::Enter(int i) {
    if (Ion() == NoIon) return Say(NoIonChosen);
    Follow<ActivityForm>(Rules, i, Insufficient);
}

std::string ActivityForm::StatusMessage() const {
    if (!refused_ || !Holds(Coefficient)) return {};
    return "The coefficient, and what was worked out with it, is of an earlier ion or ionic strength: the one that stands "
           "here was refused.";
}

void ActivityForm::FromStrengthPpm() {
    const float strength = PpmToMolar(ions_, Value(StrengthPpm), Ion());
    Set(StrengthMolar, Format(strength, "#.000E-0"));
    StrengthStep(strength, TooStrong(strength));
}

void ActivityForm::FromStrengthMolar() {
    const double strength = Value(StrengthMolar);
    WritePpm(StrengthPpm, StrengthMolar);
    StrengthStep(ToSingle(strength), TooStrong(strength));
}

void ActivityForm::StrengthStep(float strength, bool tooStrong) {
    refused_ = tooStrong;
    if (tooStrong) {
        Say(StrengthRefused);
        return FocusOn(StrengthMolar);
    }
    WriteCoefficient(strength);
    if (!Holds(ActivityPpm)) return FocusOn(ActivityPpm);
    ActivityChain();
}

void ActivityForm::WriteCoefficient(float strength) {
    const double gamma = ActivityCoefficient(strength, IonSizes()[static_cast<std::size_t>(Ion())]);
    Set(Coefficient, Format(gamma, "#0.000"));
}

bool ActivityForm::ActivityChain() {
    if (!Holds(ActivityPpm) || !Holds(Coefficient)) return false;
    Set(ConcentrationPpm, Format(Divide(Value(ActivityPpm), Value(Coefficient)), "#0.000"));
    WriteMolar(ConcentrationMolar, ConcentrationPpm);
    FocusOnIonList();
    return true;
}

void ActivityForm::ActivityChainOrSay() {
    if (!ActivityChain()) Say(Insufficient);
}

void ActivityForm::FromActivityPpm() {
    WriteMolar(ActivityMolar, ActivityPpm);
    ActivityChainOrSay();
}

void ActivityForm::FromActivityMolar() {
    WritePpm(ActivityPpm, ActivityMolar);
    ActivityChainOrSay();
}

void ActivityForm::FromConcentrationPpm() {
    WriteMolar(ConcentrationMolar, ConcentrationPpm);
    Set(ActivityPpm, Format(Finite(Value(ConcentrationPpm) * Value(Coefficient)), "#0.000"));
    WriteMolar(ActivityMolar, ActivityPpm);
    FocusOnIonList();
}

void ActivityForm::FromConcentrationMolar() {
    WritePpm(ConcentrationPpm, ConcentrationMolar);
    FromConcentrationPpm();
}

void ActivityForm::IonChosen() {
    if (!Holds(StrengthPpm)) return FocusOn(StrengthMolar);
    const float strength = PpmToMolar(ions_, Value(StrengthPpm), Ion());
    refused_ = TooStrong(strength);
    if (refused_) return prompts_.Message(IonRefused, IonRefusedTitle);
    Set(StrengthMolar, Format(strength, "#.000E-0"));
    WriteCoefficient(strength);
    if (!Holds(ActivityPpm)) return;
    WriteMolar(ActivityMolar, ActivityPpm);
    Set(ConcentrationPpm, Format(Divide(Value(ActivityPpm), Value(Coefficient)), "#0.000"));
    WriteMolar(ConcentrationMolar, ConcentrationPpm);
}

void ActivityForm::Refresh() {
    Empty(StrengthPpm, ConcentrationMolar);
}

}  // namespace kelvo
