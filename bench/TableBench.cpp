// A table of 10,000 to 1,000,000 rows × 9 columns, opened, saved, scrolled, exported and printed; beside each the least
// that it could take, that is the same bytes by the plainest means: std::getline and a split at TAB into strings, and
// one buffered write.
#include <benchmark/benchmark.h>
#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <QApplication>
#include <QHeaderView>
#include <QScrollBar>
#include <QTableView>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "app/AppState.h"
#include "core/Clock.h"
#include "core/Dialogs.h"
#include "devices/PageWriterQt.h"
#include "tables/Reports.h"
#include "tables/TableExport.h"
#include "tables/TableFile.h"
#include "tables/TableGrids.h"
#include "tables/frmQSaveModel.h"

namespace {

using namespace kelvo;

class Silent : public Prompts {
 public:
    void Message(const std::string& text, const std::string&, Icon) override {
        std::fprintf(stderr, "%s\n", text.c_str());
        std::abort();
    }
    bool Ask(const std::string&, bool, const std::string&) override { return true; }
    bool AskToSave(const std::string&, const std::string&) override { return true; }
    std::optional<std::string> Input(const std::string&, const std::string&, const std::string&) override { return {}; }
};

class OneFile : public FileChooser {
 public:
    explicit OneFile(std::string name) : name_(std::move(name)) {}
    std::optional<std::string> Open(const FileRequest&) override { return name_; }
    std::optional<std::string> Save(const FileRequest&) override { return name_; }

 private:
    std::string name_;
};

class NoClock : public Clock {
 public:
    DateTime Now() const override { return {2026, 11, 24, 9, 5, 0}; }
    double SteadySeconds() const override { return 0; }
};

/// Folder of the benchmark's files, gone at the end.
const std::string& Folder() {
    struct Owner {
        std::string path =
            (std::filesystem::temp_directory_path() / ("kelvo-bench-" + std::to_string(getpid()))).string() + "/";
        Owner() { std::filesystem::create_directories(path); }
        ~Owner() { std::filesystem::remove_all(path); }
    };
    static const Owner owner;
    return owner.path;
}

/// A table file of that many samples, made once.
const std::string& FileOf(long rows) {
    static std::map<long, std::string> made;
    std::string& name = made[rows];
    if (!name.empty()) return name;
    name = Folder() + "T" + std::to_string(rows) + ".TAB";
    AppState state;
    DataTable table;
    TableHead_ISE_Continuous(state, table);
    FillIseGrid(state, table, NoClock());
    std::ofstream out(name, std::ios::binary);
    out << TableHeadLines(state, table, TableHeadForm::Ise, 5) << "\tSample Number\tTime\tmV\tppm\tmol/L\tC\tF\tpH\r\n";
    for (long i = 1; i <= rows; ++i)
        out << ' ' << i << "\tSample " << i << "\t09:" << i % 60 << "\t-" << i % 1000 << ".5\t" << i % 977
            << ".25\t1.65E-4\t25\t77.0\t7.5\r\n";
    return name;
}

/// Most memory that the process has held since the last call, in bytes above `before`.
class Peak {
 public:
    Peak() {
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        before_ = Field("VmRSS:");
    }
    double Bytes() const { return Field("VmHWM:") - before_; }

 private:
    static double Field(const std::string& name) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;) {
            double kilobytes = 0;
            if (word == name && status >> kilobytes) return kilobytes * 1024;
        }
        return 0;
    }
    double before_;
};

struct Opened {
    AppState state;
    DataTable table;
    Silent prompts;
    explicit Opened(long rows) {
        FillIseGrid(state, table, NoClock());
        OneFile file(FileOf(rows));
        OpenTableFile(state, table, prompts, file);
    }
};

void Open(benchmark::State& bench) {
    const std::string& name = FileOf(bench.range(0));
    const auto size = static_cast<double>(std::filesystem::file_size(name));
    double peak = 0, held = 0;
    for (auto _ : bench) {
        const Peak most;
        const auto before = mallinfo2();
        auto opened = std::make_unique<Opened>(bench.range(0));
        const auto after = mallinfo2();
        peak = most.Bytes();
        held =
            static_cast<double>(after.uordblks + after.hblkhd) - static_cast<double>(before.uordblks + before.hblkhd);
        if (opened->table.Rows() != bench.range(0) + 1) bench.SkipWithError("rows are missing");
        bench.PauseTiming();
        opened.reset();
        bench.ResumeTiming();
    }
    bench.counters["held_per_file_byte"] = held / size;
    bench.counters["peak_per_file_byte"] = peak / size;
}
BENCHMARK(Open)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

class Telling : public Silent {
 public:
    int told = 0;
    void Message(const std::string&, const std::string&, Icon) override { ++told; }
};

/// What a power cut leaves of a table, and one line without an end: told in linear time and memory.
void OpenBroken(benchmark::State& bench, char filling) {
    const auto size = static_cast<std::size_t>(bench.range(0)) << 20;
    OneFile file(Folder() + "BROKEN.TAB");
    std::ofstream(Folder() + "BROKEN.TAB", std::ios::binary) << std::string(size, filling);
    double peak = 0;
    for (auto _ : bench) {
        const Peak most;
        AppState state;
        DataTable table;
        Telling prompts;
        OpenTableFile(state, table, prompts, file);
        peak = most.Bytes();
        if (prompts.told != 1) bench.SkipWithError("not told once");
    }
    bench.counters["peak_per_file_byte"] = peak / static_cast<double>(size);
}
BENCHMARK_CAPTURE(OpenBroken, Zeros, '\0')->Arg(1)->Arg(5)->Arg(20)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(OpenBroken, OneLine, 'x')->Arg(1)->Arg(20)->Unit(benchmark::kMillisecond)->UseRealTime();

void OpenFloor(benchmark::State& bench) {
    const std::string& name = FileOf(bench.range(0));
    for (auto _ : bench) {
        std::vector<std::vector<std::string>> rows;
        std::ifstream in(name, std::ios::binary);
        for (std::string line; std::getline(in, line);) {
            std::vector<std::string> cells;
            std::size_t start = 0;
            for (std::size_t tab = line.find('\t'); tab != std::string::npos; tab = line.find('\t', start)) {
                cells.push_back(line.substr(start, tab - start));
                start = tab + 1;
            }
            cells.push_back(line.substr(start));
            rows.push_back(std::move(cells));
        }
        benchmark::DoNotOptimize(rows.data());
        bench.PauseTiming();
        rows = {};
        bench.ResumeTiming();
    }
}
BENCHMARK(OpenFloor)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

void Save(benchmark::State& bench) {
    Opened opened(bench.range(0));
    opened.table.AddItem({}, opened.table.Rows());
    opened.state.TableFile = Folder() + "SAVED.TAB";
    for (auto _ : bench)
        if (RewriteTableFile(opened.state, opened.table, opened.prompts) != SaveOutcome::Saved)
            bench.SkipWithError("not saved");
}
BENCHMARK(Save)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// Rows that stand as strings, one buffered write; `flushed` waits for the disk as every save does.
void WriteRows(benchmark::State& bench, bool flushed) {
    Opened opened(bench.range(0));
    std::vector<std::string> rows;
    for (int row = 0; row < opened.table.Rows(); ++row)
        rows.push_back(opened.table.RowLine(row));
    const std::string name = Folder() + "LEAST.TAB";
    for (auto _ : bench) {
        std::FILE* out = std::fopen(name.c_str(), "wb");
        for (const std::string& row : rows) {
            std::fwrite(row.data(), 1, row.size(), out);
            std::fwrite("\r\n", 1, 2, out);
        }
        std::fflush(out);
        if (flushed) fsync(fileno(out));
        std::fclose(out);
    }
}
void SaveFloor(benchmark::State& bench) {
    WriteRows(bench, false);
}
void SaveFloorFlushed(benchmark::State& bench) {
    WriteRows(bench, true);
}
BENCHMARK(SaveFloor)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(SaveFloorFlushed)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// One page further and painted.
void Scroll(benchmark::State& bench) {
    Opened opened(bench.range(0));
    TableModel model(opened.table);
    QTableView view;
    view.setModel(&model);
    view.verticalHeader()->hide();
    view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    view.resize(1200, 800);
    view.show();
    QApplication::processEvents();
    QScrollBar* bar = view.verticalScrollBar();
    QPixmap page(view.size());
    for (auto _ : bench) {
        bar->setValue(bar->value() == bar->maximum() ? 0 : bar->value() + bar->pageStep());
        view.render(&page);
    }
}
BENCHMARK(Scroll)->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond)->UseRealTime();

/// The longest time in which nothing that waits is done: between two calls, before the first and after the last.
class Breath : public Progress {
 public:
    bool At(int, int) override {
        Take();
        return true;
    }
    void Take() {
        const auto now = std::chrono::steady_clock::now();
        longest_ = std::max(longest_, std::chrono::duration<double, std::milli>(now - last_).count());
        last_ = now;
    }
    double Longest() const { return longest_; }

 private:
    std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
    double longest_ = 0;
};

void Export(benchmark::State& bench, const char* extension) {
    Opened opened(bench.range(0));
    const std::string name = Folder() + "EXPORT" + extension;
    OneFile file(name);
    PrintingQt printing(opened.state, opened.prompts, file);
    printing.pageSize = QPageSize(QPageSize::A4);
    const NoClock clock;
    double peak = 0, longest = 0;
    for (auto _ : bench) {
        const Peak most;
        Breath breath;
        if (std::string(extension) == ".csv")
            ExportCsv(opened.state, opened.table, opened.prompts, file, breath);
        else if (std::string(extension) == ".xlsx")
            ExportXlsx(opened.state, opened.table, opened.prompts, file, breath);
        else
            PrintTableDocument(opened.state, opened.table, false, {printing, opened.prompts, clock, breath});
        breath.Take();
        longest = std::max(longest, breath.Longest());
        peak = most.Bytes();
    }
    bench.counters["peak_megabytes"] = peak / (1024 * 1024);
    bench.counters["longest_gap_ms"] = longest;
}
BENCHMARK_CAPTURE(Export, Csv, ".csv")->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Export, Xlsx, ".xlsx")->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK_CAPTURE(Export, Pdf, ".pdf")->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond)->UseRealTime();

}  // namespace
