#include "ph/RecordingKeeper.h"

#include <utility>

#include "core/Clock.h"
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
        if (!failing && !failure_) failure_ = Failure{error, file};
        failing = true;
        return false;
    }
}

void RecordingKeeper::Begin(RecordingKind kind, const DateTime& started, std::string liveFile, std::string head) {
    kind_ = kind;
    started_ = started;
    all_ = std::move(head);
    lines_.clear();
    rows_ = liveRows_ = 0;
    failure_.reset();
    live_.End();
    liveFacts_.End();
    journal_.Forget();
    if (!liveFile.empty()) live_.Begin(std::move(liveFile), all_);
    Flush();
    if (LiveWhole() && facts_.putAway) facts_.putAway(live_.Path(), live_.Backup());
}

void RecordingKeeper::Add(const std::string& row, const RowFacts& facts) {
    const std::string piece = ToCodePage(row + "\r\n");
    all_ += piece;
    ++rows_;
    if (facts_.line) lines_ += facts_.line(rows_, row, facts);
    Write(piece);
}

void RecordingKeeper::Flush() {
    liveFails_ = journalFails_ = factsFail_ = false;
    Write({});
}

void RecordingKeeper::Write(const std::string& piece) {
    if (!Live() || !Try(live_.Path(), liveFails_, [&] { live_.Add(piece); })) {
        KeepBeside(piece);
        return;
    }
    liveRows_ = rows_;
    journal_.Forget();
    Try(FactsFileOf(live_.Path()), factsFail_, [&] { liveFacts_.Keep(live_.Path(), FactsBytes(live_.Path())); });
}

void RecordingKeeper::KeepBeside(const std::string& piece) {
    Try(journal_.Path(), journalFails_, [&] {
        if (journal_.Active())
            journal_.Add(piece);
        else
            journal_.Begin(kind_, started_, all_);
    });
    if (journal_.Active()) Try(FactsFileOf(journal_.Path()), factsFail_, [&] { journal_.KeepFacts(FactsBytes({})); });
}

std::string RecordingKeeper::FactsBytes(const std::string& table) const {
    return lines_.empty() || !facts_.heading ? std::string() : facts_.heading(table) + lines_;
}

void RecordingKeeper::Done(End end) {
    if (end == End::Declined && rows_ > 0)
        journal_.PutAside();
    else
        journal_.Forget();
    live_.End();
    liveFacts_.End();
    all_.clear();
    lines_.clear();
    rows_ = liveRows_ = 0;
}

std::optional<RecordingKeeper::Failure> RecordingKeeper::TakeFailure() {
    return std::exchange(failure_, std::nullopt);
}

}  // namespace kelvo
