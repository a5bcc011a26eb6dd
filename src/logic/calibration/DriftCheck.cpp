#include "calibration/DriftCheck.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "core/Settings.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const Section = "Drift Checks";
const char *const Good = "good", *const Failed = "failed";
constexpr int MvPlaces = 2, PercentPlaces = 1;

/// One number of the settings with its range.
struct NumberRow {
    const char* key;
    const char* name;
    double most;
    bool whole;
};
constexpr NumberRow NumberRows[DriftSettings::Numbers] = {{"Samples", "number of samples", 100000, true},
                                                          {"Minutes", "number of minutes", 100000, false},
                                                          {"LimitMv", "limit in mV", 1000, false},
                                                          {"LimitPercent", "limit in per cent", 1000, false},
                                                          {"Standard", "number of the standard", 10, true}};
const char* const BracketKey = "Bracket";

std::string Signed(double value, int places) {
    const std::string text = WithPlaces(value, places);
    return text[0] == '-' ? text : "+" + text;
}

std::string LimitText(const DriftSettings& settings) {
    std::string text = settings.limitMv > 0 ? TrimStr(settings.limitMv) + " mV" : "";
    if (settings.limitPercent > 0) text += (text.empty() ? "" : ", ") + TrimStr(settings.limitPercent) + " %";
    return text;
}

/// By how many per cent the standard seems to have another concentration.
std::optional<double> PercentOff(const Calibration& calibration, double expected, double measured) {
    const auto before = calibration.uncertainty.Concentration(expected);
    const auto now = calibration.uncertainty.Concentration(measured);
    if (before && now && *before > 0) return 100 * (*now / *before - 1);
    if (calibration.slope == 0) return std::nullopt;
    const double decades = (measured - expected) / calibration.slope;
    constexpr double MostDecades = 6;
    if (!(std::abs(decades) < MostDecades)) return std::nullopt;
    return 100 * std::expm1(std::log(10.0) * decades);
}

}  // namespace

DriftSettings::Texts DriftSettings::Typed() const {
    return {TrimStr(samples), TrimStr(minutes), TrimStr(limitMv), TrimStr(limitPercent), TrimStr(standard)};
}

std::string DriftSettings::Take(const Texts& texts) {
    std::array<double, Numbers> values{};
    for (std::size_t i = 0; i < values.size(); ++i) {
        const NumberRow& row = NumberRows[i];
        const std::string text = Trim(texts[i]);
        values[i] = text.empty() ? 0 : Val(text);
        const bool sound = (text.empty() || IsNumber(text)) && values[i] >= 0 && values[i] <= row.most &&
                           (!row.whole || values[i] == std::floor(values[i]));
        if (!sound)
            return std::string("The ") + row.name + " is a " + (row.whole ? "whole " : "") + "number from 0 to " +
                   TrimStr(row.most) + ", with a point.";
    }
    DriftSettings taken;
    taken.samples = static_cast<int>(values[0]);
    taken.minutes = values[1];
    taken.limitMv = values[2];
    taken.limitPercent = values[3];
    taken.standard = static_cast<int>(values[4]);
    taken.bracket = bracket;
    if (taken.On() && taken.limitMv == 0 && taken.limitPercent == 0)
        return "A check needs a limit, in mV or in per cent.";
    *this = taken;
    return {};
}

DriftSettings ReadDriftSettings(const std::string& iniPath) {
    DriftSettings settings;
    DriftSettings::Texts texts = settings.Typed();
    for (std::size_t i = 0; i < texts.size(); ++i)
        if (std::string text = ReadSetting(Section, NumberRows[i].key, iniPath); !Trim(text).empty())
            texts[i] = std::move(text);
    settings.bracket = Val(ReadSetting(Section, BracketKey, iniPath)) == 1;
    settings.Take(texts);
    return settings;
}

bool WriteDriftSettings(const DriftSettings& settings, const std::string& iniPath) {
    const DriftSettings::Texts texts = settings.Typed();
    bool written = WriteSetting(Section, BracketKey, settings.bracket ? "1" : "0", iniPath);
    for (std::size_t i = 0; i < texts.size(); ++i)
        written = WriteSetting(Section, NumberRows[i].key, texts[i], iniPath) && written;
    return written;
}

std::optional<CheckStandard> CheckStandardOf(const Calibration& calibration, int number) {
    const auto& points = calibration.points;
    if (points.empty()) return std::nullopt;
    auto chosen = points.begin();
    if (number >= 1 && number <= static_cast<int>(points.size())) {
        chosen += number - 1;
    } else {
        const auto [low, high] = std::ranges::minmax(points, {}, &CalibrationPoint::logC);
        const double middle = (double{low.logC} + high.logC) / 2;
        chosen = std::ranges::min_element(points, {}, [=](const auto& p) { return std::abs(p.logC - middle); });
    }
    CheckStandard standard{.logC = chosen->logC, .expected = 0, .count = 0, .name = {}};
    for (const CalibrationPoint& point : points) {
        if (point.logC != chosen->logC) continue;
        standard.expected += point.mv;
        ++standard.count;
    }
    standard.expected /= standard.count;
    standard.name = calibration.ion != NoIon ? Format(chosen->ppm, "0.00") + " ppm"
                                             : Format(std::pow(10.0, standard.logC), "0.00E-0") + " mol/L";
    return standard;
}

void DriftWatch::Follow(std::shared_ptr<const Calibration> calibration) {
    const bool same = calibration_ != nullptr && calibration_->points == calibration->points &&
                      calibration_->curve == calibration->curve;
    if (!same) *this = DriftWatch();
    calibration_ = std::move(calibration);
}

void DriftWatch::Add(int row, double millivolts, double seconds) {
    // The last row has been taken away again; or it is another table, whose rows are counted anew.
    if (!samples_.empty() && row == samples_.back().row) samples_.pop_back();
    if (!samples_.empty() && row <= samples_.back().row) samples_.clear();
    if (!std::exchange(begun_, true)) checkedAt_ = seconds;
    samples_.push_back({row, millivolts, seconds});
}

void DriftWatch::Keep(int rows) {
    std::erase_if(samples_, [rows](const SampleSeen& sample) { return sample.row > rows; });
}

RowFacts DriftWatch::FactsNow() const {
    RowFacts facts;
    facts.Set(fact::Uncovered, failed_);
    return facts;
}

bool DriftWatch::Due(const DriftSettings& settings, double seconds) const {
    if (samples_.empty()) return false;
    constexpr double Minute = 60;
    return (settings.samples > 0 && Since() >= settings.samples) ||
           (settings.minutes > 0 && seconds - checkedAt_ >= settings.minutes * Minute);
}

RowFacts DriftWatch::Covered(const SampleSeen& sample, const CheckStandard& standard, bool bracket, double drift,
                             double seconds, const std::string& time) const {
    RowFacts facts;
    if (!bracket || !(seconds > checkedAt_)) {
        facts.Set(fact::DriftU, WithPlaces(std::max(std::abs(drift_), std::abs(drift)) / std::numbers::sqrt3, 4));
        return facts;
    }
    const double later = (sample.seconds - checkedAt_) / (seconds - checkedAt_), earlier = 1 - later;
    const double correction = -(drift_ * earlier + drift * later);
    facts.Set(fact::Corrected, WithPlaces(sample.mv + correction, MvPlaces + 1));
    facts.Set(fact::Correction, Signed(correction, MvPlaces) + " mV between " +
                                    (checkedTime_.empty() ? "the calibration" : checkedTime_) + " and " + time);
    const auto read = calibration_->uncertainty.ReadOff(standard.expected);
    // The calibration itself has no drift, and no scatter of one.
    const double measured = checkedTime_.empty() ? 0 : earlier;
    const double parts = measured * measured + later * later + (measured + later) * (measured + later) / standard.count;
    facts.Set(fact::DriftU, read ? WithPlaces(read->scatter * std::sqrt(parts), 4) : std::string());
    return facts;
}

DriftWatch::Outcome DriftWatch::Check(const CheckStandard& standard, const DriftSettings& settings, double millivolts,
                                      double seconds, const std::string& time) {
    Outcome outcome;
    outcome.drift = millivolts - standard.expected;
    outcome.percent = PercentOff(*calibration_, standard.expected, millivolts);
    const bool beyondMv = settings.limitMv > 0 && !(std::abs(outcome.drift) <= settings.limitMv);
    const bool beyondPercent =
        settings.limitPercent > 0 && !(outcome.percent && std::abs(*outcome.percent) <= settings.limitPercent);
    outcome.good = !beyondMv && !beyondPercent;
    const std::string limit = LimitText(settings), drift = Signed(outcome.drift, MvPlaces) + " mV";
    const std::string percent = outcome.percent ? Signed(*outcome.percent, PercentPlaces) + " %" : "";
    outcome.words = "drift check with " + standard.name + ": " + drift + (percent.empty() ? "" : ", ") + percent +
                    (outcome.good ? ", within " : ", BEYOND ") + limit;
    outcome.facts.Set(fact::CheckStandard, standard.name);
    outcome.facts.Set(fact::CheckExpected, WithPlaces(standard.expected, MvPlaces));
    outcome.facts.Set(fact::CheckDrift, Signed(outcome.drift, MvPlaces));
    outcome.facts.Set(fact::CheckPercent, outcome.percent ? Signed(*outcome.percent, PercentPlaces) : "");
    outcome.facts.Set(fact::CheckLimit, limit);
    outcome.facts.Set(fact::CheckVerdict, outcome.good ? Good : Failed);

    if (!outcome.good) {
        failed_ = "drift of " + drift + " found at " + time;
        for (const SampleSeen& sample : samples_)
            outcome.rows.push_back({sample.row, FactsNow()});
        return outcome;
    }
    for (const SampleSeen& sample : samples_)
        if (failed_.empty())
            outcome.rows.push_back(
                {sample.row, Covered(sample, standard, settings.bracket, outcome.drift, seconds, time)});
    samples_.clear();
    failed_.clear();
    begun_ = true;
    checkedAt_ = seconds;
    drift_ = outcome.drift;
    checkedTime_ = time;
    return outcome;
}

std::string DriftText(const RowFacts& facts) {
    if (const std::string standard = facts.Get(fact::CheckStandard); !standard.empty()) {
        const std::string percent = facts.Get(fact::CheckPercent);
        return "drift check with " + standard + ": " + facts.Get(fact::CheckDrift) + " mV" +
               (percent.empty() ? "" : ", " + percent + " %") + ", limit " + facts.Get(fact::CheckLimit) +
               (facts.Get(fact::CheckVerdict) == Failed ? " exceeded" : "");
    }
    const std::string uncovered = facts.Get(fact::Uncovered), correction = facts.Get(fact::Correction);
    std::string text = uncovered.empty() ? "" : "NOT COVERED: " + uncovered;
    if (!correction.empty()) text += (text.empty() ? "" : "; ") + ("drift correction in results " + correction);
    return text;
}

}  // namespace kelvo
