#include "calibration/QualityPage.h"

#include <cmath>

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
    explicit Units(const AppState& state) {
        constexpr double GramsPerLitre = 1000;
        if (state.IonIndex >= 0 && state.IonIndex < IonRows)
            ppm_ = GramsPerLitre * state.Ions.weights[static_cast<std::size_t>(state.IonIndex)];
    }
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
    std::string Range(double fromLogC, double toLogC) const {
        const double from = std::pow(10.0, fromLogC), to = std::pow(10.0, toLogC);
        return ppm_ == 0 ? Format(from, "0.00E-0") + " to " + Format(to, "0.00E-0") + " mol/L"
                         : Ppm(from) + " to " + Ppm(to) + " ppm";
    }

 private:
    double ppm_ = 0;  ///< ppm of 1 mol/L
};

std::string PlusMinus(const StraightLine& line, double deviation, const char* unit) {
    if (line.Freedom() < 1) return NotTold;
    return "± " + WithPlaces(deviation, 3) + " " + unit;
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

std::string DetectionBasis(const LinearRange& range) {
    switch (range.limit) {
        case LinearRange::Limit::NotReached: return "the lowest standards lie on the line";
        case LinearRange::Limit::AtMost: return "the lowest standard has not reached the level";
        case LinearRange::Limit::Reached: return "where the level at the low end meets the line";
        case LinearRange::Limit::CannotTell: break;
    }
    return "needs four standards, three of them on a line";
}

void AddLineFigures(std::vector<QualityPage::Figure>& figures, const CalibrationQuality& quality) {
    const StraightLine& line = quality.line;
    const bool has = line.n > 1;
    const bool scatter = has && line.Freedom() > 0;
    figures.push_back({"Intercept Eo", has ? WithPlaces(line.intercept, 2) + " mV" : NoFigure,
                       has ? PlusMinus(line, line.interceptDeviation, "mV") : ""});
    figures.push_back({"Residual standard deviation",
                       scatter ? WithPlaces(line.residualDeviation, 3) + " mV" : NoFigure,
                       quality.PerfectFit() ? "the points lie exactly on the line" : ""});
    figures.push_back({"r", has ? WithPlaces(line.r, 5) : NoFigure, ""});
    figures.push_back({"r²", has ? WithPlaces(line.r2, 5) : NoFigure, ""});
    figures.push_back({"Degrees of freedom", has ? std::to_string(line.Freedom()) : NoFigure, ""});
}

QualityPage::Figure LowEndFigure(const std::optional<LowEndFit>& fit, const CalibrationQuality& quality,
                                 const Units& units) {
    const char* const Name = "Low-end fit, c";
    if (!fit) return {Name, NotTold, "needs four standards that follow E = Eo + S·log10(x + c)"};
    if (fit->c == 0) return {Name, "0", "the straight line fits as well"};
    return {Name, units.Both(fit->c),
            "residual deviation " + WithPlaces(fit->residualDeviation, 3) + " mV, of the line " +
                WithPlaces(quality.line.residualDeviation, 3) + " mV"};
}

std::string MarkText(const QualityPoint& point) {
    if (!point.marked) return {};
    if (!point.slopeChange) return "decides the slope alone";
    return "changes the slope by " + WithPlaces(std::abs(*point.slopeChange), 1) + " %";
}

void AddRows(QualityPage& page, const CalibrationQuality& quality, const Standards& standards, const LowEndFit* lowEnd,
             const Units& units) {
    page.heads = {"No.", "ppm", "LogC", "mV", "Fitted mV", "Residual mV", "% of conc.", "Leverage"};
    if (lowEnd != nullptr) page.heads.push_back("Low-end residual mV");
    page.heads.push_back("Mark");
    for (std::size_t i = 0; i < standards.Count(); ++i) {
        const double logC = standards.logC[i];
        std::vector<std::string> row = {std::to_string(i + 1), units.Ppm(std::pow(10.0, logC)), WithPlaces(logC, 3),
                                        WithPlaces(standards.mv[i], 2)};
        if (i < quality.points.size()) {
            const QualityPoint& point = quality.points[i];
            row.insert(row.end(),
                       {WithPlaces(point.fitted, 2), WithPlaces(point.residual, 2),
                        quality.slope == 0 ? NoFigure : WithPlaces(point.percent, 1), WithPlaces(point.leverage, 3)});
        } else {
            row.insert(row.end(), 4, NoFigure);
        }
        if (lowEnd != nullptr) row.push_back(WithPlaces(lowEnd->residuals[i], 2));
        row.push_back(i < quality.points.size() ? MarkText(quality.points[i]) : std::string());
        page.rows.push_back(std::move(row));
        page.marked.push_back(i < quality.points.size() && quality.points[i].marked);
    }
}

}  // namespace

QualityPage MakeQualityPage(const AppState& state, const QualityLimits& limits, int customCharge, bool lowEnd) {
    const QualityInput input = QualityInputOf(state, customCharge);
    const CalibrationQuality quality = JudgeQuality(input, limits);
    const bool hasLine = quality.basis == Basis::Line;
    const auto fit = hasLine ? FitLowEnd(input.standards) : std::nullopt;
    const LowEndFit* shown = fit && lowEnd ? &*fit : nullptr;
    const Units units(state);
    const bool hasSlope = quality.basis != Basis::NoPoints && quality.basis != Basis::OneConcentration;

    QualityPage page;
    page.verdict = JudgeCalibration(quality, input.ion, input.crossed, limits);
    page.lowEndPossible = fit.has_value();
    page.figures.push_back({"Slope", hasSlope ? WithPlaces(quality.slope, 2) + " mV/decade" : NoFigure,
                            !hasSlope ? std::string()
                            : quality.basis == Basis::KnownSlope
                                ? "as typed, not measured"
                                : PlusMinus(quality.line, quality.line.slopeDeviation, "mV/decade")});
    page.figures.push_back({"Theoretical slope",
                            quality.theory ? WithPlaces(*quality.theory, 2) + " mV/decade" : NoFigure,
                            TheoryBasis(input, quality)});
    page.figures.push_back(
        {"Slope, % of theory", quality.percent ? WithPlaces(*quality.percent, 1) + " %" : NoFigure, ""});
    AddLineFigures(page.figures, quality);
    page.figures.push_back(
        {"Linear range", quality.range.found ? units.Range(quality.range.fromLogC, quality.range.toLogC) : NotTold,
         quality.range.found
             ? "LogC " + WithPlaces(quality.range.fromLogC, 2) + " to " + WithPlaces(quality.range.toLogC, 2)
             : "needs three standards on a line"});
    page.figures.push_back({"Detection limit", DetectionText(quality.range, units), DetectionBasis(quality.range)});
    page.figures.push_back(LowEndFigure(fit, quality, units));
    AddRows(page, quality, input.standards, shown, units);
    DrawQuality(page.plot, quality, input.standards, limits, shown);
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
