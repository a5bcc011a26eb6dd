#include "ph/RecordingJournal.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <optional>

#include "core/Clock.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Paths.h"
#include "core/RowFacts.h"
#include "core/SaveAndOpen.h"
#include "core/StateOf.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view Extension = ".journal";
constexpr const char* AsideFolder = "put-aside/";
constexpr auto KeptAside = std::chrono::hours(30 * 24);

std::string JournalName(RecordingKind kind, const DateTime& t) {
    char name[128];
    std::snprintf(name, sizeof name, "recording-%s-%04d%02d%02d-%02d%02d%02d-%ld%s",
                  kind == RecordingKind::Ph ? "ph" : "ise", t.year, t.month, t.day, t.hour, t.minute, t.second,
                  static_cast<long>(::getpid()), Extension.data());
    return name;
}

/// Kind and start as the name tells them.
std::optional<KeptRecording> FromName(const std::string& name) {
    KeptRecording kept;
    char kind[4] = {};
    DateTime& t = kept.started;
    long process = 0;
    const int read = std::sscanf(name.c_str(), "recording-%3[a-z]-%4d%2d%2d-%2d%2d%2d-%ld", kind, &t.year, &t.month,
                                 &t.day, &t.hour, &t.minute, &t.second, &process);
    if (read != 8 || !name.ends_with(Extension)) return std::nullopt;
    kept.kind = std::string(kind) == "ise" ? RecordingKind::Ise : RecordingKind::Ph;
    return kept;
}

/// The lock of the journal, -1 when a running program holds it.
int TakeLock(const std::string& path) {
    const int lock = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (lock < 0) return -1;
    if (::flock(lock, LOCK_EX | LOCK_NB) == 0) return lock;
    ::close(lock);
    return -1;
}

/// Rows behind the row of column heads, the one line of a table file that begins with a TAB and a head.
int CountRows(std::string_view content) {
    const std::size_t numbered = content.find("\n\tNo.\tTime");
    const std::size_t heads = numbered != std::string_view::npos ? numbered : content.find("\n\tSample Number\tTime");
    if (heads == std::string_view::npos) return 0;
    const auto lines = std::count(content.begin() + static_cast<std::ptrdiff_t>(heads) + 1, content.end(), '\n');
    return static_cast<int>(lines) - 1;
}

/// What a file holds up to the end of its last whole line.
std::string WholeLines(std::string content) {
    const std::size_t end = content.rfind('\n');
    content.resize(end == std::string::npos ? 0 : end + 1);
    return content;
}

std::string PointsText(const KeptRecording& kept) {
    return TrimStr(kept.points) + (kept.points == 1 ? " point" : " points");
}

/// Whether the recording stands in a file of its own now.
bool SaveKept(const Paths& paths, const KeptRecording& kept, Prompts& prompts, FileChooser& files) {
    const bool ph = kept.kind == RecordingKind::Ph;
    const char* extension = ph ? ".phc" : ".tab";
    char offered[64];
    std::snprintf(offered, sizeof offered, "%s%04d%02d%02d-%02d%02d%s", ph ? "PH" : "ISE", kept.started.year,
                  kept.started.month, kept.started.day, kept.started.hour, kept.started.minute, extension);
    const SaveRequest request{
        .dialog = {ph ? "All Data(*.phc)|*.phc" : "All Data(*.Tab)|*.tab", paths.DataPath, offered},
        .ending = extension};
    while (const auto name = AskNameToSave(prompts, files, request)) {
        const bool saved = TakeFileStep(prompts, "Saving", *name, [&] {
            ReplaceWholeFile(*name, kept.content);
            if (!kept.facts.empty()) ReplaceWholeFile(FactsFileOf(*name), kept.facts);
        });
        if (saved) return true;
    }
    return false;
}

void Remove(const std::string& path) {
    ::unlink(path.c_str());
    ::unlink(FactsFileOf(path).c_str());
}

/// Moves a journal where it waits to be brought back; it stays where it is when that cannot be done.
void MoveAside(const std::string& path) {
    const std::string name = LastPart(path);
    const std::string aside = path.substr(0, path.size() - name.size()) + AsideFolder;
    std::error_code failed;
    fs::create_directories(aside, failed);
    fs::rename(path, aside + name, failed);
    if (failed) return;
    fs::last_write_time(aside + name, fs::file_time_type::clock::now(), failed);
    fs::rename(FactsFileOf(path), FactsFileOf(aside + name), failed);
}

/// Whether a file that an end of the program has kept holds all of it.
bool StandsInKeptFile(const KeptRecording& kept, const std::vector<std::string>& folders) {
    for (const std::string& folder : folders) {
        std::error_code failed;
        for (const auto& entry : fs::directory_iterator(folder, failed)) {
            if (!entry.path().filename().string().starts_with("KEPT") || !entry.is_regular_file(failed)) continue;
            // One that cannot be read could not stand in for the journal.
            const auto content = ReadIfPossible(entry.path().string());
            if (content && content->starts_with(kept.content)) return true;
        }
    }
    return false;
}

}  // namespace

void FactsBeside::Keep(const std::string& table, const std::string& bytes) {
    if (bytes.empty()) return;
    if (table != table_ || !bytes.starts_with(file_.Content()))
        file_.Begin(FactsFileOf(table), bytes, GrowingFile::Before::Strange);
    else if (bytes == file_.Content() && file_.Whole())
        return;
    table_ = table;
    file_.Add(std::string_view(bytes).substr(file_.Content().size()));
}

void RecordingJournal::Begin(RecordingKind kind, const DateTime& started, std::string content) {
    Forget();
    std::error_code failed;
    fs::create_directories(folder_, failed);
    file_.Begin(folder_ + JournalName(kind, started), std::move(content));
    file_.Flush();
    Hold();
}

void RecordingJournal::Add(std::string_view row) {
    std::error_code failed;
    fs::create_directories(folder_, failed);
    file_.Add(row);
    Hold();
}

void RecordingJournal::KeepFacts(const std::string& bytes) {
    facts_.Keep(file_.Path(), bytes);
}

void RecordingJournal::Forget() {
    if (!file_.Open()) return;
    Remove(file_.Path());
    file_.End();
    facts_.End();
    Release();
}

void RecordingJournal::PutAside() {
    if (!file_.Open()) return;
    MoveAside(file_.Path());
    file_.End();
    facts_.End();
    Release();
}

void RecordingJournal::Hold() {
    struct stat held {};
    if (lock_ >= 0 && ::fstat(lock_, &held) == 0 && held.st_nlink > 0) return;
    // A journal that had to be made anew is another file.
    Release();
    lock_ = TakeLock(file_.Path());
}

void RecordingJournal::Release() {
    if (lock_ >= 0) ::close(lock_);
    lock_ = -1;
}

std::vector<KeptRecording> FindKeptRecordings(const std::string& folder) {
    std::vector<KeptRecording> found;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(folder, failed)) {
        auto kept = FromName(entry.path().filename().string());
        if (!kept || !entry.is_regular_file(failed)) continue;
        kept->path = entry.path().string();
        const int lock = TakeLock(kept->path);
        if (lock < 0) continue;
        try {
            kept->content = WholeLines(ReadWholeFile(kept->path));
            kept->points = CountRows(kept->content);
            if (FileExists(FactsFileOf(kept->path))) kept->facts = WholeLines(ReadWholeFile(FactsFileOf(kept->path)));
            if (kept->points > 0)
                found.push_back(std::move(*kept));
            else
                Remove(kept->path);
        } catch (const RuntimeError&) {
            // A journal that cannot be read now may be at the next start.
        }
        ::close(lock);
    }
    std::sort(found.begin(), found.end(), [](const KeptRecording& a, const KeptRecording& b) {
        const auto start = [](const DateTime& t) {
            return std::array{t.year, t.month, t.day, t.hour, t.minute, t.second};
        };
        return start(a.started) < start(b.started);
    });
    return found;
}

std::string KeptRecordingQuestion(const KeptRecording& kept, int dateFormat) {
    return std::string(kept.kind == RecordingKind::Ph ? "A pH" : "An ISE") + " recording of " +
           DateTimeText(kept.started, dateFormat) + " with " + PointsText(kept) + " was not saved. Keep it?";
}

void OfferKeptRecordings(StateOf<const Paths, const HardwareSettings> state, const std::string& folder,
                         Prompts& prompts, FileChooser& files, const std::function<bool()>& ending,
                         const std::vector<std::string>& keptFolders) {
    const HardwareSettings& hardware = state;
    for (const KeptRecording& kept : FindKeptRecordings(folder)) {
        if (StandsInKeptFile(kept, keptFolders)) {
            Remove(kept.path);
            continue;
        }
        const bool keep = prompts.AskToSave(KeptRecordingQuestion(kept, hardware.DateFormat));
        if (ending()) return;
        if (!keep)
            MoveAside(kept.path);
        else if (SaveKept(state, kept, prompts, files))
            Remove(kept.path);
    }
}

std::vector<KeptRecording> RecordingsPutAside(const std::string& folder) {
    const std::string aside = folder + AsideFolder;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator(aside, failed)) {
        const auto age = fs::file_time_type::clock::now() - entry.last_write_time(failed);
        if (!failed && FromName(entry.path().filename().string()) && age > KeptAside) Remove(entry.path().string());
    }
    return FindKeptRecordings(aside);
}

std::string PutAsideCaption(const KeptRecording& kept, int dateFormat) {
    return std::string(kept.kind == RecordingKind::Ph ? "pH, " : "ISE, ") + DateTimeText(kept.started, dateFormat) +
           ", " + PointsText(kept);
}

bool BringBack(const Paths& paths, const KeptRecording& kept, Prompts& prompts, FileChooser& files) {
    if (!SaveKept(paths, kept, prompts, files)) return false;
    Remove(kept.path);
    return true;
}

}  // namespace kelvo
