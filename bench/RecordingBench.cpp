#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QImage>
#include <QPainter>
#include <QProcess>
#include <filesystem>
#include <fstream>

#include "app/AppState.h"
#include "app/Screens.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "devices/LinkQt.h"
#include "devices/QtClock.h"
#include "kit/PictureView.h"
#include "kit/ScreenManager.h"
#include "ph/RecordingGraph.h"
#include "ph/RecordingKeeper.h"
#include "ph/frmPHMe.h"
#include "tables/TablePresenter.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

/// Answers every box at once; declines every file.
class NoPrompts : public Prompts {
    void Message(const std::string&, const std::string&, Icon) override {}
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};
class NoFiles : public FileChooser {
    std::optional<std::string> Open(const FileRequest&) override { return {}; }
    std::optional<std::string> Save(const FileRequest&) override { return {}; }
};

/// Two electrodes with two buffers each.
void FillState(AppState& state, const std::string& folder) {
    state.pHMode = -1;
    state.JournalPath = folder;
    state.Channel = {1, 0, 1, 1, 1};
    state.BufferCount = {4, 2, 2};
    state.Buffers1 = state.Buffers2 = {{0, 0, 0}, {0, 7, 0}, {0, 4, 177}};
    state.PhCaliTemp = {0, 25, 25};
    state.Reading = {118, 745.8f, 60, 745.8f, 0};
    state.chk1 = state.chk2 = {true, false};
    state.cmbX = 3;
    state.CmbTime = 0;
    state.cmbY = 4;
}

RecordingPlan LongPlan() {
    RecordingPlan plan;
    plan.electrode = {true, true};
    plan.period = 3;
    plan.scale = 4;
    return plan;
}

const RecordingInputs FreshFrames = {[](float) { return 1.0; }, [] { return std::optional<double>(0.5); }};

struct Scratch {
    Scratch() { fs::create_directories(folder); }
    ~Scratch() { fs::remove_all(folder); }
    const std::string folder =
        (fs::temp_directory_path() / ("kelvo-recording-bench-" + std::to_string(getpid()) + "/")).string();
};

/// A sample of two electrodes from frame to row; with its row flushed to the disk behind a file of up to 201 rows.
void Recording_Sample(benchmark::State& bench) {
    Scratch scratch;
    AppState state;
    FillState(state, scratch.folder);
    RecordingRun run(state, FreshFrames);
    RecordingKeeper keeper(scratch.folder);
    const bool onDisk = bench.range(0) != 0;
    for (auto _ : bench) {
        if (run.Complete() || run.Taken() == 0) {
            bench.PauseTiming();
            run.Begin(RecordingKind::Ph, LongPlan());
            if (onDisk) keeper.Begin(RecordingKind::Ph, {}, scratch.folder + "RUN.PHC", "head\r\n");
            bench.ResumeTiming();
        }
        run.Sample({2026, 11, 25, 21, 30, 0});
        const std::string row = RecordingRow(state, run.Points().back());
        if (onDisk) keeper.Add(row);
        benchmark::DoNotOptimize(row.data());
    }
}
BENCHMARK(Recording_Sample)->ArgName("disk")->Arg(0)->Arg(1)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// One repaint of 201 points in two traces at 1920 × 1080; a frame of a 60 Hz display is 16 ms.
void Recording_Paint(benchmark::State& bench) {
    Scratch scratch;
    AppState state;
    FillState(state, scratch.folder);
    RecordingRun run(state, FreshFrames);
    run.Begin(RecordingKind::Ph, LongPlan());
    for (int n = 0; !run.Complete(); ++n) {
        state.Reading[0] = static_cast<float>(n % 40 * 5);
        state.Reading[2] = static_cast<float>(200 - n);
        run.Sample({});
    }
    DisplayList graph;
    SetTiles(run, ScaleRow(RecordingKind::Ph, 4), graph);
    QImage surface(1920, 1080, QImage::Format_ARGB32_Premultiplied);
    for (auto _ : bench) {
        QPainter painter(&surface);
        painter.fillRect(surface.rect(), Qt::white);
        PaintPicture(painter, QRectF(surface.rect()), graph, recording::Width, recording::Height);
        painter.end();
        benchmark::DoNotOptimize(surface.constBits());
    }
}
BENCHMARK(Recording_Paint)->Unit(benchmark::kMillisecond);

double CpuSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double Wanted(const char* variable, double otherwise) {
    bool isNumber = false;
    const double value = qEnvironmentVariable(variable).toDouble(&isNumber);
    return isNumber ? value : otherwise;
}

long ResidentKib() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

/// The recording screen with the software interface in a process of its own.
class Recording {
 public:
    Recording() {
        simulator.setProgram(QCoreApplication::applicationDirPath() + "/kelvo-simulator");
        simulator.setArguments({"--link", QString::fromStdString(scratch.folder + "ports/COM1"), "--until-eof"});
        simulator.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        simulator.start();
        if (!simulator.waitForReadyRead(5000)) throw std::runtime_error("the simulator does not start");
        FillState(state, scratch.folder);
        RegisterScreens(context);
        context.link->StartLink();
        screens.Show(ScreenCode::frmPHMe);
    }
    ~Recording() {
        context.link->StopLink();
        simulator.closeWriteChannel();
        simulator.waitForFinished(5000);
    }
    RecordingPresenter& Presenter() { return dynamic_cast<frmPHMe&>(*screens.Find(ScreenCode::frmPHMe)).Recording(); }

    Scratch scratch;
    QProcess simulator;
    AppState state;
    NoPrompts prompts;
    NoFiles files;
    QtClock clock;
    LinkQt linkQt{state, prompts, clock, PortNames(scratch.folder + "ports/", "/nonexistent/"),
                  scratch.folder + "CommPort.ini"};
    ScreenManager screens{state};
    DataTable dataTable;
    TablePresenter table{state, dataTable, prompts, files, clock};
    AppContext context{state, prompts, files, clock, screens, table, nullptr, &linkQt.GetLink()};
};

/// A recording every 2 s in real time, polled from the software interface: share of one core, and how far the moment of
/// the last point lies from where it belongs. KELVO_RECORDING_POINTS of the 201, 4 unless set.
void Recording_RealTime(benchmark::State& bench) {
    Recording recording;
    const int points = static_cast<int>(Wanted("KELVO_RECORDING_POINTS", 4));
    for (auto _ : bench) {
        const double before = CpuSeconds(), start = recording.clock.SteadySeconds();
        double last = start;
        while (recording.Presenter().Run().Taken() < points && recording.Presenter().Ticking()) {
            const int taken = recording.Presenter().Run().Taken();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            if (recording.Presenter().Run().Taken() > taken) last = recording.clock.SteadySeconds();
        }
        const double seconds = last - start;
        bench.counters["points"] = recording.Presenter().Run().Taken();
        bench.counters["seconds"] = seconds;
        bench.counters["off_by_ms"] = (seconds - 2.0 * recording.Presenter().Run().Taken()) * 1000;
        bench.counters["cpu_percent"] = 100 * (CpuSeconds() - before) / seconds;
        bench.counters["old_points"] = recording.Presenter().Run().OldPoints();
    }
}
BENCHMARK(Recording_RealTime)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

/// Points as fast as they come, run after run, each kept in its journal: the memory stays. KELVO_SOAK frames.
void Recording_Memory(benchmark::State& bench) {
    Scratch scratch;
    AppState state;
    FillState(state, fs::is_directory("/dev/shm") ? "/dev/shm/kelvo-recording-bench/" : scratch.folder);
    const auto frames = static_cast<long>(Wanted("KELVO_SOAK", 20000));
    RecordingRun run(state, FreshFrames);
    RecordingKeeper keeper(state.JournalPath);
    DisplayList graph;
    long before = 0;
    for (auto _ : bench) {
        for (long frame = 0; frame < frames; ++frame) {
            if (frame % 201 == 0) {
                run.Begin(RecordingKind::Ph, LongPlan());
                keeper.Begin(RecordingKind::Ph, {}, {}, "head\r\n");
                SetTiles(run, {0, 14}, graph);
            }
            state.Reading[0] = static_cast<float>(frame % 180);
            run.Sample({});
            keeper.Add(RecordingRow(state, run.Points().back()));
            DrawRecordingPoint(run, {0, 14}, run.Taken() - 1, graph);
            if (frame == frames / 20) before = ResidentKib();
        }
        keeper.Done(RecordingKeeper::End::Saved);
    }
    fs::remove_all("/dev/shm/kelvo-recording-bench/");
    bench.counters["frames"] = static_cast<double>(frames);
    bench.counters["kib_before"] = static_cast<double>(before);
    bench.counters["kib_after"] = static_cast<double>(ResidentKib());
}
BENCHMARK(Recording_Memory)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
}  // namespace kelvo
