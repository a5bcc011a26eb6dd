#include "devices/XlsxExport.h"

#include <fcntl.h>
#include <unistd.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>

#include "tables/RowUncertainty.h"
#include "tables/TableFile.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr int RowsASheet = 1048575;

[[noreturn]] void ThrowFor(int cause) {
    switch (cause) {
        case ENOSPC:
        case EDQUOT: throw RuntimeError(ErrorNumber::DiskFull);
        case EACCES:
        case EPERM:
        case EROFS: throw RuntimeError(ErrorNumber::PermissionDenied);
        case ENOENT:
        case ENOTDIR: throw RuntimeError(ErrorNumber::PathNotFound);
        default: throw RuntimeError(ErrorNumber::PathAccess);
    }
}

/// A file beside the target that goes away again unless it takes the target's place.
class TemporaryFile {
 public:
    explicit TemporaryFile(const std::string& path) : target_(path), name_(path + ".part") {
        const int file = ::open(name_.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0666);
        if (file < 0) ThrowFor(errno);
        ::close(file);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty()) ::unlink(name_.c_str());
    }
    const std::string& Name() const { return name_; }
    void TakePlace() {
        const int file = ::open(name_.c_str(), O_RDONLY | O_CLOEXEC);
        const bool flushed = file >= 0 && ::fsync(file) == 0;
        const int cause = errno;
        if (file >= 0) ::close(file);
        if (!flushed) ThrowFor(cause);
        if (::rename(name_.c_str(), target_.c_str()) != 0) ThrowFor(errno);
        name_.clear();
    }

 private:
    std::string target_, name_;
};

void PutCell(lxw_worksheet* sheet, int row, int col, std::string_view text) {
    if (text.empty()) return;
    const auto r = static_cast<lxw_row_t>(row);
    const auto c = static_cast<lxw_col_t>(col);
    if (const auto number = CellNumber(text))
        worksheet_write_number(sheet, r, c, *number, nullptr);
    else
        worksheet_write_string(sheet, r, c, std::string(text).c_str(), nullptr);
}

void PutHeads(lxw_worksheet* sheet, const DataTable& table, const AddedColumns& added, lxw_format* bold) {
    int next = 0;
    const auto put = [&](const std::string& head) {
        worksheet_write_string(sheet, 0, static_cast<lxw_col_t>(next++), head.c_str(), bold);
    };
    for (int col = 0; col < table.Cols(); ++col)
        put(ExportHead(table, col));
    for (const std::string& head : added.heads)
        put(head);
    worksheet_freeze_panes(sheet, 1, 0);
}

void PutRows(lxw_workbook* book, const DataTable& table, const AddedColumns& added, lxw_format* bold) {
    const int rows = ExportRows(table);
    lxw_worksheet* sheet = nullptr;
    int line = 0;
    for (int row = 1; row <= std::max(rows, 1); ++row) {
        if (sheet == nullptr || line == RowsASheet) {
            const std::string name = row == 1 ? "Data Table" : "Data Table " + std::to_string(row / RowsASheet + 1);
            sheet = workbook_add_worksheet(book, name.c_str());
            PutHeads(sheet, table, added, bold);
            line = 0;
        }
        ++line;
        if (row > rows) break;
        for (int col = 0; col < table.Cols(); ++col)
            PutCell(sheet, line, col, table.Cell(row, col));
        if (added.heads.empty()) continue;
        for (int col = table.Cols(); const std::string& cell : added.cells(row))
            PutCell(sheet, line, col++, cell);
    }
}

void PutHead(lxw_workbook* book, const DataTable& table) {
    lxw_worksheet* sheet = workbook_add_worksheet(book, "Head");
    worksheet_set_column(sheet, 0, 1, 36, nullptr);
    for (std::size_t i = 0; i < table.Label1.size(); ++i) {
        worksheet_write_string(sheet, static_cast<lxw_row_t>(i), 0, table.Label1[i].c_str(), nullptr);
        const std::string text = i < 7 ? table.txtData[i] : i == 10 ? table.txtData[7] : std::string();
        if (!text.empty()) worksheet_write_string(sheet, static_cast<lxw_row_t>(i), 1, text.c_str(), nullptr);
    }
}

}  // namespace

void WriteXlsx(const DataTable& table, const std::string& path, const AddedColumns& added) {
    TemporaryFile beside(path);
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;
    options.use_zip64 = table.Rows() > RowsASheet ? LXW_TRUE : LXW_FALSE;
    lxw_workbook* book = workbook_new_opt(beside.Name().c_str(), &options);
    if (book == nullptr) throw RuntimeError(ErrorNumber::PathAccess);
    lxw_format* bold = workbook_add_format(book);
    format_set_bold(bold);
    PutRows(book, table, added, bold);
    PutHead(book, table);
    errno = 0;
    if (workbook_close(book) != LXW_NO_ERROR) ThrowFor(errno);
    beside.TakePlace();
}

bool ExportXlsx(AppState& state, const DataTable& table, Prompts& prompts, FileChooser& files) {
    const auto name = AskExportName(state, ".xlsx", prompts, files);
    if (!name) return false;
    try {
        WriteXlsx(table, *name, UncertaintyColumns(table, ReadQualityLimits(state.IniPath)));
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", *name);
        return false;
    }
    state.StatusMessage = "Exported to " + LastPart(*name) + ".";
    return true;
}

std::string XlsxLibraryVersion() {
    return lxw_version();
}

}  // namespace kelvo
