#include "ph/RecordingKeeper.h"

#include <utility>

#include "text/CodePage.h"

namespace kelvo {

template <typename Step>
bool RecordingKeeper::Try(const std::string& file, bool& failing, Step step) {
    try {
        step();
        failing = false;
        return true;
    } catch (const RuntimeError& error) {
        // Told once until it works again; a box at every row would be no help.
        if (!failing) failure_ = Failure{error, file};
        failing = true;
        return false;
    }
}

void RecordingKeeper::Begin(RecordingKind kind, const DateTime& started, std::string liveFile, std::string head) {
    kind_ = kind;
    started_ = started;
    all_ = std::move(head);
    rows_ = liveRows_ = 0;
    liveFails_ = journalFails_ = false;
    failure_.reset();
    live_.End();
    journal_.Forget();
    if (!liveFile.empty()) live_.Begin(std::move(liveFile), all_);
    Flush();
}

void RecordingKeeper::Add(const std::string& row) {
    const std::string piece = ToCodePage(row + "\r\n");
    all_ += piece;
    ++rows_;
    if (Live() && Try(live_.Path(), liveFails_, [&] { live_.Add(piece); })) {
        liveRows_ = rows_;
        journal_.Forget();
        return;
    }
    KeepBeside(piece);
}

void RecordingKeeper::Flush() {
    liveFails_ = journalFails_ = false;
    if (Live() && Try(live_.Path(), liveFails_, [&] { live_.Flush(); })) {
        liveRows_ = rows_;
        journal_.Forget();
        return;
    }
    KeepBeside({});
}

void RecordingKeeper::KeepBeside(const std::string& piece) {
    Try(journal_.Path(), journalFails_, [&] {
        if (journal_.Active())
            journal_.Add(piece);
        else
            journal_.Begin(kind_, started_, all_);
    });
}

void RecordingKeeper::Done() {
    live_.End();
    journal_.Forget();
    all_.clear();
    rows_ = liveRows_ = 0;
}

std::optional<RecordingKeeper::Failure> RecordingKeeper::TakeFailure() {
    return std::exchange(failure_, std::nullopt);
}

}  // namespace kelvo
