#include "addition/SeriesForm.h"
#include "batch/Commands.h"
#include "batch/Failure.h"
#include "statistics/Figures.h"
#include "text/Number.h"

namespace kelvo {
namespace {

/// The potentials as they were measured, with what the line leaves of them.
Section Potentials(const SeriesForm& form, const SeriesOutcome& outcome) {
    std::vector<std::vector<std::string>> rows;
    for (int i = 0; i <= SeriesForm::Additions; ++i) {
        const std::string& mv = form.Text(SeriesForm::FirstMv + i);
        if (mv.empty()) continue;
        const auto at = static_cast<std::size_t>(i);
        const bool fitted = outcome.result && at < outcome.result->residuals.size();
        rows.push_back({TrimStr(i), i == 0 ? std::string() : form.Text(SeriesForm::FirstMl + i - 1), mv,
                        fitted ? WithPlaces(outcome.result->residuals[at], 2) : std::string()});
    }
    return SectionOf("potentials", "Potentials", {"addition", "mL", "mV", "residual mV"}, std::move(rows));
}

/// Unrounded: what rounds is who shows it.
Section BudgetSection(const Budget& budget) {
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < budget.Parts().size(); ++i) {
        const Contribution& part = budget.Parts()[i];
        rows.push_back({part.name, TrimStr(part.u), TrimStr(budget.Share(i)),
                        part.freedom > 0 ? std::to_string(part.freedom) : std::string(), part.source});
    }
    return SectionOf("budget", "Uncertainty budget", {"part", "u %", "share %", "degrees of freedom", "source"},
                     std::move(rows));
}

}  // namespace

ExitCode RunAddition(const Arguments& arguments, const Streams& streams) {
    constexpr std::size_t Largest = std::size_t{1} << 20;
    const std::string& file = arguments.Words().front();
    KeptMessages messages;
    SeriesForm form(messages);
    const std::string bytes = TextOfFile(file, streams.in, Largest);
    // A form takes files of its own method alone.
    std::string refused = form.Take(bytes);
    if (!refused.empty()) {
        SeriesStart ofSample;
        ofSample.sampleAdded = true;
        form.Begin(ofSample);
        if (form.Take(bytes).empty()) refused.clear();
    }
    if (!refused.empty()) Refuse(ExitCode::File, file + ": " + refused);
    const SeriesOutcome outcome = form.Outcome();
    Report report;
    report.fields = {TextField("method", "Method", form.SampleAdded() ? "sample addition" : "standard addition"),
                     TextField("result_text", "Result", outcome.Line())};
    const auto number = [&](const char* key, const char* label, double value) {
        report.fields.push_back(NumberField(key, label, TrimStr(value), "ppm"));
    };
    if (outcome.result) number("ppm", "Concentration", outcome.ppm);
    if (outcome.interval) {
        number("low", "95 % from", outcome.interval->low);
        number("high", "95 % to", outcome.interval->high);
    }
    if (outcome.recovery) report.fields.push_back(NumberField("recovery", "Recovery", TrimStr(*outcome.recovery), "%"));
    if (const std::string remarks = outcome.Remarks(); !remarks.empty())
        report.fields.push_back(TextField("remarks", "Remarks", remarks));
    report.sections = {BudgetSection(outcome.budget), Potentials(form, outcome)};
    if (arguments.Has(JsonOption.name)) {
        WriteJson(streams.out, report);
        streams.out << "\n";
    } else {
        constexpr std::size_t All = 100;
        WriteText(streams.out, report, All);
    }
    if (!outcome.result) return ExitCode::NoResult;
    return outcome.interval ? ExitCode::Done : ExitCode::RowsRefused;
}

}  // namespace kelvo
