#include "tables/TableExport.h"
#include "core/Messages.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "tables/RowUncertainty.h"
#include "tables/TableFile.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

void AppendField(std::string& out, std::string_view field) {
    if (field.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += field;
        return;
    }
    out += '"';
    for (const char c : field) {
        if (c == '"') out += '"';
        out += c;
    }
    out += '"';
}

void AppendFields(std::string& out, const std::vector<std::string>& fields) {
    for (const std::string& field : fields) {
        out += ',';
        AppendField(out, field);
    }
}

bool IsDigit(char c) {
    return c >= '0' && c <= '9';
}

}  // namespace

std::string ExportHead(const DataTable& table, int col) {
    return col == 0 ? std::string("Row") : std::string(table.Cell(0, col));
}

int ExportRows(const DataTable& table) {
    const int last = table.Rows() - 1;
    return last > 0 && table.RowIsEmpty(last) ? last - 1 : last;
}

std::string TableCsv(const DataTable& table, const AddedColumns& added) {
    std::string out;
    for (int col = 0; col < table.Cols(); ++col) {
        if (col > 0) out += ',';
        AppendField(out, ExportHead(table, col));
    }
    AppendFields(out, added.heads);
    out += "\r\n";
    const int rows = ExportRows(table);
    for (int row = 1; row <= rows; ++row) {
        std::string_view rest = table.RowText(row);
        for (int col = 0; col < table.Cols(); ++col) {
            if (col > 0) out += ',';
            const std::size_t tab = std::min(rest.find('\t'), rest.size());
            AppendField(out, rest.substr(0, tab));
            rest.remove_prefix(std::min(tab + 1, rest.size()));
        }
        if (!added.heads.empty()) AppendFields(out, added.cells(row));
        out += "\r\n";
    }
    return out;
}

std::optional<double> CellNumber(std::string_view cell) {
    cell.remove_prefix(std::min(cell.find_first_not_of(' '), cell.size()));
    const std::string_view unsignedPart = cell.starts_with('-') ? cell.substr(1) : cell;
    if (unsignedPart.empty() || !(IsDigit(unsignedPart[0]) || unsignedPart[0] == '.')) return std::nullopt;
    if (unsignedPart.size() > 1 && unsignedPart[0] == '0' && IsDigit(unsignedPart[1])) return std::nullopt;
    double value = 0;
    const char* const end = cell.data() + cell.size();
    const auto [stop, failed] = std::from_chars(cell.data(), end, value);
    if (failed != std::errc() || stop != end || !std::isfinite(value)) return std::nullopt;
    return value;
}

std::optional<std::string> AskExportName(const AppState& state, const char* extension, Prompts& prompts,
                                         FileChooser& files) {
    const std::string pattern = std::string("*") + extension;
    const std::string filter = "All Data(" + pattern + ")|" + pattern;
    for (;;) {
        const auto chosen = files.Save({filter, state.DataPath, {}});
        if (!chosen || chosen->empty()) return std::nullopt;
        std::string name = *chosen;
        if (LastPart(name).find('.') == std::string::npos) name += extension;
        name = FindFile(name);
        if (MayReplace(prompts, name)) return name;
    }
}

bool ExportCsv(AppState& state, const DataTable& table, Prompts& prompts, FileChooser& files) {
    const auto name = AskExportName(state, ".csv", prompts, files);
    if (!name) return false;
    try {
        ReplaceWholeFile(*name, TableCsv(table, UncertaintyColumns(table, ReadQualityLimits(state.IniPath))));
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", *name);
        return false;
    }
    state.StatusMessage = "Exported to " + LastPart(*name) + ".";
    return true;
}

}  // namespace kelvo
