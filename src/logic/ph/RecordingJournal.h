#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "ph/RecordingPlan.h"
#include "text/GrowingFile.h"

namespace kelvo {

/// Keeps a recording that has no file of its own, row by row, in a journal in the user's data folder: whatever ends the
/// program, at most the row that was just being taken is missing. A journal is forgotten when its recording has been
/// saved or declined; one that is left over is offered at the next start.
///
/// A journal is a table file under another name, "recording-ph-20261125-213000-4711.journal", and is locked as long as
/// its program runs.
class RecordingJournal {
 public:
    /// @param folder ends with '/'; made when it is not there
    explicit RecordingJournal(std::string folder) : folder_(std::move(folder)) {}
    RecordingJournal(const RecordingJournal&) = delete;
    RecordingJournal& operator=(const RecordingJournal&) = delete;
    ~RecordingJournal() { Release(); }

    /// Begins one with what stands already: the head of the table file and any rows, in the code page.
    /// @throws RuntimeError as `Add`; later rows are tried all the same.
    void Begin(RecordingKind kind, const DateTime& started, std::string content);
    /// @throws RuntimeError of the disk; the row waits for the next one.
    void Add(std::string_view row);
    /// The recording is safe elsewhere, or not wanted: the journal goes away.
    void Forget();
    bool Active() const { return file_.Open(); }
    /// Its file, or its folder before it has begun.
    const std::string& Path() const { return Active() ? file_.Path() : folder_; }
    /// Whether every row is on the disk.
    bool Whole() const { return Active() && file_.Whole(); }

 private:
    void Hold();
    void Release();

    std::string folder_;
    GrowingFile file_;
    int lock_ = -1;
};

/// A recording that an earlier run of the program has left behind.
struct KeptRecording {
    std::string path;
    RecordingKind kind = RecordingKind::Ph;
    DateTime started;
    int points = 0;
    std::string content;  ///< head and whole rows, as a table file holds them
};
/// Those of the folder that no running program holds, in the order of their start. Empty ones are taken away.
std::vector<KeptRecording> FindKeptRecordings(const std::string& folder);

/// "A pH recording of 25/11/2026 21:30 with 57 points was not saved. Keep it?"
std::string KeptRecordingQuestion(const KeptRecording& kept, int dateFormat);

/// Offers each of them: Yes asks for a file and saves it, No forgets it; a file chooser that is cancelled leaves it for
/// the next start.
/// @param ending whether the program is ending: an answer then is nobody's, and what is left waits for the next start
void OfferKeptRecordings(const AppState& state, const std::string& folder, Prompts& prompts, FileChooser& files,
                         const std::function<bool()>& ending);

}  // namespace kelvo
