#include "calibration/SampleForm.h"

#include <utility>

#include "calibration/CalibrationStandards.h"
#include "calibration/IseCalibration.h"
#include "calibration/Potentiometry.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Messages.h"
#include "core/ScreenCode.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const GraphFull =
    "The graph holds 101 samples already, so this one was neither marked nor added to the table. Refresh empties the graph; Quick Save adds the sample as it stands.";
const char* const FileQuestion = "Would you like to save your data in a file while you are measuring";
const char* const DefaultPh = "7.5";
const char* const PotentialChanged = "mV was changed after the concentration had been worked out";

}  // namespace

SampleForm::SampleForm(const CalibrationContext& context, CaliSession& session, CalibrationInUse& inUse,
                       CalibrationView& view)
    : FormModel(Boxes, context.prompts), context_(context), session_(session), inUse_(inUse), view_(view) {
    for (const int computed : {LogC, Molar, Ppm, CaliCelsius})
        Mutable(computed).readOnly = true;
    PutAway();
}

void SampleForm::PutAway() {
    shown_ = false;
    facts_ = {};
    judged_.reset();
    live_.clear();
    assumed_.clear();
    check_.reset();
    for (int i = 0; i < Boxes; ++i) {
        Set(i, {});
        Mutable(i).visible = false;
    }
}

void SampleForm::MenuOpened() {
    StopReading();
    if (context_.state.CaliPoints == 1) context_.state.LinearFit = 1;
}

bool SampleForm::AskFile() {
    const KeptDirty dirty(context_.state);
    if (context_.tableState.TableOpen == 0) context_.table.Unload();
    return context_.table.AskFile({FileQuestion, "All Data(*.Tab)|*.Tab", "*.TAB", ".TAB"});
}

bool SampleForm::Begin(bool onLine) {
    CalibrationState& state = context_.state;
    if (context_.navigation.ReturnsTo(ScreenCode::frmPtset)) context_.screens.Hide(ScreenCode::frmPtset);
    if (!AskFile()) return false;
    context_.tableState.TableOpen = 1;
    PutAway();
    inUse_.ReadSettings();
    shown_ = true;
    for (int i = 0; i < Boxes; ++i)
        Mutable(i).visible = true;
    Set(CaliCelsius, Trim(state.CaliTemp).empty() ? state.FileTemp : state.CaliTemp);
    if (onLine) return true;
    Set(Ph, DefaultPh);
    Set(Celsius, state.CaliTemp);
    OfferTemperature();
    SetNextField(Potential);
    FocusOn(Potential);
    return true;
}

/// Where nobody has told the sample's temperature, that of the calibration is offered.
void SampleForm::OfferTemperature() {
    if (!Trim(Text(Celsius)).empty()) return;
    assumed_ = Trim(Text(CaliCelsius));
    if (assumed_.empty()) return;
    Set(Celsius, assumed_);
    SetStatus("The sample is assumed to have the calibration's " + assumed_ + " °C; type its own over it.");
}

void SampleForm::SetStatus(const std::string& message) {
    inUse_.ReadSettings();
    std::string lasting = ScreenStatus(context_.state, *inUse_.Get());
    if (std::string expired = Expired(); !expired.empty() && context_.state.CaliPoints > 0)
        lasting += (lasting.empty() ? "The " : " The ") + std::move(expired) + ".";
    view_.ShowStatusLines(lasting, message);
}

std::string SampleForm::Expired() const {
    return ExpiredText(context_.state.Told, DayText(context_.clock.Now()));
}

std::string SampleForm::IntervalLine() const {
    return IntervalText(facts_);
}

void SampleForm::StartReading() {
    if (context_.link != nullptr) context_.link->StartLink();
    context_.navigation.SetReturn(ScreenCode::frmPtset);
    context_.screens.Close(ScreenCode::frmPtset);
    context_.screens.Show(ScreenCode::frmPtset);
    view_.PlaceReadingDialog();
}

void SampleForm::StopReading() {
    if (context_.screens.IsLoaded(ScreenCode::frmPtset)) {
        context_.screens.Close(ScreenCode::frmPtset);
        if (context_.link != nullptr && context_.link->PortOpen()) context_.link->StopLink();
    }
    ReadingCancelled();
}

void SampleForm::ReadingCancelled() {
    if (context_.navigation.ReturnsTo(ScreenCode::frmPtset)) context_.navigation.ReturnScreen = 0;
    live_.clear();
    ColourTemperature(NoColour);
}

void SampleForm::ShowLive(std::optional<float> millivolts) {
    const auto sample = millivolts ? MeasureSample(inUse_.Get(), *millivolts, Text(Celsius)) : std::nullopt;
    live_ = sample ? sample->LiveLine() : std::string();
    view_.ShowSamples();
}

void SampleForm::Enter(int i) {
    switch (i) {
        case Potential:
            if (Trim(Text(Potential)).empty()) {
                SetStatus("Type the sample's potential in mV, then press Enter.");
                return;
            }
            if (Take(Text(Potential), false)) AddRow();
            FocusOn(Potential);
            return;
        case Ph: FocusOn(Celsius); return;
        case Celsius:
            assumed_.clear();
            JudgeSample();
            view_.ShowSamples();
            FocusOn(Potential);
            return;
        default: return;
    }
}

bool SampleForm::KeyAllowed(int i, char32_t key) const {
    if (i != Potential) return true;
    return (key >= U'0' && key <= U'9') || key == U'-' || key == U'.' || key == U'E';
}

void SampleForm::KeyRefused(int i) {
    if (i != Potential) return;
    SetStatus("Only digits, \"-\", \".\" and \"E\" make up a potential.");
    FocusOn(Potential);
}

void SampleForm::ShowTemperature(const std::string& celsius) {
    if (assumed_.empty() || !Trim(celsius).empty()) {
        assumed_.clear();
        Set(Celsius, celsius);
        OfferTemperature();
    }
    view_.ShowSamples();
}

void SampleForm::ColourTemperature(int colour) {
    temperatureColour_ = colour;
    view_.ShowSamples();
}

void SampleForm::ShowPh(const std::string& text) {
    Set(Ph, text);
    view_.ShowSamples();
}

bool SampleForm::Take(const std::string& millivolts, bool onLine) {
    Set(Potential, millivolts);
    const auto e = static_cast<float>(Val(millivolts));
    const auto calibration = inUse_.Get();
    const std::string remark = SampleRemark(*calibration, context_.state.SampleCount, e);
    auto result = PotentialToSample(*calibration, context_.prompts, e);
    if (!result) return false;
    if (onLine && calibration->curve != Calibration::Curve::Line) result->PpmText = Format(result->ppm, "#0.0000");
    Set(LogC, result->LogCText);
    Set(Molar, result->MolarText);
    Set(Ppm, result->PpmText);
    judged_ = {Text(Potential), {}, calibration->curve};
    beforeCheck_.reset();
    JudgeSample();
    if (!Mark(e, result->LogC)) return false;
    SetStatus(remark);
    return true;
}

void SampleForm::JudgeSample() {
    // Of another curve, or of a potential that has been typed over, the boxes hold no result.
    if (!judged_ || judged_->potential != Text(Potential) || judged_->curve != inUse_.Get()->curve) return;
    judged_->celsius = Text(Celsius);
    const auto sample = MeasureSample(inUse_.Get(), static_cast<float>(Val(Text(Potential))), Text(Celsius));
    facts_ = sample ? sample->Facts() : RowFacts();
    facts_.Remark(Expired());
    if (Text(Celsius) == assumed_ && !assumed_.empty()) facts_.Remark("°C assumed, that of the calibration");
}

RowFacts SampleForm::FactsOfBoxes() {
    if (!judged_) return {};
    if (judged_->celsius != Text(Celsius)) JudgeSample();
    if (judged_->potential == Text(Potential)) return facts_;
    RowFacts facts;
    facts.Remark(PotentialChanged);
    return facts;
}

bool SampleForm::Mark(float e, double logC) {
    const bool marked = session_.MarkSample(e, static_cast<float>(logC));
    view_.ShowAll();
    if (marked) return true;
    context_.prompts.Message(DataOutOfRange);
    SetStatus(GraphFull);
    return false;
}

void SampleForm::AddRow() {
    std::array<std::string, Boxes> texts;
    for (int i = 0; i < Boxes; ++i)
        texts[static_cast<std::size_t>(i)] = Text(i);
    const int rows = static_cast<int>(Val(context_.table.NextRowNumber())) + 1;
    const std::string row = SampleRow(rows, TimeText(context_.clock.Now()), texts);
    drift_.Follow(inUse_.Get());
    if (check_) return AddCheck(row);
    RowFacts facts = drift_.FactsNow();
    facts.Add(FactsOfBoxes());
    context_.table.AddRow(row, facts);
    context_.table.KeepRows();
    drift_.Add(context_.table.RowCount(), Val(Text(Potential)), context_.clock.SteadySeconds());
    view_.ShowAll();
    AskForCheck();
}

void SampleForm::AddCheck(const std::string& row) {
    const CheckStandard standard = *std::exchange(check_, std::nullopt);
    const DateTime now = context_.clock.Now();
    drift_.Keep(context_.table.RowCount());
    const DriftWatch::Outcome outcome =
        drift_.Check(standard, ReadDriftSettings(context_.paths.IniPath), Val(Text(Potential)),
                     context_.clock.SteadySeconds(), TimeText(now));
    RowFacts facts = FactsOfBoxes();
    facts.Add(outcome.facts);
    // The second cell is the sample's number.
    std::string named = row;
    named.insert(named.find('\t') + 1, "Standard " + standard.name);
    context_.table.AddRow(named, facts);
    for (const auto& [sample, told] : outcome.rows) {
        RowFacts known = context_.table.FactsOf(sample);
        known.Add(told);
        context_.table.SetFactsOf(sample, known);
    }
    context_.table.KeepRows();
    view_.ShowAll();
    std::string words = outcome.words + ".";
    words[0] = 'D';
    if (!outcome.good)
        words += outcome.rows.empty() ? " Calibrate again."
                                      : " The samples since the last good check (" +
                                            std::to_string(outcome.rows.size()) + ") are not covered. Calibrate again.";
    SetStatus(words);
}

void SampleForm::AskForCheck() {
    const DriftSettings settings = ReadDriftSettings(context_.paths.IniPath);
    if (!drift_.Due(settings, context_.clock.SteadySeconds())) return;
    const auto standard = CheckStandardOf(*inUse_.Get(), settings.standard);
    if (!standard) return;
    const int since = drift_.Since();
    const std::string question =
        std::to_string(since) + (since == 1 ? " sample has" : " samples have") +
        " been measured since the last good check. Would you like to measure the standard of " + standard->name +
        " now?";
    CheckDrift(context_.prompts.Ask(question, true));
}

void SampleForm::CheckDrift(bool check) {
    beforeCheck_ = Text(Potential);
    check_ = check ? CheckStandardOf(*inUse_.Get(), ReadDriftSettings(context_.paths.IniPath).standard) : std::nullopt;
    view_.ShowAll();
    if (check_) SetStatus("The next reading is that of the standard of " + check_->name + ".");
}

std::string SampleForm::NextSample() const {
    return check_ ? "Next: the standard of " + check_->name + ", to check the drift" : context_.table.NextSample();
}

std::string SampleForm::ReadingPrompt() const {
    return check_ ? "Please immerse the electrode in the standard of " + check_->name + "," : std::string();
}

void SampleForm::QuickSave() {
    CalibrationState& state = context_.state;
    StopReading();
    if (context_.tableState.TableOpen == 0 && !AskFile()) return;
    const bool check = ChecksDrift();
    // What still stands in the box is the sample's potential, not that of the standard.
    if (check && (Trim(Text(Potential)).empty() || beforeCheck_ == Text(Potential))) {
        SetStatus("Measure the standard of " + check_->name + " first; no check has been added.");
        return;
    }
    AddRow();
    if (check) return;
    const KeptDirty dirty(state);
    context_.screens.ShowModal(ScreenCode::frmMsg);
}

}  // namespace kelvo
