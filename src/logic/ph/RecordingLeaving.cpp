#include <algorithm>
#include <cmath>
#include <utility>

#include "core/Messages.h"
#include "core/Routes.h"
#include "ph/RecordingPresenter.h"
#include "text/Number.h"

// Saved recordings on the screen, and the ways out of it with their questions.

namespace kelvo {
namespace {

const char* const SaveQuestion = "Would you like to save the current data table?";

/// Points of a long file that one graph still shows.
constexpr int MostShown = 5000;

constexpr std::size_t At(int index) {
    return static_cast<std::size_t>(index);
}

}  // namespace

void RecordingPresenter::ShowFile() {
    ShowCells(PointsOfFile(static_cast<int>(fileRows_.size()), run_.PointCount()));
    state_.ViewOnly = 1;
    // The table keeps what the file says, its head too.
    state_.HideTableOnBack = -1;
    face_.times = false;
    for (std::string& box : face_.txtTT)
        box.clear();
    face_.doubtful = {};
    SetLabels();
    ShowState(State::Viewing);
}

void RecordingPresenter::ShowCells(int pointCount) {
    std::vector<RecordingPoint> points;
    std::array<bool, 2> on{};
    for (const RecordingCells& cells : fileCells_) {
        points.push_back(cells.point);
        for (std::size_t k = 0; k < 2; ++k)
            on[k] = on[k] || cells.electrode[k];
    }
    run_.Fill(Kind(), pointCount, on, std::move(points));
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
    Finish();
    if (host_.Ending()) return;
    // What was recorded has been saved or declined: it cannot go on.
    if (now_ == State::Stopped) ShowState(State::Complete);
    if (LoadFile()) ShowFile();
    ShowStatus();
}

void RecordingPresenter::Finish() {
    if (state_.TableOpen != 1) return;
    bool saved = false;
    if (keeper_.Live()) {
        keeper_.Flush();
        if (const auto failure = keeper_.TakeFailure())
            ShowFileError(prompts_, failure->error, "Saving", failure->file);
        saved = keeper_.LiveWhole();
        if (saved) prompts_.Message("Your data have been saved: " + state_.TableFile);
    }
    if (!saved && run_.Taken() > 0) AskUntilSaved();
    // The session ends behind the question: what is not saved is kept for the next start.
    if (host_.Ending()) return;
    schedule_.Stop();
    keeper_.Done();
    state_.TableOpen = 0;
    state_.TableFile.clear();
}

void RecordingPresenter::AskUntilSaved() {
    finishing_ = true;
    while (prompts_.AskToSave(SaveQuestion) && !host_.Ending()) {
        FillTable();
        if (table_.Save() == SaveOutcome::Saved) break;
    }
    finishing_ = false;
}

void RecordingPresenter::Leave() {
    schedule_.Stop();
    ClearPaths(state_);
    table_.Unload();
    state_.ViewOnly = state_.HideTableOnBack = 0;
    state_.PhPath[3] = 1;
    state_.ReturnScreen = 0;
    host_.StopLink();
}

void RecordingPresenter::New() {
    Finish();
    if (host_.Ending()) return;
    Leave();
    host_.ShowSetup();
}

void RecordingPresenter::Back() {
    if (state_.ViewOnly == 0) Finish();
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
    return Kind() == RecordingKind::Ise ? "ISE Continuous Recording" : face_.caption;
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
        lines.push_back(face_.labtitle[k + 1] + ": " + text(point.value[k], "#0.00") + " " + face_.lblScale + "   " +
                        text(point.mv[k], "#0.00") + " mV   " + text(point.celsius[k], "#0.0") + " °C" +
                        (run_.Quality(point.n).Fresh() ? "" : "   (of an old frame)"));
    }
    return lines;
}

std::string RecordingPresenter::PictureName() const {
    return Kind() == RecordingKind::Ph ? "PH-RECORDING" : "ISE-RECORDING";
}

}  // namespace kelvo
