#include <algorithm>
#include <cmath>
#include <vector>

#include "addition/AdditionForm.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

// The quiet line at the foot of the addition screens: how sure a result is, and what could mislead.

namespace kelvo {
namespace {

constexpr double SmallestChange = 10;  ///< mV; an addition that moves the potential by less says little
constexpr double LargestSlopes = 2;    ///< so does one that moves it by more than this many slopes
constexpr double LowestCelsius = 0, HighestCelsius = 99;
constexpr double TemperatureTolerance = 0.1;  ///< °F by which a rounded pair may be apart

/// Two digits that count, or two places behind the dot where they are more.
std::string Deviation(double value) {
    if (value >= 0.1) return Format(value, "#0.00");
    return Format(value, value >= 0.01 ? "#0.000" : "0.0E-0");
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
    return state_.CaliSlope != 0 && Trim(Text(Slope)) == TrimStr(state_.CaliSlope);
}

double AdditionForm::SlopeDeviation() const {
    const int n = state_.CaliPoints;
    if (n < 3 || !SlopeIsOfCalibration()) return 0;
    double meanX = 0, meanY = 0;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(n); ++i) {
        meanX += double{state_.CaliLogC.at(i)} / n;
        meanY += double{state_.CaliE.at(i)} / n;
    }
    double sxx = 0, residuals = 0;
    for (std::size_t i = 1; i <= static_cast<std::size_t>(n); ++i) {
        const double x = state_.CaliLogC[i] - meanX;
        const double residual = state_.CaliE[i] - meanY - x * state_.CaliSlope;
        sxx += x * x;
        residuals += residual * residual;
    }
    return sxx > 0 ? std::sqrt(residuals / (n - 2) / sxx) : 0;
}

std::string AdditionForm::ResultStatus() const {
    if (!outcome_) return {};
    if (outcome_->from != InputsNow() || outcome_->ion != ion_)
        return "The result is that of earlier entries: Calculate works it out anew.";
    const double ppm = outcome_->result.ppm, u = outcome_->result.uncertainty;
    std::string said;
    if (ppm > 0 && std::isfinite(u)) {
        said = Format(ppm, "#0.00") + " ± " + Deviation(u) + " ppm (" + Format(100 * u / ppm, "#0.0") +
               " %, one standard deviation), from 0.1 mV in each potential, 1 % in each volume and " +
               (outcome_->slopeDeviation > 0 ? "± " + Deviation(outcome_->slopeDeviation) + " mV/dec in the slope."
                                             : std::string("a slope taken as exact."));
    }
    const double change = std::abs(outcome_->deltaE);
    const std::string such = Format(change, "#0.0") + " mV, ";
    if (change < SmallestChange)
        said += " The addition changed the potential by only " + such + "less than 10 mV: it says little.";
    else if (change > LargestSlopes * std::abs(outcome_->result.slope))
        said += " The addition changed the potential by " + such + "more than two slopes: it says little.";
    return said;
}

std::string AdditionForm::FaultStatus() const {
    if (surplus_)
        return "The file holds more than there are boxes: a comma in its comment or in a box has moved all that follows one place on. Check every box.";
    if (!doubtful_.empty() && (Text(Before) == doubtful_ || Text(After) == doubtful_))
        return doubtful_ + " mV was no live reading when it was taken: " + doubt_ + ".";
    for (int i = 0; i < ResultPpm; ++i)
        if (HasOddTail(Text(i)))
            return "\"" + Text(i) + "\" counts as " + TrimStr(Value(i)) + ": only the number at its head is read.";
    return {};
}

std::string AdditionForm::IonStatus() const {
    const bool concentrations = Holds(ExpectedPpm) || Holds(ActualPpm);
    if (ion_ == NoIon) return concentrations ? "No ion is selected: mol/L is worked out as 0." : std::string();
    if (convertedFor_ != ion_ && (Holds(ExpectedMolar) || Holds(ActualMolar)))
        return "The mol/L were worked out for another ion: press Enter in the ppm boxes to have those of " + IonName() +
               ".";
    if (SlopeIsOfCalibration() && state_.IonIndex != NoIon && state_.IonIndex != ion_)
        return "The slope is that of the calibration for " + IonNameOf(state_.IonIndex) + ", not for " + IonName() +
               ".";
    return {};
}

std::string AdditionForm::EntryStatus() const {
    if (Holds(Slope) && Value(Slope) == 0) return "A slope of 0 gives no result.";
    for (const auto& [celsius, fahrenheit] :
         {std::pair{SampleCelsius, SampleFahrenheit}, {CaliCelsius, CaliFahrenheit}}) {
        if (!Holds(celsius)) continue;
        const double c = Value(celsius);
        if (c < LowestCelsius || c > HighestCelsius)
            return TrimStr(c) + " °C is outside 0 to 99 °C: type the temperature.";
        if (Holds(fahrenheit) && std::abs(c * 1.8 + 32 - Value(fahrenheit)) > TemperatureTolerance)
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
    std::string said;
    for (const std::string& line : {FaultStatus(), ResultStatus(), IonStatus(), EntryStatus()})
        if (!line.empty()) said += (said.empty() ? "" : " ") + line;
    return said;
}

}  // namespace kelvo
