#include "utilities/ConversionForm.h"

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr CalculatorForm::Words Told = {"Wrong data type, please re-enter", "Data out of range, please try again"};
constexpr const char* NoIonChosen = "Please select an ion before starting the conversion";
constexpr const char* Insufficient = "Insufficient data, conversion cannot be finished";
constexpr const char* Higher = "Please use higher concentration standard";

}  // namespace

const std::vector<CalculatorForm::Dependency> ConversionForm::Dependencies = {
    {Ppm, {Molar}},
    {Molar, {Ppm}},
    {Density, {PpmByWeight, MgPer100g}},
    {Volume, {StandardVolume, FinalVolume}},
    {WantedPpm, {WantedMolar, StandardVolume, FinalVolume}},
    {WantedMolar, {WantedPpm, StandardVolume, FinalVolume}},
    {StandardPpm, {StandardMolar, StandardVolume, FinalVolume}},
    {StandardMolar, {StandardPpm, StandardVolume, FinalVolume}},
};

const std::vector<CalculatorForm::Rule<ConversionForm>> ConversionForm::Rules = {
    // box          when empty: go to, else insufficient unless   when it holds text
    {Ppm, Molar, {}, &ConversionForm::FromPpm},
    {Molar, NoFocus, {Ppm}, &ConversionForm::FromMolar},
    {Density, NoFocus, {}, &ConversionForm::DensityPath},
    {Volume, NoFocus, {}, &ConversionForm::FromVolume},
    {WantedPpm, WantedMolar, {}, &ConversionForm::FromWantedPpm},
    {WantedMolar, NoFocus, {WantedPpm}, &ConversionForm::FromWantedMolar},
    {StandardPpm, StandardMolar, {}, &ConversionForm::FromStandardPpm},
    {StandardMolar, NoFocus, {StandardPpm}, &ConversionForm::FromStandardMolar},
};

ConversionForm::ConversionForm(Prompts& prompts, const IonTable& ions)
    : CalculatorForm(BoxCount, prompts, ions, Told, Dependencies) {
    for (const int computed : {PpmByWeight, MgPer100g, StandardVolume, FinalVolume, LogC})
        Mutable(computed).readOnly = true;
}

void ConversionForm::Enter(int i) {
    if (Ion() == NoIon) return Say(NoIonChosen);
    Follow<ConversionForm>(Rules, i, Insufficient);
}

std::string ConversionForm::StatusMessage() const {
    if (!Holds(LogC)) return {};
    try {
        if (Holds(Molar) && Text(LogC) == Format(Log10(Value(Molar)), "#0.000")) return {};
    } catch (const RuntimeError&) {
    }
    return "LogC is of an earlier mol/L; Enter in the ppm box works it out anew.";
}

void ConversionForm::FromPpm() {
    WriteMolar(Molar, Ppm);
    // LogC comes from the rounded mol/L, and is not written on the way back from mol/L.
    Set(LogC, Format(Log10(Value(Molar)), "#0.000"));
    DensityWhenKnown();
}

void ConversionForm::FromMolar() {
    WritePpm(Ppm, Molar);
    DensityWhenKnown();
}

void ConversionForm::DensityWhenKnown() {
    if (Holds(Density)) return DensityPath();
    FocusOn(Density);
}

void ConversionForm::DensityPath() {
    Set(PpmByWeight, Format(Divide(Value(Ppm), Value(Density)), "#0.000"));
    Set(MgPer100g, Format(Value(PpmByWeight) * 0.1, "#0.0000"));
    FocusOn(Volume);
}

void ConversionForm::FromVolume() {
    // The one path without the strength test: a standard that is too weak gives more than the wanted volume.
    if (Holds(WantedPpm) && Holds(StandardPpm)) return DilutionResult();
    FocusOn(WantedPpm);
}

void ConversionForm::FromWantedPpm() {
    WriteMolar(WantedMolar, WantedPpm);
    DilutionTest();
}

void ConversionForm::FromWantedMolar() {
    WritePpm(WantedPpm, WantedMolar);
    DilutionTest();
}

void ConversionForm::FromStandardPpm() {
    if (StandardTooWeak()) return Say(Higher);
    WriteMolar(StandardMolar, StandardPpm);
    FocusOnIonList();
    if (Holds(Volume)) DilutionResult();
}

void ConversionForm::FromStandardMolar() {
    WritePpm(StandardPpm, StandardMolar);
    if (StandardTooWeak()) return Say(Higher);
    if (Holds(Volume)) DilutionResult();
}

void ConversionForm::DilutionTest() {
    if (!Holds(Volume) || !Holds(WantedPpm) || !Holds(StandardPpm)) return FocusOn(StandardPpm);
    if (StandardTooWeak()) return Say(Higher);
    DilutionResult();
}

void ConversionForm::DilutionResult() {
    Set(StandardVolume, Format(Divide(Finite(Value(Volume) * Value(WantedPpm)), Value(StandardPpm)), "#0.000"));
    Set(FinalVolume, Text(Volume));
    FocusOnIonList();
}

bool ConversionForm::StandardTooWeak() const {
    return Value(WantedPpm) > Value(StandardPpm);
}

void ConversionForm::IonChosen() {
    FocusOn(Ppm);
    if (Holds(Ppm)) {
        WriteMolar(Molar, Ppm);
        FocusOn(Density);
    }
    if (Holds(WantedPpm)) {
        WriteMolar(WantedMolar, WantedPpm);
        FocusOn(StandardPpm);
    }
    if (Holds(StandardPpm)) WriteMolar(StandardMolar, StandardPpm);
}

void ConversionForm::Refresh() {
    Empty(Ppm, FinalVolume);
}

}  // namespace kelvo
