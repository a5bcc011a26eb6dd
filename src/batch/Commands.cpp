#include "batch/Commands.h"
#include "batch/FileReport.h"

#include <array>
#include <limits>

namespace kelvo {
namespace {

constexpr std::size_t Any = std::numeric_limits<std::size_t>::max();
constexpr Option ForceOption = {"--force", nullptr, "replace a file that is there already"};
constexpr Option CalculatorIon = {"--ion", "NAME", "the ion, as the program's lists name it (F, Ca, NO3 ...)"};

}  // namespace

std::span<const Command> Commands() {
    static const std::vector<Command> commands = {
        {"show",
         "FILE...",
         "say what files of Kelvo hold",
         "Calibrations (.ISE, .CLI), tables (.TAB, .PHT, .PHC, .SMT, .SDT), additions (.SMP, .STD), numbers of a\n"
         "recording (.PH), journals, settings (.ini) and texts (.TXT), by the ending of the name. JSON is one array\n"
         "with an object for each file; one that cannot be read has an \"error\". \"-\" is standard input.\n",
         1,
         Any,
         {JsonOption,
          {"--all", nullptr, "show all rows of a table, not the first ten"},
          AsOption,
          SettingsOption,
          WeightOption},
         RunShow},
        {"convert",
         "FILE... --to csv|json",
         "write files of Kelvo as CSV or JSON",
         "F.TAB becomes F.csv beside it, or in the folder of --out. The CSV of a table is that of the program's own\n"
         "export, what is known of each row included. No file is overwritten unless --force says so.\n",
         1,
         Any,
         {{"--to", "csv|json", "what to write"},
          {"--out", "FOLDER", "where to write it"},
          ForceOption,
          SettingsOption,
          WeightOption},
         RunConvert},
        {"measure",
         "CAL.ISE [POTENTIALS]",
         "work out concentrations of potentials",
         "Reads potentials in mV from a file or standard input (\"-\"), one a line, or as CSV with a line of names; the\n"
         "column \"mV\" is taken. Writes each row with LogC, mol/L, ppm, the 95 % interval where one is known, and what\n"
         "is to be borne in mind. A row without a result keeps its place, is told, and the run goes on.\n",
         1,
         2,
         {{"--curve", "line|segments|quadratic|low-end", "the curve to read off (line)"},
          {"--column", "NAME|N", "column of the potentials, by its name or its number from 1"},
          {"--temperature", "CELSIUS", "temperature of the samples, to be held against the calibration's"},
          JsonOption,
          SettingsOption,
          WeightOption},
         RunMeasure},
        {"result",
         "FILE",
         "the result of each sample of a table, with its uncertainty",
         "Reads a table of samples (.TAB, .SMT, .SDT) with what is known of its rows (FILE.rows beside it) and writes the\n"
         "results as the window \"Results\" has them: rows of one sample number are one sample. JSON has the whole budget.\n",
         1,
         1,
         {JsonOption, {"--csv", nullptr, "write CSV, for a spreadsheet"}, AsOption, SettingsOption, WeightOption},
         RunResult},
        {"addition",
         "FILE",
         "the result of several additions, with its uncertainty",
         "Reads what the window \"Several Additions\" has saved (.additions) and works it out as the window does. JSON has\n"
         "the whole budget and the residuals.\n",
         1,
         1,
         {JsonOption},
         RunAddition},
        {"check",
         "FILE",
         "the drift checks of a table, and which samples they do not cover",
         "Reads a table of samples with what is known of its rows (FILE.rows beside it). Exit code 1: a sample is not\n"
         "covered, or nothing was checked.\n",
         1,
         1,
         {JsonOption, AsOption, SettingsOption, WeightOption},
         RunCheck},
        {"fit",
         "POINTS.csv",
         "fit a calibration to standards",
         "Reads up to ten standards: a column \"mV\" and one of \"ppm\", \"mol/L\" or \"LogC\" (without names: ppm,\n"
         "mV). \"-\" is standard input. The standards are entered as in the program, the lowest potential first.\n"
         "One standard alone needs --slope.\n",
         1,
         1,
         {{"--ion", "NAME", "the ion, as the program's lists name it (F, Ca, NO3 ...)"},
          {"--temperature", "CELSIUS", "temperature of the standards; without it 25 is assumed"},
          {"--slope", "MV", "known slope, mV per decade, for one standard"},
          {"--slope-temperature", "CELSIUS", "temperature at which it holds (that of the standards)"},
          {"--charge", "Z", "charge of an ion of your own, -4 to 4"},
          {"--out", "F.ISE", "write the calibration as a file of the program"},
          ForceOption,
          JsonOption,
          SettingsOption,
          WeightOption},
         RunFit},
        {"select",
         "",
         "selectivity: which ions disturb an electrode, and how much",
         "The calculator \"Selectivity and interference\".\n",
         0,
         0,
         {CalculatorIon,
          {"--ppm", "PPM", "concentration of the ion"},
          {"--interferent", "NAME=PPM", "an ion that disturbs and its concentration", true},
          JsonOption},
         RunSelect},
        {"dilute",
         "",
         "conversion of concentrations, and dilution",
         "The calculator \"Concentration conversion and dilution\".\n",
         0,
         0,
         {CalculatorIon,
          {"--ppm", "PPM", "a concentration to convert"},
          {"--molar", "MOL/L", "the same in mol/L"},
          {"--density", "G/ML", "density of that solution"},
          {"--volume", "ML", "volume of the solution wanted"},
          {"--wanted-ppm", "PPM", "its concentration"},
          {"--wanted-molar", "MOL/L", "the same in mol/L"},
          {"--standard-ppm", "PPM", "concentration of the standard at hand"},
          {"--standard-molar", "MOL/L", "the same in mol/L"},
          JsonOption},
         RunDilute},
        {"activity",
         "",
         "activity coefficients: an activity into a concentration and back",
         "The calculator \"Activity coefficients\".\n",
         0,
         0,
         {CalculatorIon,
          {"--strength-ppm", "PPM", "ionic strength"},
          {"--strength-molar", "MOL/L", "the same in mol/L, at most 0.6"},
          {"--activity-ppm", "PPM", "a measured activity"},
          {"--activity-molar", "MOL/L", "the same in mol/L"},
          {"--concentration-ppm", "PPM", "a concentration, in the place of the activity"},
          {"--concentration-molar", "MOL/L", "the same in mol/L"},
          JsonOption},
         RunActivity},
    };
    return commands;
}

std::span<const ExitCodeRow> ExitCodes() {
    static constexpr std::array Rows = {
        ExitCodeRow{ExitCode::Done, "everything has been worked out"},
        ExitCodeRow{ExitCode::RowsRefused, "rows of the input have no result; the others were worked out"},
        ExitCodeRow{ExitCode::Usage, "the command line is not taken; nothing was done"},
        ExitCodeRow{ExitCode::File, "a file could not be read or written; the others were done"},
        ExitCodeRow{ExitCode::NoResult, "the data have no result"},
    };
    return Rows;
}

}  // namespace kelvo
