#include "utilities/ConversionSheet.h"

#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr CalculatorSheet::Words Told = {"Wrong data type, please re-enter", "Data out of range, please try again"};
constexpr const char* NoIonChosen = "Please select an ion before starting the conversion";
constexpr const char* Insufficient = "Insufficient data, conversion cannot be finished";
constexpr const char* Higher = "Please use higher concentration standard";

}  // namespace

const std::vector<CalculatorSheet::Dependency> ConversionSheet::Dependencies = {
    {Ppm, {Molar}},
    {Molar, {Ppm}},
    {Density, {PpmByWeight, MgPer100g}},
    {Volume, {StandardVolume, FinalVolume}},
    {WantedPpm, {WantedMolar, StandardVolume, FinalVolume}},
    {WantedMolar, {WantedPpm, StandardVolume, FinalVolume}},
    {StandardPpm, {StandardMolar, StandardVolume, FinalVolume}},
    {StandardMolar, {StandardPpm, StandardVolume, FinalVolume}},
};

const std::vector<CalculatorSheet::Rule<ConversionSheet>> ConversionSheet::Rules = {
    // box          when empty: go to, else insufficient unless   when it holds text
    {Ppm, Molar, {}, &ConversionSheet::FromPpm},
    {Molar, NoFocus, {Ppm}, &ConversionSheet::FromMolar},
    {Density, NoFocus, {}, &ConversionSheet::DensityPath},
    {Volume, NoFocus, {}, &ConversionSheet::FromVolume},
    {WantedPpm, WantedMolar, {}, &ConversionSheet::FromWantedPpm},
    {WantedMolar, NoFocus, {WantedPpm}, &ConversionSheet::FromWantedMolar},
    {StandardPpm, StandardMolar, {}, &ConversionSheet::FromStandardPpm},
    {StandardMolar, NoFocus, {StandardPpm}, &ConversionSheet::FromStandardMolar},
};

ConversionSheet::ConversionSheet(Prompts& prompts, const IonTable& ions)
    : CalculatorSheet(BoxCount, prompts, ions, Told, Dependencies) {
    for (const int computed : {PpmByWeight, MgPer100g, StandardVolume, FinalVolume, LogC})
        Mutable(computed).readOnly = true;
}

void ConversionSheet::Enter(int i) {
    if (Ion() == NoIon) return Say(NoIonChosen);
    Follow<ConversionSheet>(Rules, i, Insufficient);
}

void ConversionSheet::FromPpm() {
    WriteMolar(Molar, Ppm);
    // LogC comes from the rounded mol/L, and is not written on the way back from mol/L.
    Set(LogC, Format(Log10(Value(Molar)), "#0.000"));
    DensityWhenKnown();
}

void ConversionSheet::FromMolar() {
    WritePpm(Ppm, Molar);
    DensityWhenKnown();
}

void ConversionSheet::DensityWhenKnown() {
    if (Holds(Density)) return DensityPath();
    FocusOn(Density);
}

void ConversionSheet::DensityPath() {
    Set(PpmByWeight, Format(Divide(Value(Ppm), Value(Density)), "#0.000"));
    Set(MgPer100g, Format(Value(PpmByWeight) * 0.1, "#0.0000"));
    FocusOn(Volume);
}

void ConversionSheet::FromVolume() {
    // The one path without the strength test: a standard that is too weak gives more than the wanted volume.
    if (Holds(WantedPpm) && Holds(StandardPpm)) return DilutionResult();
    FocusOn(WantedPpm);
}

void ConversionSheet::FromWantedPpm() {
    WriteMolar(WantedMolar, WantedPpm);
    DilutionTest();
}

void ConversionSheet::FromWantedMolar() {
    WritePpm(WantedPpm, WantedMolar);
    DilutionTest();
}

void ConversionSheet::FromStandardPpm() {
    if (StandardTooWeak()) return Say(Higher);
    WriteMolar(StandardMolar, StandardPpm);
    FocusOnIonList();
    if (Holds(Volume)) DilutionResult();
}

void ConversionSheet::FromStandardMolar() {
    WritePpm(StandardPpm, StandardMolar);
    if (StandardTooWeak()) return Say(Higher);
    if (Holds(Volume)) DilutionResult();
}

void ConversionSheet::DilutionTest() {
    if (!Holds(Volume) || !Holds(WantedPpm) || !Holds(StandardPpm)) return FocusOn(StandardPpm);
    if (StandardTooWeak()) return Say(Higher);
    DilutionResult();
}

void ConversionSheet::DilutionResult() {
    Set(StandardVolume, Format(Divide(Finite(Value(Volume) * Value(WantedPpm)), Value(StandardPpm)), "#0.000"));
    Set(FinalVolume, Text(Volume));
    FocusOnIonList();
}

bool ConversionSheet::StandardTooWeak() const {
    return Value(WantedPpm) > Value(StandardPpm);
}

void ConversionSheet::IonChosen() {
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

void ConversionSheet::Refresh() {
    Empty(Ppm, FinalVolume);
}

}  // namespace kelvo
