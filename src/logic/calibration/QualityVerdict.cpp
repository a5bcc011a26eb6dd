#include "calibration/QualityVerdict.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "core/StateOf.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {

namespace text {
const char* const TwoPoints = "two points: no uncertainty can be told";
const char* const KnownSlopeOnly = "one point with a known slope: no uncertainty can be told";
const char* const OnTheLine = "the points lie exactly on the line (deviation 0): no uncertainty can be told";
const char* const OneConcentration = "all standards have the same concentration: they have no line";
const char* const TwoConcentrations =
    "two concentrations alone: they do not show whether the electrode keeps to a line";
const char* const OnePotential = "all potentials are equal: the slope is 0 and no concentration follows";
}  // namespace text

namespace {

using Basis = CalibrationQuality::Basis;
using Grade = Verdict::Grade;

/// What can be found, the gravest first.
enum class Finding {
    NoPoints,
    OneConcentration,
    OnePotential,
    NoAnswer,
    Swapped,
    WrongUnit,
    WrongSign,
    LowStandardsSpoil,
    HighStandardsSpoil,
    StandardFarOff,
    SlopeFarTooLow,
    SlopeFarTooHigh,
    IntervalFarTooWide,
    SlopeLow,
    SlopeHigh,
    StandardOff,
    IntervalWide,
    PointDecides,
    LowStandardsLeave,
    HighStandardsLeave,
    KnownSlope,
    TwoPoints,
    TwoConcentrations,
    NoTheory,
    PerfectFit,
    Count
};

struct Row {
    Grade grade;
    const char* causes;  ///< joined by ';'
    const char* next;
};

constexpr std::array<Row, static_cast<std::size_t>(Finding::Count)> Rows = {{
    {Grade::Untold, "", "Enter standards with File, New, or open a calibration."},
    {Grade::Doubtful, "the same standard measured twice;a concentration typed twice",
     "Measure at least two standards a factor of ten apart."},
    {Grade::Doubtful,
     "the electrode or its plug is not connected;a membrane that is broken or dry;one standard measured throughout",
     "Check the electrode and its plug, then calibrate again."},
    {Grade::Doubtful,
     "the electrode or its plug is not connected;a membrane that is broken or dry;one standard measured throughout",
     "Check the electrode and its plug, then calibrate again."},
    {Grade::Doubtful, "two beakers that changed places;two concentrations typed in each other's place",
     "Compare the two with their labels and calibrate again. The electrode is not to blame."},
    {Grade::Doubtful, "a concentration typed in another unit than its box has;a standard of another strength",
     "Compare the standard with its label and calibrate again. The electrode is not to blame."},
    {Grade::Doubtful,
     "standards entered in another order than they were measured;the wrong ion selected;the two plugs changed over",
     "Compare each potential with its standard, then calibrate again."},
    {Grade::Doubtful,
     "standards below the detection limit of the electrode;a blank that holds some of the ion;an interfering ion",
     "Calibrate without the lowest standards when the samples lie above them. Do not measure samples with this line."},
    {Grade::Doubtful,
     "a membrane that is saturated at high concentrations;standards without enough ionic strength adjuster;standards made up from a stock that is not as strong as its label",
     "Calibrate without the highest standards when the samples lie below them, or dilute the samples. Do not measure samples with this line."},
    {Grade::Doubtful, "a standard that was made up or typed wrongly;a reading taken before it was stable",
     "Measure this standard again, made up anew, or calibrate without it."},
    {Grade::Doubtful,
     "an old, dirty or dry membrane;standards that were made up wrongly;no ionic strength adjuster;a reference electrode that is spent or clogged",
     "Clean and condition the electrode, refill the reference electrode, make up the standards anew and calibrate again. Do not measure samples with this line."},
    {Grade::Doubtful,
     "a standard that was made up wrongly;drift while the standards were measured;the wrong charge for the ion",
     "Check the dilutions and let each reading settle, then calibrate again. Do not measure samples with this line."},
    {Grade::Doubtful,
     "readings taken before they were stable;standards that were made up wrongly;too few standards;standards outside the linear range",
     "Measure the standards again and let each reading settle; one or two more make the interval much narrower."},
    {Grade::Usable, "an ageing membrane;standards at different temperatures;too little ionic strength adjuster",
     "Go on for routine work, check one standard every hour, and clean the electrode soon."},
    {Grade::Usable, "drift while the standards were measured;standards that became warmer or more concentrated",
     "Go on for routine work and check one standard before and after the samples."},
    {Grade::Usable,
     "a reading taken before it was stable;a dilution that is a little off;an air bubble on the membrane",
     "Go on for routine work, or measure this standard again."},
    {Grade::Usable, "readings taken before they were stable;dilutions that are a little off;few standards",
     "Go on where such an interval will do; one or two more standards make it narrower."},
    // With few standards each one decides much: worth knowing, but no fault while the residuals are small.
    {Grade::Good, "", "Go on to the samples; one more standard would make the marked one matter less."},
    {Grade::Usable,
     "standards below the detection limit of the electrode;a blank that holds some of the ion;an interfering ion",
     "Calibrate without the lowest standards when the samples lie above them; the fit for low concentrations shows how far the electrode reaches."},
    {Grade::Usable,
     "a membrane that is saturated at high concentrations;standards without enough ionic strength adjuster;standards made up from a stock that is not as strong as its label",
     "Calibrate without the highest standards when the samples lie below them, or dilute samples that lie up there."},
    {Grade::Untold, "", "Measure a second standard to see whether the slope still holds."},
    {Grade::Usable, "", "Measure a third standard between the two: it shows whether they lie on a line."},
    {Grade::Usable, "", "Measure a third concentration between the two: it shows whether they lie on a line."},
    {Grade::Untold, "",
     "Give the charge of the ion (View, Charge of the Ion) and the temperature of the calibration, so that the slope can be judged."},
    {Grade::Usable, "", "Make sure that the potentials were measured: real ones scatter."},
}};

class Findings {
 public:
    /// @param explains  the others follow from this one, so that its remedy alone is told
    void Add(Finding finding, std::string reason, bool explains = false) {
        found_.push_back({finding, std::move(reason)});
        explained_ = explained_ || explains;
    }
    bool Has(Finding finding) const {
        return std::any_of(found_.begin(), found_.end(), [=](const Found& found) { return found.finding == finding; });
    }
    bool Doubtful() const {
        return std::any_of(found_.begin(), found_.end(),
                           [](const Found& found) { return RowOf(found.finding).grade == Grade::Doubtful; });
    }
    Verdict Summed();

 private:
    struct Found {
        Finding finding;
        std::string reason;
    };
    static const Row& RowOf(Finding finding) { return Rows[static_cast<std::size_t>(finding)]; }

    std::vector<Found> found_;
    bool explained_ = false;
};

void AddCauses(std::vector<std::string>& causes, std::string_view joined) {
    while (!joined.empty()) {
        const std::size_t end = std::min(joined.find(';'), joined.size());
        const std::string cause(joined.substr(0, end));
        if (std::find(causes.begin(), causes.end(), cause) == causes.end()) causes.push_back(cause);
        joined.remove_prefix(std::min(end + 1, joined.size()));
    }
}

/// Doubtful outweighs what cannot be told, and that outweighs the rest.
int Weight(Grade grade) {
    switch (grade) {
        case Grade::Doubtful: return 3;
        case Grade::Untold: return 2;
        case Grade::Usable: return 1;
        case Grade::Good: break;
    }
    return 0;
}

Verdict Findings::Summed() {
    std::stable_sort(found_.begin(), found_.end(),
                     [](const Found& a, const Found& b) { return a.finding < b.finding; });
    Verdict verdict;
    verdict.grade = Grade::Good;
    for (const Found& found : found_)
        if (Weight(RowOf(found.finding).grade) > Weight(verdict.grade)) verdict.grade = RowOf(found.finding).grade;
    for (const Found& found : found_) {
        if (explained_ && found.finding == Finding::PointDecides) continue;
        verdict.reason += (verdict.reason.empty() ? "" : "; ") + found.reason;
        // The remedy of what decided the grade comes first and is enough; lesser findings only name themselves.
        if (RowOf(found.finding).grade != verdict.grade) continue;
        if (verdict.decisive.empty()) verdict.decisive = found.reason;
        if (!verdict.next.empty() && explained_) continue;
        AddCauses(verdict.causes, RowOf(found.finding).causes);
        if (verdict.next.empty()) verdict.next = RowOf(found.finding).next;
    }
    return verdict;
}

constexpr int PercentPlaces = 1, DistancePlaces = 1;

std::string Percent(double value) {
    return WithPlaces(value, PercentPlaces) + " %";
}

/// What is judged is the figure that the analyst reads: 94.96 shows as 95.0 and is good.
double AsShown(double value, int places) {
    return Val(WithPlaces(value, places));
}

void JudgeSlope(const CalibrationQuality& quality, const IonResponse& ion, bool crossed, const QualityLimits& limits,
                Findings& findings) {
    if (!quality.percent) {
        findings.Add(Finding::NoTheory, ion.charge == 0
                                            ? "the charge of the ion is not known, so the slope cannot be judged"
                                            : "the temperature has no theoretical slope");
        return;
    }
    const double percent = AsShown(*quality.percent, PercentPlaces);
    if (percent < 0) {
        const char* sign = quality.slope < 0 ? "an anion's" : "a cation's";
        findings.Add(Finding::WrongSign,
                     std::string("the slope has the sign of ") + sign + ", but " + ion.label + " " + ion.kind +
                         ": are the standards in the right order?" +
                         (crossed ? " The potentials fell as they were entered and were sorted; entering "
                                    "the standards from the lowest potential up avoids it."
                                  : ""));
        return;
    }
    const std::string reason = "the slope is " + Percent(percent) + " of the theoretical one";
    if (percent < limits.usableSlopeFrom)
        findings.Add(Finding::SlopeFarTooLow, reason);
    else if (percent > limits.usableSlopeTo)
        findings.Add(Finding::SlopeFarTooHigh, reason);
    else if (percent < limits.goodSlopeFrom)
        findings.Add(Finding::SlopeLow, reason);
    else if (percent > limits.goodSlopeTo)
        findings.Add(Finding::SlopeHigh, reason);
}

bool LowStandardsLeave(const CalibrationQuality& quality) {
    return quality.range.limit == LinearRange::Limit::AtMost || quality.range.limit == LinearRange::Limit::Reached;
}

/// Standards beyond the linear range make the line of all of them doubtful while that of the others is sound: then the
/// electrode needs no cleaning.
void JudgeEnd(bool low, const CalibrationQuality& quality, const QualityLimits& limits, Findings& findings) {
    std::string reason =
        low ? "the lowest standards leave the line" : "the highest standards leave the line: the electrode saturates";
    const double rest = quality.theory ? AsShown(100 * quality.range.line.slope / *quality.theory, PercentPlaces) : 0;
    const bool spoil = findings.Doubtful() && !findings.Has(Finding::WrongSign) && rest >= limits.usableSlopeFrom &&
                       rest <= limits.usableSlopeTo;
    if (spoil) reason += ", the others have a slope of " + Percent(rest) + " of the theoretical one";
    const Finding leave = low ? Finding::LowStandardsLeave : Finding::HighStandardsLeave;
    const Finding spoils = low ? Finding::LowStandardsSpoil : Finding::HighStandardsSpoil;
    findings.Add(spoil ? spoils : leave, reason, spoil);
}

std::string PointName(std::size_t i) {
    return "point " + std::to_string(i + 1);
}

/// Whether a line has a slope that an electrode in use has.
bool UsableSlope(const StraightLine& line, const CalibrationQuality& quality, const QualityLimits& limits) {
    if (!quality.theory) return true;
    const double percent = 100 * line.slope / *quality.theory;
    return percent >= limits.usableSlopeFrom && percent <= limits.usableSlopeTo;
}

void JudgeWrongStandard(const CalibrationQuality& quality, const QualityLimits& limits, Findings& findings) {
    const WrongStandard& wrong = quality.wrong;
    if (!wrong.Named()) return;
    const bool explains = UsableSlope(wrong.rest, quality, limits);
    if (wrong.kind == WrongStandard::Kind::Swapped) {
        findings.Add(Finding::Swapped,
                     "the points " + std::to_string(wrong.first + 1) + " and " + std::to_string(wrong.second + 1) +
                         " fit the line once they are changed over",
                     explains);
        return;
    }
    const std::string off = PointName(wrong.first) + " lies " + WithPlaces(std::abs(wrong.distance), DistancePlaces) +
                            " mV off the line of the others";
    if (wrong.kind == WrongStandard::Kind::Unit) {
        findings.Add(Finding::WrongUnit, off + ", as if " + wrong.unit, explains);
        return;
    }
    const double times = std::pow(10.0, wrong.decades);
    const bool far = std::abs(wrong.distance) >= limits.usableResidual;
    findings.Add(far ? Finding::StandardFarOff : Finding::StandardOff,
                 off + ", which see it as " + WithPlacesOf(times, times) + " times what was entered", far && explains);
}

/// "by -9.1 to +10.0 % (95 %)".
std::string ReachText(const CalibrationQuality::Reach& reach) {
    constexpr double Tenfold = 900;
    if (reach.up > Tenfold) return "by more than a factor of ten (95 %)";
    return "by " + WithPlaces(reach.down, PercentPlaces) + " to +" + Percent(reach.up) + " (95 %)";
}

/// By what the interval of a sample will be: the same millivolts are worth little with three standards and much with
/// ten.
void JudgeInterval(const CalibrationQuality& quality, const QualityLimits& limits, Findings& findings) {
    if (!quality.sample) {
        findings.Add(Finding::IntervalFarTooWide, "the slope cannot be told from 0, so no sample can be told");
        return;
    }
    std::string reason = "a sample is uncertain " + ReachText(*quality.sample);
    const double up = AsShown(quality.sample->up, PercentPlaces);
    if (up <= limits.goodInterval) return;
    if (up <= limits.usableInterval) return findings.Add(Finding::IntervalWide, reason);
    if (quality.wrong.kind == WrongStandard::Kind::Which) reason += "; which standard is off, the figures cannot tell";
    findings.Add(Finding::IntervalFarTooWide, reason);
}

void JudgeScatter(const CalibrationQuality& quality, const QualityLimits& limits, Findings& findings) {
    if (quality.concentrations == 2) findings.Add(Finding::TwoConcentrations, text::TwoConcentrations);
    if (quality.PerfectFit()) return findings.Add(Finding::PerfectFit, text::OnTheLine);
    JudgeWrongStandard(quality, limits, findings);
    JudgeInterval(quality, limits, findings);
    for (std::size_t i = 0; i < quality.points.size(); ++i) {
        const QualityPoint& point = quality.points[i];
        if (!point.marked || quality.wrong.Is(i)) continue;
        findings.Add(
            Finding::PointDecides,
            PointName(i) + (point.slopeChange ? " changes the slope by " + Percent(std::abs(*point.slopeChange))
                                              : " alone decides the slope"));
    }
    if (quality.range.saturates) JudgeEnd(false, quality, limits, findings);
    if (LowStandardsLeave(quality)) JudgeEnd(true, quality, limits, findings);
}

void JudgeAnswer(const CalibrationQuality& quality, Findings& findings) {
    double low = quality.points[0].mv, high = low, from = quality.points[0].logC, to = from;
    for (const QualityPoint& point : quality.points) {
        low = std::min(low, point.mv);
        high = std::max(high, point.mv);
        from = std::min(from, point.logC);
        to = std::max(to, point.logC);
    }
    findings.Add(Finding::NoAnswer, "the potentials differ by " + WithPlaces(high - low, DistancePlaces) + " mV over " +
                                        WithPlaces(to - from, 1) + " decades: the electrode does not answer");
}

std::string PraiseOf(const CalibrationQuality& quality) {
    return "the slope is " + Percent(*quality.percent) + " of the theoretical one and a sample is uncertain " +
           ReachText(*quality.sample);
}

}  // namespace

const char* Verdict::Word() const {
    switch (grade) {
        case Grade::Good: return "good";
        case Grade::Usable: return "usable";
        case Grade::Doubtful: return "doubtful";
        case Grade::Untold: break;
    }
    return "cannot be told";
}

Verdict JudgeCalibration(const CalibrationQuality& quality, const IonResponse& ion, bool crossed,
                         const QualityLimits& limits) {
    Findings findings;
    switch (quality.basis) {
        case Basis::NoPoints: findings.Add(Finding::NoPoints, "there are no standards"); break;
        case Basis::OneConcentration: findings.Add(Finding::OneConcentration, text::OneConcentration); break;
        case Basis::OnePotential: findings.Add(Finding::OnePotential, text::OnePotential); break;
        case Basis::KnownSlope:
            findings.Add(Finding::KnownSlope, text::KnownSlopeOnly);
            JudgeSlope(quality, ion, crossed, limits, findings);
            break;
        case Basis::TwoPoints:
        case Basis::Line:
            if (!quality.answers) {
                JudgeAnswer(quality, findings);
                break;
            }
            JudgeSlope(quality, ion, crossed, limits, findings);
            if (quality.basis == Basis::Line)
                JudgeScatter(quality, limits, findings);
            else
                findings.Add(Finding::TwoPoints, text::TwoPoints);
            break;
    }
    Verdict verdict = findings.Summed();
    if (verdict.grade == Grade::Good) {
        verdict.decisive = PraiseOf(quality);
        verdict.reason = verdict.decisive + (verdict.reason.empty() ? "" : "; " + verdict.reason);
        if (verdict.next.empty()) verdict.next = "Go on to the samples.";
    }
    return verdict;
}

std::string DoubtOf(const Verdict& verdict) {
    return verdict.grade == Grade::Doubtful ? "calibration " + verdict.ShortLine() : std::string();
}

}  // namespace kelvo
