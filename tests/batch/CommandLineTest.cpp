// The command line as a script meets it: exit codes, messages, what is written where, what is never touched.
#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <random>
#include <regex>

#include "addition/MethodFile.h"
#include "app/AppState.h"
#include "batch/BatchFixture.h"
#include "batch/Commands.h"
#include "batch/Report.h"
#include "calibration/CaliFile.h"
#include "calibration/CaliTestPoints.h"
#include "core/FileKinds.h"
#include "core/Settings.h"
#include "core/Startup.h"
#include "ph/PhCalibrationFile.h"
#include "ph/RecordingJournal.h"
#include "support/SourceDir.h"
#include "tables/DumpFile.h"
#include "tables/TableFixture.h"
#include "text/Files.h"

namespace kelvo::test {
namespace {

/// A folder with a file of every kind.
struct Files {
    Files() {
        AppState state = FluorideState();
        state.CaliTemp = "25";
        folder.Put("F.ISE", IseBytes(state, {}));
        // Residuals that change neither slope nor intercept.
        for (const std::size_t i : {1, 2, 3, 4})
            state.CaliE[i] += i == 1 || i == 4 ? 0.1f : -0.1f;
        folder.Put("S.ISE", IseBytes(state, {}));
        state.IonIndex = CustomIonRow;
        folder.Put("OWN.ISE", IseBytes(state, {}));
        SetPoints(state, {{-4, 100}, {-3, 100}});
        folder.Put("FLAT.ISE", IseBytes(state, {}));
        state.IonIndex = Fluoride;
        SetPoints(state, {{-3, 50}});
        state.CaliSlope = -58;
        folder.Put("ONE.ISE", IseBytes(state, {}));
        SetPoints(state, {{-4, 110, 1.9f, 1E-4f}, {-3, 52, 19, 1E-3f}});
        folder.Put("TWO.ISE", IseBytes(state, {}));
        state.BufferCount = {5, 2, 3};
        state.Buffers1 = {{0, 0, 0}, {0, 7, 1}, {0, 4, 175}};
        state.Buffers2 = {{0, 0, 0}, {0, 9, -110}, {0, 7, 0}, {0, 4, 170}};
        state.PhCaliTemp = {0, 25, 20};
        folder.Put("D.CLI", PhBytes(state));
        folder.Put("T.TAB", Golden("SAMPLES.TAB"));
        for (const char* name : {"A.SMP", "A.STD"}) {
            MethodDump dump;
            dump.Ion = Fluoride;
            dump.Comment = "Good \"measurement\"";
            dump.Box[16] = "17.48";
            folder.Put(name, MethodDumpBytes(dump));
        }
        RecordingDump dump;
        dump.PointCount = 2, dump.ChannelCount = 2;
        dump.Recording = {{}, {7.5f, 1}, {7.25f, -0.5f}};
        folder.Put("N.PH", RecordingDumpBytes(dump));
        folder.Put("recording-ise-20261125-213000-4711.journal", Golden("RECORD.TAB"));
        folder.Put("KELVO.ini", "[Hareware]\r\nIonIndex=25\r\nCustomIon=Zn\r\nCustomWeight=65.38\r\n");
        folder.Put("HELP.TXT", "one\r\n\r\ntwo \xB5\r\n");
        folder.Put("CONTROLS.TXT",
                   "a\x7f[2J\x9D"
                   "b\r\n");
        folder.Put("BINARY.TXT", "a\x1B[2Jb\r\n");
        folder.Put("UTF16.TXT", "\xFE\xFFx");
        folder.Put("MV.txt", "30\r\n");
        std::filesystem::create_directory(folder / "DIR.ISE");
        folder.Put("P.csv", "ppm,mV\n1,120\n10,62\n100,4\n");
        folder.Put("CURVED.csv", "ppm,mV\n.001,180\n.01,179\n.1,170\n1,120\n10,62\n100,4\n");
        folder.Put("P.PHC", "Electrode 1 :\r\nCalibration date/time:\t1\r\n");
    }
    ScratchFolder folder;
};

TEST(CommandLine, EveryWayOutHasItsCodeAndItsWords) {
    using namespace std::string_literals;
    const Files files;
    // the words, the input, the code; parts of what is written, an empty text standing for nothing at all
    const std::tuple<const char*, std::string, int, std::string, std::string> rows[] = {
        // the command line
        {"", "", 2, "", "which command?"},
        {"-V", "", 0, "kelvo-batch 1", ""},
        {"-h", "", 0, "Exit codes:", ""},
        {"measure -h", "", 0, "--curve line|segments|quadratic|low-end", ""},
        {"shew x", "", 2, "", "there is no command 'shew'"},
        {"show", "", 2, "", "usage: kelvo-batch show FILE..."},
        {"show --bogus ~F.ISE", "", 2, "", "there is no option --bogus\nkelvo-batch show --help"},
        {"show --json=1 ~F.ISE", "", 2, "", "--json takes no value"},
        {"measure ~S.ISE --curve", "", 2, "", "--curve lacks its line"},
        {"measure ~S.ISE --curve=wave", "1", 2, "", "--curve takes line"},
        {"measure ~F.ISE ~ONE.ISE -", "", 2, "", "is one word too many"},
        {"measure --curve line --curve line ~F.ISE", "", 2, "", "--curve is given twice"},
        {"show -- --help", "", 3, "", "--help: the files of Kelvo end in"},
        // files
        {"show ~f.ise", "", 0, "Slope                -58.00 mV per decade", ""},
        {"show ~FLAT.ISE", "", 0, "Verdict", ""},
        {"show ~D.CLI", "", 0, "Electrode 1, buffers", ""},
        {"show ~A.SMP", "", 0, "17.48 ppm", ""},
        {"show ~N.PH", "", 0, "7.25", ""},
        {"show ~recording-ise-20261125-213000-4711.journal", "", 0, "Operator", ""},
        {"show --json ~HELP.TXT", "", 0, "\"two µ\"", ""},
        {"show ~NONE.ISE ~F.ISE", "", 3, "calibration of an ion-selective", "NONE.ISE: File not found"},
        {"show --json ~NONE.ISE", "", 3, "\"error\": \"", "File not found"},
        {"show ~ ", "", 3, "", "the files of Kelvo end in"},
        {"show ~CONTROLS.TXT", "", 0, "\n    a?[2J?b\n", ""},
        {"show ~BINARY.TXT", "", 3, "", "BINARY.TXT: this is no text file"},
        {"show ~DIR.ISE", "", 3, "", "DIR.ISE: this is a folder"},
        {"show ~A\x1B[31m\xC2\x9D.ISE", "", 3, "", "A?[31m?.ISE: File not found"},
        {"show ~UTF16.TXT", "", 3, "", "UTF16.TXT: this is UTF-16; save it as UTF-8"},
        {"show --as smp -", "1\r\n", 3, "", "-: this is no sample addition, or it is damaged"},
        {"show --as .TXT -", "one\r\ntwo", 0, "\n    two\n", ""},
        {"show /dev/fd/99", "", 2, "", "which kind of file is this? --as tells its ending"},
        {"convert --to csv -", "", 2, "", "this has no name to be converted under"},
        {"convert ~F.ISE", "", 2, "", "--to takes csv or json"},
        {"convert ~F.ISE --to json --out ~none", "", 3, "", "there is no such folder"},
        // potentials
        {"measure ~S.ISE", "30\n", 0, "\n30,-2.73,1.87E-3,35.", ""},
        {"measure ~S.ISE -", "mV\n30", 0, "\n30,-2.73,1.87E-3,35.", ""},
        {"measure ~S.ISE ~MV.txt", "", 0, "\n30,-2.73,1.87E-3,35.", ""},
        {"measure - -", "", 2, "", "cannot both come from standard input"},
        {"measure ~S.ISE ~DIR.ISE", "", 3, "", "DIR.ISE: this is a folder"},
        {"measure ~S.ISE", "3O\n30\n", 1, "\n3O,,,,,,\"'3O' is no number, and no name that is known", "line 1: '3O'"},
        {"measure ~S.ISE --column 2", "Tap,NaN\nTap,30\n", 1, "\nTap,30,-2.73", "line 1: 'NaN' is no number"},
        {"measure ~S.ISE --column 2", "Tap,30\n", 0, "\nTap,30,-2.73", ""},
        {"measure ~S.ISE", "\xFF\xFEm", 3, "", "standard input: this is UTF-16"},
        {"measure ~S.ISE", "\xEF\xBB\xBFSample\tmV\r\nTap\t30\r\n", 0, "\nTap\t30\t-2.73\t1.87E-3\t35.", ""},
        {"measure ~S.ISE --column 2", "1,30\n2,40\n", 0, "Column 1,mV,LogC", ""},
        {"measure ~S.ISE --column Probe", "mV,Probe\n1,30\n", 0, "\n1,30,-2.73", ""},
        {"measure ~S.ISE --json", "Name,mV\n\"a, \"\"b\"\"\",30\n", 0,
         "{\"line\": 2, \"row\": {\"Name\": \"a, \\\"b\\\"\", \"mV\": 30}, \"mV\": 30, \"logC\": -2.73", ""},
        {"measure ~S.ISE", "30\n\x1B[2J\n", 1, "\n30,", "line 2: '?[2J' is no number"},
        {"measure ~S.ISE --json", "mV\n30\n", 0, "{\"line\": 2, \"mV\": 30, \"logC\": -2.73", ""},
        {"measure ~S.ISE --json", "a,mV\n1\n", 1, "{\"line\": 2, \"row\": {\"a\": 1, \"mV\": null}, \"mV\": null",
         "line 2"},
        {"measure ~S.ISE", "1,30\n", 2, "", "which of the 2 columns"},
        {"measure ~S.ISE --column 3", "1,30\n", 2, "", "there is no column '3'"},
        {"measure ~S.ISE", "", 4, "", "no potentials"},
        {"measure ~S.ISE", "30\n\n12,5\nx\n5000\n-1e1\n", 1, "\n\"12,5\",,,,,,\"'12,5' is no number; the",
         "line 3: '12,5' is no number; the decimal mark is a point\nkelvo-batch: line 4: 'x' is no number\nkelvo-batch: line 5: Input data out of range"},
        {"measure ~S.ISE", "a,mV\n1\n1,2,3\n2,\n3,30\n", 1, "\n3,30,-2.73", "line 4: there is no number"},
        {"measure ~S.ISE --temperature 30", "200\n300\n30\n", 0,
         ",outside the calibrated range: no interval; more than",
         "line 1: outside the calibrated range: no interval\nkelvo-batch: line 1: more than 2 °C from the calibration\n"},
        {"measure ~S.ISE --temperature -273.15", "30\n", 2, "", "a temperature lies above -273.15 °C"},
        {"measure ~S.ISE --curve segments", "30\n200\n", 1, "\n30,-2.73", "line 2: Data out of range"},
        {"measure ~ONE.ISE --curve quadratic", "30", 4, "", "one point has a line alone"},
        {"measure ~ONE.ISE", "50", 0, "\n50,-3.00", "line 1: one point with a known slope"},
        {"measure ~TWO.ISE --curve quadratic", "60", 0, "\n60,-3.14", "two points have no best-fit curve"},
        {"measure ~TWO.ISE", "0", 0, "exactly 0 mV shows the empty row 0", "exactly 0 mV shows the empty row 0"},
        {"measure ~FLAT.ISE --weight 65", "60", 4, "", "the slope is 0"},
        {"measure ~OWN.ISE", "30", 2, "", "molar mass the file does not hold"},
        {"measure ~OWN.ISE --weight 65.38", "30\n", 0, "\n30,-2.73,1.87E-3,122.5", ""},
        {"measure ~OWN.ISE --settings ~KELVO.ini", "30\n", 0, "\n30,-2.73,1.87E-3,122.5", ""},
        {"measure ~OWN.ISE --weight 0", "30", 2, "", "a molar mass is above 0"},
        // fits
        {"fit ~P.csv --ion f", "", 0, "Temperature                  25 °C (assumed)", ""},
        {"fit ~P.csv --ion f --temperature 25", "", 0, "(F⁻ at 25.0 °C)", ""},
        {"fit ~P.csv --ion F --json", "", 0,
         "\"segment_slopes\": [-58.00, -58.00], \"theoretical_slope\": -59.159349685721494, \"percent_of_theory\": 98.04030507816422, \"celsius\": 25, \"degrees_of_freedom\": 1",
         ""},
        {"fit - --ion F --json", "ppm,mV\n1,120\n10,62\n", 0,
         "\"units\": {\"slope\": \"mV per decade\", \"intercept\": ", ""},
        {"fit - --ion F", "ppm,mV,LogC\n10,62,-3.28\n100,4,-2.25\n", 4, "",
         "line 3: ppm 100 and LogC -2.25 contradict each other for F"},
        {"fit - --ion F", "mol/L,mV,LogC\n1E-3,5,-3\n0,4,-2\n", 4, "", "line 3: mol/L 0 and LogC -2 contradict"},
        {"fit - --ion Ca", "LogC,mV,ppm,mol/L\n-6,5,0,1E-6\n-4.585,47,1,2.6E-5\n", 0, "Verdict", ""},
        {"fit - --ion F", "1O,5\n1,6\n", 4, "", "line 1: '1O' is no number, and the line names no column"},
        {"fit - --ion F", "p\0p\0m\0"s, 3, "", "this is UTF-16"},
        {"fit ~P.csv --ion F --slope-temperature -300", "", 2, "", "--slope-temperature: a temperature lies above"},
        {"fit - --json", "mol/L,mV\n1e-3,100\n1e-4,41\n", 0, "\"ion\": \"\", \"points\": 2, \"slope\": 59", ""},
        {"fit - --ion F", "0.01;3\n0.1;2\n1;3,5", 4, "", "line 3: '3,5' is no number; the decimal mark is a point"},
        {"fit - --json", "LogC,mV\n0,100\n-1,41\n", 0, "\"slope\": 59, \"intercept\": 100", ""},
        {"fit - --ion F", "ppm,mV\n-1,5\n1,6\n", 4, "", "line 2: Data out of range"},
        {"fit - --ion F", "1,5,6\n", 4, "", "the columns are two"},
        {"fit - --ion F", "ppm,E\n1,2,3\n", 4, "", "line 2: it has 3 fields"},
        {"fit - --ion F", "ppm,volt\n", 4, "", "there is no column \"mV\""},
        {"fit - --ion F", "1,5\n1,6\n", 4, "", "cannot be used with some of the X values"},
        {"fit - --ion F", "1,1\n1,2\n1,3\n1,4\n1,5\n1,6\n1,7\n1,8\n1,9\n2,1\n2,2\n", 4, "",
         "line 11: a calibration has"},
        {"fit ~P.csv", "", 2, "", "ppm need the ion"},
        {"fit ~P.csv --ion Custom", "", 2, "", "needs its molar mass"},
        {"fit ~P.csv --ion Custom --weight 65.38 --charge -2", "", 0, "Theoretical slope            -29.58", ""},
        {"fit ~P.csv --ion F --charge 0.5", "", 2, "", "--charge takes a whole number"},
        {"fit ~P.csv --ion F --slope -58", "", 2, "", "--slope is for one standard"},
        {"fit - --ion F", "1,5", 4, "", "one standard has no line"},
        {"fit ~F.ISE --ion F", "", 4, "", "the first line has 1"},
        {"fit ~none.csv --ion F", "", 3, "", "File not found"},
        {"fit ~P.csv --ion F --out ~F.ISE", "", 3, "", "F.ISE is there already; --force replaces it"},
        {"fit ~P.csv --ion F --out ~none/F.ISE", "", 3, "", "Path not found"},
        // calculators
        {"dilute --ion Ca", "", 2, "", "there is nothing to convert"},
        {"dilute --ion Zz --ppm 1", "", 2, "", "there is no ion 'Zz'; known are Ag, Ba"},
        {"dilute --ion Custom --ppm 1", "", 2, "", "do not know the ion"},
        {"dilute --ion Ca --ppm 1 --molar 1", "", 2, "", "--ppm and --molar are one box"},
        {"dilute --ion Ca --ppm -1", "", 4, "", "Wrong data type"},
        {"dilute --ion Ca --ppm 0", "", 4, "", "Data out of range"},
        {"dilute --ion Ca --ppm 1x", "", 2, "", "'1x' is no number"},
        {"activity --ion Ca --activity-ppm 1", "", 2, "", "which ionic strength?"},
        {"select --ion Cl --ppm 1 --interferent Br=1", "", 4, "", "'Br' must be absent"},
        {"select --ion Ba --ppm 1 --interferent Xe=1", "", 4, "", "'Xe' is none of the ions"},
        {"select --ion Ba --interferent Sr=1", "", 2, "", "interferents need"},
        {"select --ppm 1", "", 2, "", "which ion?"},
        {"select --ion Ba", "", 0, "0.085", ""},
    };
    for (const auto& [words, input, code, out, err] : rows) {
        const BatchRun run = Batch(files.folder, words, input);
        EXPECT_EQ(run.code, code) << words << ": " << run.err;
        const auto holds = [](const std::string& text, const std::string& part) {
            return part.empty() ? text.empty() : text.find(part) != std::string::npos;
        };
        const bool mayHaveBegun = out.empty() && run.out.starts_with("mV,");
        EXPECT_TRUE(mayHaveBegun || holds(run.out, out)) << words << " wrote\n" << run.out;
        EXPECT_TRUE(holds(run.err, err)) << words << " told\n" << run.err;
    }
}

/// The tool's words without the name of the folder.
std::string Without(std::string text, const std::string& folder) {
    for (std::size_t at = 0; (at = text.find(folder)) != std::string::npos;)
        text.erase(at, folder.size());
    return text;
}

TEST(CommandLine, ReportsAreWholeInTextAndInJson) {
    const Files files;
    const char* const rows[][2] = {
        {"show ~N.PH ~A.SMP",
         "N.PH: numbers of a recording\n  Points              2\n  Span of the axis    0\n  Channels            2\n  Interval            2 Sec.\n  Its index           0\n  Index of the scale  0\n  Recording\n    Point  Channel 1  Channel 2\n        1        7.5          1\n        2       7.25       -0.5\n\nA.SMP: sample addition\n  Ion                      F\n  Comment                  Good \"measurement\"\n  Sample                   - mL\n  Sample temperature       - \xC2\xB0"
         "C\n  Sample temperature       - \xC2\xB0"
         "F\n  Expected                 - ppm\n  Expected                 - mol/L\n  Suggested standard       - mL\n  Suggested standard       - ppm\n  Suggested standard       - mol/L\n  Standard                 - mL\n  Standard                 - ppm\n  Standard                 - mol/L\n  Slope                    - mV per decade\n  Calibration temperature  - \xC2\xB0"
         "C\n  Calibration temperature  - \xC2\xB0"
         "F\n  Potential before         - mV\n  Potential after          - mV\n  Result                   17.48 ppm\n  Result                   - mol/L\n"},
        {"show --json ~D.CLI",
         "[{\"file\": \"D.CLI\", \"kind\": \"ph-calibration\", \"electrode1_date\": \"\", \"electrode1_temperature\": 25, \"electrode1_number\": \"\", \"electrode1_buffers\": 2, \"electrode1_slope\": -58.0, \"electrode1_percent\": 98.0, \"electrode1_offset\": 1.0, \"electrode2_date\": \"\", \"electrode2_temperature\": 20, \"electrode2_number\": \"\", \"electrode2_buffers\": 3, \"electrode2_slope\": -56.1, \"electrode2_percent\": 96.4, \"electrode2_offset\": 1.3, \"units\": {\"electrode1_temperature\": \"°C\", \"electrode1_slope\": \"mV/pH\", \"electrode1_percent\": \"%\", \"electrode1_offset\": \"mV\", \"electrode2_temperature\": \"°C\", \"electrode2_slope\": \"mV/pH\", \"electrode2_percent\": \"%\", \"electrode2_offset\": \"mV\"}, \"buffers\": {\"columns\": [\"Electrode\", \"pH\", \"mV\"], \"rows\": [\n [1, 7, 1],\n [1, 4, 175],\n [2, 9, -110],\n [2, 7, 0],\n [2, 4, 170]]}}]\n"},
        {"show ~D.CLI",
         "D.CLI: calibration of the pH electrodes\n  Electrode 1, calibrated      -\n  Electrode 1, temperature     25 \xC2\xB0"
         "C\n  Electrode 1, number          -\n  Electrode 1, buffers         2\n  Electrode 1, slope           -58.0 mV/pH\n  Electrode 1, % of theory     98.0 %\n  Electrode 1, offset at pH 7  1.0 mV\n  Electrode 2, calibrated      -\n  Electrode 2, temperature     20 \xC2\xB0"
         "C\n  Electrode 2, number          -\n  Electrode 2, buffers         3\n  Electrode 2, slope           -56.1 mV/pH\n  Electrode 2, % of theory     96.4 %\n  Electrode 2, offset at pH 7  1.3 mV\n  Buffers\n    Electrode  pH    mV\n            1   7     1\n            1   4   175\n            2   9  -110\n            2   7     0\n            2   4   170\n"},
        {"show --json ~N.PH ~T.TAB",
         "[{\"file\": \"N.PH\", \"kind\": \"recording-numbers\", \"points\": 2, \"span\": 0, \"channels\": 2, \"interval\": \"2 Sec.\", \"interval_index\": 0, \"scale_index\": 0, \"recording\": {\"columns\": [\"Point\", \"Channel 1\", \"Channel 2\"], \"rows\": [\n [1, 7.5, 1],\n [2, 7.25, -0.5]]}},\n{\"file\": \"T.TAB\", \"kind\": \"table\", \"operator\": \"Ann Lee\", \"calibration\": \"24/11/2026 08:30\", \"reference_electrode\": \"Ag/AgCl R7\", \"electrode\": \"F123\", \"standards\": [1, 10, 10], \"potentials\": [-179.5, -120.5, -119], \"slopes\": [59.00, \"N/A\"], \"celsius\": 25, \"fahrenheit\": 77.0, \"ion\": \"F\", \"notes\": \"TISAB II\", \"experiment\": \"24/11/2026\", \"rows\": 2, \"units\": {\"standards\": \"ppm\", \"potentials\": \"mV\", \"slopes\": \"mV per decade\", \"celsius\": \"°C\", \"fahrenheit\": \"°F\"}, \"table\": {\"columns\": [\"Row\", \"Sample Number\", \"Time\", \"mV\", \"ppm\", \"mol/L\", \"\xC2\xB0"
         "C\", \"\xC2\xB0"
         "F\", \"pH\", \"Result (ppm)\", \"95 % from (ppm)\", \"95 % to (ppm)\", \"Interval holds\", \"Remark\"], \"rows\": [\n [1, \"Tap 1\", \"09:05\", -150.2, 3.14, 1.65E-4, 25, 77.0, 7.5, null, null, null, null, \"no interval goes with this row\"],\n [2, \"Brook \xC2\xB5\xC2\xB0\", \"09:07\", -100, 22.23, 1.17E-3, 25, 77.0, 7.5, null, null, null, null, \"no interval goes with this row\"]]}}]\n"},
        {"show --json ~A.STD ~F.ISE",
         "[{\"file\": \"A.STD\", \"kind\": \"standard-addition\", \"ion\": \"F\", \"comment\": \"Good \\\"measurement\\\"\", \"sample_ml\": null, \"sample_celsius\": null, \"sample_fahrenheit\": null, \"expected_ppm\": null, \"expected_molar\": null, \"suggested_ml\": null, \"suggested_ppm\": null, \"suggested_molar\": null, \"standard_ml\": null, \"standard_ppm\": null, \"standard_molar\": null, \"slope\": null, \"calibration_celsius\": null, \"calibration_fahrenheit\": null, \"before\": null, \"after\": null, \"result_ppm\": 17.48, \"result_molar\": null, \"units\": {\"sample_ml\": \"mL\", \"sample_celsius\": \"°C\", \"sample_fahrenheit\": \"°F\", \"expected_ppm\": \"ppm\", \"expected_molar\": \"mol/L\", \"suggested_ml\": \"mL\", \"suggested_ppm\": \"ppm\", \"suggested_molar\": \"mol/L\", \"standard_ml\": \"mL\", \"standard_ppm\": \"ppm\", \"standard_molar\": \"mol/L\", \"slope\": \"mV per decade\", \"calibration_celsius\": \"°C\", \"calibration_fahrenheit\": \"°F\", \"before\": \"mV\", \"after\": \"mV\", \"result_ppm\": \"ppm\", \"result_molar\": \"mol/L\"}},\n{\"file\": \"F.ISE\", \"kind\": \"ise-calibration\", \"ion\": \"F\", \"temperature\": 25, \"saved\": \"01/01/1970 00:00\", \"operator\": \"\", \"reference_electrode\": \"\", \"reference_number\": \"\", \"electrode\": \"\", \"mv_scale\": \"-500 ... +500\", \"logc_scale\": \"-5 ... -1\", \"points\": 4, \"slope\": -58.00, \"intercept\": -128.18, \"percent_of_theory\": 98.0, \"verdict\": \"usable: the points lie exactly on the line (deviation 0): no uncertainty can be told\", \"units\": {\"temperature\": \"°C\", \"slope\": \"mV per decade\", \"intercept\": \"mV\", \"percent_of_theory\": \"%\"}, \"standards\": {\"columns\": [\"LogC\", \"mV\", \"ppm\", \"mol/L\"], \"rows\": [\n [-1.279, -54, 1000, 0.0526],\n [-2.279, 4, 100, 0.00526],\n [-3.279, 62, 10, 0.000526],\n [-4.279, 120, 1, 0.0000526]]}}]\n"},
    };
    for (const auto& [words, out] : rows)
        EXPECT_EQ(Without(Batch(files.folder, words).out, files.folder.Path()), out) << words;
}

TEST(Json, TakesAnyBytesAndKeepsNumbersAsTheyAreWritten) {
    const std::string lost = "\xEF\xBF\xBD";
    const char* const cells[][2] = {
        {"", "null"},           {"  ", "null"},     {"2", "2"},         {" 2", "2"},           {"007", "\"007\""},
        {"0.9", "0.9"},         {"0", "0"},         {"-0.59", "-0.59"}, {".5", "0.5"},         {"1.", "1"},
        {"1.65E-4", "1.65E-4"}, {"N/A", "\"N/A\""}, {"+5", "\"+5\""},   {"1e999", "\"1e999\""}};
    for (const auto& [cell, json] : cells)
        EXPECT_EQ(JsonCell(cell), json) << cell;
    const char* const texts[][2] = {
        {"a\"\\b\x01\x1f", "a\\\"\\\\b\\u0001\\u001f"},
        {"\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF",
         "\xC2\x80 \xDF\xBF \xE0\xA0\x80 \xED\x9F\xBF \xEE\x80\x80 \xF0\x90\x80\x80 \xF4\x8F\xBF\xBF"},
    };
    for (const auto& [text, json] : texts)
        EXPECT_EQ(JsonString(text), '"' + std::string(json) + '"');
    // What no UTF-8 has: overlong, a surrogate, beyond the last character, cut off, alone.
    for (const char* bad : {"\xC1\xBF", "\xE0\x9F\xBF", "\xED\xA0\x80", "\xF0\x8F\xBF\xBF", "\xF4\x90\x80\x80",
                            "\xE2\x82", "\xF0\x90\x80", "\x80", "\xF5\x80\x80\x80"}) {
        std::string expected;
        for (std::size_t i = 0; i < std::string(bad).size(); ++i)
            expected += lost;
        EXPECT_EQ(JsonString(bad), '"' + expected + '"') << testing::PrintToString(bad);
    }
}

TEST(CommandLine, AConversionTouchesNothingThatItWasNotTold) {
    const Files files;
    const ScratchFolder& folder = files.folder;
    std::filesystem::create_directory(folder / "out");
    folder.Put("F.csv", "mine");
    EXPECT_EQ(Batch(folder, "convert ~F.ISE --to csv").code, 3);
    EXPECT_EQ(folder.Get("F.csv"), "mine");
    // A name that differs in its case alone, or a link to nowhere, is there as well.
    std::filesystem::rename(folder / "F.csv", folder / "F.CSV");
    EXPECT_EQ(Batch(folder, "convert ~F.ISE --to csv").code, 3);
    std::filesystem::create_symlink(folder / "gone", folder / "T.csv");
    EXPECT_EQ(Batch(folder, "convert ~T.TAB --to csv").code, 3);
    EXPECT_EQ(Batch(folder, "convert --force ~F.ISE --to csv").code, 0);
    EXPECT_EQ(
        folder.Get("F.CSV"),
        "LogC,mV,ppm,mol/L\r\n-1.279,-54,1000,0.0526\r\n-2.279,4,100,0.00526\r\n-3.279,62,10,0.000526\r\n-4.279,120,1,0.0000526\r\n");
    // Two files that would become one: the second is refused, even by force.
    const BatchRun both = Batch(folder, "convert --force --to json --out ~out ~A.SMP ~A.STD ~F.ISE");
    EXPECT_EQ(both.code, 3);
    EXPECT_NE(both.err.find("A.json has just been written from another file"), std::string::npos) << both.err;
    EXPECT_EQ(both.out, folder / "out/A.json\n" + folder.Path() + "out/F.json\n");
    EXPECT_NE(folder.Get("out/A.json").find("\"kind\": \"sample-addition\""), std::string::npos);
    std::filesystem::create_directory(folder / "sealed");
    std::filesystem::permissions(folder / "sealed", std::filesystem::perms(0555));
    {
        const OrdinaryUser ordinary;
        const BatchRun run = Batch(folder, "convert ~F.ISE --to json --out ~sealed");
        EXPECT_EQ(run.code, 3);
        EXPECT_NE(run.err.find("Permission denied"), std::string::npos) << run.err;
    }
    OnSmallDisk(64, [&] { EXPECT_EQ(Batch(folder, "convert ~F.ISE --to json").code, 3); });
    EXPECT_EQ(Batch(folder, "convert ~F.ISE --to json").code, 0);
}

TEST(CommandLine, ABrokenFileIsToldAndEndsNothing) {
    const Files files;
    const ScratchFolder& folder = files.folder;
    ASSERT_EQ(mkfifo((folder / "PIPE.TAB").c_str(), 0666), 0);
    std::filesystem::create_symlink(folder / "F.ISE", folder / "LINK.ISE");
    std::filesystem::create_symlink("/dev/zero", folder / "ZERO.TAB");
    const std::string large = folder.Put("large", std::string(10'000'000, 'x') + "\r\n");
    for (const FileKindRow& kind : FileKindRows()) {
        const std::string ending = kind.ending;
        folder.Put("EMPTY" + ending, "");
        folder.Put("NUL" + ending, std::string(5000, '\0'));
        std::filesystem::create_symlink(large, folder / ("LARGE" + ending));
        for (const char* name : {"EMPTY", "NUL", "LARGE"}) {
            const bool text = kind.kind == FileKind::Text && name != std::string("NUL");
            if (text) continue;
            const BatchRun run = Batch(folder, std::string("show ~") + name + ending);
            EXPECT_EQ(run.code, 3) << name << ending << run.out;
            EXPECT_TRUE(run.out.empty() && run.err.find(name + ending + ": ") != std::string::npos) << run.err;
        }
    }
    EXPECT_EQ(Batch(folder, "show ~DIR.ISE ~PIPE.TAB ~ZERO.TAB").code, 3);
    EXPECT_EQ(Batch(folder, "show ~LINK.ISE").code, 0);

    // Files of every kind with bytes changed, cut and doubled: told or read, never more.
    std::mt19937 random(20261125);
    const auto below = [&](std::size_t n) { return static_cast<std::size_t>(random()) % std::max<std::size_t>(n, 1); };
    for (const std::string& name : folder.Names()) {
        const FileKindRow* kind = FileKindOf(name);
        const bool usable =
            kind != nullptr && FileExists(folder / name) && std::filesystem::file_size(folder / name) - 1 < 5000;
        if (!usable) continue;
        const std::string bytes = folder.Get(name);
        for (int run = 0; run < 15; ++run) {
            std::string broken = bytes.substr(0, run % 3 == 0 ? below(bytes.size()) : std::string::npos);
            for (std::size_t edits = below(5); edits > 0 && !broken.empty(); --edits)
                broken[below(broken.size())] = "\t\n,\"-E9\xFF"[below(8)];
            folder.Put("BROKEN" + std::string(kind->ending), broken);
            for (const char* words : {"show --json ~BROKEN", "convert --force --to csv ~BROKEN"}) {
                // A conversion waits for the disk.
                if (run > 0 && *words == 'c') continue;
                const BatchRun told = Batch(folder, words + std::string(kind->ending));
                EXPECT_TRUE(told.code == 0 || (told.code == 3 && !told.err.empty())) << testing::PrintToString(broken);
            }
            if (kind->kind != FileKind::IseCalibration) continue;
            for (const char* curve : {"line", "segments", "quadratic"})
                Batch(folder, "measure ~BROKEN.ISE --weight 1 --curve " + std::string(curve), "30\n0\n" + broken);
        }
    }
}

TEST(CommandLine, WhatCannotBeWrittenIsNotCalledDone) {
    const Files files;
    std::istringstream in("30\n");
    std::ostringstream err;
    std::ofstream full("/dev/full");
    const std::vector<std::string> words = {"measure", files.folder / "S.ISE"};
    EXPECT_EQ(RunBatch(words, in, full, err), 3);
    std::ofstream fullAtTheEnd("/dev/full");
    EXPECT_EQ(RunBatch(std::vector<std::string>{"--version"}, in, fullAtTheEnd, err), 3);
    const std::string told = "kelvo-batch: the output could not be written: No space left on device\n";
    EXPECT_EQ(err.str(), told + told);
}

/// The bytes of a file of the source tree, a man page's dashes as they are read.
std::string Source(const std::string& name) {
    std::ifstream in(SourceDir() + name);
    EXPECT_TRUE(in.is_open()) << name;
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    return std::regex_replace(bytes, std::regex(R"(\\-)"), "-");
}

TEST(CommandLine, ManPageManualAndCompletionKnowWhatTheTableKnows) {
    const std::string man = Source("packaging/man/kelvo-batch.1"),
                      completion = Source("packaging/completions/kelvo-batch"), manual = Source("docs/manual-batch.md");
    for (const Command& command : Commands()) {
        const std::string name = command.name;
        EXPECT_NE(man.find(".SS " + name + "\n"), std::string::npos) << name;
        EXPECT_NE(manual.find("`kelvo-batch " + name), std::string::npos) << name;
        const std::size_t from = completion.find("\n        " + name + ")");
        ASSERT_NE(from, std::string::npos) << name;
        const std::string completed = completion.substr(from, completion.find(";;", from) - from);
        for (const Option& option : command.options) {
            EXPECT_NE(man.find(option.name), std::string::npos) << name << " " << option.name;
            EXPECT_TRUE(std::regex_search(completed, std::regex(std::string(option.name) + "[\\s\"]")))
                << name << " " << option.name;
        }
    }
    const std::string words = std::regex_replace(completion, std::regex("\""), " ");
    for (const std::string& ion : AppState().Ions.names)
        EXPECT_NE(words.find(' ' + ion + ' '), std::string::npos) << ion;
    // Every key of the JSON is in the manual.
    const Files files;
    for (const char* line :
         {"show --json ~F.ISE ~D.CLI ~T.TAB ~A.SMP ~N.PH ~KELVO.ini ~HELP.TXT ~NONE.ISE ~P.PHC",
          "fit ~CURVED.csv --ion F --json", "measure ~S.ISE --json", "select --ion Ba --ppm 1 --json",
          "dilute --ion F --ppm 1 --density 1 --volume 1 --wanted-ppm 1 --standard-ppm 9 --json",
          "activity --ion F --strength-ppm 1 --activity-ppm 1 --json"}) {
        const std::string json = Batch(files.folder, line, "mV,ppm\n30,1\n").out;
        EXPECT_GT(json.size(), 9u) << line;
        const std::regex key(R"regex("(electrode2_)?(\w+)": )regex");
        for (std::sregex_iterator each(json.begin(), json.end(), key), end; each != end; ++each) {
            const std::string name = ((*each)[1].matched ? "`electrode1_" : "`") + (*each)[2].str() + "`";
            EXPECT_NE(manual.find(name), std::string::npos) << line << ": " << name;
        }
    }
    for (const ExitCodeRow& row : ExitCodes()) {
        const std::string code = std::to_string(static_cast<int>(row.code));
        EXPECT_NE(man.find(".B " + code + "\n" + row.meaning), std::string::npos) << row.meaning;
        EXPECT_NE(manual.find("| " + code + " | " + row.meaning), std::string::npos) << row.meaning;
    }
}

TEST(FileKinds, EveryFileTypeOfTheDesktopHasAKindWithAScreen) {
    const std::string types = Source("packaging/org.example.kelvo.xml");
    const std::regex glob(R"(glob pattern="\*(\.\w+)\")");
    int found = 0;
    for (std::sregex_iterator each(types.begin(), types.end(), glob), end; each != end; ++each, ++found) {
        const FileKindRow* kind = FileKindOf("/a.b/x" + (*each)[1].str());
        ASSERT_NE(kind, nullptr) << (*each)[1];
        EXPECT_NE(kind->screen, ScreenCode::None) << (*each)[1];
    }
    EXPECT_GT(found, 8);
    EXPECT_EQ(FileKindOf("/a.ise/x"), nullptr);
    EXPECT_EQ(FileKindOf("X.PHT~")->kind, FileKind::PhTable);
}

TEST(Settings, TheListHoldsWhatIsReadByName) {
    const ScratchFolder folder;
    const std::string bytes =
        "\xEF\xBB\xBF;[No]\r\n[ A ] x\r\nkey = ' v '\r\nKEY=second\r\n=none\r\n;r=1\r\nwords\r\nb=\"\"\r\n[B]\nk=\xB5\n[a]\nlate=1\n"
        "x[C]\nd=[E]\n";
    const std::string file = folder.Put("X.ini", bytes);
    std::string all;
    for (const SettingEntry& entry : ListSettings(bytes)) {
        EXPECT_EQ(entry.value, ReadSetting(entry.section, entry.key, file)) << entry.key;
        all += entry.section + "." + entry.key + " ";
    }
    EXPECT_EQ(all, "A.key A. A.b B.k ");
}

}  // namespace
}  // namespace kelvo::test
