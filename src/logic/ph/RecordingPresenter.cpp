#include "ph/RecordingPresenter.h"

#include <cmath>
#include <utility>

#include "calibration/CalibrationState.h"
#include "core/AverageSetup.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Messages.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/StateOf.h"
#include "core/TableState.h"
#include "ph/CalibrationDoubt.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

const char* const NoChannel = "Click on 'File/New' to select a channel, or click on 'File/Open' to read a file";
const char* const SaveWhileMeasuring = "Would you like to save your data in a file while you are measuring";
const char* const BadCalibration = "Bad calibration data, please re-do the calibration";
const char* const NoRecording = "The file holds no recording.";
const char* const OutsideRange = "Please type a number in the 'Data Number' box within the correct data range";
const char* const NumberFault = "Data out of range, please type a number within the right range";

/// How long a number that is being typed is left alone.
constexpr double TypingSeconds = 10;

std::string HintText(RecordingKind kind) {
    const std::string unit = kind == RecordingKind::Ph ? "pH" : "ppm";
    return "To read a particular " + unit +
           " value, type in its data number within the data range, and press Enter. Click outside the box to switch "
           "off/on the message";
}

std::string ValueText(float value) {
    return std::isfinite(value) ? Format(value, "#0.00") : "N/A";
}

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

RecordingPresenter::RecordingPresenter(StateOf<CalibrationState, const Paths, Navigation, const PhCalibration,
                                               TableState, const HardwareSettings, ReadingSettings>
                                           state,
                                       Prompts& prompts, FileChooser& files, const Clock& clock, WorkingTable& table,
                                       RecordingHost& host, RecordingInputs inputs)
    : state_(state),
      calibration_(state),
      navigation_(state),
      tableState_(state),
      hardware_(state),
      prompts_(prompts),
      files_(files),
      clock_(clock),
      table_(table),
      host_(host),
      inputs_(std::move(inputs)),
      run_(state, inputs_),
      keeper_(state.Get<const Paths>().JournalPath, inputs_.facts) {}

// --- the run -------------------------------------------------------------------------------------------------------

void RecordingPresenter::Load(const RecordingPlan& plan) {
    table_.Unload();
    tableState_.TableOpen = 0;
    tableState_.TableFile.clear();
    navigation_.SetReturn(ScreenCode::frmPHMe);
    navigation_.PhPath[4] = 1;
    face_.scaleIndex = plan.scale;
    run_.Fill(Kind(), PointsOfPeriod(plan.period), {}, {});
    SetLabels();
    Redraw();
    if (tableState_.ViewOnly == 1) {
        face_.mnuStart = face_.mnuStop = false;
        if (LoadFile()) ShowFile();
        return;
    }
    AskSaveWhileRecording();
    if (Kind() == RecordingKind::Ph && !plan.electrode[0] && !plan.electrode[1]) {
        prompts_.Message(NoChannel);
        ShowState(State::Idle);
        return;
    }
    BeginRun(plan);
}

void RecordingPresenter::SetLabels() {
    const bool ph = Kind() == RecordingKind::Ph;
    face_.labtitle = {"Data Number", "Electrode 1   ( Red )", "Electrode 2   ( Blue) ", "Elapsed Time",
                      "Interval Time"};
    if (!ph) {
        const bool ionKnown = calibration_.IonIndex >= 0 && calibration_.IonIndex < IonRows;
        face_.labtitle[1] =
            "Electrode 1 " + (ionKnown ? calibration_.Ions.names[At(calibration_.IonIndex)] : "") + " (ppm)";
    }
    face_.secondBox = ph;
    face_.lblScale = ph ? "pH" : "ppm";
    face_.Label3 = HintText(Kind());
    face_.mnupH = ScaleCaptions(Kind());
    face_.caption = "pH Recording";
}

void RecordingPresenter::AskSaveWhileRecording() {
    const bool ph = Kind() == RecordingKind::Ph;
    // A name without "." gets the pH extension in both paths.
    table_.AskFile({SaveWhileMeasuring, ph ? "All Data(*.phc)|*.phc" : "All Data(*.Tab)|*.Tab", ph ? "*.phc" : "*.Tab",
                    ".phc", false});
}

std::string RecordingPresenter::LiveFile() const {
    return tableState_.HasTableFile() ? tableState_.TableFile : std::string();
}

std::vector<UnsavedPiece> RecordingPresenter::Unsaved() const {
    const std::string bytes = keeper_.Unsafe();
    if (bytes.empty()) return {};
    // A file that another hand has changed, or that the recording was to replace, is not replaced unseen.
    const std::string file = keeper_.LiveStandsAsLeft() ? LiveFile() : std::string();
    return {{"the recording", Kind() == RecordingKind::Ph ? ".PHC" : ".TAB", bytes, file, keeper_.FactsBytes()}};
}

void RecordingPresenter::BeginRun(const RecordingPlan& plan) {
    started_ = clock_.Now();
    doubts_ = {};
    if (Kind() == RecordingKind::Ph)
        doubts_ = {CalibrationDoubt(state_, 1, started_), CalibrationDoubt(state_, 2, started_)};
    run_.Begin(Kind(), plan, doubts_);
    elapsed_.Clear();
    changed_.clear();
    lookedUp_.clear();
    keeper_.Begin(Kind(), started_, LiveFile(), table_.LiveHead());
    if (keeper_.Live()) tableState_.TableOpen = 1;
    face_.caption = (Kind() == RecordingKind::Ph ? "pH" : "ISE") + std::string(" Continuous Recording started at:  ") +
                    DateTimeText(started_, hardware_.DateFormat) + ":" + Format(double(started_.second), "00");
    face_.txtTT = {"", "", "", elapsed_.Text(), IntervalRow(plan.interval).text};
    face_.busy = true;
    schedule_.Begin(IntervalRow(plan.interval));
    schedule_.Run(clock_.SteadySeconds());
    slept_ = inputs_.slept();
    Redraw();
    ShowState(State::Running);
    NoteKeeping();
}

bool RecordingPresenter::Tick() {
    const RecordingSchedule::Due due = schedule_.Take(clock_.SteadySeconds());
    if (!due.point) return false;
    if (run_.Taken() >= 1) face_.busy = false;
    const double slept = inputs_.slept() - std::exchange(slept_, inputs_.slept());
    const RecordingInterval& interval = IntervalRow(run_.Plan().interval);
    const RecordingGap gap = GapOf(due.missed, due.late, slept, interval.Seconds());
    if (run_.Sample(clock_.Now(), gap) == RecordingRun::Outcome::BadTable) {
        troubles_.push_back(BadCalibration);
        Stop();
        return true;
    }
    const int n = run_.Taken() - 1;
    if (n >= 1) elapsed_.Step(interval);
    tableState_.TableOpen = 1;
    KeepPoint(n);
    if (finishing_) FillTable();
    // The mark of the point before, large as that of the last one, may become a small one.
    Redraw();
    if (clock_.SteadySeconds() - typedAt_ > TypingSeconds) ShowPoint(n);
    face_.txtTT[3] = elapsed_.Text();
    if (run_.Complete()) {
        schedule_.Stop();
        ShowState(State::Complete);
    }
    ShowLive();
    ShowStatus();
    return true;
}

void RecordingPresenter::KeepPoint(int n) {
    keeper_.Add(RecordingRow(state_, run_.Points()[At(n)]), run_.Facts(n));
    NoteKeeping();
}

void RecordingPresenter::NoteKeeping() {
    if (const auto failure = keeper_.TakeFailure())
        troubles_.push_back("Error" + TrimStr(failure->error.Code()) + "Saving" + failure->file + ":" +
                            failure->error.what() + ".");
    const auto change = keeper_.TakeChange();
    if (!change) return;
    const std::string file = LastPart(change->file);
    changed_ = change->goesOn.empty()
                   ? file + " was changed by another program or by hand. What that has made of it is kept as \"" +
                         LastPart(change->beside) + "\"; " + file + " holds the whole recording again."
                   : file +
                         " was changed elsewhere once more and is left as it is. The recording goes on, whole, in \"" +
                         LastPart(change->goesOn) + "\".";
    troubles_.push_back(changed_);
    tableState_.TableFile = keeper_.LivePath();
}

void RecordingPresenter::TellTroubles() {
    // Ticks go on behind the box; what they bring is told after it.
    if (std::exchange(telling_, true)) return;
    while (!troubles_.empty()) {
        const std::string text = troubles_.front();
        troubles_.erase(troubles_.begin());
        prompts_.Message(text, {}, text == BadCalibration ? Icon::None : Icon::Exclamation);
    }
    telling_ = false;
}

void RecordingPresenter::Stop() {
    if (now_ != State::Running) return;
    schedule_.Stop();
    ShowState(State::Stopped);
}

void RecordingPresenter::Restart() {
    if (now_ != State::Stopped) return;
    schedule_.Run(clock_.SteadySeconds());
    slept_ = inputs_.slept();
    ShowState(State::Running);
}

void RecordingPresenter::ShowState(State now) {
    now_ = now;
    face_.mnuF = now != State::Running;
    face_.mnuStop = now == State::Running;
    face_.mnuStart = now == State::Stopped;
    face_.hint = now != State::Running && now != State::Idle;
    if (now != State::Running) face_.busy = false;
    ShowLive();
    ShowStatus();
}

// --- what is shown ---------------------------------------------------------------------------------------------------

void RecordingPresenter::ShowPoint(int n) {
    face_.txtTT[0] = TrimStr(n);
    for (int k = 0; k < 2; ++k) {
        face_.txtTT[At(k) + 1] = run_.On(k) ? ValueText(run_.Points()[At(n)].value[At(k)]) : std::string();
        face_.doubtful[At(k)] = run_.On(k) && run_.Quality(n).old[At(k)];
    }
}

void RecordingPresenter::Redraw() {
    SetTiles(run_, ScaleRow(Kind(), face_.scaleIndex), graph_);
}

void RecordingPresenter::ChangeScale(int index) {
    face_.scaleIndex = index;
    Redraw();
    ShowStatus();
}

void RecordingPresenter::ToggleHint() {
    face_.hint = !face_.hint;
}

void RecordingPresenter::NumberTyped(const std::string& text) {
    face_.txtTT[0] = text;
    typedAt_ = clock_.SteadySeconds();
}

void RecordingPresenter::NumberEntered(const std::string& text) {
    typedAt_ = -1e9;
    face_.txtTT[0] = text;
    lookedUp_.clear();
    try {
        const double number = Val(text);
        const bool beyond = number > run_.PointCount() || run_.Taken() == 0;
        const int n = beyond ? 0 : ToInt16(number);
        if (n < 0) throw RuntimeError(ErrorNumber::Subscript);
        if (beyond || n >= run_.Taken()) {
            for (std::size_t i = 0; i < 4; ++i)
                face_.txtTT[i].clear();
            prompts_.Message(OutsideRange);
        } else {
            ShowPoint(n);
            face_.txtTT[0] = text;
            face_.txtTT[3] = ElapsedAt(n, IntervalRow(run_.Plan().interval));
            lookedUp_ = PointRemark(n);
        }
    } catch (const RuntimeError&) {
        prompts_.Message(NumberFault);
    }
    ShowStatus();
}

void RecordingPresenter::Average() {
    if (AskAverage(state_, prompts_)) run_.ResizeAverage();
}

// --- table and files -------------------------------------------------------------------------------------------------

void RecordingPresenter::FillTable() {
    if (now_ == State::Viewing) {
        // The table shows the file itself, head and all, unless another one has come in between.
        if (strangeFile_ || table_.RowsLookedAt().empty()) table_.FillRows(fileRows_, fileFacts_);
        return;
    }
    std::vector<std::string> rows;
    std::vector<RowFacts> facts;
    for (const RecordingPoint& point : run_.Points()) {
        rows.push_back(RecordingRow(state_, point));
        facts.push_back(run_.Facts(point.n));
    }
    table_.FillRows(std::move(rows), std::move(facts));
}

void RecordingPresenter::ViewTable() {
    FillTable();
    host_.ShowTable();
}

bool RecordingPresenter::LoadFile() {
    if (!table_.LookAtFile()) return false;
    std::vector<RecordingCells> cells;
    int numbers = 0, faulty = 0;
    const std::vector<std::string> rows = table_.RowsLookedAt();
    for (const std::string& row : rows) {
        cells.push_back(ReadRecordingRow(Kind() == RecordingKind::Ph, row, calibration_.Ions));
        const RecordingCells& read = cells.back();
        for (std::size_t k = 0; k < 2; ++k)
            numbers += read.electrode[k] && std::isfinite(read.point.value[k]) ? 1 : 0;
        faulty += read.faulty;
    }
    if (numbers == 0) {
        // A file without any row has told its own failure, if it had one.
        if (rows.empty())
            lookedUp_ = NoRecording;
        else
            prompts_.Message(NoRecording, {}, Icon::Exclamation);
        strangeFile_ = true;
        return false;
    }
    strangeFile_ = false;
    fileRows_ = rows;
    fileFacts_ = table_.FactsLookedAt();
    fileCells_ = std::move(cells);
    lookedUp_ = faulty == 0 ? std::string()
                            : TrimStr(faulty) + (faulty == 1 ? " cell is" : " cells are") + " no number in the file.";
    return true;
}

}  // namespace kelvo
