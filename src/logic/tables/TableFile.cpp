#include "tables/TableFile.h"

#include <algorithm>
#include <filesystem>
#include <optional>
#include <utility>

#include "calibration/IseCalibration.h"
#include "core/Dialogs.h"
#include "core/HardwareSettings.h"
#include "core/Navigation.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StateOf.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "tables/RowFactsFile.h"
#include "tables/TableBackup.h"
#include "tables/TableGrids.h"
#include "text/CodePage.h"
#include "text/FileMark.h"
#include "text/Files.h"
#include "text/NewFile.h"
#include "text/Number.h"
#include "text/Records.h"

namespace kelvo {
namespace {

constexpr const char* LineEnd = "\r\n";

/// Adds a row in bytes of the code page; plain ASCII, nearly every row, needs no crossing.
void AppendRow(std::string& out, const DataTable& table, int row) {
    const std::size_t start = out.size();
    table.AppendRowLine(row, out);
    const auto added = out.begin() + static_cast<std::ptrdiff_t>(start);
    if (std::any_of(added, out.end(), [](char c) { return static_cast<signed char>(c) < 0; }))
        out.replace(start, std::string::npos, ToCodePage(out.substr(start)));
    out += LineEnd;
}

std::string IsePass(StateOf<const IseCalibration, const HardwareSettings> state, const DataTable& table,
                    std::size_t pass) {
    const IseCalibration& calibration = state;
    const HardwareSettings& hardware = state;
    const auto line = [&](std::size_t i) { return table.Label1[i] + "\t" + table.txtData[i] + LineEnd; };
    const std::string electrode = "Electrode serial number:\t" + hardware.ElectrodeNum[0] + LineEnd;
    switch (pass) {
        case 0: return "Operator Name:\t" + hardware.Operator + LineEnd + line(0);
        case 1: break;
        case 4:
            return table.Label1[4] + "\t" + table.txtData[4] + "\t" + table.Label1[10] + "\t" + table.txtData[7] +
                   LineEnd;
        default: return line(pass);
    }
    std::string standards = "Calibration Standard:\t";
    std::string values = "Calibration Value (mV):\t";
    std::string slopes = "Calibration Slopes:\t";
    for (int i = 1; i <= calibration.CaliPoints; ++i) {
        standards += TrimStr(calibration.CaliPpm.at(static_cast<std::size_t>(i))) + "\t";
        values += TrimStr(calibration.CaliE.at(static_cast<std::size_t>(i))) + "\t";
    }
    if (calibration.CaliPoints == 1) slopes += TrimStr(calibration.CaliSlope) + "\t";
    for (int i = 1; i < calibration.CaliPoints; ++i)
        slopes += PartialSlopeText(state, i) + "\t";
    return "Reference Electrode:\t" + hardware.RefElectrode[0] + " " + hardware.RefElectrode[1] + LineEnd + electrode +
           standards + LineEnd + values + LineEnd + slopes + LineEnd;
}

std::string PhPass(const HardwareSettings& hardware, const DataTable& table, std::size_t pass) {
    std::string out;
    if (pass == 0) out = table.Label1[7] + " :" + LineEnd;
    if (pass == 3) out = table.Label1[8] + " :" + LineEnd;
    const bool buffers = pass == 2 || pass == 5;
    const std::string& text = table.txtData[pass];
    out += table.Label1[pass] + "\t" + (buffers && text.empty() ? std::string("pH:\r\nmV:") : text) + LineEnd;
    if (pass == 5) out += "Operator Name\t" + hardware.Operator + LineEnd;
    return out;
}

/// Text after the first TAB of a line; without one the whole line.
std::string ValueOf(const std::string& line) {
    return line.substr(line.find('\t') + 1);
}

bool HoldsSlope(const std::string& line) {
    return Upper(line).find("SLOPE") != std::string::npos;
}

/// Reads a head from a file, pass by pass.
class HeadReader {
 public:
    HeadReader(RecordReader& reader, DataTable& table) : reader_(reader), table_(table) {}

    void Ise(std::size_t pass) {
        if (pass == 0) {
            table_.txtData[6] = "Operator: " + ValueOf(reader_.Line());
        } else if (pass == 1) {
            table_.Label1[6].clear();
            table_.Label1[7] = "Ref. : " + ValueOf(reader_.Line());
            table_.Label1[8].clear();
            table_.Label1[9] = "ISE Serial No. " + ValueOf(reader_.Line());
        }
        const std::string line = reader_.Line();
        std::string& text = table_.txtData[pass];
        if (pass == 4) {
            IonAndNotes(line);
        } else if (HoldsSlope(line)) {
            text = std::string("N/A") + LineEnd + "N/A" + LineEnd + ValueOf(line);
        } else if (pass == 1) {
            text = ValueOf(line);
            for (int more = 0; more < 2; ++more)
                text += LineEnd + ValueOf(reader_.Line());
        } else {
            text = ValueOf(line);
        }
    }

    void Ph(std::size_t pass) {
        if (pass == 0 || pass == 3) reader_.Line();
        std::string& text = table_.txtData[pass];
        text = ValueOf(reader_.Line());
        if (pass == 2 || pass == 5) text += LineEnd + reader_.Line();
        if (pass == 5) table_.Label1[9] = "Operator: " + ValueOf(reader_.Line());
    }

 private:
    void IonAndNotes(const std::string& line) {
        const std::size_t first = line.find('\t');
        const std::size_t second = first == std::string::npos ? first : line.find('\t', first + 1);
        if (second == std::string::npos) {
            table_.txtData[4] = ValueOf(line);
            table_.txtData[7] = "None";
            return;
        }
        table_.txtData[4] = line.substr(first + 1, second - first - 1);
        table_.txtData[7] = line.substr(line.find('\t', second + 1) + 1);
    }

    RecordReader& reader_;
    DataTable& table_;
};

/// What a save leaves out of what the table shows.
struct Omissions {
    int lostRow = 0;    ///< number of the row that is not in the file, 0 none
    int rows = 0;       ///< rows shown below the heads
    bool head = false;  ///< the head is cut short
    int splitRows = 0;  ///< rows that a comma or a leading quote will break up when they are read
};

bool WillSplit(const std::string& row) {
    if (row.find(',') != std::string::npos) return true;
    const std::size_t start = row.find_first_not_of(" \t");
    return start != std::string::npos && row[start] == '"';
}

/// What to do about a short head.
std::string WhereTheHeadIs(const std::string& name) {
    const auto backup = ReadIfPossible(name + "~");
    return (backup && !HoldingsOf(*backup).ShortHead() ? "; " + LastPart(name) + "~ beside it has the whole one"
                                                       : std::string()) +
           ". Export, CSV or XLSX in the table screen writes all rows with the whole head.";
}

std::string StatusMessageOf(const std::string& name, const Omissions& omitted, bool backupKept,
                            const std::string& factsRemark) {
    std::string told;
    if (omitted.lostRow > 0)
        told += " Row " + TrimStr(omitted.lostRow) + " of " + TrimStr(omitted.rows) + " is not in the file.";
    if (omitted.head) told += " Of the head only the first two lines are in the file" + WhereTheHeadIs(name);
    if (omitted.splitRows > 0)
        told += " " + TrimStr(omitted.splitRows) + (omitted.splitRows == 1 ? " row holds" : " rows hold") +
                " a comma or a quote and will not open as shown.";
    if (!backupKept) told += " The previous version could not be kept.";
    told += factsRemark;
    if (told.empty()) return {};
    return "Saved to " + LastPart(name) + "." + told;
}

/// How the bytes of a table came into a file.
struct Placed {
    std::string path;
    Replaced replaced;
    std::string told;  ///< to be told in a box, empty: nothing
};

/// The version that somebody else has made stays beside, with what is known of its rows.
std::string KeepChangedTable(const std::string& path) {
    std::string version = KeepChangedVersion(path);
    std::error_code failed;
    const std::string facts = FindFile(FactsFileOf(path)), aside = FactsFileOf(version);
    std::filesystem::create_hard_link(facts, aside, failed);
    if (failed && FileExists(facts)) std::filesystem::copy_file(facts, aside, failed);
    return version;
}

/// A new file beside one that is left to another program.
std::string WriteBeside(const std::string& path, std::string_view bytes) {
    const std::filesystem::path file(path);
    const std::string stem = (file.parent_path() / file.stem()).string(), ending = file.extension().string();
    constexpr int MostFiles = 1000;
    for (int n = 1; n <= MostFiles; ++n) {
        std::string name = stem + " (measured here";
        if (n > 1) name.append(" ").append(TrimStr(n));
        name.append(")").append(ending);
        if (CreateWholeFile(name, bytes)) return name;
    }
    throw RuntimeError(ErrorNumber::PathAccess);
}

/// Replaces a file that was changed elsewhere since the table was last written to it.
Placed PutBesideChanged(DataTable::KnownFile& known, const std::string& path, std::string_view bytes) {
    if (known.changed) {
        const std::string own = WriteBeside(path, bytes);
        return {own,
                {},
                path + " has been changed elsewhere again and is left to who changes it. The rows of this table " +
                    "go on in " + LastPart(own) + "."};
    }
    const std::string version = KeepChangedTable(path);
    try {
        ReplaceWholeFile(path, bytes);
    } catch (const RuntimeError&) {
        for (const std::string& name : {version, FactsFileOf(version)})
            std::remove(name.c_str());
        throw;
    }
    known.changed = true;
    return {path,
            {},
            path + " has been changed elsewhere since it was last written here. That version is kept as " +
                LastPart(version) + "; " + LastPart(path) + " holds the rows of this table."};
}

/// A table that is rewritten sample by sample backs up what the first of them replaces.
enum class Backup { Always, First };

Placed PutInPlace(DataTable& table, const std::string& path, std::string_view bytes, Backup backup) {
    const RewriteTurn turn(path);
    DataTable::KnownFile& known = table.Files[path];
    Placed placed{path, {}, {}};
    if (known.mark.ChangedElsewhere(path))
        placed = PutBesideChanged(known, path, bytes);
    else if (backup == Backup::Always || !known.mark.Known())
        placed.replaced = ReplaceKeepingBackup(path, bytes, TableBackupRule(bytes));
    else
        ReplaceWholeFile(path, bytes);
    table.Files[placed.path].mark = FileMark(bytes);
    return placed;
}

/// Writes the file, leaves the remark and tells of a strange version. `name` becomes the file that holds the table.
void WriteTable(StateOf<const IseCalibration, const HardwareSettings, StatusMessages> state, DataTable& table,
                Prompts& prompts, std::string& name, TableHeadForm form, int lastPass, int fullPass, Backup backup) {
    StatusMessages& status = state;
    Omissions omitted;
    omitted.head = lastPass < fullPass;
    const int last = table.Rows() - 1;
    const bool lastShown = last >= 1 && !table.RowIsEmpty(last);
    omitted.rows = lastShown ? last : std::max(0, last - 1);
    omitted.lostRow = lastShown ? last : 0;

    std::string bytes = ToCodePage(TableHeadLines(state, table, form, lastPass));
    for (int row = 0; row < last; ++row) {
        AppendRow(bytes, table, row);
        if (row > 0 && WillSplit(table.RowText(row))) ++omitted.splitRows;
    }
    const std::string path = FindFile(name);
    const Placed placed = PutInPlace(table, path, bytes, backup);
    if (placed.path != path) name = placed.path;
    const std::string facts = WriteFactsBeside(table, placed.path, last - 1, placed.replaced.backup);
    status.StatusMessage = StatusMessageOf(placed.path, omitted, placed.replaced.kept, facts);
    if (!placed.told.empty()) prompts.Message(placed.told, {}, Icon::Exclamation);
}

/// The save dialog and its questions; none when it was left without a name.
struct ChosenName {
    std::string name;  ///< the file to write
    std::string kept;  ///< what the dialog holds afterwards
};
std::optional<ChosenName> AskName(StateOf<const Paths, TableState> state, const TableKind& kind, Prompts& prompts,
                                  FileChooser& files) {
    const Paths& paths = state;
    TableState& tableState = state;
    // Only the first name gets an ending; the ones after a refused question count as chosen.
    std::string kept;
    const auto use = [&, again = false](const std::string& chosen) mutable {
        const std::string upper = UpperName(chosen);
        if (!std::exchange(again, true)) return kept = WithEnding(upper, kind.extension);
        kept = chosen;
        return tableState.TableFile = upper;
    };
    const auto name = AskNameToSave(prompts, files, {.dialog = {kind.saveFilter, paths.DataPath, {}}, .use = use});
    if (!name) return std::nullopt;
    return ChosenName{*name, kept};
}

}  // namespace

TableKind KindOf(const Navigation& navigation) {
    constexpr const char* TabSave = "All Data(*.Tab)|*.tab";
    constexpr const char* TabOpen = "All Data(*.Tab)|*.Tab";
    constexpr const char* Phc = "All Data(*.phc)|*.phc";
    constexpr const char* Pht = "All Data(*.pht)|*.pht";
    constexpr const char* Smt = "All Data(*.smt)|*.smt";
    constexpr const char* Sdt = "All Data(*.sdt)|*.sdt";
    const TableHeadForm form = navigation.pHMode != 0 ? TableHeadForm::Ph : TableHeadForm::Ise;
    switch (navigation.ReturnTo()) {
        case ScreenCode::frmDsply: return {Pht, Pht, ".pht", 6, form};
        case ScreenCode::frmPHMe:
            if (navigation.pHMode != 0) return {Phc, Phc, ".phc", 6, form};
            break;
        case ScreenCode::frmSampa: return {Smt, Smt, ".smt", 5, TableHeadForm::Ise};
        case ScreenCode::frmStanad01: return {Sdt, Sdt, ".sdt", 5, TableHeadForm::Ise};
        default: break;
    }
    return {TabSave, TabOpen, ".tab", 5, TableHeadForm::Ise};
}

std::string TableHeadLines(StateOf<const IseCalibration, const HardwareSettings> state, const DataTable& table,
                           TableHeadForm form, int lastPass) {
    std::string lines;
    for (std::size_t pass = 0; pass <= static_cast<std::size_t>(lastPass); ++pass)
        lines += form == TableHeadForm::Ph ? PhPass(state, table, pass) : IsePass(state, table, pass);
    return lines;
}

void ReadTable(DataTable& table, std::string_view bytes, TableHeadForm form, int lastPass) {
    const DataTable::BatchUpdate filling(table);
    RecordReader reader(bytes);
    HeadReader head(reader, table);
    for (std::size_t pass = 0; pass <= static_cast<std::size_t>(lastPass); ++pass)
        form == TableHeadForm::Ph ? head.Ph(pass) : head.Ise(pass);
    reader.Line();
    const auto lines = std::count(bytes.begin(), bytes.end(), '\n');
    table.Reserve(table.Rows() + static_cast<int>(std::min<std::ptrdiff_t>(lines, DataTable::MaxRows)));
    while (!reader.AtEnd())
        table.AddItem(reader.Item(), table.Rows() - 1);
    table.RemoveItem(table.Rows() - 1);
}

SaveOutcome SaveTableFile(
    StateOf<const Paths, const Navigation, const IseCalibration, TableState, const HardwareSettings, StatusMessages>
        state,
    DataTable& table, Prompts& prompts, FileChooser& files) {
    const TableKind kind = KindOf(state);
    ChosenName target{table.FileName, table.FileName};
    int lastPass = 0;
    if (target.name.empty()) {
        const std::optional<ChosenName> asked = AskName(state, kind, prompts, files);
        if (!asked) return SaveOutcome::Cancelled;
        target = *asked;
        lastPass = kind.lastPass;
    }
    const std::string asked = target.name;
    if (!TakeFileStep(prompts, "Saving", target.name, [&] {
            WriteTable(state, table, prompts, target.name, kind.form, lastPass, kind.lastPass, Backup::Always);
        }))
        return SaveOutcome::Failed;
    table.FileName = target.name != asked ? target.name : target.kept;
    return SaveOutcome::Saved;
}

namespace {

/// A reader takes as many lines for the head as a whole one has, whatever they are.
std::string ShortHeadRemark(DataTable& table, std::string_view bytes) {
    const TableHoldings holdings = HoldingsOf(bytes);
    table.ShortHead = holdings.ShortHead() && holdings.rows > 0;
    if (!table.ShortHead) return {};
    return "The head of " + LastPart(table.FileName) + " is short, and the first of its " + TrimStr(holdings.rows) +
           " rows have been read in its place. File, Short Head shows all rows" +
           (FileExists(table.FileName + "~") ? "; " + LastPart(table.FileName) + "~ is an earlier version." : ".");
}

/// A power cut leaves zeros where the end of a file, or all of it, did not reach the disk.
std::string CutZeros(const DataTable& table, std::string& bytes) {
    const std::size_t end = bytes.find_last_not_of('\0') + 1, zeros = bytes.size() - end;
    if (zeros == 0) return {};
    bytes.resize(end);
    const std::string name = LastPart(table.FileName);
    return "The last " + TrimStr(static_cast<double>(zeros)) + " bytes of " + name +
           " are zeros, as a power cut leaves them" +
           (FileExists(table.FileName + "~") ? "; " + name + "~ is an earlier version." : ".");
}

/// The version that a killed save has left beside the file becomes a backup.
void AdoptLeftTable(const std::string& path) {
    if (!HasLeftVersion(path)) return;
    const RewriteTurn turn(path);
    try {
        const std::string bytes = ReadWholeFile(path);
        AdoptLeftVersion(path, TableBackupRule(bytes));
    } catch (const RuntimeError&) {
        // The opening tells it.
    }
}

}  // namespace

bool OpenTableFile(StateOf<const Paths, const Navigation, TableState, StatusMessages> state, DataTable& table,
                   Prompts& prompts, FileChooser& files) {
    const Paths& paths = state;
    TableState& tableState = state;
    StatusMessages& status = state;
    tableState.OpenCancelled = 0;
    const TableKind kind = KindOf(state);
    const std::optional<std::string> chosen = files.Open({kind.openFilter, paths.DataPath, {}});
    if (!chosen) {
        tableState.OpenCancelled = 1;
        return false;
    }
    if (chosen->empty()) return false;
    table.FileName = InFolder(paths.DataPath, UpperName(*chosen));
    return TakeFileStep(prompts, "Saving", table.FileName, [&] {
        const std::string path = FindFile(table.FileName);
        AdoptLeftTable(path);
        std::string bytes = ReadWholeFile(path);
        table.Files[path].mark = FileMark(bytes);
        const std::string zeros = CutZeros(table, bytes);
        const std::string head = ShortHeadRemark(table, bytes);
        status.StatusMessage = zeros + (zeros.empty() || head.empty() ? "" : " ") + head;
        ReadTable(table, bytes, kind.form, kind.lastPass);
        status.StatusMessage += ReadFactsBeside(table, path);
    });
}

void ReadShortHead(StateOf<const Navigation, StatusMessages> state, DataTable& table, Prompts& prompts) {
    StatusMessages& status = state;
    TakeFileStep(prompts, "Saving", table.FileName, [&] {
        ReadTable(table, ReadWholeFile(table.FileName), KindOf(state).form, 0);
        status.StatusMessage = "All rows are shown. Of the head the file has the first two lines only." +
                               ReadFactsBeside(table, FindFile(table.FileName));
    });
}

namespace {

/// Head of the file that `RewriteTableFile` writes for the present owner.
std::pair<TableHeadForm, int> RewrittenHead(const Navigation& navigation) {
    const auto owner = navigation.ReturnTo();
    const bool seven = owner == ScreenCode::frmDsply || owner == ScreenCode::frmPHMe;
    return {owner == ScreenCode::frmDsply ? TableHeadForm::Ph : TableHeadForm::Ise, seven ? 6 : 5};
}

}  // namespace

std::string RewrittenTableBytes(StateOf<const Navigation, const IseCalibration, const HardwareSettings> state,
                                const DataTable& table) {
    const auto [form, lastPass] = RewrittenHead(state);
    std::string bytes = ToCodePage(TableHeadLines(state, table, form, lastPass));
    for (int row = 0; row < table.Rows() - 1; ++row)
        AppendRow(bytes, table, row);
    return bytes;
}

bool StandsAsLeft(const DataTable& table, const std::string& name) {
    const std::string path = FindFile(name);
    const auto known = table.Files.find(path);
    return !FileExists(path) ||
           (known != table.Files.end() && known->second.mark.Known() && !known->second.mark.ChangedElsewhere(path));
}

SaveOutcome RewriteTableFile(
    StateOf<const Navigation, const IseCalibration, TableState, const HardwareSettings, StatusMessages> state,
    DataTable& table, Prompts& prompts) {
    TableState& tableState = state;
    const auto [form, lastPass] = RewrittenHead(state);
    return TakeFileStep(prompts, "Saving", tableState.TableFile,
                        [&, form = form, lastPass = lastPass] {
                            WriteTable(state, table, prompts, tableState.TableFile, form, lastPass, lastPass,
                                       Backup::First);
                        })
               ? SaveOutcome::Saved
               : SaveOutcome::Failed;
}

}  // namespace kelvo
