#include <functional>

#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/Report.h"
#include "batch/Rows.h"
#include "core/IonSettings.h"
#include "text/Number.h"
#include "utilities/ActivityForm.h"
#include "utilities/ConversionForm.h"
#include "utilities/SelectivityForm.h"

namespace kelvo {
namespace {

/// What an option types, in the order of the boxes.
struct Entry {
    const char* option;
    int box;
};
/// What a box shows in the end.
struct Shown {
    const char *key, *label, *unit;
    int box;
};

/// Refuses with what the form has said.
void Heed(KeptMessages& messages, const std::string& what) {
    const std::string told = messages.Take();
    if (!told.empty()) Refuse(ExitCode::NoResult, what + ": " + told);
}

void ChooseIon(CalculatorForm& form, const IonSettings& ions, const Arguments& arguments) {
    const auto ion = arguments.Value("--ion");
    if (!ion) Refuse(ExitCode::Usage, "which ion? --ion");
    const int row = IonNamed(ions, *ion);
    if (row >= CalculatorForm::IonCount) Refuse(ExitCode::Usage, "the calculators do not know the ion '" + *ion + "'");
    form.Select(CalculatorForm::IonList, row);
}

/// Types a number into a box and presses Enter. The box takes digits and a point; an exponent is as good here.
void Type(CalculatorForm& form, KeptMessages& messages, int box, const std::string& what, const std::string& text) {
    const auto number = NumberOf(text);
    if (!number) Refuse(ExitCode::Usage, what + ": " + WhyNoNumber(text));
    if (*number < 0) form.KeyRefused(box);
    Heed(messages, what);
    form.Edited(box, Trim(text));
    form.Enter(box);
    Heed(messages, what);
}

/// Types all that is given. @return whether anything is
bool TypeAll(CalculatorForm& form, KeptMessages& messages, std::span<const Entry> entries, const Arguments& arguments) {
    bool any = false;
    for (const Entry& entry : entries) {
        const auto text = arguments.Value(entry.option);
        if (!text) continue;
        Type(form, messages, entry.box, entry.option, *text);
        any = true;
    }
    return any;
}

/// Two options for one thing are one too many.
void OneOf(const Arguments& arguments, std::initializer_list<const char*> options) {
    const char* first = nullptr;
    for (const char* option : options) {
        if (!arguments.Has(option)) continue;
        if (first != nullptr) Refuse(ExitCode::Usage, std::string(first) + " and " + option + " are one box");
        first = option;
    }
}

ExitCode Write(const Report& report, const Arguments& arguments, const Streams& streams) {
    if (arguments.Has(JsonOption.name)) {
        WriteJson(streams.out, report);
        streams.out << '\n';
    } else {
        WriteText(streams.out, report, SelectivityForm::RowCount);
    }
    return ExitCode::Done;
}

/// The ion and what stands in the boxes.
Report Begin(const CalculatorForm& form, const IonSettings& ion, std::span<const Shown> boxes) {
    Report report;
    report.fields.push_back(TextField("ion", "Ion", ion.Ions.names[static_cast<std::size_t>(form.Ion())]));
    for (const Shown& shown : boxes)
        if (!form.Text(shown.box).empty())
            report.fields.push_back(NumberField(shown.key, shown.label, form.Text(shown.box), shown.unit));
    return report;
}

}  // namespace

ExitCode RunSelect(const Arguments& arguments, const Streams& streams) {
    using Form = SelectivityForm;
    const IonSettings state;
    KeptMessages messages;
    Form form(messages, state.Ions);
    ChooseIon(form, state, arguments);
    const auto ppm = arguments.Value("--ppm");
    const auto given = arguments.Values("--interferent");
    if (!ppm && !given.empty()) Refuse(ExitCode::Usage, "interferents need the concentration of the ion: --ppm");
    if (ppm) Type(form, messages, Form::Concentration, "--ppm", *ppm);
    const auto rows = InterferentsOf(form.Ion());
    for (const std::string& each : given) {
        const std::size_t equals = each.find('=');
        if (equals == std::string::npos) Refuse(ExitCode::Usage, "--interferent takes NAME=PPM, not '" + each + "'");
        const std::string name = each.substr(0, equals);
        int row = 0;
        while (row < static_cast<int>(rows.size()) && !EqualNoCase(rows[static_cast<std::size_t>(row)].ion, name))
            ++row;
        if (row == static_cast<int>(rows.size()))
            Refuse(ExitCode::NoResult, "'" + name + "' is none of the ions that disturb this electrode");
        if (form.MustBeAbsent(row)) Refuse(ExitCode::NoResult, "'" + name + "' must be absent");
        Type(form, messages, Form::Cell(Form::Entered, row), "--interferent " + name, each.substr(equals + 1));
    }
    Report report = Begin(form, state,
                          std::array<Shown, 2>{{{"ppm", "Concentration", "ppm", Form::Concentration},
                                                {"total_percent", "Total error", "%", Form::Total}}});
    std::vector<std::vector<std::string>> cells;
    for (int row = 0; row < static_cast<int>(rows.size()); ++row) {
        cells.emplace_back();
        for (int column = 0; column < Form::ColumnCount; ++column)
            cells.back().push_back(form.Text(Form::Cell(static_cast<Form::Column>(column), row)));
    }
    report.sections = {SectionOf("interferents", "Ions that disturb",
                                 {"Ion", "K", "ppm for 10 %", "ppm given", "Error %"}, std::move(cells))};
    return Write(report, arguments, streams);
}

ExitCode RunDilute(const Arguments& arguments, const Streams& streams) {
    using Form = ConversionForm;
    const IonSettings state;
    KeptMessages messages;
    Form form(messages, state.Ions);
    OneOf(arguments, {"--ppm", "--molar"});
    OneOf(arguments, {"--wanted-ppm", "--wanted-molar"});
    OneOf(arguments, {"--standard-ppm", "--standard-molar"});
    ChooseIon(form, state, arguments);
    constexpr std::array<Entry, 8> Entries = {{{"--ppm", Form::Ppm},
                                               {"--molar", Form::Molar},
                                               {"--density", Form::Density},
                                               {"--volume", Form::Volume},
                                               {"--wanted-ppm", Form::WantedPpm},
                                               {"--wanted-molar", Form::WantedMolar},
                                               {"--standard-ppm", Form::StandardPpm},
                                               {"--standard-molar", Form::StandardMolar}}};
    if (!TypeAll(form, messages, Entries, arguments)) Refuse(ExitCode::Usage, "there is nothing to convert");
    constexpr std::array<Shown, Form::BoxCount> Boxes = {{
        {"ppm", "Concentration", "ppm", Form::Ppm},
        {"molar", "Concentration", "mol/L", Form::Molar},
        {"logc", "Concentration", "LogC", Form::LogC},
        {"density", "Density", "g/mL", Form::Density},
        {"ppm_by_weight", "By weight", "mg/kg", Form::PpmByWeight},
        {"mg_per_100g", "By weight", "mg/100 g", Form::MgPer100g},
        {"volume_ml", "Wanted", "mL", Form::Volume},
        {"wanted_ppm", "Wanted", "ppm", Form::WantedPpm},
        {"wanted_molar", "Wanted", "mol/L", Form::WantedMolar},
        {"standard_ppm", "Standard", "ppm", Form::StandardPpm},
        {"standard_molar", "Standard", "mol/L", Form::StandardMolar},
        {"standard_ml", "Take of the standard", "mL", Form::StandardVolume},
        {"final_ml", "Dilute to", "mL", Form::FinalVolume},
    }};
    return Write(Begin(form, state, Boxes), arguments, streams);
}

ExitCode RunActivity(const Arguments& arguments, const Streams& streams) {
    using Form = ActivityForm;
    const IonSettings state;
    KeptMessages messages;
    Form form(messages, state.Ions);
    OneOf(arguments, {"--strength-ppm", "--strength-molar"});
    OneOf(arguments, {"--activity-ppm", "--activity-molar", "--concentration-ppm", "--concentration-molar"});
    ChooseIon(form, state, arguments);
    if (!arguments.Has("--strength-ppm") && !arguments.Has("--strength-molar"))
        Refuse(ExitCode::Usage, "which ionic strength? --strength-molar or --strength-ppm");
    constexpr std::array<Entry, 6> Entries = {{{"--strength-ppm", Form::StrengthPpm},
                                               {"--strength-molar", Form::StrengthMolar},
                                               {"--activity-ppm", Form::ActivityPpm},
                                               {"--activity-molar", Form::ActivityMolar},
                                               {"--concentration-ppm", Form::ConcentrationPpm},
                                               {"--concentration-molar", Form::ConcentrationMolar}}};
    TypeAll(form, messages, Entries, arguments);
    constexpr std::array<Shown, Form::BoxCount> Boxes = {{
        {"strength_ppm", "Ionic strength", "ppm", Form::StrengthPpm},
        {"strength_molar", "Ionic strength", "mol/L", Form::StrengthMolar},
        {"coefficient", "Activity coefficient", "", Form::Coefficient},
        {"activity_ppm", "Activity", "ppm", Form::ActivityPpm},
        {"activity_molar", "Activity", "mol/L", Form::ActivityMolar},
        {"concentration_ppm", "Concentration", "ppm", Form::ConcentrationPpm},
        {"concentration_molar", "Concentration", "mol/L", Form::ConcentrationMolar},
    }};
    return Write(Begin(form, state, Boxes), arguments, streams);
}

}  // namespace kelvo
