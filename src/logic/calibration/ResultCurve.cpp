#include "calibration/ResultCurve.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "text/Number.h"

namespace kelvo {
namespace {

/// A scatter below what the screens show: see `ScatterVanishes`.
constexpr double LeastScatter = 0.0005;
constexpr double MostDecades = 2;

struct KindRow {
    const char* word;  ///< in `Text()`
    const char* name;
};
constexpr std::array<KindRow, 3> Kinds = {
    {{"segments", "segments"}, {"bestfit", "best-fit curve"}, {"lowend", "low-end fit"}}};

const KindRow& RowOf(ResultCurve::Kind kind) {
    return Kinds[static_cast<std::size_t>(kind)];
}

/// Takes the first word off the text.
std::string_view NextWord(std::string_view& text) {
    const std::size_t end = std::min(text.find(' '), text.size());
    const std::string_view word = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    return word;
}

}  // namespace

const char* NameOf(ResultCurve::Kind kind) {
    return RowOf(kind).name;
}

ResultCurve::ResultCurve(Kind kind, Standards standards) : kind_(kind), standards_(std::move(standards)) {
    const auto &x = standards_.logC, &y = standards_.mv;
    if (x.empty()) return;
    const auto [low, high] = std::minmax_element(x.begin(), x.end());
    within_ = {*low, *high};
    switch (kind_) {
        case Kind::Segments: joined_ = JoinedLines::Of(x, y); break;
        case Kind::BestFit: parabola_ = Parabola::Of(x, y); break;
        case Kind::LowEnd: lowEnd_ = OffsetLine::Of(x, y); break;
    }
    whyNone_ = FindWhyNone();
}

const FittedCurve* ResultCurve::Fitted() const {
    if (parabola_) return &*parabola_;
    return lowEnd_ ? &*lowEnd_ : nullptr;
}

std::string ResultCurve::FindWhyNone() const {
    const std::string none = ": no uncertainty can be told";
    if (kind_ == Kind::Segments) {
        if (!joined_) return "the potentials of the segments do not rise or fall all along: no interval";
        if (joined_->Error().freedom < 1)
            return "each standard was measured once, so no interval on this curve; 'Linear Regression' has one";
        if (joined_->Error().Deviation() < LeastScatter) return "the repeated standards agree exactly" + none;
        return {};
    }
    const FittedCurve* curve = Fitted();
    if (curve == nullptr) return std::string("the standards have no ") + RowOf(kind_).name + none;
    if (curve->Freedom() < 1) return "the best-fit curve passes through all three standards" + none;
    if (curve->residualDeviation < LeastScatter) return "the points lie exactly on the curve (deviation 0)" + none;
    if (!(curve->SlopeAt(within_.from) * curve->SlopeAt(within_.to) > 0))
        return "the best-fit curve turns between the standards: no interval";
    return {};
}

std::optional<CurveEstimate> ResultCurve::Predict(std::span<const double> readings) const {
    std::optional<CurveEstimate> told;
    if (joined_)
        told = joined_->Predict(readings);
    else if (const FittedCurve* curve = Fitted())
        told = PredictFromCurve(*curve, within_, readings, MostDecades);
    if (told && (told->high - told->x > MostDecades || told->x - told->low > MostDecades)) return std::nullopt;
    return told;
}

std::optional<PlaceOnCurve> ResultCurve::PlaceOf(double mv) const {
    if (joined_) return joined_->PlaceOf(mv);
    const FittedCurve* curve = Fitted();
    return curve != nullptr ? PlaceOn(*curve, within_, mv) : std::nullopt;
}

double ResultCurve::Scatter() const {
    if (joined_) return joined_->Error().Deviation();
    const FittedCurve* curve = Fitted();
    return curve != nullptr ? curve->residualDeviation : 0;
}

int ResultCurve::Freedom() const {
    if (joined_) return joined_->Error().freedom;
    const FittedCurve* curve = Fitted();
    return curve != nullptr ? curve->Freedom() : 0;
}

std::string ResultCurve::Basis() const {
    if (kind_ == Kind::Segments)
        return "scatter of repeated standards (" + std::to_string(joined_->Error().freedom) +
               (joined_->Error().freedom == 1 ? " degree" : " degrees") + " of freedom)";
    return "scatter of " + std::to_string(standards_.Count()) + " standards about the " + RowOf(kind_).name;
}

std::string ResultCurve::Text() const {
    std::string text = RowOf(kind_).word;
    for (std::size_t i = 0; i < standards_.Count(); ++i)
        text += " " + TrimStr(standards_.logC[i]) + " " + TrimStr(standards_.mv[i]);
    return text;
}

std::optional<ResultCurve> ResultCurve::Of(const std::string& text) {
    std::string_view rest = text;
    const std::string_view word = NextWord(rest);
    const auto row = std::find_if(Kinds.begin(), Kinds.end(), [&](const KindRow& kind) { return kind.word == word; });
    if (row == Kinds.end()) return std::nullopt;
    Standards standards;
    constexpr std::size_t Most = 1000;
    while (!rest.empty() && standards.Count() < Most) {
        standards.logC.push_back(Val(NextWord(rest)));
        standards.mv.push_back(Val(NextWord(rest)));
    }
    ResultCurve curve(static_cast<Kind>(row - Kinds.begin()), std::move(standards));
    if (curve.standards_.Count() == 0 || !curve.WhyNone().empty()) return std::nullopt;
    return curve;
}

}  // namespace kelvo
