#include "addition/AdditionForm.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Routes.h"
#include "core/StateOf.h"
#include "core/TemperatureText.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const StepFailed = "Data out of range, please try again";
const char* const WrongKey = "Wrong data type, please re-enter";
const char* const DataMistake = "DATA MISTAKE";
const char* const Changed = "Some of the data have been changed, please check and re-calculate the result.";
const char* const NoSlope = "No calibration data available, type in the slope and temperature";
const char* const SaveThese = "Would you like to save these data?";
const char* const Good = "Good measurement";
const char* const Acceptable = "Acceptable measurement";
const char* const Repeat = "Please repeat the measurement with a new Expected Concentration value.";

constexpr float EmptiedHeight = 285;
constexpr float LargestDifference = 1;        ///< °C between sample and calibration without a warning
constexpr double TemperatureTolerance = 0.1;  ///< °F by which a rounded pair may be apart

constexpr const char* PpmMask = "#0.00";
constexpr const char* MolarMask = "#.00E-0";

/// Boxes that go empty together.
constexpr std::array<std::pair<int, int>, 4> Partners = {{{AdditionForm::SampleCelsius, AdditionForm::SampleFahrenheit},
                                                          {AdditionForm::ExpectedPpm, AdditionForm::ExpectedMolar},
                                                          {AdditionForm::ActualPpm, AdditionForm::ActualMolar},
                                                          {AdditionForm::CaliCelsius, AdditionForm::CaliFahrenheit}}};

/// What an opened file holds that no check has seen; their partners follow from them.
constexpr std::array Unchecked = {AdditionForm::SampleMl,    AdditionForm::SampleCelsius, AdditionForm::ExpectedPpm,
                                  AdditionForm::ActualMl,    AdditionForm::ActualPpm,     AdditionForm::Slope,
                                  AdditionForm::CaliCelsius, AdditionForm::Before,        AdditionForm::After};
/// mV; potentials of a file may have been read on line, where the limits of Enter do not hold.
constexpr double LargestRead = 1000;

int PartnerOf(int box) {
    for (const auto& [first, second] : Partners) {
        if (box == first) return second;
        if (box == second) return first;
    }
    return FormModel::NoFocus;
}

bool IsTemperature(int box) {
    return box == AdditionForm::SampleCelsius || box == AdditionForm::SampleFahrenheit ||
           box == AdditionForm::CaliCelsius || box == AdditionForm::CaliFahrenheit;
}

bool TypesANumber(char32_t key) {
    return (key >= U'0' && key <= U'9') || key == U'.' || key == U'-' || key == U'E';
}

}  // namespace

/// What Enter does in a box.
struct AdditionForm::Rule {
    enum class Empty {
        Counts,    ///< reads as 0
        GoesOn,    ///< leads to the box of the other unit
        IsMissed,  ///< answers with the data-missing message
    };
    Empty empty;
    double lowest, highest;  ///< both included; 0 and 0: those of the method
    void (AdditionForm::*step)(int);
    int next;  ///< for `GoOn`
};

const std::array<AdditionForm::Rule, AdditionForm::BoxCount> AdditionForm::Rules = {{
    {Rule::Empty::Counts, 1, 999, &AdditionForm::GoOn, ExpectedPpm},
    {Rule::Empty::GoesOn, 0, 99, &AdditionForm::EnterTemperature, NoFocus},
    {Rule::Empty::Counts, 32, 212.2, &AdditionForm::EnterTemperature, NoFocus},
    {Rule::Empty::GoesOn, 0.0001, 99999, &AdditionForm::EnterExpected, NoFocus},
    {Rule::Empty::IsMissed, 0.000001, 99.99, &AdditionForm::EnterExpected, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::Mistake, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::Mistake, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::Mistake, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::GoOn, ActualPpm},
    {Rule::Empty::GoesOn, 0.0001, 99999, &AdditionForm::EnterStandard, NoFocus},
    {Rule::Empty::IsMissed, 0.000001, 99.99, &AdditionForm::EnterStandard, NoFocus},
    {Rule::Empty::Counts, -99.99, 99.99, &AdditionForm::GoOn, CaliCelsius},
    {Rule::Empty::GoesOn, 0, 99, &AdditionForm::EnterTemperature, NoFocus},
    {Rule::Empty::Counts, 32, 212.2, &AdditionForm::EnterTemperature, NoFocus},
    {Rule::Empty::Counts, -999, 999, &AdditionForm::GoOn, After},
    {Rule::Empty::Counts, -500, 500, &AdditionForm::EnterAfter, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::Mistake, NoFocus},
    {Rule::Empty::Counts, 0, 0, &AdditionForm::Mistake, NoFocus},
}};

AdditionForm::AdditionForm(StateOf<CalibrationState, const Paths, const HardwareSettings> state, Prompts& prompts,
                           const Clock& clock, const AdditionMethod& method, AdditionClient& client)
    : FormModel(BoxCount, prompts),
      calibration_(state),
      inUse_(state),
      hardware_(state),
      clock_(clock),
      method_(method),
      client_(client) {
    for (const int box : {SuggestMl, SuggestPpm, SuggestMolar, ResultPpm, ResultMolar})
        Mutable(box).readOnly = true;
}

// --- the screen as a whole -----------------------------------------------------------------------------------

void AdditionForm::Load() {
    EmptyAll();
    ion_ = calibration_.IonIndex >= 0 && calibration_.IonIndex < IonRows ? calibration_.IonIndex : NoIon;
    const bool slopeKnown = calibration_.CaliSlope != 0;
    date_ = slopeKnown ? calibration_.FileDate : DateTimeText(clock_.Now(), hardware_.DateFormat);
    if (slopeKnown) {
        Fill(Slope, Str(calibration_.CaliSlope));
        if (!LoadTemperature()) return LeadTo(CaliCelsius);
    }
    LeadTo(slopeKnown && ion_ != NoIon ? SampleMl : Slope);
}

bool AdditionForm::LoadTemperature() {
    try {
        std::string fahrenheit = FahrenheitText(ToSingle(Val(calibration_.FileTemp)));
        Fill(CaliCelsius, Format(Val(calibration_.FileTemp), "#0.0"));
        Fill(CaliFahrenheit, std::move(fahrenheit));
        return true;
    } catch (const RuntimeError&) {
        prompts_.Message(method_.outOfRange);
        return false;
    }
}

void AdditionForm::New() {
    EmptyAll();
    ion_ = NoIon;
    LeadTo(SampleMl);
}

void AdditionForm::EmptyAll() {
    for (int i = 0; i < BoxCount; ++i)
        Fill(i, {});
    onLineOffered_ = volumeDropped_ = surplus_ = false;
    doubtful_.clear();
    ForgetResult(EmptiedHeight);
}

MethodDump AdditionForm::Dump() const {
    MethodDump dump;
    dump.Ion = ion_;
    dump.CommentHeight = commentHeight_;
    dump.Comment = comment_;
    for (int i = 0; i < BoxCount; ++i)
        dump.Box[static_cast<std::size_t>(i)] = Text(i);
    return dump;
}

void AdditionForm::Take(const MethodDump& dump) {
    EmptyAll();
    ion_ = dump.Ion;
    for (int i = 0; i < BoxCount; ++i)
        Fill(i, dump.Box[static_cast<std::size_t>(i)]);
    for (const int box : Unchecked)
        unchecked_[static_cast<std::size_t>(box)] = true;
    comment_ = dump.Comment;
    commentHeight_ = dump.CommentHeight;
    surplus_ = dump.surplus;
    onLineOffered_ = Holds(ActualPpm);
    if (!comment_.empty()) ratio_ = RatioInWords(Value(ResultPpm), Value(ExpectedPpm));
    for (const int box : {SampleMl, ExpectedPpm, ActualMl, ActualPpm, Slope, CaliCelsius, Before, After, SampleCelsius})
        if (!Holds(box)) return LeadTo(box);
    LeadToButton();
}

bool AdditionForm::HoldsEntries() const {
    for (const int box : {SampleMl, SampleCelsius, SampleFahrenheit, ExpectedPpm, ExpectedMolar, ActualMl, ActualPpm,
                          ActualMolar, Before, After})
        if (Holds(box)) return true;
    return false;
}

// --- what the analyst does -----------------------------------------------------------------------------------

bool AdditionForm::KeyAllowed(int, char32_t key) const {
    constexpr char32_t backspace = 8;
    return key == backspace || TypesANumber(key);
}

void AdditionForm::KeyRefused(int) {
    prompts_.Message(WrongKey);
}

void AdditionForm::KeyInIonBox(bool isEnter) {
    if (isEnter && ion_ == NoIon) return prompts_.Message(method_.missing);
    FocusOn(ExpectedPpm);
}

void AdditionForm::Select(int, int row) {
    const bool fixed = hardware_.InterfaceKind == 3 || (method_.ionIsFixed && calibration_.IonIndex != NoIon);
    if (row < NoIon || row >= IonRows) return;
    ion_ = fixed ? calibration_.IonIndex : row;
    if (fixed || method_.ionIsFixed || calibration_.CaliSlope != 0) return;
    if (prompts_.AskToSave(text::NoCalibrationForIon)) return client_.CalibrateFirst();
    EmptyAll();
    commentHeight_ = method_.commentHeight;
    date_ = DateTimeText(clock_.Now(), hardware_.DateFormat);
    LeadTo(Slope);
}

void AdditionForm::Emptied(int i) {
    ForgetResult(EmptiedHeight);
    if (const int partner = PartnerOf(i); partner != NoFocus) Fill(partner, {});
    SetNextField(i);
}

void AdditionForm::Clicked(int i) {
    if ((i != ActualPpm && i != ActualMolar) || !Holds(ActualMl)) return;
    Fill(ActualMl, {});
    ForgetResult(EmptiedHeight);
    volumeDropped_ = true;
    SetNextField(i);
}

void AdditionForm::Press(int button) {
    if (button == CalculateButton) Calculate();
}

void AdditionForm::Enter(int i) {
    if (!comment_.empty()) {
        prompts_.Message(Changed);
        comment_.clear();
        ratio_.clear();
        FocusOn(FirstButton + CalculateButton);
    }
    const Rule& rule = Rules.at(static_cast<std::size_t>(i));
    if (!Holds(i) && rule.empty == Rule::Empty::GoesOn) return LeadTo(i + 1);
    if (!Holds(i) && rule.empty == Rule::Empty::IsMissed) {
        prompts_.Message(method_.missing);
        return LeadTo(i);
    }
    if (rule.step != &AdditionForm::Mistake && !WithinLimits(i)) return;
    try {
        (this->*rule.step)(i);
        Taken(i);
    } catch (const RuntimeError&) {
        prompts_.Message(StepFailed);
        FocusOn(i);
    }
}

bool AdditionForm::WithinLimits(int i) {
    const Rule& rule = Rules.at(static_cast<std::size_t>(i));
    const bool read = (i == Before || i == After) && !IsTyped(i);
    const double lowest = read ? -LargestRead : i == ActualMl ? method_.smallestStandardMl : rule.lowest;
    const double highest = read ? LargestRead : i == ActualMl ? method_.largestStandardMl : rule.highest;
    if (Value(i) >= lowest && Value(i) <= highest) return true;
    prompts_.Message(method_.outOfRange);
    FocusOn(i);
    return false;
}

bool AdditionForm::TakeTyped() {
    bool temperatureTaken = false;
    for (int i = 0; i < ResultPpm; ++i) {
        const bool typed = IsTyped(i);
        if (!Holds(i) || At(i).readOnly || !(typed || unchecked_[static_cast<std::size_t>(i)])) continue;
        if (!WithinLimits(i)) return false;
        if (const int partner = PartnerOf(i); typed && partner != NoFocus && !BelongTogether(std::min(i, partner))) {
            if (IsTyped(partner) && Holds(partner)) {
                // Which of the two holds is not for the form to say.
                Mistake(i);
                FocusOn(i);
                return false;
            }
            Convert(i);
            temperatureTaken = temperatureTaken || IsTemperature(i);
        }
        Taken(i);
    }
    if (temperatureTaken) WarnOfTemperature();
    return true;
}

void AdditionForm::TakePotential(int box, const std::string& millivolts, bool leadsOn, const std::string& doubt) {
    // A result of the potential before must not stand beside the new one.
    if (millivolts != Text(box)) ForgetResult(EmptiedHeight);
    Fill(box, millivolts);
    if (!doubt.empty()) {
        doubtful_ = millivolts;
        doubt_ = doubt;
    }
    if (leadsOn) (this->*Rules.at(static_cast<std::size_t>(box)).step)(box);
}

void AdditionForm::ShowTemperature(const std::string& celsius, const std::string& fahrenheit) {
    if (Trim(celsius).empty()) return;
    Fill(SampleCelsius, celsius);
    Fill(SampleFahrenheit, fahrenheit);
    // A sensor that is not there has a temperature, too.
    unchecked_[SampleCelsius] = true;
}

// --- the steps of Enter --------------------------------------------------------------------------------------

void AdditionForm::LeadTo(int i) {
    SetNextField(i);
    FocusOn(i);
}

void AdditionForm::LeadToButton() {
    SetNextField(NoFocus);
    FocusOn(FirstButton + CalculateButton);
}

void AdditionForm::Taken(int i) {
    taken_[static_cast<std::size_t>(i)] = Text(i);
    unchecked_[static_cast<std::size_t>(i)] = false;
}

void AdditionForm::Fill(int i, std::string text) {
    Set(i, std::move(text));
    Taken(i);
}

void AdditionForm::GoOn(int i) {
    LeadTo(Rules.at(static_cast<std::size_t>(i)).next);
}

void AdditionForm::Mistake(int) {
    prompts_.Message(DataMistake);
}

void AdditionForm::EnterTemperature(int i) {
    Convert(i);
    if (!Holds(Before) || !Holds(After)) return LeadTo(i >= CaliCelsius ? SampleMl : ActualPpm);
    WarnOfTemperature();
    LeadToButton();
}

void AdditionForm::ConvertTemperature(int i) {
    const bool fromCelsius = i == SampleCelsius || i == CaliCelsius;
    const float typed = ToSingle(Value(i));
    Fill(PartnerOf(i), Str(fromCelsius ? CelsiusToFahrenheit(typed) : FahrenheitToCelsius(typed)));
    // What has been typed there without Enter may be a number that no 32 bits hold.
    ToSingle(Value(CaliCelsius));
    calibration_.FileTemp = Text(CaliCelsius);
}

void AdditionForm::WarnOfTemperature() {
    // In 32 bits: 16.1 less 15.1 is a difference of 1, whatever a double makes of it.
    const float difference = ToSingle(std::abs(Value(SampleCelsius) - Value(CaliCelsius)));
    if (difference > LargestDifference) prompts_.Message(TemperatureDiffers, {}, Icon::Exclamation);
}

std::string AdditionForm::IonNameOf(int ion) const {
    return ion >= 0 && ion < IonRows ? calibration_.Ions.names[static_cast<std::size_t>(ion)] : std::string();
}

std::string AdditionForm::MolarText(double ppm) const {
    return Format(PpmToMolar(calibration_.Ions, ppm, ion_), MolarMask);
}

std::string AdditionForm::PpmText(double molar) const {
    return Format(MolarToPpm(calibration_.Ions, molar, ion_), PpmMask);
}

std::pair<std::string, std::string> AdditionForm::BothUnits(int ppmBox, int typed) const {
    if (typed == ppmBox) return {Text(typed), MolarText(Value(typed))};
    return {PpmText(Value(typed)), Text(typed)};
}

void AdditionForm::Convert(int i) {
    if (IsTemperature(i)) return ConvertTemperature(i);
    const bool expected = i < ActualPpm;
    auto [ppm, molar] = BothUnits(expected ? ExpectedPpm : ActualPpm, i);
    if (expected) {
        // Nothing is shown before everything could be worked out.
        std::string volume = Str(Finite(Value(SampleMl) * method_.volumeTimes / method_.volumeOver));
        std::string suggested = Format(Finite(Val(ppm) * method_.concentrationFactor), PpmMask);
        std::string suggestedMolar = MolarText(Val(suggested));
        Fill(SuggestMl, std::move(volume));
        Fill(SuggestPpm, std::move(suggested));
        Fill(SuggestMolar, std::move(suggestedMolar));
    }
    Fill(expected ? ExpectedPpm : ActualPpm, std::move(ppm));
    Fill(expected ? ExpectedMolar : ActualMolar, std::move(molar));
}

void AdditionForm::EnterExpected(int i) {
    Convert(i);
    LeadTo(ActualPpm);
}

void AdditionForm::EnterStandard(int i) {
    std::string volume = Text(ActualMl);
    if (volume.empty())
        volume = Format(Divide(Value(SuggestMl) * Value(SuggestPpm), Val(BothUnits(ActualPpm, i).first)),
                        i == ActualPpm ? method_.volumeMask : PpmMask);
    Convert(i);
    Set(ActualMl, std::move(volume));
    volumeDropped_ = false;
    if (i == ActualMolar && !FillFromMemory()) {
        if (!Holds(Slope) && !Holds(CaliCelsius) && !Holds(CaliFahrenheit)) prompts_.Message(NoSlope);
        return LeadTo(Slope);
    }
    onLineOffered_ = true;
    LeadTo(Before);
}

bool AdditionForm::FillFromMemory() {
    if (ion_ < 0 || ion_ >= static_cast<int>(calibration_.IonCali.size())) return false;
    const auto& known = calibration_.IonCali.at(static_cast<std::size_t>(ion_));
    if (Val(known[0]) == 0) return false;
    Fill(Slope, known[0]);
    Fill(CaliCelsius, known[1]);
    Fill(CaliFahrenheit, known[2]);
    return true;
}

void AdditionForm::EnterAfter(int) {
    Holds(SampleCelsius) ? LeadToButton() : LeadTo(SampleCelsius);
}

// --- the result ----------------------------------------------------------------------------------------------

void AdditionForm::ForgetResult(float height) {
    Fill(ResultPpm, {});
    Fill(ResultMolar, {});
    comment_.clear();
    ratio_.clear();
    commentHeight_ = height;
    outcome_.reset();
}

void AdditionForm::Calculate() {
    try {
        if (!TakeTyped()) return;
    } catch (const RuntimeError&) {
        prompts_.Message(StepFailed);
        return;
    }
    for (int i = 0; i < ResultPpm; ++i) {
        if (Holds(i)) continue;
        prompts_.Message(method_.missing);
        // The suggestions come from the expected concentration.
        return LeadTo(At(i).readOnly ? ExpectedPpm : i);
    }
    ForgetResult(method_.commentHeight);
    try {
        WorkOutResult();
    } catch (const RuntimeError&) {
        prompts_.Message(StepFailed);
        return;
    }
    SetNextField(NoFocus);
    client_.ShowNow();
    if (prompts_.AskToSave(SaveThese)) client_.SaveRow();
}

Addition AdditionForm::Measured() const {
    return {.sampleMl = Value(SampleMl),
            .standardMl = Value(ActualMl),
            .standardPpm = Value(ActualPpm),
            .slope = Value(Slope),
            .calibrationCelsius = Value(CaliCelsius),
            .sampleCelsius = Value(SampleCelsius),
            .before = Value(Before),
            .after = Value(After)};
}

void AdditionForm::WorkOutResult() {
    const Addition addition = Measured();
    Outcome outcome;
    outcome.deltaE = addition.after - addition.before;
    outcome.scatter = ScatterInUse();
    outcome.result = WorkOut(addition, method_.formula, outcome.scatter);
    const double ppm = outcome.result.ppm;
    const AdditionGrade grade = GradeOf(AdditionDeviation(ppm, Value(ExpectedPpm)));
    std::string molar = MolarText(ppm);
    Fill(ResultPpm, Format(ppm, PpmMask));
    Fill(ResultMolar, std::move(molar));
    const char* const comments[] = {method_.bad, Good, Acceptable, Repeat};
    comment_ = comments[static_cast<int>(grade)];
    if (grade == AdditionGrade::Repeat) commentHeight_ = method_.repeatHeight;
    ratio_ = RatioInWords(ppm, Value(ExpectedPpm));
    outcome.from = InputsNow();
    outcome.ion = ion_;
    outcome_ = std::move(outcome);
}

bool AdditionForm::FollowsBy(const AdditionMethod& method) const {
    try {
        const double ppm = WorkOut(Measured(), method.formula).ppm;
        return Trim(Text(ResultPpm)) == Format(ppm, PpmMask) && Trim(Text(ResultMolar)) == MolarText(ppm);
    } catch (const RuntimeError&) {
        return false;
    }
}

bool AdditionForm::ResultIsOfBoxes() const {
    if (!Holds(ResultPpm)) return true;
    return outcome_ ? outcome_->from == InputsNow() && outcome_->ion == ion_ : FollowsBy(method_);
}

bool AdditionForm::BelongTogether(int first) const {
    const int second = PartnerOf(first);
    if (!Holds(first) || !Holds(second)) return !Holds(first) && !Holds(second);
    if (first == SampleCelsius || first == CaliCelsius)
        return std::abs(Value(first) * 1.8 + 32 - Value(second)) <= TemperatureTolerance;
    try {
        return Text(second) == MolarText(Value(first)) || Text(first) == PpmText(Value(second));
    } catch (const RuntimeError&) {
        return false;
    }
}

}  // namespace kelvo
