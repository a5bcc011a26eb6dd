#include <benchmark/benchmark.h>
#include <sys/resource.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QThread>
#include <filesystem>
#include <fstream>

#include "app/AppState.h"
#include "core/Dialogs.h"
#include "devices/LinkQt.h"
#include "devices/QtClock.h"
#include "devices/QtDialogs.h"
#include "link/Averaging.h"
#include "link/Frame.h"
#include "link/LinkStatusLabel.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

const std::array<std::uint8_t, FrameBytes> Frame = {'+', '1', '2', '3', '4', '\t', '-', '0', '5', '6', '7', '\t',
                                                    '+', '0', '0', '2', '5', '\t', '+', '7', '4', '5', '8', 0x04};

void Decode_Frame(benchmark::State& state) {
    std::array<float, 5> reading{};
    for (auto _ : state) {
        DecodeFrame(Frame, reading);
        benchmark::DoNotOptimize(reading);
    }
}
BENCHMARK(Decode_Frame);

void Average_Frame(benchmark::State& state) {
    ReadingAverage average;
    average.Resize(static_cast<int>(state.range(0)));
    const std::array<float, 5> reading = {123.4f, 745.8f, -56.7f, 745.8f, 0};
    for (auto _ : state) {
        average.ReadChannels(reading, 0, 3);
        average.ReadTick = 1;
        benchmark::DoNotOptimize(average.AvgReading);
    }
}
BENCHMARK(Average_Frame)->Arg(1)->Arg(10)->Arg(100);

/// Counts boxes instead of showing them.
class CountedPrompts : public Prompts {
 public:
    long messages = 0;
    void Message(const std::string&, const std::string&, Icon) override { ++messages; }
    bool Ask(const std::string&, bool, const std::string&) override { return false; }
    bool AskToSave(const std::string&, const std::string&) override { return true; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

/// The link with the software interface in a process of its own, over a real pseudo-terminal.
class Line {
 public:
    explicit Line(const QStringList& options = {}) {
        simulator.setProgram(QCoreApplication::applicationDirPath() + "/kelvo-simulator");
        simulator.setArguments(QStringList{"--link", QString::fromStdString(folder + "ports/COM1"), "--until-eof"} +
                               options);
        simulator.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        simulator.start();
        if (!simulator.waitForReadyRead(5000)) throw std::runtime_error("the simulator does not start");
    }
    ~Line() {
        linkQt.GetLink().StopLink();
        simulator.closeWriteChannel();
        simulator.waitForFinished(5000);
        fs::remove_all(folder);
    }
    void Execute(const char* line) {
        simulator.write(line);
        simulator.write("\n");
        simulator.waitForBytesWritten(1000);
    }

    const std::string folder = (fs::temp_directory_path() / ("kelvo-bench-" + std::to_string(getpid()) + "/")).string();
    QProcess simulator;
    AppState state;
    CountedPrompts prompts;
    QtClock clock;
    LinkQt linkQt{state, prompts, clock, PortNames(folder + "ports/", "/nonexistent/"), folder + "CommPort.ini"};
    Link& link = linkQt.GetLink();
};

long ResidentKib() {
    long pages = 0;
    std::ifstream("/proc/self/statm") >> pages >> pages;
    return pages * (sysconf(_SC_PAGESIZE) / 1024);
}

long OpenHandles() {
    return static_cast<long>(std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator()));
}

double CpuSeconds() {
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    return seconds(used.ru_utime) + seconds(used.ru_stime);
}

/// An environment's number, to run a benchmark longer than every day.
double Wanted(const char* variable, double otherwise) {
    bool isNumber = false;
    const double value = qEnvironmentVariable(variable).toDouble(&isNumber);
    return isNumber ? value : otherwise;
}

/// From the request to the decoded reading, over the line and through the event loop; a screen shows it at its next
/// tick. The interface's own part is in it, and a line of 9600 bit/s would add 27 ms.
void Link_RequestToReading(benchmark::State& state) {
    Line line({"--latency", "0"});
    line.link.StartLink();
    for (auto _ : state) {
        line.link.IntervalTick();
        while (line.link.TransferBusy)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    state.counters["good"] = static_cast<double>(line.link.Counts().good);
}
BENCHMARK(Link_RequestToReading)->Unit(benchmark::kMicrosecond)->UseRealTime();

/// Share of one core that the program takes while it polls once a second and shows the light; KELVO_POLL_SECONDS.
void Link_PollingShare(benchmark::State& state) {
    Line line;
    LinkStatusLabel light(&line.link);
    light.show();
    line.link.StartLink();
    const double seconds = Wanted("KELVO_POLL_SECONDS", 10);
    for (auto _ : state) {
        QElapsedTimer timer;
        timer.start();
        const double before = CpuSeconds();
        while (static_cast<double>(timer.elapsed()) < seconds * 1000)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        state.counters["cpu_percent"] = 100 * (CpuSeconds() - before) / seconds;
    }
    state.counters["frames"] = static_cast<double>(line.link.Counts().good);
}
BENCHMARK(Link_PollingShare)->Iterations(1)->Unit(benchmark::kSecond);

/// Random faults through the real port path as fast as it goes, and the line pulled out now and then; KELVO_SOAK
/// frames. Every good reading must be the true one or stem from bytes that end like a frame.
void Link_Soak(benchmark::State& state) {
    constexpr int TimeoutMs = 10, FramesBetweenDrops = 5000;
    const auto frames = static_cast<std::uint64_t>(Wanted("KELVO_SOAK", 20000));
    Line line({"--latency", "0", "--seed", "7"});
    line.Execute("electrode 1 noise 0");
    line.Execute("fault random 0.02");
    line.linkQt.SetTimeoutMs(TimeoutMs);
    long mismatches = 0, odd = 0, drops = 0;
    line.linkQt.Failed = [&](const RuntimeError&) {
        ++mismatches;
        line.link.StartLink();
    };
    line.link.FrameTaken = [&] { odd += line.state.Reading[0] != 54.6f; };
    const Link& link = line.link;
    long residentBefore = 0, handlesBefore = 0;
    for (auto _ : state) {
        line.link.StartLink();
        std::uint64_t nextDrop = FramesBetweenDrops;
        for (std::uint64_t now = 0; now < frames; now = link.Counts().requests) {
            if (now >= nextDrop) {
                nextDrop += FramesBetweenDrops;
                line.Execute("drop");
                line.Execute("restore");
                ++drops;
            }
            if (residentBefore == 0 && now > frames / 20 && link.Status().kind == LinkStatus::Kind::Live) {
                residentBefore = ResidentKib();
                handlesBefore = OpenHandles();
            }
            line.link.IntervalTick();
            if (!link.TransferBusy) QThread::usleep(200);
            QCoreApplication::processEvents();
            while (link.TransferBusy)
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            line.simulator.readAll();
        }
    }
    const LinkCounts& counts = link.Counts();
    state.counters["requests"] = static_cast<double>(counts.requests);
    state.counters["good"] = static_cast<double>(counts.good);
    state.counters["odd"] = static_cast<double>(odd);
    state.counters["bad_end"] = static_cast<double>(counts.unfinished);
    state.counters["mismatch"] = static_cast<double>(mismatches);
    state.counters["timed_out"] = static_cast<double>(counts.timedOut);
    state.counters["drops"] = static_cast<double>(drops);
    state.counters["port_lost"] = static_cast<double>(counts.lost);
    state.counters["kib_before"] = static_cast<double>(residentBefore);
    state.counters["kib_after"] = static_cast<double>(ResidentKib());
    state.counters["handles_before"] = static_cast<double>(handlesBefore);
    state.counters["handles_after"] = static_cast<double>(OpenHandles());
}
BENCHMARK(Link_Soak)->Iterations(1)->Unit(benchmark::kSecond)->UseRealTime();

}  // namespace
}  // namespace kelvo
