#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <vector>

#include "addition/AdditionForm.h"
#include "calibration/CalibrationState.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

// The quiet line at the foot of the addition screens: how sure a result is, and what could mislead.

namespace kelvo {
namespace {

constexpr double SmallestChange = 10;  ///< mV; an addition that moves the potential by less says little
/// So does one that moves it by more than two slopes; a slope carried to its own temperature may lose its last digit.
constexpr double LargestSlopes = 2 + 1e-12;
constexpr int FewestPoints = 3;  ///< two lie on every line
constexpr double LowestCelsius = 0, HighestCelsius = 99;
constexpr int FewestPlaces = 2, MostPlaces = 9;

/// Places behind the dot by which a deviation shows two digits that count.
std::string MaskFor(double deviation) {
    int places = FewestPlaces;
    for (double least = 0.1; deviation < least && places < MostPlaces; least /= 10)
        ++places;
    return "#0." + std::string(static_cast<std::size_t>(places), '0');
}

std::string Deviation(double value) {
    return Format(value, MaskFor(value));
}

std::string Joined(std::initializer_list<std::string> lines, const char* between) {
    std::string said;
    for (const std::string& line : lines)
        if (!line.empty()) said += (said.empty() ? "" : between) + line;
    return said;
}

/// Whether more than the number at its head stands in a text.
bool HasOddTail(const std::string& text) {
    const std::string trimmed = Trim(text);
    return trimmed.find_first_not_of("0123456789.-+E") != std::string::npos;
}

}  // namespace

std::string RatioInWords(double ppm, double expectedPpm) {
    if (!(ppm > 0) || !(expectedPpm > 0)) return {};
    if (ppm == expectedPpm) return "As expected";
    const bool above = ppm > expectedPpm;
    const double ratio = above ? ppm / expectedPpm : expectedPpm / ppm;
    if (!std::isfinite(ratio)) return {};
    const std::string times = Format(ratio, ratio < SmallestChange ? "#0.0" : "#0") + " times ";
    return above ? times + "the expected value" : "The expected value is " + times + "the result";
}

AdditionForm::Inputs AdditionForm::InputsNow() const {
    Inputs inputs;
    for (int i = 0; i < ResultPpm; ++i)
        inputs[static_cast<std::size_t>(i)] = Text(i);
    return inputs;
}

bool AdditionForm::SlopeIsOfCalibration() const {
    return calibration_.CaliSlope != 0 && Trim(Text(Slope)) == TrimStr(calibration_.CaliSlope);
}

std::optional<StraightLine> AdditionForm::LineInUse() const {
    const bool ofTheIon = calibration_.CaliSlope != 0 && !calibration_.LineRefused && calibration_.IonIndex == ion_;
    if (!ofTheIon || calibration_.CaliPoints < FewestPoints) return std::nullopt;
    return inUse_.Get()->Line();
}

Scatter AdditionForm::ScatterInUse() const {
    const auto line = LineInUse();
    if (!line) return {};
    const double potential = std::max(line->residualDeviation, PotentialDeviation);
    // Points that happen to lie close to their line say no more than their number lets them.
    return {potential, SlopeIsOfCalibration() ? potential / std::sqrt(line->sxx) : 0, line->Freedom()};
}

SeriesStart AdditionForm::Series() const {
    SeriesStart start;
    start.sampleAdded = method_.screen == ScreenCode::frmSampa;
    start.startMl = Text(start.sampleAdded ? ActualMl : SampleMl);
    start.addedMl = Text(start.sampleAdded ? SampleMl : ActualMl);
    start.standardPpm = Text(ActualPpm);
    start.expectedPpm = Text(ExpectedPpm);
    start.before = Text(Before);
    start.after = Text(After);
    start.ion = IonName();
    start.celsius = Text(SampleCelsius).empty() ? Text(CaliCelsius) : Text(SampleCelsius);
    start.scatter = ScatterInUse();
    if (!Holds(Slope)) return start;
    start.slope = Text(Slope);
    if (!Holds(CaliCelsius) || !Holds(SampleCelsius)) return start;
    try {
        const double slope = SlopeAt(Value(Slope), Value(CaliCelsius), Value(SampleCelsius));
        start.scatter.slope *= Value(Slope) != 0 ? std::abs(slope / Value(Slope)) : 1;
        start.slope = Trim(Format(slope, "#0.00"));
    } catch (const RuntimeError&) {
        start.slope.clear();
    }
    return start;
}

std::string AdditionForm::Basis() const {
    const Scatter& scatter = outcome_->scatter;
    return Deviation(scatter.potential) + " mV in each potential (" +
           (scatter.freedom == 0                     ? "assumed"
            : scatter.potential > PotentialDeviation ? "scatter of the calibration in use about its line"
                                                     : "assumed: the calibration in use scatters less") +
           "), 1 % in each volume (assumed) and " +
           (scatter.slope > 0 ? "± " + Deviation(scatter.slope) + " mV/dec in the slope (one standard deviation)"
                              : std::string("a slope taken as exact"));
}

std::string AdditionForm::Reliability() const {
    const AdditionResult& result = outcome_->result;
    if (!(result.ppm > 0) || !std::isfinite(result.margin)) return {};
    const std::string mask = MaskFor(result.uncertainty);
    return Format(result.ppm, mask) + " ± " + Format(result.uncertainty, mask) + " ppm (" +
           Format(100 * result.uncertainty / result.ppm, "#0.0") + " %, one standard deviation; 95 %: ± " +
           Format(result.margin, mask) + " ppm), from " + Basis() + ".";
}

std::string AdditionForm::ChangeStatus() const {
    const double change = std::abs(outcome_->deltaE);
    const std::string such = "The addition changed the potential by ", by = Format(change, "#0.0") + " mV, ";
    if (change < SmallestChange) return such + "only " + by + "less than 10 mV: it says little.";
    if (change > LargestSlopes * std::abs(outcome_->result.slope))
        return such + by + "more than two slopes: it says little.";
    return {};
}

std::string AdditionForm::ResultStatus() const {
    if (!ResultIsOfBoxes())
        return outcome_ ? "The result is that of earlier entries: Calculate works it out anew."
                        : "The result of this file does not follow from its boxes: Calculate works it out anew.";
    return outcome_ ? Joined({Reliability(), ChangeStatus()}, " ") : std::string();
}

std::string AdditionForm::DoubtStatus() const {
    if (doubtful_.empty() || (Text(Before) != doubtful_ && Text(After) != doubtful_)) return {};
    return doubtful_ + " mV was no live reading when it was taken: " + doubt_ + ".";
}

RowFacts AdditionForm::Facts() const {
    RowFacts facts;
    const bool current = ResultIsOfBoxes();
    const bool earlier = outcome_ && !current;
    const auto used = [&](Box box) { return earlier ? outcome_->from.at(static_cast<std::size_t>(box)) : Text(box); };
    facts.Set(fact::Slope, Trim(used(Slope)));
    facts.Set(fact::Celsius, Trim(used(CaliCelsius)));
    if (outcome_ && current && !Reliability().empty()) {
        const AdditionResult& result = outcome_->result;
        const std::string mask = MaskFor(result.uncertainty);
        facts.Set(fact::Low, Format(std::max(0.0, result.ppm - result.margin), mask));
        facts.Set(fact::High, Format(result.ppm + result.margin, mask));
        facts.Set(fact::Unit, "ppm");
        facts.Set(fact::Basis, Basis());
    }
    if (!current) facts.Remark("The result is not of these values");
    for (std::string doubt : {DoubtStatus(), outcome_ ? ChangeStatus() : std::string(), IonStatus()}) {
        if (doubt.empty()) continue;
        doubt.pop_back();
        facts.Remark(doubt);
    }
    facts.Remark(CalibrationDoubt());
    return facts;
}

std::string AdditionForm::FaultStatus() const {
    if (surplus_)
        return "The file holds more than there are boxes: a comma in its comment or in a box has moved all that follows one place on. Check every box.";
    if (std::string doubt = DoubtStatus(); !doubt.empty()) return doubt;
    for (int i = 0; i < ResultPpm; ++i)
        if (HasOddTail(Text(i)))
            return "\"" + Text(i) + "\" counts as " + TrimStr(Value(i)) + ": only the number at its head is read.";
    return {};
}

std::string AdditionForm::IonStatus() const {
    const bool concentrations = Holds(ExpectedPpm) || Holds(ActualPpm);
    if (ion_ == NoIon) return concentrations ? "No ion is selected: mol/L is worked out as 0." : std::string();
    for (const int ppm : {ExpectedPpm, ActualPpm})
        if (Holds(ppm) && Holds(ppm + 1) && !BelongTogether(ppm))
            return std::string("The mol/L of the ") + (ppm == ExpectedPpm ? "expected concentration" : "standard") +
                   " are not those of its ppm for " + IonName() + ": press Enter in the box that holds.";
    if (SlopeIsOfCalibration() && calibration_.IonIndex != NoIon && calibration_.IonIndex != ion_)
        return "The slope is that of the calibration for " + IonNameOf(calibration_.IonIndex) + ", not for " +
               IonName() + ".";
    return {};
}

std::string AdditionForm::CalibrationDoubt() const {
    if (!SlopeIsOfCalibration() || calibration_.LineRefused || calibration_.IonIndex != ion_) return {};
    inUse_.ReadSettings();
    return inUse_.Get()->Doubt();
}

std::string AdditionForm::EntryStatus() const {
    if (Holds(Slope) && Value(Slope) == 0) return "A slope of 0 gives no result.";
    for (const auto& [celsius, fahrenheit] :
         {std::pair{SampleCelsius, SampleFahrenheit}, {CaliCelsius, CaliFahrenheit}}) {
        if (!Holds(celsius)) continue;
        const double c = Value(celsius);
        if (c < LowestCelsius || c > HighestCelsius)
            return TrimStr(c) + " °C is outside 0 to 99 °C: type the temperature.";
        if (Holds(fahrenheit) && !BelongTogether(celsius))
            return "The temperature of " + TrimStr(c) +
                   " °C counts; its °F box does not say the same. Press Enter in the °C box.";
    }
    if (volumeDropped_)
        return "The volume of the standard will be worked out from its concentration. Type it again if it was measured.";
    if (Holds(ActualMl) &&
        (Value(ActualMl) < method_.smallestStandardMl || Value(ActualMl) > method_.largestStandardMl))
        return "A volume of " + TrimStr(Value(ActualMl)) + " mL of standard is outside " +
               TrimStr(method_.smallestStandardMl) + " to " + TrimStr(method_.largestStandardMl) +
               " mL: a standard of another strength fits better.";
    return {};
}

std::string AdditionForm::Status() const {
    std::string doubt = CalibrationDoubt();
    if (!doubt.empty()) doubt = "C" + doubt.substr(1) + ".";
    return Joined({FaultStatus(), ResultStatus(), IonStatus(), doubt, EntryStatus()}, " ");
}

}  // namespace kelvo
