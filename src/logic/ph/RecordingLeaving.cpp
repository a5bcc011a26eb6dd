#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Dialogs.h"
#include "core/Messages.h"
#include "core/Navigation.h"
#include "core/Routes.h"
#include "core/TableState.h"
#include "ph/RecordingPresenter.h"
#include "text/Number.h"

// Saved recordings on the screen, and the ways out of it with their questions.

namespace kelvo {
namespace {

const char* const SaveQuestion = "Would you like to save the current data table?";

std::string EndQuestion(const RecordingRun& run) {
    return "The recording is running: " + TrimStr(run.Taken()) + " of " + TrimStr(run.PointCount() + 1) +
           " points are taken. End it? With No it goes on.";
}

/// Points of a long file that one graph still shows.
constexpr int MostShown = 5000;

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

void RecordingPresenter::ShowFile() {
    ShowCells(PointsOfFile(static_cast<int>(fileRows_.size()), run_.PointCount()));
    tableState_.ViewOnly = 1;
    // The table keeps what the file says, its head too.
    tableState_.HideTableOnBack = -1;
    face_.times = false;
    for (std::string& box : face_.txtTT)
        box.clear();
    face_.doubtful = {};
    SetLabelsOfFile();
    ShowState(State::Viewing);
}

void RecordingPresenter::SetLabelsOfFile() {
    SetLabels();
    const LookedAtFile file = host_.FileLookedAt();
    const bool ph = Kind() == RecordingKind::Ph;
    face_.caption =
        std::string(ph ? "pH" : "ISE") + " Recording: " + file.name + (file.date.empty() ? "" : ", ") + file.date;
    if (!ph) face_.labtitle[1] = "Electrode 1 " + file.ion + " (ppm)";
}

void RecordingPresenter::ShowCells(int pointCount) {
    std::vector<RecordingPoint> points;
    std::vector<PointQuality> quality;
    std::array<bool, 2> on{};
    for (std::size_t row = 0; row < fileCells_.size(); ++row) {
        const RecordingCells& cells = fileCells_[row];
        points.push_back(cells.point);
        const RowFacts facts = row < fileFacts_.size() ? fileFacts_[row] : RowFacts();
        quality.push_back(QualityOf(facts));
        if (const std::string ppm = facts.Get(fact::Ppm); Kind() == RecordingKind::Ise && !ppm.empty())
            points.back().value[0] = static_cast<float>(Val(ppm));
        // An electrode that was connected and not ticked has a pH of 0.00 in every row, also where no more is known.
        for (std::size_t k = 0; k < 2; ++k) {
            const bool measured = Kind() == RecordingKind::Ise || cells.point.value[k] != 0;
            on[k] = on[k] || (cells.electrode[k] && measured && quality.back().Recorded(static_cast<int>(k)));
        }
    }
    run_.Fill(Kind(), pointCount, on, std::move(points), std::move(quality));
    face_.wholeFile = run_.Taken() < static_cast<int>(fileRows_.size());
    Redraw();
}

void RecordingPresenter::ShowWholeFile() {
    if (now_ != State::Viewing) return;
    ShowCells(std::clamp(static_cast<int>(fileRows_.size()) - 1, MostPoints, MostShown));
    ShowStatus();
}

void RecordingPresenter::Open() {
    if (now_ == State::Running) return;
    const RecordingKeeper::End end = SettleData();
    if (host_.Ending()) return;
    // A recording that is paused goes on when no other one has come into its place.
    if (LoadFile()) {
        LetGo(end);
        ShowFile();
    }
    ShowStatus();
}

RecordingKeeper::End RecordingPresenter::SettleData() {
    using enum RecordingKeeper::End;
    if (tableState_.TableOpen != 1) return Saved;
    if (keeper_.Live()) {
        keeper_.Flush();
        NoteKeeping();
        TellTroubles();
        if (keeper_.LiveWhole()) {
            prompts_.Message("Your data have been saved: " + tableState_.TableFile);
            // A point that came behind the box may not have gone into the file.
            if (keeper_.LiveWhole()) return Saved;
        }
    }
    return run_.Taken() == 0 || AskUntilSaved() ? Saved : Declined;
}

void RecordingPresenter::LetGo(RecordingKeeper::End end) {
    schedule_.Stop();
    keeper_.Done(end);
    tableState_.TableOpen = 0;
    tableState_.TableFile.clear();
}

void RecordingPresenter::Finish() {
    const RecordingKeeper::End end = SettleData();
    // The session ends behind the question: what is not saved is kept for the next start.
    if (!host_.Ending()) LetGo(end);
}

bool RecordingPresenter::AskUntilSaved() {
    bool saved = false;
    finishing_ = true;
    while (!saved && prompts_.AskToSave(SaveQuestion) && !host_.Ending()) {
        FillTable();
        saved = table_.Save() == SaveOutcome::Saved;
    }
    finishing_ = false;
    return saved;
}

void RecordingPresenter::Leave() {
    schedule_.Stop();
    ClearPaths(state_);
    table_.Unload();
    tableState_.ViewOnly = tableState_.HideTableOnBack = 0;
    navigation_.PhPath[3] = 1;
    navigation_.ReturnScreen = 0;
    host_.StopLink();
}

void RecordingPresenter::New() {
    Finish();
    if (host_.Ending()) return;
    Leave();
    host_.ShowSetup();
}

void RecordingPresenter::Back() {
    if (now_ == State::Running && !prompts_.Ask(EndQuestion(run_), true)) return;
    if (tableState_.ViewOnly == 0) Finish();
    if (host_.Ending()) return;
    Leave();
    host_.ShowMenu();
}

void RecordingPresenter::Exit() {
    if (!prompts_.Ask(text::SureToExit, true)) return;
    Finish();
    if (host_.Ending()) return;
    schedule_.Stop();
    host_.StopLink();
    host_.EndProgram();
}

std::string RecordingPresenter::PrintTitle() const {
    return Kind() == RecordingKind::Ise && now_ != State::Viewing ? "ISE Continuous Recording" : face_.caption;
}

std::vector<std::string> RecordingPresenter::LastValues() const {
    if (run_.Taken() == 0) return {};
    const RecordingPoint& point = run_.Points().back();
    std::vector<std::string> lines = {"Data Number: " + TrimStr(point.n) +
                                      (point.time.empty() ? "" : "   Time: " + point.time)};
    const auto text = [](float number, const char* mask) {
        return std::isfinite(number) ? Format(number, mask) : std::string("N/A");
    };
    for (std::size_t k = 0; k < 2; ++k) {
        if (!run_.On(static_cast<int>(k))) continue;
        const std::string& words = run_.Quality(point.n).words[k];
        lines.push_back(face_.labtitle[k + 1] + ": " + text(point.value[k], "#0.00") + " " + face_.lblScale + "   " +
                        text(point.mv[k], "#0.00") + " mV   " + text(point.celsius[k], "#0.0") + " °C" +
                        (words.empty() ? "" : "   (" + words + ")"));
    }
    return lines;
}

std::string RecordingPresenter::PictureName() const {
    return Kind() == RecordingKind::Ph ? "PH-RECORDING" : "ISE-RECORDING";
}

}  // namespace kelvo
