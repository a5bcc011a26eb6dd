#include "tables/ControlSample.h"

#include <algorithm>
#include <array>

#include "core/Settings.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const Section = "Control Samples";
const char* const Key = "List";
constexpr double Percent = 100, Largest = 1e6;

/// Words between blanks.
std::vector<std::string> Words(std::string_view text) {
    std::vector<std::string> words;
    while (true) {
        const auto from = text.find_first_not_of(" \t");
        if (from == std::string_view::npos) return words;
        text.remove_prefix(from);
        const auto end = std::min(text.find_first_of(" \t"), text.size());
        words.emplace_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

/// The three numbers of a control; none when they are not such.
std::optional<ControlSample> Numbers(const std::vector<std::string>& words, std::size_t from) {
    if (words.size() != from + 3) return std::nullopt;
    std::array<double, 3> numbers{};
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (!IsNumber(words[from + i])) return std::nullopt;
        numbers[i] = Val(words[from + i]);
    }
    const ControlSample control{from > 0 ? words[0] : std::string(), numbers[0], numbers[1], numbers[2]};
    const bool sound = control.target > 0 && control.low >= 0 && control.high > control.low &&
                       std::max(control.target, control.high) < Largest;
    return sound ? std::optional(control) : std::nullopt;
}

std::string NumbersText(const ControlSample& control) {
    return TrimStr(control.target) + " " + TrimStr(control.low) + " " + TrimStr(control.high);
}

}  // namespace

std::string ControlsText(const std::vector<ControlSample>& controls) {
    std::string text;
    for (const ControlSample& control : controls)
        text += (text.empty() ? "" : "; ") + control.word + " " + NumbersText(control);
    return text;
}

std::optional<std::vector<ControlSample>> ControlsOf(std::string_view text, std::string& told) {
    std::vector<ControlSample> controls;
    while (!text.empty()) {
        const auto end = std::min(text.find(';'), text.size());
        const std::vector<std::string> words = Words(text.substr(0, end));
        text.remove_prefix(std::min(end + 1, text.size()));
        if (words.empty()) continue;
        const auto control = Numbers(words, 1);
        if (!control) {
            told = "\"" + words[0] +
                   "\" needs a target above 0 and two limits in per cent, the lower one first: QC 10 90 110";
            return std::nullopt;
        }
        controls.push_back(*control);
    }
    return controls;
}

std::vector<ControlSample> ReadControls(const std::string& iniPath) {
    std::string told;
    return ControlsOf(ReadSetting(Section, Key, iniPath), told).value_or(std::vector<ControlSample>());
}

bool WriteControls(const std::vector<ControlSample>& controls, const std::string& iniPath) {
    // A value is read back up to there.
    constexpr std::size_t Longest = 254;
    const std::string text = ControlsText(controls);
    return text.size() <= Longest && WriteSetting(Section, Key, text, iniPath);
}

const ControlSample* ControlOf(const std::vector<ControlSample>& controls, std::string_view number) {
    const std::string upper = Upper(number);
    const ControlSample* found = nullptr;
    for (const ControlSample& control : controls)
        if (upper.starts_with(Upper(control.word)) && (found == nullptr || control.word.size() > found->word.size()))
            found = &control;
    return found;
}

void SetControl(RowFacts& facts, const ControlSample* control) {
    facts.Set(fact::Control, control != nullptr ? NumbersText(*control) : std::string());
}

std::string RecoveryText(const RowFacts& facts, std::optional<double> value, std::optional<double> from,
                         std::optional<double> to) {
    const auto control = Numbers(Words(facts.Get(fact::Control)), 0);
    if (!control) return {};
    if (!value) return "control of " + TrimStr(control->target) + " without a result";
    const auto percent = [&](double x) { return WithPlaces(Percent * x / control->target, 1); };
    const double recovery = Percent * *value / control->target;
    std::string text = "recovery " + WithPlaces(recovery, 1) + " % of " + TrimStr(control->target);
    if (from && to) text += " (" + percent(*from) + " to " + percent(*to) + ")";
    const bool within = control->low <= recovery && recovery <= control->high;
    return text + (within ? ", within " : ", OUTSIDE ") + TrimStr(control->low) + " to " + TrimStr(control->high) +
           " %";
}

std::optional<Spike> SpikeOf(const std::string& number) {
    const auto plus = number.rfind('+');
    if (plus == std::string::npos || plus == 0) return std::nullopt;
    const std::string added = Trim(number.substr(plus + 1));
    if (!IsNumber(added) || !(Val(added) > 0)) return std::nullopt;
    return Spike{Trim(number.substr(0, plus)), Val(added)};
}

}  // namespace kelvo
