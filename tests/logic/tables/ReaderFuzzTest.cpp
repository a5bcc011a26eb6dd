// Every reader of a file against inputs that nobody would write: a seeded mutator works on files written by hand.
// A reader may refuse an input with a numbered failure; it may not crash, hang, grow without bound or hold a state
// that its own writer cannot write. The build with sanitizers looks on. KELVO_FUZZ_RUNS sets the inputs a reader.
#include <cmath>
#include <cstdlib>
#include <functional>
#include <random>

#include "addition/MethodFile.h"
#include "app/AppState.h"
#include "calibration/CaliFile.h"
#include "core/Settings.h"
#include "ph/PhCalibrationFile.h"
#include "ph/RecordingRow.h"
#include "tables/DumpFile.h"
#include "tables/TableFixture.h"
#include "text/CodePage.h"

namespace kelvo::test {
namespace {

class Mutator {
 public:
    Mutator(std::uint64_t seed, std::vector<std::string> corpus) : random_(seed), corpus_(std::move(corpus)) {}

    std::string Next() {
        std::string bytes = corpus_[Below(corpus_.size())];
        for (std::size_t edits = 1 + Below(6); edits > 0; --edits)
            Edit(bytes);
        return bytes;
    }
    std::size_t Below(std::size_t n) { return n == 0 ? 0 : static_cast<std::size_t>(random_() % n); }

 private:
    void Edit(std::string& bytes) {
        static const std::vector<std::string> words = {
            "\t",    "\r\n",  "\n", "\r",   ",",        "\"",  "\"\"", " ",      "Slope", "1E39", "-1E-50",
            "99999", "32768", "-1", "1E",   "N/A",      "[",   "]",    "=",      ";",     ".",    "\t\t",
            "0",     "26",    "11", "\xB0", "\x80\x81", "nan", "inf",  "-32769", "1e308"};
        const std::size_t at = Below(bytes.size() + 1);
        const std::size_t length = Below(1 + std::min<std::size_t>(bytes.size() - at, 24));
        switch (Below(9)) {
            case 0: bytes.insert(at, words[Below(words.size())]); break;
            case 1: bytes.replace(at, length, words[Below(words.size())]); break;
            case 2: bytes.erase(at, length); break;
            case 3: bytes.insert(Below(bytes.size() + 1), bytes.substr(at, length)); break;
            case 4: bytes.resize(at); break;
            case 5: bytes.insert(at, 1, static_cast<char>(Below(256))); break;
            case 6: bytes.replace(at, std::min<std::size_t>(length, 1), 1, static_cast<char>(Below(256))); break;
            case 7: bytes.insert(at, 300, 'x'); break;
            default: {
                const std::string& other = corpus_[Below(corpus_.size())];
                bytes = bytes.substr(0, at) + other.substr(Below(other.size() + 1));
            }
        }
    }

    std::mt19937_64 random_;
    std::vector<std::string> corpus_;
};

long Runs() {
    const char* asked = std::getenv("KELVO_FUZZ_RUNS");
    return asked == nullptr ? 2000 : std::max(1L, std::atol(asked));
}

/// Feeds a reader; what is not a numbered failure ends the test. Some inputs must be read to their end.
void Feed(const char* name, std::uint64_t seed, std::vector<std::string> corpus,
          const std::function<void(const std::string&, Mutator&)>& read) {
    Mutator mutator(seed, std::move(corpus));
    const long runs = Runs();
    long whole = 0;
    for (long i = 0; i < runs && !testing::Test::HasFailure(); ++i) {
        const std::string bytes = mutator.Next();
        SCOPED_TRACE(testing::Message() << "input " << i << ": " << testing::PrintToString(bytes));
        try {
            read(bytes, mutator);
            ++whole;
        } catch (const RuntimeError& refused) {
            EXPECT_NE(refused.Code(), 0);
        }
    }
    std::printf("%s: %ld inputs, %ld read to the end\n", name, runs, whole);
    EXPECT_GT(whole, 0);
}

TEST(ReaderFuzz, Tables) {
    const std::vector<std::string> ise = {Golden("SAMPLES.TAB"), Golden("ONEPOINT.TAB"), Golden("ADDITION.SDT")};
    for (const auto form : {TableHeadForm::Ise, TableHeadForm::Ph}) {
        const int lastPass = form == TableHeadForm::Ise ? 5 : 6;
        const auto corpus = form == TableHeadForm::Ise ? ise : std::vector{Golden("LIVE.PHT"), Golden("RECORD.PHC")};
        Feed("tables", 41, corpus, [&](const std::string& bytes, Mutator&) {
            DataTable table, again;
            table.SetHeads({"a", "b", "c", "d", "e", "f", "g", "h"});
            ReadTable(table, bytes, form, lastPass);
            ASSERT_GE(table.Rows(), 1);
            for (const std::string& text : table.txtData)
                ASSERT_TRUE(FitsCodePage(text));
            std::string written = ToCodePage(TableHeadLines(AppState(), table, form, lastPass));
            for (int row = 0; row < table.Rows(); ++row)
                written += ToCodePage(table.RowLine(row)) + "\r\n";
            ReadTable(again, written, form, lastPass);
            ASSERT_GE(again.Rows(), table.Rows());
        });
    }
}

TEST(ReaderFuzz, MethodDumps) {
    Feed(".SMP and .STD", 43, {Golden("METHOD.STD"), Golden("METHOD.SMP")}, [](const std::string& bytes, Mutator&) {
        MethodDump dump, again;
        ReadMethodDump(dump, bytes);
        ASSERT_GE(dump.Ion, NoIon);
        ASSERT_LT(dump.Ion, IonRows);
        ReadMethodDump(again, MethodDumpBytes(dump));
        ASSERT_EQ(again.Ion, dump.Ion);
        ASSERT_EQ(again.CommentHeight, dump.CommentHeight);
    });
}

TEST(ReaderFuzz, RecordingDumps) {
    Feed(".PH", 44, {Golden("RECORD.PH")}, [](const std::string& bytes, Mutator&) {
        const std::string written = RecordingDumpBytes(ReadRecordingDump(bytes));
        ASSERT_EQ(RecordingDumpBytes(ReadRecordingDump(written)), written);
    });
}

TEST(ReaderFuzz, RecordedRows) {
    const std::vector<std::string> rows = {"1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t21.5\t70.7",
                                           "1\tF - 0\t09:05:07\t-120.50\t10\t5.26E-04\t25.0\t77.0\tN/A"};
    for (const bool ph : {true, false}) {
        AppState state;
        state.pHMode = ph ? -1 : 0;
        state.IonIndex = 10;
        state.Channel = {1, 1, 1, 1, 1};
        Feed("recorded rows", 48, rows, [&](const std::string& bytes, Mutator&) {
            const RecordingCells cells = ReadRecordingRow(ph, bytes, state.Ions);
            const RecordingCells again = ReadRecordingRow(ph, RecordingRow(state, cells.point), state.Ions);
            for (std::size_t k = 0; k < (ph ? 2u : 1u); ++k)
                ASSERT_EQ(std::isfinite(again.point.mv[k]), std::isfinite(cells.point.mv[k]));
        });
    }
}

TEST(ReaderFuzz, IseCalibrations) {
    const std::string two =
        "0\r\n2\r\n10\r\n2\r\n-4\r\n-3\r\n-120.5\r\n-61.5\r\n1.9\r\n19\r\n1E-04\r\n1E-03\r\n\"25\"\r\n"
        "\"24/11/2026 08:30\"\r\n\"Ann, Lee\"\r\n\"Ag/AgCl\"\r\n\"R7\"\r\n\"F123\"\r\n";
    const std::string one =
        "0\r\n2\r\n10\r\n1\r\n-4\r\n-120.5\r\n1.9\r\n1E-04\r\n\"25\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n\"\"\r\n-58."
        "5\r\n";
    Feed(".ISE", 45, {two, one}, [](const std::string& bytes, Mutator&) {
        AppState state;
        ReadIse(state, bytes);
        const auto points = static_cast<std::size_t>(state.CaliPoints);
        ASSERT_LE(points, 10u);
        for (const auto* column : {&state.CaliE, &state.CaliLogC, &state.CaliPpm, &state.CaliMolar})
            ASSERT_EQ(column->size(), points + 1);
        state.CaliTemp = state.FileTemp;
        AppState again;
        ReadIse(again, IseBytes(state, {2026, 11, 24, 9, 5, 0}));
        ASSERT_TRUE(again.CaliE == state.CaliE && again.CaliMolar == state.CaliMolar);
        ASSERT_EQ(again.FileTemp, state.FileTemp);
    });
}

TEST(ReaderFuzz, PhCalibrations) {
    const std::string both =
        "\"23/11/2026 16:00\"\r\n\" 25\"\r\n\"PH-1\"\r\n\" 2\"\r\n\"\"\r\n\" 0\"\r\n\"PH-2\"\r\n\" 1\"\r\n"
        "\" 7\"\r\n\" 0\"\r\n\" 4\"\r\n\" 177\"\r\n\" 7\"\r\n\"-3.5\"\r\n";
    const std::string none = "\"\"\r\n\" 25\"\r\n\"\"\r\n\" 0\"\r\n\"\"\r\n\" 25\"\r\n\"\"\r\n\" 0\"\r\n";
    Feed(".CLI", 46, {both, none}, [](const std::string& bytes, Mutator&) {
        AppState state;
        ReadPh(state, bytes);
        // The file carries the serial numbers of the settings.
        state.ElectrodeNum = state.FileElectrodeNum;
        const std::string written = PhBytes(state);
        AppState again;
        ReadPh(again, written);
        again.ElectrodeNum = again.FileElectrodeNum;
        ASSERT_EQ(PhBytes(again), written);
    });
}

TEST(ReaderFuzz, Settings) {
    // In memory where there is one: every write of a setting is flushed to the disk.
    const bool memory = ::access("/dev/shm", W_OK) == 0;
    const ScratchFolder folder(memory ? "/dev/shm" : std::filesystem::temp_directory_path());
    const std::string file = folder / "KELVO.ini";
    const std::string ini =
        "[Hareware]\r\nOperator=Ann Lee\r\nIonIndex=10\r\n; note\r\n\r\n[Setting]\r\nDefaultFile=\"FIRST.CLI\"\r\n"
        "[Latest Calibration Value]\r\nV0=-0.4\r\nZ0 = 0\r\n";
    const std::pair<const char*, const char*> keys[] = {
        {"Hareware", "Operator"}, {"Setting", "DefaultFile"}, {"Latest Calibration Value", "Z0"}, {"Setting", "New"}};
    Feed("settings", 47, {ini, "Operator=x", ""}, [&](const std::string& bytes, Mutator& mutator) {
        folder.Put("KELVO.ini", bytes);
        const auto& [section, key] = keys[mutator.Below(std::size(keys))];
        ASSERT_TRUE(FitsCodePage(ReadSetting(section, key, file)));
        const std::string value = "v" + std::to_string(mutator.Below(1000));
        if (!WriteSetting(section, key, value, file)) {
            ASSERT_EQ(folder.Get("KELVO.ini"), bytes);
            return;
        }
        ASSERT_EQ(ReadSetting(section, key, file), value);
    });
}

}  // namespace
}  // namespace kelvo::test
