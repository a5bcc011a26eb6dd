#include "addition/AdditionPresenter.h"

#include <algorithm>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/AverageSetup.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/Navigation.h"
#include "core/ReadingSettings.h"
#include "core/Routes.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr int Keyboard = 0, OnLine = 1;

const char* const SaveAllTheSame =
    "The result does not follow from the values that stand in the boxes now. Would you like to save it all the same?";

const AdditionMethod& OtherThan(const AdditionMethod& method) {
    return &method == &StandardAddition ? SampleAddition : StandardAddition;
}

bool EndsWith(const std::string& name, const std::string& ending) {
    return name.size() >= ending.size() &&
           EqualNoCase(std::string_view(name).substr(name.size() - ending.size()), ending);
}

/// Boxes of a row of the table, in its order; number, sample number and time stand before them.
constexpr std::array RowBoxes = {
    AdditionForm::SampleCelsius, AdditionForm::SampleFahrenheit, AdditionForm::SampleMl, AdditionForm::ActualMl,
    AdditionForm::ActualPpm,     AdditionForm::ActualMolar,      AdditionForm::Before,   AdditionForm::After,
    AdditionForm::ResultPpm,     AdditionForm::ResultMolar};

}  // namespace

void AdditionPresenter::Load() {
    tableState_.TableOpen = 0;
    tableState_.TableFile.clear();
    navigation_.SetReturn(method_.screen);
    caption_ = method_.caption;
    ticked_ = {true, false};
    tablePrintOffered_ = false;
    tableIon_.reset();
    form_.Load();
    HandHeadOver();
}

std::string AdditionPresenter::Status() const {
    std::string form = form_.Status();
    if (message_.empty() || toldWith_ != Bytes()) return form;
    return message_ + (form.empty() ? "" : " ") + form;
}

void AdditionPresenter::Tell(std::string message) {
    message_ = std::move(message);
    toldWith_ = Bytes();
    view_.ShowState();
}

// --- menus ---------------------------------------------------------------------------------------------------

void AdditionPresenter::New() {
    table_.Prompt();
    form_.New();
    ticked_ = {true, false};
    caption_ = method_.caption;
    saved_.clear();
    view_.ShowState();
}

void AdditionPresenter::OpenMeasurement() {
    table_.Leave();
    const OpenedMethod opened = OpenMethodDump(state_, *method_.file, prompts_, files_);
    if (opened.caption) caption_ = *opened.caption;
    if (opened.dump) {
        form_.Take(*opened.dump);
        saved_ = Bytes();
        const AdditionMethod& other = OtherThan(method_);
        if (EndsWith(caption_, other.file->extension) || (!form_.FollowsBy(method_) && form_.FollowsBy(other)))
            return Tell(std::string("This is a file of ") + other.name + ": its boxes mean something else here.");
    }
    view_.ShowState();
}

void AdditionPresenter::SaveMeasurement() {
    const auto caption = SaveMethodDump(state_, form_.Dump(), *method_.file, prompts_, files_);
    if (!caption) return;
    caption_ = *caption;
    saved_ = Bytes();
    Tell(std::exchange(status_.StatusMessage, {}));
}

void AdditionPresenter::OpenTable() {
    HandHeadOver();
    if (table_.LookAtFile()) view_.ShowTable();
}

void AdditionPresenter::ViewTable() {
    HandHeadOver();
    view_.ShowTable();
}

void AdditionPresenter::SaveTable() {
    HandHeadOver();
    if (table_.Save() != SaveOutcome::Saved) return;
    tableState_.TableOpen = 0;
    tableState_.TableFile.clear();
    Tell(std::exchange(status_.StatusMessage, {}));
}

void AdditionPresenter::HandHeadOver() {
    // The rows in the table keep the head that they were measured under.
    if (TableIsOfAnotherIon()) return;
    table_.SetMethodHead({form_.Date(), form_.Text(AdditionForm::Slope), form_.Text(AdditionForm::CaliCelsius),
                          form_.Text(AdditionForm::CaliFahrenheit), form_.IonName()});
}

std::string AdditionPresenter::Row(const std::array<std::string, AdditionForm::BoxCount>& texts) {
    std::string row = table_.NextRowNumber() + "\t\t" + TimeText(clock_.Now());
    for (const int box : RowBoxes) {
        std::string cell = texts[static_cast<std::size_t>(box)];
        // A TAB that an odd file has brought into a box would shift the cells behind it.
        std::replace(cell.begin(), cell.end(), '\t', ' ');
        row += "\t" + cell;
    }
    return row;
}

void AdditionPresenter::LeaveTable() {
    // Taking the table down would lead to this screen for a calibration that looks unsaved; it is in front anyway.
    const std::int16_t unsaved = std::exchange(calibration_.CaliDirty, std::int16_t{0});
    table_.Leave();
    calibration_.CaliDirty = unsaved;
    tableIon_.reset();
}

void AdditionPresenter::SaveRow() {
    if (!form_.ResultIsOfBoxes() && !prompts_.Ask(SaveAllTheSame, true)) {
        form_.LeadToButton();
        return view_.ShowState();
    }
    std::array<std::string, AdditionForm::BoxCount> texts;
    for (int box = 0; box < AdditionForm::BoxCount; ++box)
        texts[static_cast<std::size_t>(box)] = form_.Text(box);
    AddRow(texts, form_.Facts());
}

bool AdditionPresenter::SaveSeries(const SeriesOutcome& outcome) {
    if (!outcome.result) return false;
    const AdditionSeries& series = outcome.series;
    std::array<std::string, AdditionForm::BoxCount> texts;
    const auto set = [&](int box, std::string text) { texts[static_cast<std::size_t>(box)] = std::move(text); };
    for (const int box : {AdditionForm::SampleCelsius, AdditionForm::SampleFahrenheit})
        set(box, form_.Text(box));
    const double added = series.TotalMl(series.addedMl.size());
    set(AdditionForm::SampleMl, TrimStr(series.sampleAdded ? added : series.startMl));
    set(AdditionForm::ActualMl, TrimStr(series.sampleAdded ? series.startMl : added));
    set(AdditionForm::ActualPpm, TrimStr(series.standardPpm));
    set(AdditionForm::ActualMolar, form_.MolarText(series.standardPpm));
    set(AdditionForm::Before, TrimStr(series.mv.front()));
    set(AdditionForm::After, TrimStr(series.mv.back()));
    set(AdditionForm::ResultPpm, Format(outcome.ppm, "#0.00"));
    set(AdditionForm::ResultMolar, form_.MolarText(outcome.ppm));
    return AddRow(texts, outcome.Facts(form_.Series().celsius));
}

bool AdditionPresenter::AddRow(const std::array<std::string, AdditionForm::BoxCount>& texts, const RowFacts& facts) {
    std::string putAway;
    if (TableIsOfAnotherIon()) {
        putAway = " The table of " + *tableIon_ + " has been put away.";
        LeaveTable();
    }
    HandHeadOver();
    if (!table_.AskFile({nullptr, method_.tableFilter, method_.tablePattern, method_.tableExtension})) return false;
    table_.AddRow(Row(texts), facts);
    tableIon_ = form_.IonName();
    tablePrintOffered_ = true;
    table_.KeepRows();
    // The dialog marks the calibration as entered, so that closing the table would lead back here; this screen is in
    // front anyway, and a calibration that is saved must not look unsaved.
    const std::int16_t unsaved = calibration_.CaliDirty;
    view_.AskSampleNumber();
    calibration_.CaliDirty = unsaved;
    if (view_.Ended()) return true;
    Tell(Trim(std::exchange(status_.StatusMessage, {}) + putAway));
    return true;
}

void AdditionPresenter::SetAverage() {
    AskAverage(state_, prompts_);
}

void AdditionPresenter::Back() {
    table_.Prompt();
    ClearPaths(state_);
    navigation_.ReturnScreen = 0;
    table_.Unload();
    view_.GoToMenu();
}

void AdditionPresenter::Exit() {
    if (!prompts_.Ask(text::SureToExit, true)) return;
    table_.Prompt();
    view_.EndProgram();
}

void AdditionPresenter::Escape() {
    if (!HoldsUnsaved()) return Back();
    Tell("\"Back\" leaves this screen; the boxes are kept by File, Save, Screen and by Save Data only.");
}

void AdditionPresenter::CalibrateFirst() {
    table_.Leave();
    navigation_.HelpTopic = 0;
    calibration_.CaliDirty = 1;
    navigation_.SetReturn(method_.screen);
    view_.ShowCalibrationSetup();
}

// --- on line -------------------------------------------------------------------------------------------------

void AdditionPresenter::Tick(int i, bool on) {
    ticked_.at(static_cast<std::size_t>(i)) = on;
    if (on) ticked_.at(static_cast<std::size_t>(i == Keyboard ? OnLine : Keyboard)) = false;
    view_.ShowState();
    if (i == OnLine && on) ReadPotentials();
}

void AdditionPresenter::ReadPotentials() {
    prompt_ = method_.firstPrompt;
    view_.OpenReading();
    if (ReadPotential(AdditionForm::Before, method_.firstPrompt))
        ReadPotential(AdditionForm::After, method_.secondPrompt);
    if (view_.Ended()) return;
    view_.CloseReading();
    view_.ShowState();
}

bool AdditionPresenter::ReadPotential(int box, const char* prompt) {
    prompt_ = prompt;
    calibration_.ReadingActive = true;
    calibration_.ReadingText = form_.Text(box);
    doubt_.clear();
    view_.Read();
    if (view_.Ended()) return false;
    form_.TakePotential(box, calibration_.ReadingText, calibration_.ReadingActive, doubt_);
    view_.ShowState();
    return calibration_.ReadingActive;
}

std::string AdditionPresenter::ReadingPrompt() const {
    return std::string(prompt_) +
           (reading_.ASD < 1 ? " when the reading is stable, click on 'OK'." : " then click on 'Ok'");
}

void AdditionPresenter::TakeReading(const std::string& millivolts, const std::string& doubt) {
    calibration_.ReadingText = millivolts;
    doubt_ = doubt;
}

void AdditionPresenter::ShowTemperature(const std::string& celsius, const std::string& fahrenheit) {
    form_.ShowTemperature(celsius, fahrenheit);
    view_.ShowState();
}

bool AdditionPresenter::HoldsUnsaved() const {
    return form_.HoldsEntries() && Bytes() != saved_;
}

}  // namespace kelvo
