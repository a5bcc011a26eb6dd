#include "calibration/QualityPage.h"

#include <algorithm>
#include <cmath>

#include "calibration/LowEndWords.h"
#include "calibration/QualityFigures.h"
#include "calibration/QualityPlot.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

using Basis = CalibrationQuality::Basis;
const char* const NoFigure = "-";
const char* const NotTold = "not told";

/// Concentrations as the analyst reads them.
class Units {
 public:
    explicit Units(double gramsPerMole) : ppm_(1000 * gramsPerMole) {}
    /// "0.0203 ppm (1.07E-6 mol/L)".
    std::string Both(double molar) const {
        const std::string inMolar = Format(molar, "0.00E-0") + " mol/L";
        return ppm_ == 0 ? inMolar : Ppm(molar) + " ppm (" + inMolar + ")";
    }
    std::string Ppm(double molar) const {
        // A hair above a tenth, so that 10 ppm, which a float holds as 9.9999998, have no more digits than 11.
        constexpr double ThreeDigits = 0.100001;
        return ppm_ == 0 ? NoFigure : WithPlacesOf(ppm_ * molar, ThreeDigits * ppm_ * molar);
    }
    /// ppm of a standard: as it was entered and as every other page shows it, as long as the fit takes it at that; what
    /// its rounded LogC makes of it is 99.9 instead of 100.00.
    std::string Standard(const QualityInput& input, std::size_t i) const {
        constexpr double RoundingOfLogC = 0.0051, Least = 1;
        const double molar = std::pow(10.0, input.standards.logC[i]);
        const double entered = i < input.ppm.size() ? input.ppm[i] : 0;
        const bool same = ppm_ > 0 && entered > 0 && std::abs(std::log10(entered / (ppm_ * molar))) < RoundingOfLogC;
        if (!same) return Ppm(molar);
        return entered >= Least ? Format(entered, "0.00") : Ppm(entered / ppm_);
    }
    std::string Range(const QualityInput& input, const LinearRange& range) const {
        const auto end = [&](double logC) {
            if (ppm_ == 0) return Format(std::pow(10.0, logC), "0.00E-0");
            const auto& all = input.standards.logC;
            return Standard(input, static_cast<std::size_t>(std::find(all.begin(), all.end(), logC) - all.begin()));
        };
        return end(range.fromLogC) + " to " + end(range.toLogC) + (ppm_ == 0 ? " mol/L" : " ppm");
    }

 private:
    double ppm_ = 0;  ///< ppm of 1 mol/L
};

/// A figure of the line with its standard deviation beside it.
QualityPage::Figure WithDeviation(const char* name, const CalibrationQuality& quality, double value, double deviation,
                                  const std::string& unit) {
    if (quality.line.Freedom() < 1 || quality.PerfectFit()) return {name, WithPlaces(value, 2) + " " + unit, NotTold};
    const SpreadTexts texts = WithSpread(value, deviation);
    return {name, texts.value + " " + unit, "± " + texts.spread + " " + unit + " (standard deviation)"};
}

std::string TheoryBasis(const QualityInput& input, const CalibrationQuality& quality) {
    if (input.ion.charge == 0) return "the charge of the ion is not known";
    return input.ion.label + " at " + WithPlaces(quality.celsius, 1) + " °C" +
           (quality.celsiusAssumed ? " (assumed)" : "");
}

std::string DetectionText(const LinearRange& range, const Units& units) {
    switch (range.limit) {
        case LinearRange::Limit::NotReached: return "not reached";
        case LinearRange::Limit::AtMost: return "below " + units.Both(std::pow(10.0, range.detectionLogC));
        case LinearRange::Limit::Reached: return units.Both(std::pow(10.0, range.detectionLogC));
        case LinearRange::Limit::CannotTell: break;
    }
    return NotTold;
}

std::string DetectionBasis(const LinearRange& range, double gramsPerMole) {
    switch (range.limit) {
        case LinearRange::Limit::NotReached: return "the lowest standards lie on the line";
        case LinearRange::Limit::AtMost: return "the lowest standard has not reached the level";
        case LinearRange::Limit::Reached: {
            std::string meets = "where the level at the low end meets the line";
            if (!range.detection) return meets;
            return TextsOfLimit(std::pow(10.0, range.detectionLogC), std::pow(10.0, range.detection->low),
                                std::pow(10.0, range.detection->high), gramsPerMole)
                       .Bounds() +
                   ", " + meets;
        }
        case LinearRange::Limit::CannotTell: break;
    }
    return "needs four standards and a linear range";
}

void AddLineFigures(std::vector<QualityPage::Figure>& figures, const CalibrationQuality& quality) {
    const StraightLine& line = quality.line;
    const bool has = line.n > 1;
    const bool scatter = has && line.Freedom() > 0;
    figures.push_back(has ? WithDeviation("Intercept Eo", quality, line.intercept, line.interceptDeviation, "mV")
                          : QualityPage::Figure{"Intercept Eo", NoFigure, ""});
    figures.push_back({"Residual standard deviation",
                       scatter ? WithPlaces(line.residualDeviation, 3) + " mV" : NoFigure,
                       quality.PerfectFit() ? "the points lie exactly on the line" : ""});
    figures.push_back({"r", has ? WithPlaces(line.r, 5) : NoFigure, ""});
    figures.push_back({"r²", has ? WithPlaces(line.r2, 5) : NoFigure, ""});
    figures.push_back({"Degrees of freedom", has ? std::to_string(line.Freedom()) : NoFigure, ""});
}

QualityPage::Figure LowEndFigure(const std::optional<LowEndFit>& fit, const CalibrationQuality& quality,
                                 const Units& units, double gramsPerMole) {
    const char* const Name = "Low-end fit, c";
    if (!fit) return {Name, NotTold, "needs four standards that follow E = Eo + S·log10(x + c)"};
    if (fit->c == 0) return {Name, "0", "the straight line fits as well"};
    return {Name, units.Both(fit->c),
            WordsOf(*fit, gramsPerMole).test + "; residual deviation " + WithPlaces(fit->residualDeviation, 3) +
                " mV, of the line " + WithPlaces(quality.line.residualDeviation, 3) + " mV"};
}

void AddLowEnd(std::vector<QualityPage::Figure>& figures, const CalibrationQuality& quality, const QualityInput& input,
               const std::optional<LowEndFit>& fit, const Units& units) {
    const LinearRange& range = quality.range;
    const std::string ends = "LogC " + WithPlaces(range.fromLogC, 2) + " to " + WithPlaces(range.toLogC, 2);
    figures.push_back({"Linear range", range.found ? units.Range(input, range) : NotTold,
                       range.found ? ends + (range.saturates ? "; the electrode saturates above it" : "")
                                   : "needs three concentrations on a line that rises or falls"});
    figures.push_back({"Detection limit", DetectionText(range, units), DetectionBasis(range, input.gramsPerMole)});
    figures.push_back(LowEndFigure(fit, quality, units, input.gramsPerMole));
    if (quality.answers) return;
    for (auto figure = figures.end() - 3; figure != figures.end(); ++figure)
        figure->beside = "the electrode does not answer";
}

std::string MarkText(const CalibrationQuality& quality, std::size_t i) {
    const QualityPoint& point = quality.points[i];
    if (!point.marked) return {};
    if (quality.wrong.Is(i))
        return quality.wrong.kind == WrongStandard::Kind::Swapped ? "changed over?" : "most likely wrong";
    if (!point.slopeChange) return "decides the slope alone";
    return "changes the slope by " + WithPlaces(std::abs(*point.slopeChange), 1) + " %";
}

void AddRows(QualityPage& page, const CalibrationQuality& quality, const QualityInput& input, const LowEndFit* lowEnd,
             const Units& units) {
    const Standards& standards = input.standards;
    page.heads = {"No.", "ppm", "LogC", "mV", "Fitted mV", "Residual mV", "% of conc.", "Leverage", "Studentised"};
    if (lowEnd != nullptr) page.heads.push_back("Low-end residual mV");
    page.heads.push_back("Mark");
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        const double logC = standards.logC[i];
        std::vector<std::string> row = {std::to_string(i + 1), units.Standard(input, i), WithPlaces(logC, 3),
                                        WithPlaces(standards.mv[i], 2)};
        if (i < quality.points.size()) {
            const QualityPoint& point = quality.points[i];
            row.insert(row.end(),
                       {WithPlaces(point.fitted, 2), WithPlaces(point.residual, 2),
                        quality.slope == 0 ? NoFigure : WithPlaces(point.percent, 1), WithPlaces(point.leverage, 3),
                        point.studentised && !quality.PerfectFit() ? WithPlaces(*point.studentised, 1) : NoFigure});
        } else {
            row.insert(row.end(), 5, NoFigure);
        }
        if (lowEnd != nullptr) row.push_back(WithPlaces(standards.mv[i] - lowEnd->At(standards.logC[i]), 2));
        row.push_back(i < quality.points.size() ? MarkText(quality, i) : std::string());
        page.rows.push_back(std::move(row));
        page.marked.push_back(i < quality.points.size() && quality.points[i].marked);
    }
}

/// Below the standards that count, with what the line says of them all the same.
void AddLeftOut(QualityPage& page, const Calibration& calibration, const LowEndFit* lowEnd, const Units& units) {
    const CalibrationQuality& quality = calibration.quality;
    for (const LeftOutStandard& left : calibration.leftOut) {
        const bool line = quality.line.n > 1;
        const double fitted = line ? quality.line.At(left.logC) : 0, residual = left.mv - fitted;
        std::vector<std::string> row = {NoFigure,
                                        left.ppm > 0 ? Format(left.ppm, "0.00") : units.Ppm(std::pow(10.0, left.logC)),
                                        WithPlaces(left.logC, 3),
                                        WithPlaces(left.mv, 2),
                                        line ? WithPlaces(fitted, 2) : NoFigure,
                                        line ? WithPlaces(residual, 2) : NoFigure};
        row.insert(row.end(), 3, NoFigure);
        if (lowEnd != nullptr) row.push_back(WithPlaces(left.mv - lowEnd->At(left.logC), 2));
        row.push_back("left out: " + left.reason);
        page.rows.push_back(std::move(row));
        page.marked.push_back(true);
    }
}

}  // namespace

QualityPage MakeQualityPage(const Calibration& calibration, bool lowEnd) {
    const QualityInput& input = calibration.input;
    const CalibrationQuality& quality = calibration.quality;
    const bool hasLine = quality.basis == Basis::Line && quality.answers;
    const auto fit = hasLine ? FitLowEnd(input.standards) : std::nullopt;
    const LowEndFit* shown = fit && lowEnd ? &*fit : nullptr;
    const Units units(calibration.gramsPerMole);
    const bool hasSlope = quality.basis != Basis::NoPoints && quality.basis != Basis::OneConcentration;

    QualityPage page;
    page.verdict = calibration.verdict;
    page.lowEndPossible = fit.has_value();
    if (hasSlope && quality.basis != Basis::KnownSlope)
        page.figures.push_back(
            WithDeviation("Slope", quality, quality.slope, quality.line.slopeDeviation, "mV/decade"));
    else
        page.figures.push_back({"Slope", hasSlope ? WithPlaces(quality.slope, 2) + " mV/decade" : NoFigure,
                                hasSlope ? "as typed, not measured" : ""});
    page.figures.push_back({"Theoretical slope",
                            quality.theory ? WithPlaces(*quality.theory, 2) + " mV/decade" : NoFigure,
                            TheoryBasis(input, quality)});
    page.figures.push_back(
        {"Slope, % of theory", quality.percent ? WithPlaces(*quality.percent, 1) + " %" : NoFigure, ""});
    AddLineFigures(page.figures, quality);
    AddLinearity(page.figures, calibration);
    AddLowEnd(page.figures, quality, input, fit, units);
    AddBlankLimits(page.figures, calibration);
    AddToldStandards(page.figures, calibration);
    AddRows(page, quality, input, shown, units);
    AddLeftOut(page, calibration, shown, units);
    DrawQuality(page.plot, quality, input.standards, calibration.limits, shown);
    return page;
}

std::string QualityText(const QualityPage& page) {
    std::string text = "Calibration Quality\t" + page.verdict.Line() + "\n";
    for (const std::string& cause : page.verdict.causes)
        text += "Usual cause\t" + cause + "\n";
    text += "What to do\t" + page.verdict.next + "\n";
    for (const QualityPage::Figure& figure : page.figures)
        text += std::string(figure.name) + "\t" + figure.value + "\t" + figure.beside + "\n";
    const auto line = [&](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i)
            text += (i > 0 ? "\t" : "") + cells[i];
        text += "\n";
    };
    text += "\n";
    line(page.heads);
    for (const auto& row : page.rows)
        line(row);
    return text;
}

}  // namespace kelvo
