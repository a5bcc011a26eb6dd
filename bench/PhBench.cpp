#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <fstream>

#include "app/AppState.h"
#include "app/Screens.h"
#include "core/Dialogs.h"
#include "devices/QtClock.h"
#include "kit/AppContext.h"
#include "kit/Screen.h"
#include "kit/ScreenManager.h"
#include "ph/LiveDisplay.h"
#include "ph/PhValue.h"
#include "tables/TablePresenter.h"

namespace kelvo {
namespace {

const BufferTable FourBuffers = {{}, {0, 2, 295}, {0, 4, 177}, {0, 7, 0}, {0, 10, -177}};

/// Boxes that nobody answers; none is expected.
class SilentPrompts : public Prompts {
 public:
    void Message(const std::string&, const std::string&, Icon) override {}
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return false; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

class NoFiles : public FileChooser {
 public:
    std::optional<std::string> Open(const FileRequest&) override { return {}; }
    std::optional<std::string> Save(const FileRequest&) override { return {}; }
};

/// Two electrodes with four buffers and two sensors, and what a screen needs around them.
struct Bench {
    Bench() {
        state.pHMode = -1;
        state.Channel = {1, 0, 1, 1, 1};
        state.BufferCount = {8, 4, 4};
        state.Buffers1 = state.Buffers2 = FourBuffers;
        state.PhCaliTemp = {0, 25, 25};
    }
    /// The next frame of electrodes and sensors that move.
    void Frame() {
        ++frame;
        const auto wobble = static_cast<float>(frame % 100) / 10;
        state.Reading = {100 + wobble, 745.8f, -50 - wobble, 740, 0};
    }

    AppState state;
    SilentPrompts prompts;
    NoFiles files;
    QtClock clock;
    DataTable rows;
    TablePresenter table{state, rows, prompts, files, clock};
    long frame = 0;
};

double CpuSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

double ResidentKib() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return static_cast<double>(pages * (sysconf(_SC_PAGESIZE) / 1024));
}

void Ph_FromMv(benchmark::State& state) {
    float mv = -300;
    for (auto _ : state) {
        benchmark::DoNotOptimize(PhFromMv(FourBuffers, 4, mv));
        mv = mv > 300 ? -300.0f : mv + 0.1f;
    }
}
BENCHMARK(Ph_FromMv);

/// A tick of the live display with two compensated electrodes, without painting.
void Ph_DisplayTick(benchmark::State& state) {
    Bench bench;
    LiveDisplay display(bench.state, bench.prompts, bench.files, bench.clock, nullptr, bench.table);
    display.Load();
    for (const int electrode : {0, 1})
        display.SetAtc(electrode, true);
    for (auto _ : state) {
        bench.Frame();
        display.Tick();
        if (!display.Running()) display.Restart();
    }
}
BENCHMARK(Ph_DisplayTick);

/// 200,000 frames through the display: what it holds must not grow.
void Ph_DisplayFrames(benchmark::State& state) {
    Bench bench;
    LiveDisplay display(bench.state, bench.prompts, bench.files, bench.clock, nullptr, bench.table);
    display.Load();
    for (auto _ : state) {
        double before = 0;
        for (int i = 0; i < 200'000; ++i) {
            if (i == 10'000) before = ResidentKib();
            bench.Frame();
            display.Tick();
            if (!display.Running()) display.Restart();
        }
        state.counters["kib_grown"] = ResidentKib() - before;
    }
}
BENCHMARK(Ph_DisplayFrames)->Iterations(1)->Unit(benchmark::kMillisecond);

/// Share of one core that the display's window takes with two electrodes that move at each tick; KELVO_DISPLAY_SECONDS.
void Ph_DisplayShare(benchmark::State& state) {
    Bench bench;
    ScreenManager screens(bench.state);
    AppContext context{bench.state, bench.prompts, bench.files, bench.clock, screens, bench.table};
    RegisterScreens(context);
    screens.Show(ScreenCode::frmDsply);
    bool isNumber = false;
    const double wanted = qEnvironmentVariable("KELVO_DISPLAY_SECONDS").toDouble(&isNumber);
    const double seconds = isNumber ? wanted : 10;
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const double before = CpuSeconds();
        while (static_cast<double>(timer.elapsed()) < seconds * 1000) {
            bench.Frame();
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        }
        state.counters["cpu_percent"] = 100 * (CpuSeconds() - before) / seconds;
    }
}
BENCHMARK(Ph_DisplayShare)->Iterations(1)->Unit(benchmark::kSecond);

}  // namespace
}  // namespace kelvo
