// Kills a recording at random moments, again and again, and looks at what it has left on the disk: with a live file and
// without one, at most the row that was just being taken may be missing, and no row may be torn, doubled or out of
// order.
//   kelvo_recording_kills [KILLS] [SEED]
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>

#include "app/AppState.h"
#include "core/Clock.h"
#include "ph/RecordingKeeper.h"
#include "ph/RecordingRun.h"

namespace {

using namespace kelvo;
namespace fs = std::filesystem;

const std::string Head = "Electrode 1 :\r\n\tNo.\tTime\r\n";
constexpr DateTime Started{2026, 11, 25, 21, 30, 0};

/// Rows that the recording had finished, told to the one who watches.
struct Progress {
    std::atomic<int> rows{0};
};

std::string RowOf(int n) {
    return std::to_string(n + 1) + "\t" + std::to_string(n) + "\t21:30:00\t7.00\t0.00\t25.0\t77.0\tN/A\tN/A\tN/A\tN/A";
}

/// Records as fast as the disk takes it, until it is killed.
[[noreturn]] void Record(const fs::path& folder, bool live, Progress& progress) {
    AppState state;
    state.pHMode = -1;
    state.Channel = {1, 0, 1, 0, 0};
    state.SensorCount = 1;
    state.BufferCount = {2, 2, 0};
    state.Buffers1 = {{0, 0, 0}, {0, 7, 0}, {0, 4, 177}};
    state.Reading = {0, 745.8f, 0, 0, 0};
    state.Temperature = {"", "25", "25"};
    const RecordingInputs inputs = {[](float) { return 0.0; }, [] { return std::optional<double>(0); }};
    RecordingKeeper keeper((folder / "own/").string());
    keeper.Begin(RecordingKind::Ph, Started, live ? (folder / "RUN.PHC").string() : std::string(), Head);
    for (int n = 0;;) {
        RecordingRun run(state, inputs);
        RecordingPlan plan;
        plan.electrode = {true, false};
        plan.period = 3;
        run.Begin(RecordingKind::Ph, plan);
        for (; run.Sample(Started) == RecordingRun::Outcome::Taken; ++n) {
            RecordingPoint point = run.Points().back();
            point.n = n;
            keeper.Add(RecordingRow(state, point));
            progress.rows = n + 1;
        }
    }
}

std::string Content(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

/// What is wrong with what was left; empty when nothing is. @param told rows that the recording had finished
std::string Fault(const std::string& content, int told, int& torn) {
    if (content.empty() && told == 0) return {};
    if (!content.starts_with(Head)) return "the head is not whole";
    std::size_t at = Head.size();
    int rows = 0;
    while (at < content.size()) {
        const std::string expected = RowOf(rows) + "\r\n";
        const std::string found = content.substr(at, expected.size());
        if (found != expected) {
            if (!expected.starts_with(found)) return "row " + std::to_string(rows) + " is '" + found + "'";
            ++torn;
            break;
        }
        at += expected.size();
        ++rows;
    }
    return rows < told ? std::to_string(told - rows) + " finished rows are missing" : std::string();
}

}  // namespace

int main(int count, char** words) {
    const int kills = count > 1 ? std::atoi(words[1]) : 300;
    const auto seed = static_cast<std::uint32_t>(count > 2 ? std::atol(words[2]) : 1);
    std::mt19937 random(seed);
    const fs::path folder = fs::temp_directory_path() / ("kelvo-kills-" + std::to_string(::getpid()));
    auto* progress = static_cast<Progress*>(
        ::mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    int faults = 0, torn = 0;
    long rows = 0;
    for (int i = 0; i < kills; ++i) {
        const bool live = i % 2 == 0;
        fs::remove_all(folder);
        fs::create_directories(folder);
        progress->rows = 0;
        const pid_t child = ::fork();
        if (child == 0) Record(folder, live, *progress);
        ::usleep(std::uniform_int_distribution<useconds_t>(0, 60000)(random));
        ::kill(child, SIGKILL);
        int status = 0;
        ::waitpid(child, &status, 0);
        const int told = progress->rows;
        rows += told;
        std::string fault;
        if (live) {
            fault = Fault(Content(folder / "RUN.PHC"), told, torn);
        } else {
            const auto kept = FindKeptRecordings((folder / "own/").string());
            fault = Fault(kept.empty() ? std::string() : kept[0].content, told, torn);
            if (fault.empty() && !kept.empty() && kept[0].points < told) fault = "points are counted wrongly";
        }
        if (fault.empty()) continue;
        ++faults;
        std::printf("kill %d, %s, %d rows: %s\n", i, live ? "live file" : "journal", told, fault.c_str());
    }
    fs::remove_all(folder);
    std::printf(
        "%d kills at random moments (seed %u), %ld rows finished before them, %d torn rows cut off, %d faults\n", kills,
        seed, rows, torn, faults);
    return faults == 0 && kills > 0 ? 0 : 1;
}
