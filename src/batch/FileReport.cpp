#include "batch/FileReport.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>

#include "addition/AdditionForm.h"
#include "addition/MethodFile.h"
#include "batch/Failure.h"
#include "batch/LineReport.h"
#include "batch/Workplace.h"
#include "calibration/CaliFile.h"
#include "calibration/CaliGraph.h"
#include "calibration/CalibrationFacts.h"
#include "calibration/CalibrationStandards.h"
#include "calibration/IseCalibration.h"
#include "core/IonSettings.h"
#include "core/ScreenCode.h"
#include "core/Settings.h"
#include "help/NotePad.h"
#include "ph/ElectrodeQuality.h"
#include "ph/PhCalibration.h"
#include "ph/PhCalibrationFile.h"
#include "ph/RecordingPlan.h"
#include "statistics/Figures.h"
#include "tables/DumpFile.h"
#include "tables/RowFactsFile.h"
#include "tables/RowUncertainty.h"
#include "tables/TableExport.h"
#include "tables/TableFile.h"
#include "tables/TableGrids.h"
#include "text/Number.h"
#include "text/Records.h"
#include "text/RuntimeError.h"
#include "text/UserText.h"

namespace kelvo {
namespace {

constexpr std::size_t LargestSmallFile = std::size_t{1} << 20;

/// A file on its way to a report.
struct Source {
    const std::string& file;
    const FileKindRow& kind;
    BatchState state;
    std::string bytes;
};

std::string IonName(const IonSettings& ions, int ion) {
    return ion >= 0 && ion < IonRows ? ions.Ions.names[static_cast<std::size_t>(ion)] : std::string();
}

std::vector<std::string> Cells(const std::vector<float>& column) {
    std::vector<std::string> cells;
    for (std::size_t i = 1; i < column.size(); ++i)
        cells.push_back(TrimStr(column[i]));
    return cells;
}

/// What the file beside the calibration knows of its standards, where there is one.
void AddToldStandards(Report& report, const IseCalibration& calibration) {
    const StandardsTold& told = calibration.Told;
    if (!told.relativeU.empty())
        report.fields.push_back(NumberField("standards_u", "Standards uncertain by", told.relativeU, "%"));
    if (const std::string lot = LotText(told); !lot.empty())
        report.fields.push_back(TextField("standards", "Lot of the standards", lot));
    if (!told.blanks.empty()) report.fields.push_back(TextField("blanks", "Blanks (mV)", told.blanks));
    std::vector<std::vector<std::string>> rows;
    for (const LeftOutStandard& left : calibration.LeftOut)
        rows.push_back({TrimStr(left.logC), TrimStr(left.mv), TrimStr(left.ppm), TrimStr(left.molar), left.reason});
    if (!rows.empty())
        report.sections.push_back(
            SectionOf("left_out", "Standards left out", {"LogC", "mV", "ppm", "mol/L", "reason"}, std::move(rows)));
}

Report IseReport(Source& source) {
    BatchState& state = source.state;
    ReadIse(state, source.bytes);
    Report report;
    if (!IsNameless(source.file)) report.told = ReadCalibrationFacts(state, source.file, source.bytes);
    report.fields = {
        TextField("ion", "Ion", IonName(state, state.IonIndex)),
        NumberField("temperature", "Temperature", state.FileTemp, "°C"),
        TextField("saved", "Saved", state.FileDate),
        TextField("operator", "Operator", state.FileOperator),
        TextField("reference_electrode", "Reference electrode", state.FileRefElectrode[0]),
        TextField("reference_number", "Its number", state.FileRefElectrode[1]),
        TextField("electrode", "ISE number", state.FileElectrodeNum[0]),
        TextField("mv_scale", "Scale of mV", Trim(MvCaptions.at(static_cast<std::size_t>(state.MvScaleIndex)))),
        TextField("logc_scale", "Scale of LogC", Trim(LogCCaptions.at(static_cast<std::size_t>(state.LogCScaleIndex)))),
        NumberField("points", "Points", TrimStr(int{state.CaliPoints})),
    };
    AddLine(report, state);
    std::vector<std::vector<std::string>> rows;
    const auto logC = Cells(state.CaliLogC), mv = Cells(state.CaliE), ppm = Cells(state.CaliPpm),
               molar = Cells(state.CaliMolar);
    for (std::size_t i = 0; i < mv.size(); ++i)
        rows.push_back({logC[i], mv[i], ppm[i], molar[i]});
    report.sections = {SectionOf("standards", "Standards", {"LogC", "mV", "ppm", "mol/L"}, std::move(rows))};
    AddToldStandards(report, state);
    return report;
}

/// Whether the buffers of an electrode have a line: two different pH, and a temperature that electrodes have.
bool HasPhLine(const BufferTable& buffers, int count, float celsius) {
    bool differ = false;
    for (int j = 2; j <= count; ++j)
        differ = differ || buffers.at(static_cast<std::size_t>(j))[1] != buffers.at(1)[1];
    return differ && celsius > -273;
}

Report PhReport(Source& source) {
    BatchState& state = source.state;
    ReadPh(state, source.bytes);
    Report report;
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 1; i <= 2; ++i) {
        const std::string number = std::to_string(i);
        const std::string key = "electrode" + number + "_", label = "Electrode " + number + ", ";
        const auto& buffers = i == 1 ? state.Buffers1 : state.Buffers2;
        const int count = state.BufferCount[i];
        report.fields.push_back(TextField(key + "date", label + "calibrated", state.PhCaliDate[i]));
        report.fields.push_back(
            NumberField(key + "temperature", label + "temperature", TrimStr(state.PhCaliTemp[i]), "°C"));
        report.fields.push_back(TextField(key + "number", label + "number", state.FileElectrodeNum[i]));
        report.fields.push_back(NumberField(key + "buffers", label + "buffers", TrimStr(count)));
        for (int j = 1; j <= count; ++j) {
            const auto& buffer = buffers.at(static_cast<std::size_t>(j));
            rows.push_back({number, TrimStr(buffer[1]), TrimStr(buffer[2])});
        }
        if (!HasPhLine(buffers, count, state.PhCaliTemp[i])) continue;
        const ElectrodeQuality quality = JudgeElectrode(buffers, count, state.PhCaliTemp[i]);
        report.fields.push_back(NumberField(key + "slope", label + "slope", WithPlaces(quality.slope, 1), "mV/pH"));
        report.fields.push_back(
            NumberField(key + "percent", label + "% of theory", WithPlaces(quality.percent, 1), "%"));
        report.fields.push_back(
            NumberField(key + "offset", label + "offset at pH 7", WithPlaces(quality.offset, 1), "mV"));
    }
    report.sections = {SectionOf("buffers", "Buffers", {"Electrode", "pH", "mV"}, std::move(rows))};
    return report;
}

/// Lines of a text of several, without the TAB at their end.
std::vector<std::string> Lines(const std::string& text) {
    std::vector<std::string> lines;
    std::string_view rest = text;
    while (!rest.empty()) {
        const std::size_t end = std::min(rest.find('\n'), rest.size());
        std::string_view line = rest.substr(0, end);
        while (line.ends_with('\r') || line.ends_with('\t'))
            line.remove_suffix(1);
        lines.emplace_back(line);
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return lines;
}

std::vector<std::string> TabbedCells(const std::string& line) {
    if (line.empty()) return {};
    std::vector<std::string> cells(static_cast<std::size_t>(std::count(line.begin(), line.end(), '\t')) + 1);
    for (std::size_t i = 0; i < cells.size(); ++i)
        cells[i] = CellOf(line, static_cast<int>(i));
    return cells;
}

std::string Behind(const std::string& text, std::string_view label) {
    return text.starts_with(label) ? text.substr(label.size()) : text;
}

void AddIseHead(Report& report, const DataTable& table) {
    auto lines = Lines(table.txtData[1]);
    lines.resize(3);
    report.fields = {
        TextField("operator", "Operator", Behind(table.txtData[6], "Operator: ")),
        TextField("calibration", "Calibration", table.txtData[0]),
        TextField("reference_electrode", "Reference electrode", Behind(table.Label1[7], "Ref. : ")),
        TextField("electrode", "ISE number", Behind(table.Label1[9], "ISE Serial No. ")),
        NumbersField("standards", "Standards", TabbedCells(lines[0]), "ppm"),
        NumbersField("potentials", "Potentials", TabbedCells(lines[1]), "mV"),
        NumbersField("slopes", "Slopes", TabbedCells(lines[2]), "mV per decade"),
        NumberField("celsius", "Temperature", table.txtData[2], "°C"),
        NumberField("fahrenheit", "Temperature", table.txtData[3], "°F"),
        TextField("ion", "Ion", table.txtData[4]),
        TextField("notes", "ISAB/Notes", table.txtData[7]),
        TextField("experiment", "Experiment", table.txtData[5]),
    };
}

void AddPhHead(Report& report, const DataTable& table) {
    for (std::size_t i = 0; i < 2; ++i) {
        const std::string number = std::to_string(i + 1);
        const std::string key = "electrode" + number + "_", label = "Electrode " + number + ", ";
        report.fields.push_back(TextField(key + "date", label + "calibrated", table.txtData[3 * i]));
        report.fields.push_back(TextField(key + "number", label + "number", table.txtData[3 * i + 1]));
        Field buffers = TextField(key + "buffers", label + "buffers", {});
        buffers.kind = Field::Kind::Texts;
        buffers.values = Lines(table.txtData[3 * i + 2]);
        report.fields.push_back(std::move(buffers));
    }
    report.fields.push_back(TextField("operator", "Operator", Behind(table.Label1[9], "Operator: ")));
    report.fields.push_back(TextField("experiment", "Experiment", table.txtData[6]));
}

/// The rows of a table as an export has them, the intervals behind them.
void AddRows(Report& report, const std::shared_ptr<DataTable>& table) {
    auto added = std::make_shared<AddedColumns>(FactColumns(*table));
    Section section{"table", "Rows", {}, static_cast<std::size_t>(std::max(0, ExportRows(*table))), {}, {}};
    for (int col = 0; col < table->Cols(); ++col) {
        section.heads.push_back(ExportHead(*table, col));
        section.texts.push_back(!IsMeasured(*table, col));
    }
    section.heads.insert(section.heads.end(), added->heads.begin(), added->heads.end());
    section.row = [table, added](std::size_t i) {
        const int row = static_cast<int>(i) + 1;
        std::vector<std::string> cells;
        cells.reserve(static_cast<std::size_t>(table->Cols()) + added->heads.size());
        for (int col = 0; col < table->Cols(); ++col)
            cells.emplace_back(table->Cell(row, col));
        if (added->cells) {
            auto more = added->cells(row);
            std::move(more.begin(), more.end(), std::back_inserter(cells));
        }
        return cells;
    };
    report.fields.push_back(NumberField("rows", "Rows", std::to_string(section.rows)));
    report.sections = {std::move(section)};
    report.csv = [table, added] {
        Progress unhurried;
        return TableCsv(*table, unhurried, *added).value_or("");
    };
    report.csvHead = [table] { return HeadCsv(*table); };
}

/// Whose table it is. A journal's name tells its kind, and so does the first line of every whole table.
ScreenCode OwnerOf(const Source& source) {
    if (source.kind.screen != ScreenCode::None) return source.kind.screen;
    return source.bytes.starts_with("Electrode") ? ScreenCode::frmPHMe : ScreenCode::fmISEcli;
}

Report TableReport(Source& source) {
    BatchState& state = source.state;
    const ScreenCode owner = OwnerOf(source);
    const bool ph = owner == ScreenCode::frmPHMe || owner == ScreenCode::frmDsply;
    if (!source.bytes.starts_with(ph ? "Electrode" : "Operator"))
        Refuse(ExitCode::File, source.file + ": it does not begin as a " + source.kind.name + " does");
    state.ReturnScreen = static_cast<std::int16_t>(owner);
    state.pHMode = ph ? -1 : 0;
    const auto table = std::make_shared<DataTable>();
    RunHeadRoutine(state, *table);
    RunGridRoutine(state, *table, SystemClock());
    DataTable document;
    document.LayOutAs(*table);
    *table = std::move(document);
    const TableKind kind = KindOf(state);
    ReadTable(*table, source.bytes, kind.form, kind.lastPass);
    Report report;
    // A pipe has no file beside it.
    if (!IsNameless(source.file)) report.told = Trim(ReadFactsBeside(*table, source.file));
    ph ? AddPhHead(report, *table) : AddIseHead(report, *table);
    if (!report.told.empty()) report.fields.push_back(TextField("remark", "Remark", report.told));
    AddRows(report, table);
    report.table = table;
    return report;
}

/// Keys and labels of the boxes of an addition screen.
struct BoxName {
    const char *key, *label, *unit;
};
constexpr std::array<BoxName, AdditionForm::BoxCount> BoxNames = {{
    {"sample_ml", "Sample", "mL"},
    {"sample_celsius", "Sample temperature", "°C"},
    {"sample_fahrenheit", "Sample temperature", "°F"},
    {"expected_ppm", "Expected", "ppm"},
    {"expected_molar", "Expected", "mol/L"},
    {"suggested_ml", "Suggested standard", "mL"},
    {"suggested_ppm", "Suggested standard", "ppm"},
    {"suggested_molar", "Suggested standard", "mol/L"},
    {"standard_ml", "Standard", "mL"},
    {"standard_ppm", "Standard", "ppm"},
    {"standard_molar", "Standard", "mol/L"},
    {"slope", "Slope", "mV per decade"},
    {"calibration_celsius", "Calibration temperature", "°C"},
    {"calibration_fahrenheit", "Calibration temperature", "°F"},
    {"before", "Potential before", "mV"},
    {"after", "Potential after", "mV"},
    {"result_ppm", "Result", "ppm"},
    {"result_molar", "Result", "mol/L"},
}};

Report AdditionReport(Source& source) {
    MethodDump dump;
    ReadMethodDump(dump, source.bytes);
    Report report;
    report.fields = {TextField("ion", "Ion", IonName(source.state, dump.Ion)),
                     TextField("comment", "Comment", dump.Comment)};
    std::vector<std::vector<std::string>> rows;
    for (std::size_t i = 0; i < BoxNames.size(); ++i) {
        const BoxName& name = BoxNames[i];
        report.fields.push_back(NumberField(name.key, name.label, dump.Box[i], name.unit));
        rows.push_back({name.key, dump.Box[i], name.unit});
    }
    if (dump.surplus)
        report.fields.push_back(TextField(
            "remark", "Remark", "the file holds more than the boxes: a comma in it has shifted what follows"));
    report.csv = [rows = std::move(rows)] {
        Report boxes;
        boxes.sections = {SectionOf("boxes", "Boxes", {"Box", "Value", "Unit"}, rows)};
        return CsvOf(boxes);
    };
    return report;
}

Report NumbersReport(Source& source) {
    const RecordingDump dump = ReadRecordingDump(source.bytes);
    Report report;
    report.fields = {
        NumberField("points", "Points", TrimStr(int{dump.PointCount})),
        NumberField("span", "Span of the axis", TrimStr(dump.ScaleSpan)),
        NumberField("channels", "Channels", TrimStr(int{dump.ChannelCount})),
        TextField("interval", "Interval", Trim(IntervalRow(dump.IntervalIndex).text)),
        NumberField("interval_index", "Its index", TrimStr(int{dump.IntervalIndex})),
        NumberField("scale_index", "Index of the scale", TrimStr(int{dump.ScaleIndex})),
    };
    std::vector<std::string> heads = {"Point"};
    for (int k = 1; k <= dump.ChannelCount; ++k)
        heads.push_back("Channel " + std::to_string(k));
    std::vector<std::vector<std::string>> rows;
    for (std::size_t j = 1; j < dump.Recording.size(); ++j) {
        rows.push_back({std::to_string(j)});
        for (std::size_t k = 0; k < static_cast<std::size_t>(dump.ChannelCount); ++k)
            rows.back().push_back(TrimStr(dump.Recording[j][k]));
    }
    report.sections = {SectionOf("recording", "Recording", std::move(heads), std::move(rows))};
    return report;
}

Report SettingsReport(Source& source) {
    std::vector<std::vector<std::string>> rows;
    for (SettingEntry& entry : ListSettings(source.bytes))
        rows.push_back({std::move(entry.section), std::move(entry.key), std::move(entry.value)});
    if (rows.empty()) Refuse(ExitCode::File, source.file + ": it holds no settings");
    Report report;
    report.fields = {NumberField("keys", "Keys", std::to_string(rows.size()))};
    report.sections = {SectionOf("settings", "Settings", {"Section", "Key", "Value"}, std::move(rows))};
    return report;
}

Report TextReport(Source& source) {
    Report report;
    std::vector<std::vector<std::string>> rows;
    // What comes from a pipe is gone when it has been read once.
    for (std::string& line : Lines(IsNameless(source.file) ? FromUserText(source.bytes) : ReadHelpText(source.file)))
        rows.push_back({std::move(line)});
    report.fields = {NumberField("lines", "Lines", std::to_string(rows.size()))};
    report.sections = {SectionOf("text", "Text", {"Line"}, std::move(rows))};
    return report;
}

/// How each kind is read.
struct Reader {
    FileKind kind;
    std::size_t limit;  ///< no such file is larger
    Report (*read)(Source&);
};
constexpr std::size_t LargestTable = std::size_t{1} << 30;
constexpr std::array Readers = {
    Reader{FileKind::IseCalibration, LargestSmallFile, IseReport},
    Reader{FileKind::PhCalibration, LargestSmallFile, PhReport},
    Reader{FileKind::Table, LargestTable, TableReport},
    Reader{FileKind::PhTable, LargestTable, TableReport},
    Reader{FileKind::PhRecording, LargestTable, TableReport},
    Reader{FileKind::SampleAdditionTable, LargestTable, TableReport},
    Reader{FileKind::StandardAdditionTable, LargestTable, TableReport},
    Reader{FileKind::SampleAddition, LargestSmallFile, AdditionReport},
    Reader{FileKind::StandardAddition, LargestSmallFile, AdditionReport},
    Reader{FileKind::RecordingNumbers, LargestSmallFile, NumbersReport},
    Reader{FileKind::Settings, LargestSmallFile, SettingsReport},
    Reader{FileKind::Journal, LargestTable, TableReport},
    Reader{FileKind::Text, NotePad::LongestFile, TextReport},
};

}  // namespace

const FileKindRow& KindOfFile(const std::string& file, const Arguments& arguments) {
    const bool nameless = IsNameless(file);
    const auto told = arguments.Value(AsOption.name);
    if (nameless && !told) Refuse(ExitCode::Usage, file + ": which kind of file is this? --as tells its ending");
    const std::string name = nameless ? "x." + told->substr(told->starts_with('.') ? 1 : 0) : file;
    if (const FileKindRow* kind = FileKindOf(name)) return *kind;
    std::string known;
    for (const FileKindRow& row : FileKindRows())
        known.append(known.empty() ? "" : ", ").append(row.ending);
    Refuse(ExitCode::File, file + ": the files of Kelvo end in " + known);
}

Report ReadFileReport(const std::string& file, const FileKindRow& kind, const Arguments& arguments, std::istream& in) {
    for (const Reader& reader : Readers) {
        if (reader.kind != kind.kind) continue;
        Source source{file, kind, StateFor(arguments), TextOfFile(file, in, reader.limit)};
        try {
            return reader.read(source);
        } catch (const RuntimeError& error) {
            Refuse(ExitCode::File, file + ": this is no " + kind.name + ", or it is damaged (" + error.what() + ")");
        }
    }
    Refuse(ExitCode::File, file + ": there is no reader for a " + kind.name);
}

}  // namespace kelvo
