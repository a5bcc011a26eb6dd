#include "tables/TableExport.h"

#include <algorithm>
#include <charconv>

#include "core/Dialogs.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "tables/ResultsPage.h"
#include "tables/RowUncertainty.h"
#include "tables/TableFile.h"
#include "text/FileMark.h"
#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

using Facts = std::vector<std::vector<std::string>>;

/// Columns of these heads hold what the analyst or the clock wrote.
constexpr const char* TextHeads[] = {"Sample Number", "No.", "Time"};

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

bool BeginsFormula(std::string_view text) {
    const std::size_t start = text.find_first_not_of(' ');
    if (start == std::string_view::npos) return false;
    const char first = text[start];
    if (first == '=' || first == '@' || first == '\t' || first == '\r') return true;
    if (first != '+' && first != '-') return false;
    // A signed number is a number to every program, however it is written.
    return !IsNumber(text.substr(start));
}

void AppendFields(std::string& out, const std::vector<std::string>& fields) {
    for (const std::string& field : fields) {
        out += ',';
        AppendCsvField(out, field);
    }
}

/// The pieces of a text between CR LF or TAB, empty ones at the end left out.
std::vector<std::string> Pieces(std::string_view text, char separator) {
    std::vector<std::string> pieces;
    std::string piece;
    for (const char c : text) {
        if (c == separator) {
            pieces.push_back(std::move(piece));
            piece.clear();
        } else if (c != '\r') {
            piece += c == '\n' || c == '\t' ? ' ' : c;
        }
    }
    pieces.push_back(std::move(piece));
    while (!pieces.empty() && pieces.back().empty())
        pieces.pop_back();
    return pieces;
}

std::string Line(std::string_view text, std::size_t index) {
    const auto first = [](std::string_view t) { return t.find("\r\n"); };
    for (; index > 0; --index) {
        const std::size_t end = first(text);
        if (end == std::string_view::npos) return {};
        text.remove_prefix(end + 2);
    }
    return std::string(text.substr(0, first(text)));
}

/// The text behind one of the labels that it may begin with.
std::string Without(const std::string& text, std::initializer_list<std::string_view> labels) {
    for (const std::string_view label : labels)
        if (text.starts_with(label)) return text.substr(label.size());
    return text;
}

void Add(Facts& facts, const char* name, const std::string& value) {
    if (value.find_first_not_of(' ') == std::string::npos) return;
    const auto lines = Pieces(value, '\n');
    std::string line;
    for (const std::string& part : lines)
        line += (line.empty() ? "" : " ") + part;
    facts.push_back({name, line});
}

void AddList(Facts& facts, const char* name, const std::string& values, char separator) {
    std::vector<std::string> fact = Pieces(values, separator);
    if (fact.empty()) return;
    for (std::string& value : fact)
        value.erase(0, std::min(value.find_first_not_of(' '), value.size()));
    fact.insert(fact.begin(), name);
    facts.push_back(std::move(fact));
}

void AddIse(Facts& facts, const DataTable& table) {
    const auto& text = table.txtData;
    const auto& label = table.Label1;
    Add(facts, "Calibration", text[0]);
    Add(facts, "Reference electrode of the calibration", Without(label[6], {"Ref. : "}));
    Add(facts, "Reference electrode", Without(label[7], {"Ref. : "}));
    Add(facts, "Electrode of the calibration", Without(label[8], {"ISE Serial No. ", "Serial No. "}));
    Add(facts, "Electrode serial number", Without(label[9], {"ISE Serial No. ", "Serial No. "}));
    AddList(facts, "Standards (ppm)", Line(text[1], 0), '\t');
    AddList(facts, "Values (mV)", Line(text[1], 1), '\t');
    AddList(facts, "Slopes (mV/decade)", Line(text[1], 2), '\t');
    Add(facts, "Temperature (°C)", text[2]);
    Add(facts, "Temperature (°F)", text[3]);
    Add(facts, "Ion", text[4]);
    Add(facts, "Experiment", text[5]);
    Add(facts, "Operator", Without(text[6], {"Operator: "}));
    Add(facts, "ISAB/Notes", text[7]);
}

void AddPh(Facts& facts, const DataTable& table) {
    const auto& text = table.txtData;
    for (const std::size_t first : {std::size_t{0}, std::size_t{3}}) {
        const std::string electrode = first == 0 ? "Electrode 1: " : "Electrode 2: ";
        const auto add = [&](const char* what, const std::string& value) {
            Add(facts, (electrode + what).c_str(), value);
        };
        add("calibration", text[first]);
        add("serial number", text[first + 1]);
        const std::string mv = Without(Line(text[first + 2], 1), {"mV:"});
        const std::size_t celsius = mv.find('(');
        AddList(facts, (electrode + "buffers (pH)").c_str(), Without(Line(text[first + 2], 0), {"pH:"}), ',');
        AddList(facts, (electrode + "buffers (mV)").c_str(), mv.substr(0, celsius), ',');
        if (celsius != std::string::npos)
            add("buffers (°C)", mv.substr(celsius + 1, mv.find("°C", celsius) - celsius - 1));
    }
    Add(facts, "Experiment date", text[6]);
    Add(facts, "Operator", Without(table.Label1[9], {"Operator: "}));
}

/// A name for an export, none when cancelled.
std::optional<std::string> AskName(StateOf<const Paths, const TableState> state, const std::string& extension,
                                   Prompts& prompts, FileChooser& files) {
    const Paths& paths = state;
    const std::string pattern = "*" + extension, filter = "All Data(" + pattern + ")|" + pattern;
    const auto headOf = [](const std::string& name) { return FindFile(HeadCsvName(name)); };
    const SaveRequest request{.dialog = {filter, paths.DataPath, {}},
                              .use = [&](const std::string& chosen) { return FindFile(WithEnding(chosen, extension)); },
                              .refused =
                                  [&](const std::string& name) {
                                      return IsLiveTable(state, name, prompts) ||
                                             (extension == ".csv" && IsLiveTable(state, headOf(name), prompts));
                                  }};
    for (;;) {
        auto name = AskNameToSave(prompts, files, request);
        if (!name || extension != ".csv" || MayReplace(prompts, headOf(*name))) return name;
    }
}

bool Write(Prompts& prompts, const std::string& name, std::string_view bytes) {
    return TakeFileStep(prompts, "Saving", name, [&] { ReplaceWholeFile(name, bytes); });
}

constexpr const char* Cancelled = "The export was cancelled; no file was written.";

}  // namespace

void AppendCsvField(std::string& out, std::string_view field) {
    const bool guarded = BeginsFormula(field);
    const auto parts = [](char c) { return c == ',' || c == '"' || c == '\r' || c == '\n'; };
    if (std::none_of(field.begin(), field.end(), parts)) {
        if (guarded) out += '\'';
        out += field;
        return;
    }
    out += '"';
    if (guarded) out += '\'';
    for (const char c : field) {
        if (c == '"') out += '"';
        out += c;
    }
    out += '"';
}

bool IsMeasured(const DataTable& table, int col) {
    const std::string_view head = table.Cell(0, col);
    return std::none_of(std::begin(TextHeads), std::end(TextHeads), [&](const char* text) { return head == text; });
}

std::string ExportHead(const DataTable& table, int col) {
    return col == 0 ? std::string("Row") : std::string(table.Cell(0, col));
}

int ExportRows(const DataTable& table) {
    int last = table.Rows() - 1;
    while (last > 0 && table.RowIsEmpty(last))
        --last;
    return last;
}

std::optional<double> CellNumber(std::string_view cell) {
    cell.remove_prefix(std::min(cell.find_first_not_of(' '), cell.size()));
    const std::string_view digits = cell.starts_with('-') ? cell.substr(1) : cell;
    const bool isName = digits.size() > 1 && digits[0] == '0' && IsDigit(digits[1]);
    if (isName || cell.starts_with('+') || !IsNumber(cell)) return std::nullopt;
    // Other than `Val` nothing stands for a number beyond the range.
    double value = 0;
    const std::errc failed = std::from_chars(cell.data(), cell.data() + cell.size(), value).ec;
    return failed == std::errc() ? std::optional(value) : std::nullopt;
}

std::vector<std::vector<std::string>> HeadFacts(const DataTable& table) {
    Facts facts;
    table.HeadKind == DataTable::Head::Ph ? AddPh(facts, table) : AddIse(facts, table);
    return facts;
}

bool IsLiveTable(const TableState& tableState, const std::string& name, Prompts& prompts) {
    if (!tableState.HasTableFile() || !SameFile(name, tableState.TableFile)) return false;
    prompts.Message(name + " is the file of the table that is being measured, and the next sample is written there. " +
                        "Please choose another name for the export.",
                    {}, Icon::Exclamation);
    return true;
}

std::optional<std::string> TableCsv(const DataTable& table, Progress& progress, const AddedColumns& added) {
    std::string out;
    const int rows = ExportRows(table);
    for (int row = 0; row <= rows; ++row) {
        if (!progress.At(row, rows)) return std::nullopt;
        std::string_view rest = table.RowText(row);
        for (int col = 0; col < table.Cols(); ++col) {
            if (col > 0) out += ',';
            const std::size_t tab = std::min(rest.find('\t'), rest.size());
            row == 0 ? AppendCsvField(out, ExportHead(table, col)) : AppendCsvField(out, rest.substr(0, tab));
            rest.remove_prefix(std::min(tab + 1, rest.size()));
        }
        if (!added.heads.empty()) AppendFields(out, row == 0 ? added.heads : added.cells(row));
        out += "\r\n";
    }
    return out;
}

std::string HeadCsv(const DataTable& table) {
    std::string out;
    for (const auto& fact : HeadFacts(table)) {
        for (std::size_t i = 0; i < fact.size(); ++i) {
            if (i > 0) out += ',';
            AppendCsvField(out, fact[i]);
        }
        out += "\r\n";
    }
    return out;
}

std::string HeadCsvName(const std::string& name) {
    const std::size_t dot = name.size() - LastPart(name).size() + LastPart(name).rfind('.');
    return name.substr(0, dot) + "-head" + name.substr(dot);
}

std::optional<XlsxBytes> TableXlsx(const DataTable& table, Progress& progress, const AddedColumns& added,
                                   int rowsASheet) {
    constexpr int TwipsACharacter = 120, Narrowest = 8, Widest = 255;
    Workbook book;
    std::vector<int> widths;
    std::vector<bool> measured;
    for (int col = 0; col < table.Cols(); ++col) {
        const auto at = static_cast<std::size_t>(col);
        const int twips = at < table.ColWidths.size() ? table.ColWidths[at] : 0;
        const int head = static_cast<int>(ExportHead(table, col).size()) + 2;
        widths.push_back(std::clamp(std::max(twips / TwipsACharacter, head), Narrowest, Widest));
        measured.push_back(IsMeasured(table, col));
    }
    for (const std::string& head : added.heads)
        widths.push_back(static_cast<int>(head.size()) + 2);
    const int rows = ExportRows(table);
    const int rowsBelowHeads = rowsASheet - 1;
    for (int row = 0; row <= rows; ++row) {
        if (!progress.At(row, rows)) return std::nullopt;
        if (row == 0 || (row > 1 && (row - 1) % rowsBelowHeads == 0)) {
            const int sheet = std::max(0, row - 1) / rowsBelowHeads + 1;
            book.BeginSheet(sheet == 1 ? "Data Table" : "Data Table " + std::to_string(sheet), widths, 1);
            book.BeginRow();
            for (int col = 0; col < table.Cols(); ++col)
                book.Text(ExportHead(table, col), true);
            for (const std::string& head : added.heads)
                book.Text(head, true);
        }
        if (row == 0) continue;
        book.BeginRow();
        std::string_view rest = table.RowText(row);
        for (int col = 0; col < table.Cols(); ++col) {
            const std::size_t tab = std::min(rest.find('\t'), rest.size());
            const std::string_view cell = rest.substr(0, tab);
            measured[static_cast<std::size_t>(col)] && NumberText(cell) ? book.Number(cell) : book.Text(cell);
            rest.remove_prefix(std::min(tab + 1, rest.size()));
        }
        if (added.heads.empty()) continue;
        for (const std::string& cell : added.cells(row))
            NumberText(cell) ? book.Number(cell) : book.Text(cell);
    }
    constexpr int NameWidth = 36, ValueWidth = 20;
    book.BeginSheet("Head", {NameWidth, ValueWidth, ValueWidth, ValueWidth}, 0);
    for (const auto& fact : HeadFacts(table)) {
        book.BeginRow();
        book.Text(fact[0], true);
        // A list is of measured values; what stands alone may be a serial number or a note.
        const bool values = fact[0].ends_with(")");
        for (std::size_t i = 1; i < fact.size(); ++i)
            values&& NumberText(fact[i]) ? book.Number(fact[i]) : book.Text(fact[i]);
    }
    if (const auto results = ResultsOf(table); WorthTelling(results)) AddResultSheets(book, results);
    return XlsxBytes{book.Bytes(), book.CutTexts()};
}

bool ExportCsv(StateOf<const Paths, const TableState, StatusMessages> state, const DataTable& table, Prompts& prompts,
               FileChooser& files, Progress& progress) {
    StatusMessages& status = state;
    const auto name = AskName(state, ".csv", prompts, files);
    if (!name) return false;
    const auto bytes = TableCsv(table, progress, FactColumns(table));
    if (!bytes) status.StatusMessage = Cancelled;
    const std::string head = FindFile(HeadCsvName(*name));
    if (!bytes || !Write(prompts, *name, *bytes) || !Write(prompts, head, HeadCsv(table))) return false;
    status.StatusMessage = "Exported to " + LastPart(*name) + ", the head to " + LastPart(head) + ".";
    return true;
}

bool ExportXlsx(StateOf<const Paths, const TableState, StatusMessages> state, const DataTable& table, Prompts& prompts,
                FileChooser& files, Progress& progress) {
    StatusMessages& status = state;
    const auto name = AskName(state, ".xlsx", prompts, files);
    if (!name) return false;
    std::optional<XlsxBytes> made;
    if (!TakeFileStep(prompts, "Saving", *name, [&] { made = TableXlsx(table, progress, FactColumns(table)); }))
        return false;
    if (!made) status.StatusMessage = Cancelled;
    if (!made || !Write(prompts, *name, made->bytes)) return false;
    status.StatusMessage = "Exported to " + LastPart(*name) + ".";
    if (made->cutTexts > 0)
        status.StatusMessage +=
            " Cells that are longer than a spreadsheet holds have been cut: " + TrimStr(made->cutTexts) + ".";
    return true;
}

}  // namespace kelvo
