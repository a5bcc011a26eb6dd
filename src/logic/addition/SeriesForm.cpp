#include "addition/SeriesForm.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "calibration/SampleUncertainty.h"
#include "core/Dialogs.h"
#include "statistics/Figures.h"
#include "statistics/StudentT.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

using Json = nlohmann::ordered_json;

constexpr double Percent = 100;
constexpr double SmallestChange = 10, LargestStep = 60;  // mV
constexpr const char* FormatName = "kelvo-additions";

/// Limits of a box, both included, and how it is called.
struct Limit {
    const char *key, *name;
    double lowest, highest;
};
constexpr std::array<Limit, SeriesForm::FirstMl> Limits = {{
    {"start_ml", "The first volume", 0.1, 10000},
    {"standard_ppm", "The standard's concentration", 0.0001, 999999},
    {"slope", "The slope", -99.99, 99.99},
    {"expected_ppm", "The expected concentration", 0.0001, 99999},
    {"dilution", "The dilution factor", 0.0001, 1000000},
    {"blank", "The blank", 0, 99999},
    {"blank_s", "The blank's standard deviation", 0, 99999},
    {"standards_u", "The standard's relative deviation", 0, 50},
    {"known_ppm", "The known concentration", 0.0001, 99999},
}};
constexpr Limit VolumeLimit = {"added_ml", "An added volume", 0.001, 10000};
constexpr Limit PotentialLimit = {"mv", "A potential", -2000, 2000};

const Limit& LimitOf(int box) {
    if (box < SeriesForm::FirstMl) return Limits[static_cast<std::size_t>(box)];
    return box < SeriesForm::FirstMv ? VolumeLimit : PotentialLimit;
}

/// The box that comes after another in the order of the work.
int Next(int box) {
    if (box == SeriesForm::StartMl || box == SeriesForm::StandardPpm) return box + 1;
    if (box < SeriesForm::FirstMl)
        return box == SeriesForm::KnownPpm ? SeriesForm::FirstMv
               : box == SeriesForm::Slope  ? SeriesForm::FirstMv
                                           : box + 1;
    if (box < SeriesForm::FirstMv) return SeriesForm::FirstMv + 1 + (box - SeriesForm::FirstMl);
    const int addition = box - SeriesForm::FirstMv;
    return addition < SeriesForm::Additions ? SeriesForm::FirstMl + addition : SeriesForm::StartMl;
}

std::string PlaceOf(int box) {
    if (box < SeriesForm::FirstMl) return LimitOf(box).name;
    const int n = box < SeriesForm::FirstMv ? box - SeriesForm::FirstMl + 1 : box - SeriesForm::FirstMv;
    if (box < SeriesForm::FirstMv) return "The volume of addition " + std::to_string(n);
    return n == 0 ? std::string("The potential before the additions")
                  : "The potential after addition " + std::to_string(n);
}

}  // namespace

// --- the boxes ---------------------------------------------------------------------------------------------------

void SeriesForm::Begin(const SeriesStart& start) {
    start_ = start;
    for (int i = 0; i < Boxes; ++i)
        Set(i, {});
    Set(StartMl, Trim(start.startMl));
    Set(StandardPpm, Trim(start.standardPpm));
    Set(Slope, Trim(start.slope));
    Set(ExpectedPpm, Trim(start.expectedPpm));
    Set(FirstMl, Trim(start.addedMl));
    Set(FirstMv, Trim(start.before));
    Set(FirstMv + 1, Trim(start.after));
    const auto next = NextPotential();
    FocusOn(Text(StartMl).empty()       ? StartMl
            : Text(StandardPpm).empty() ? StandardPpm
            : Text(Slope).empty()       ? Slope
                                        : next.value_or(FirstMv));
}

std::string SeriesForm::Refusal(int i) const {
    const std::string text = Trim(Text(i));
    if (text.empty()) return {};
    const Limit& limit = LimitOf(i);
    if (!IsNumber(text))
        return PlaceOf(i) + " is no number" +
               (text.find(',') != std::string::npos ? ": type a point for the comma." : ".");
    const double value = Val(text);
    if (value < limit.lowest || value > limit.highest)
        return PlaceOf(i) + " is out of range, " + TrimStr(limit.lowest) + " to " + TrimStr(limit.highest) + ".";
    if (i == Slope && value == 0) return "The slope is not 0.";
    return {};
}

double SeriesForm::Value(int i) const {
    return Val(Text(i));
}

void SeriesForm::Enter(int i) {
    told_ = Refusal(i);
    FocusOn(told_.empty() ? Next(i) : i);
}

void SeriesForm::Left(int i) {
    told_ = Refusal(i);
}

bool SeriesForm::KeyAllowed(int, char32_t key) const {
    return (key >= U'0' && key <= U'9') || key == U'.' || key == U'-' || key == U'E';
}

void SeriesForm::KeyRefused(int i) {
    told_ = "Only digits, \"-\", \".\" and \"E\" make up a number.";
    FocusOn(i);
}

std::optional<int> SeriesForm::NextPotential() const {
    for (int i = 0; i <= Additions; ++i) {
        if (i > 0 && Trim(Text(FirstMl + i - 1)).empty()) return std::nullopt;
        if (Trim(Text(FirstMv + i)).empty()) return FirstMv + i;
    }
    return std::nullopt;
}

void SeriesForm::TakePotential(int box, const std::string& millivolts) {
    Set(box, millivolts);
    told_.clear();
}

std::string SeriesForm::Plan(const std::string& additions) {
    for (const int box : {StartMl, StandardPpm, Slope, ExpectedPpm})
        if (std::string refused = Refusal(box); !refused.empty()) return refused;
    const double n = IsNumber(Trim(additions)) ? Val(additions) : 0;
    if (n < 1 || n > Additions || n != std::floor(n)) return "A plan is for 1 to 10 additions.";
    if (Text(StartMl).empty() || Text(Slope).empty() || Text(ExpectedPpm).empty())
        return "A plan needs the first volume, the slope and the concentration that is expected.";
    AdditionSeries series;
    series.sampleAdded = start_.sampleAdded;
    series.startMl = Value(StartMl);
    series.slope = Value(Slope);
    series.standardPpm = Value(StandardPpm);
    const AdditionPlan plan = PlanAdditions(series, Value(ExpectedPpm), static_cast<int>(n));
    if (Text(StandardPpm).empty()) Set(StandardPpm, TrimStr(plan.standardPpm));
    for (int i = 0; i < Additions; ++i) {
        const auto at = static_cast<std::size_t>(i);
        Set(FirstMl + i,
            at < plan.addedMl.size() && plan.addedMl[at] > 0 ? Trim(WithPlaces(plan.addedMl[at], 2)) : std::string());
    }
    const std::string each = "Each addition changes the potential by about " + WithPlaces(plan.stepMv, 0) + " mV.";
    return plan.words.empty() ? each : "This plan is not good: " + plan.words + ".";
}

bool SeriesForm::HoldsEntries() const {
    for (int i = 0; i < Boxes; ++i) {
        const bool ofScreen = i <= ExpectedPpm || i == FirstMl || i == FirstMv || i == FirstMv + 1;
        if (!ofScreen && !Trim(Text(i)).empty()) return true;
    }
    return false;
}

// --- the outcome -------------------------------------------------------------------------------------------------

SeriesOutcome SeriesForm::Outcome() const {
    SeriesOutcome out;
    for (int i = 0; i < Boxes; ++i)
        if (out.why = Refusal(i); !out.why.empty()) return out;
    const auto missing = [&](int box) {
        if (!Trim(Text(box)).empty()) return false;
        out.why = PlaceOf(box) + " is missing.";
        return true;
    };
    AdditionSeries& series = out.series;
    series.sampleAdded = start_.sampleAdded;
    series.fitSlope = fitSlope_;
    for (const int box : {StartMl, StandardPpm, FirstMv})
        if (missing(box)) return out;
    if (!fitSlope_ && missing(Slope)) return out;
    series.mv.push_back(Value(FirstMv));
    for (int i = 0; i < Additions; ++i) {
        const bool ml = !Trim(Text(FirstMl + i)).empty(), mv = !Trim(Text(FirstMv + 1 + i)).empty();
        // A volume alone is a plan; it counts once its potential stands.
        if (!ml && mv && missing(FirstMl + i)) return out;
        if (!mv) {
            for (int later = i + 1; later < Additions; ++later)
                if (!Trim(Text(FirstMv + 1 + later)).empty() && missing(FirstMv + 1 + i)) return out;
            break;
        }
        series.addedMl.push_back(Value(FirstMl + i));
        series.mv.push_back(Value(FirstMv + 1 + i));
    }
    if (series.addedMl.empty() && missing(FirstMl)) return out;
    if (series.addedMl.empty() && missing(FirstMv + 1)) return out;
    if (fitSlope_ && series.addedMl.size() < AdditionSeries::FewestToFit) {
        out.why = "The slope follows from three additions on.";
        return out;
    }
    series.startMl = Value(StartMl);
    series.standardPpm = Value(StandardPpm);
    series.slope = Value(Slope);
    series.standardsDeviation = Value(StandardsDeviation);
    series.scatter = start_.scatter;
    // The slope of the calibration has a deviation, one that was typed has none that is known.
    if (Trim(Text(Slope)) != Trim(start_.slope)) series.scatter.slope = 0;
    out.dilution = Text(Dilution).empty() ? 1 : Value(Dilution);
    out.blank = Value(Blank);
    out.blankDeviation = Value(BlankDeviation);
    try {
        out.result = WorkOutSeries(series);
    } catch (const RuntimeError& error) {
        out.why = std::string("No concentration follows: ") + error.what() + ".";
        return out;
    }
    if (!out.result) {
        out.why = "No concentration explains these potentials: look at their order, and at the sign of the slope.";
        return out;
    }
    const SeriesResult& result = *out.result;
    out.ppm = (result.ppm - out.blank) * out.dilution;
    out.why = result.why;
    out.budget = result.budget;
    if (result.interval) {
        constexpr int Known = 1000000;
        const bool counted = !out.budget.Parts().empty();
        const double before = counted ? out.budget.Coverage() : 1;
        if (out.blankDeviation > 0 && counted)
            out.budget.Add({"blank", "s " + WithPlacesOf(out.blankDeviation, out.blankDeviation) + " ppm",
                            Percent * out.blankDeviation / result.ppm});
        // The blank adds to both sides as squares do, under the coverage that all parts have together.
        const double wider = counted ? out.budget.Coverage() / before : 1;
        const double blank = (counted ? out.budget.Coverage() : StudentT(Known)) * out.blankDeviation;
        const double low = result.ppm - std::hypot(wider * (result.ppm - result.interval->low), blank);
        const double high = result.ppm + std::hypot(wider * (result.interval->high - result.ppm), blank);
        out.interval =
            SeriesResult::Interval{std::max(0.0, (low - out.blank) * out.dilution), (high - out.blank) * out.dilution};
    }
    if (!Text(KnownPpm).empty()) out.recovery = Percent * out.ppm / Value(KnownPpm);
    const double change = std::abs(series.mv.back() - series.mv.front());
    if (change < SmallestChange)
        out.remarks.push_back("all additions together changed the potential by " + WithPlaces(change, 1) +
                              " mV only, less than 10 mV: they say little");
    for (std::size_t i = 0; i < series.addedMl.size(); ++i) {
        const double step = std::abs(series.mv[i + 1] - series.mv[i]);
        if (step > LargestStep)
            out.remarks.push_back("addition " + std::to_string(i + 1) + " changed the potential by " +
                                  WithPlaces(step, 1) + " mV, more than a decade");
    }
    if (result.freedom > 0) {
        constexpr double Far = 3;
        const double s = std::max(result.residualDeviation, PotentialDeviation);
        for (std::size_t i = 0; i < result.residuals.size(); ++i)
            if (result.freedom > 2 && std::abs(result.residuals[i]) > 2 * s &&
                std::abs(result.residuals[i]) > Far * PotentialDeviation)
                out.remarks.push_back(i == 0 ? std::string("the potential before the additions lies off the curve")
                                             : "the potential after addition " + std::to_string(i) +
                                                   " lies off the curve");
    }
    if (out.ppm <= 0) out.remarks.push_back("the blank is no less than what was measured");
    return out;
}

std::string SeriesOutcome::ValueText() const {
    if (!result) return {};
    if (interval && interval->low < ppm && ppm < interval->high)
        return WithInterval(ppm, interval->low, interval->high).value;
    return WithPlacesOf(ppm, std::abs(ppm) / Percent);
}

std::string SeriesOutcome::Line() const {
    if (!result) return why;
    std::string line = ValueText() + " ppm";
    if (!interval) return line + "; no 95 % interval: " + why;
    const IntervalTexts texts = WithInterval(ppm, interval->low, interval->high);
    line += ", " + texts.low + " to " + texts.high + " (95 %";
    line += (budget.Parts().empty() ? "" : ", " + budget.CoverageText()) + ")";
    if (recovery) line += "; recovery " + WithPlaces(*recovery, 1) + " %";
    return line;
}

std::string SeriesOutcome::Remarks() const {
    std::string text;
    for (const std::string& remark : remarks)
        text += (text.empty() ? "" : "; ") + remark;
    return text;
}

RowFacts SeriesOutcome::Facts(const std::string& celsius) const {
    RowFacts facts;
    if (!result) return facts;
    facts.Set(fact::Slope, WithPlaces(result->slope, 2));
    facts.Set(fact::Celsius, Trim(celsius));
    if (interval) {
        const IntervalTexts texts = WithInterval(ppm, interval->low, interval->high);
        facts.Set(fact::Value, texts.value);
        facts.Set(fact::Low, texts.low);
        facts.Set(fact::High, texts.high);
        facts.Set(fact::Unit, "ppm");
        std::string basis;
        for (const Contribution& part : budget.Parts())
            basis += (basis.empty() ? "" : ", ") + part.name + " (" + part.source + ")";
        facts.Set(fact::Basis, basis);
    }
    const auto count = series.addedMl.size();
    facts.Remark(std::to_string(count) + (count == 1 ? " addition" : " additions") +
                 (series.fitSlope ? ", slope fitted to them" : ""));
    if (!interval) facts.Remark("no 95 % interval: " + why);
    if (blank != 0) facts.Remark("blank " + TrimStr(blank) + " ppm subtracted");
    if (dilution != 1) facts.Remark("dilution " + TrimStr(dilution));
    if (recovery) facts.Remark("recovery " + WithPlaces(*recovery, 1) + " %");
    facts.Remark(Remarks());
    std::string additions = TrimStr(series.mv.front());
    for (std::size_t i = 0; i < count; ++i)
        additions += " " + TrimStr(series.addedMl[i]) + " " + TrimStr(series.mv[i + 1]);
    facts.Set(fact::Additions, additions);
    return facts;
}

// --- the file ----------------------------------------------------------------------------------------------------

std::string SeriesForm::Bytes() const {
    Json object{{"format", FormatName},
                {"version", 1},
                {"method", start_.sampleAdded ? "sample addition" : "standard addition"},
                {"ion", start_.ion},
                {"celsius", start_.celsius},
                {"fit_slope", fitSlope_}};
    for (int i = 0; i < FirstMl; ++i)
        object[LimitOf(i).key] = Text(i);
    Json ml = Json::array(), mv = Json::array();
    for (int i = 0; i < Additions; ++i)
        ml.push_back(Text(FirstMl + i));
    for (int i = 0; i <= Additions; ++i)
        mv.push_back(Text(FirstMv + i));
    object[VolumeLimit.key] = std::move(ml);
    object[PotentialLimit.key] = std::move(mv);
    return object.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

std::string SeriesForm::Take(std::string_view bytes) {
    const Json object = Json::parse(bytes, nullptr, false);
    if (!object.is_object() || object.value("format", Json()) != FormatName)
        return "it is no file of several additions";
    if (object.value("version", Json()) != 1) return "it is of a newer version of this program";
    const bool sampleAdded = object.value("method", Json()) == "sample addition";
    if (sampleAdded != start_.sampleAdded) return "it is one of the other method";
    const auto text = [](const Json& value) {
        constexpr std::size_t Longest = 32;
        return value.is_string() ? value.get<std::string>().substr(0, Longest) : std::string();
    };
    for (int i = 0; i < FirstMl; ++i)
        Set(i, text(object.value(LimitOf(i).key, Json())));
    const auto list = [&](const char* key, int first, int count) {
        const Json values = object.value(key, Json());
        for (int i = 0; i < count; ++i) {
            const auto at = static_cast<std::size_t>(i);
            Set(first + i, values.is_array() && at < values.size() ? text(values[at]) : std::string());
        }
    };
    list(VolumeLimit.key, FirstMl, Additions);
    list(PotentialLimit.key, FirstMv, Additions + 1);
    fitSlope_ = object.value("fit_slope", Json()) == true;
    start_.ion = text(object.value("ion", Json()));
    start_.celsius = text(object.value("celsius", Json()));
    // What the calibration in use scatters by says nothing of another one.
    start_.scatter = {};
    start_.slope.clear();
    told_.clear();
    return {};
}

}  // namespace kelvo
