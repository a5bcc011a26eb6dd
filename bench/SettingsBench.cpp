#include <benchmark/benchmark.h>

#include <cstddef>
#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include <unistd.h>

#include "core/Settings.h"

namespace kelvo {
namespace {

constexpr std::size_t NoiseBytes = 10'000'000;

/// A settings file as a laboratory has it after a year.
std::string Usual() {
    std::string text = "[Hareware]\r\n";
    for (const char* line : {"PortSetting= 0",
                             "IonIndex=5",
                             "CustomIon=Custom",
                             "CustomWeight= 100",
                             "DateFormat=0",
                             "Operator=J. Miller",
                             "RefType=Double junction Ag/AgCl",
                             "RefNum=R-1182",
                             "ISENum=E-2204",
                             "ph1Num=P-0091",
                             "ph2Num=P-0092",
                             "ISAB=None",
                             "NetworkPrinter= 0",
                             "ASD= 1",
                             "ASDavg= 10",
                             "Waittime=5",
                             "threshold= 0.02",
                             "Preset= 30",
                             "Channel0=1",
                             "Channel1=1",
                             "Channel2=1",
                             "Channel3=0",
                             "Channel4=0",
                             "Temperature1=25",
                             "Temperature2=25"})
        text.append(line).append("\r\n");
    text += "\r\n[Setting]\r\nLogC=1\r\nmV=2\r\nIon=5\r\nCaliPtr=5\r\nDataMode=0\r\n";
    text += "\r\n[Latest Calibration Value]\r\nDefaultFile=DEFAULT.CLI\r\nV0=0\r\nV1=0\r\nZ0=7\r\nZ1=7\r\n";
    text += "LastCaliFile=/home/lab/kelvo/MONDAY.CLI\r\n";
    return text;
}

/// The same behind lines of any bytes: what a damaged disk might leave.
std::string Noisy() {
    std::mt19937 random(3);
    std::string text(NoiseBytes, ' ');
    for (char& c : text)
        c = static_cast<char>(random());
    return text + "\r\n" + Usual();
}

/// A file of its own, gone with the benchmark.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::string& bytes)
        : name_(std::filesystem::temp_directory_path() / ("kelvo-bench-" + std::to_string(::getpid()) + ".ini")) {
        std::ofstream(name_, std::ios::binary) << bytes;
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() { std::filesystem::remove(name_); }
    std::string Name() const { return name_.string(); }

 private:
    std::filesystem::path name_;
};

void ReadLastKey(benchmark::State& state, std::string (*content)()) {
    const TemporaryFile file(content());
    const std::string name = file.Name();
    for (auto _ : state)
        benchmark::DoNotOptimize(ReadSetting("Latest Calibration Value", "LastCaliFile", name));
}
BENCHMARK_CAPTURE(ReadLastKey, usual, Usual);
BENCHMARK_CAPTURE(ReadLastKey, noisy, Noisy)->Unit(benchmark::kMillisecond);

/// All keys that start-up asks for, which is what the analyst waits for.
void ReadForStartUp(benchmark::State& state, std::string (*content)()) {
    constexpr const char* Keys[] = {"PortSetting", "IonIndex",       "CustomIon", "CustomWeight", "DateFormat",
                                    "Operator",    "RefType",        "RefNum",    "ISENum",       "ph1Num",
                                    "ph2Num",      "ISAB",           "ASD",       "ASDavg",       "Waittime",
                                    "Preset",      "NetworkPrinter", "threshold", "Channel0",     "Channel1",
                                    "Channel2",    "Channel3",       "Channel4",  "Temperature1", "Temperature2"};
    const TemporaryFile file(content());
    const std::string name = file.Name();
    for (auto _ : state) {
        for (const char* key : Keys)
            benchmark::DoNotOptimize(ReadSetting("Hareware", key, name));
    }
}
BENCHMARK_CAPTURE(ReadForStartUp, usual, Usual)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(ReadForStartUp, noisy, Noisy)->Unit(benchmark::kMillisecond);

/// With the flush to the disk that a write promises.
void WriteOneKey(benchmark::State& state, std::string (*content)()) {
    const TemporaryFile file(content());
    const std::string name = file.Name();
    int turn = 0;
    for (auto _ : state) {
        if (!WriteSetting("Setting", "CaliPtr", ++turn % 2 == 0 ? "5" : "6", name)) state.SkipWithError("not written");
    }
}
BENCHMARK_CAPTURE(WriteOneKey, usual, Usual)->Unit(benchmark::kMicrosecond);
BENCHMARK_CAPTURE(WriteOneKey, noisy, Noisy)->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace kelvo
