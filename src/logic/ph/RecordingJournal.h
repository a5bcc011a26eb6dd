#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/Clock.h"
#include "core/StateOf.h"
#include "ph/RecordingPlan.h"
#include "text/GrowingFile.h"

namespace kelvo {

class FileChooser;
class Prompts;

/// The file beside a table that grows with it: what is known of its rows beyond their cells.
class FactsBeside {
 public:
    /// @param table  the table's file
    /// @param bytes  all that the file beside it is to hold; empty: there is nothing to be kept
    /// @throws RuntimeError of the disk
    void Keep(const std::string& table, const std::string& bytes);
    void End() { *this = FactsBeside(); }

 private:
    std::string table_;
    GrowingFile file_;
};

/// Keeps a recording that has no file of its own, row by row, in a journal in the user's data folder: whatever ends the
/// program, at most the row that was just being taken is missing. A journal is forgotten when its recording has been
/// saved; one that is left over is offered at the next start. That of a recording which the analyst declines is put
/// aside and can be brought back for thirty days.
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
    /// What is known of the rows so far, whole. @throws RuntimeError of the disk
    void KeepFacts(const std::string& bytes);
    /// The recording is safe elsewhere: the journal goes away.
    void Forget();
    /// The recording was declined.
    void PutAside();
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
    FactsBeside facts_;
    int lock_ = -1;
};

/// A recording that an earlier run of the program has left behind.
struct KeptRecording {
    std::string path;
    RecordingKind kind = RecordingKind::Ph;
    DateTime started;
    int points = 0;
    std::string content;  ///< head and whole rows, as a table file holds them
    std::string facts;    ///< what the file beside it holds, empty without one
};
/// Those of the folder that no running program holds, in the order of their start. Empty ones are taken away.
std::vector<KeptRecording> FindKeptRecordings(const std::string& folder);

/// "A pH recording of 25/11/2026 21:30 with 57 points was not saved. Keep it?"
std::string KeptRecordingQuestion(const KeptRecording& kept, int dateFormat);

/// Offers each of them: Yes asks for a file and saves it, No puts it aside; a file chooser that is cancelled leaves it
/// for the next start. One that stands whole in a file which the end of the program has kept is not offered again.
/// @param ending      whether the program is ending: an answer then is nobody's, and what is left waits for the next
///                    start
/// @param keptFolders where an end of the program keeps files, "KEPT….PHC"
void OfferKeptRecordings(StateOf<const Paths, const HardwareSettings> state, const std::string& folder,
                         Prompts& prompts, FileChooser& files, const std::function<bool()>& ending,
                         const std::vector<std::string>& keptFolders = {});

/// Recordings that were declined during the last thirty days, in the order of their start; older ones are taken away.
std::vector<KeptRecording> RecordingsPutAside(const std::string& folder);
/// "pH, 25/11/2026 21:30, 57 points".
std::string PutAsideCaption(const KeptRecording& kept, int dateFormat);
/// Asks for a file and saves it there. @return whether it stands in a file now; it is then no longer among those aside
bool BringBack(const Paths& paths, const KeptRecording& kept, Prompts& prompts, FileChooser& files);

}  // namespace kelvo
