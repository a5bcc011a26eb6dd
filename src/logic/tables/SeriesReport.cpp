#include "tables/SeriesReport.h"

#include "core/HardwareSettings.h"
#include "statistics/Figures.h"
#include "tables/PrintedPage.h"
#include "tables/ResultsPage.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr float TitleSize = 16, TextSize = 10, PlotWidth = 9400, PlotHeight = 6700, PlotScale = 0.85f, BarsScale = 0.8f;
constexpr int Field = 14;

void PrintSeries(const SeriesForm& form, const HardwareSettings& hardware, const std::string& title, Sheets& page) {
    const SeriesOutcome outcome = form.Outcome();
    const auto line = [&](const std::string& text) {
        for (const std::string& piece : Wrapped(text, Capacity(page))) {
            if (page.CurrentY() + page.LineHeight() > page.Height()) page.NewPage();
            page.Print(piece);
        }
    };
    page.FontSize(TitleSize);
    line(title);
    page.FontSize(TextSize);
    line("Ion: " + form.Start().ion + "   Operator: " + hardware.Operator +
         "   Electrode: " + hardware.ElectrodeNum[0]);
    line("Result: " + outcome.Line());
    if (!outcome.Remarks().empty()) line(outcome.Remarks());
    if (!outcome.result) return;
    line("First volume " + form.Text(SeriesForm::StartMl) + " mL, standard " + form.Text(SeriesForm::StandardPpm) +
         " ppm, slope " + WithPlaces(outcome.result->slope, 2) + " mV/decade" +
         (outcome.series.fitSlope ? " (fitted)" : "") +
         (outcome.blank != 0 ? ", blank " + TrimStr(outcome.blank) + " ppm" : "") +
         (outcome.dilution != 1 ? ", dilution " + TrimStr(outcome.dilution) : ""));
    page.Print(Rule(page, '='));
    std::string heads;
    for (const char* head : {"Addition", "mL", "mL in all", "mV", "Residual (mV)"})
        heads += Padded(head, Field);
    line(heads);
    for (const auto& row : SeriesCells(outcome)) {
        std::string text;
        for (const std::string& cell : row)
            text += Padded(cell, Field);
        line(text);
    }
    const auto draw = [&](const DisplayList& picture, float height, float scale) {
        if (page.CurrentY() + scale * height > page.Height()) page.NewPage();
        const float y = page.CurrentY();
        page.Draw(picture, page.Width() / scale, height);
        page.MoveTo(0, y + scale * height);
    };
    draw(outcome.Plot(), PlotHeight, PlotScale * std::min(1.0f, page.Width() / PlotWidth));
    if (!outcome.budget.Parts().empty()) draw(BudgetBars(outcome.budget, {}), BarsHeight(outcome.budget), BarsScale);
}

}  // namespace

std::vector<std::vector<std::string>> SeriesCells(const SeriesOutcome& outcome) {
    std::vector<std::vector<std::string>> rows;
    const AdditionSeries& series = outcome.series;
    for (std::size_t i = 0; i < series.mv.size(); ++i) {
        const bool known = outcome.result && i < outcome.result->residuals.size();
        rows.push_back({std::to_string(i), i > 0 ? TrimStr(series.addedMl[i - 1]) : "", TrimStr(series.TotalMl(i)),
                        TrimStr(series.mv[i]), known ? WithPlaces(outcome.result->residuals[i], 2) : ""});
    }
    return rows;
}

bool PrintSeriesDocument(StateOf<const HardwareSettings, StatusMessages> state, const SeriesForm& form,
                         const std::string& title, const PrintServices& services) {
    return RunPrint(state, services, title, {}, DataNotPrinted, [&](Sheets& page) {
        PrintSeries(form, state.Get<const HardwareSettings>(), title, page);
        PrintSignature(page);
    });
}

}  // namespace kelvo
