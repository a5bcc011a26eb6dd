#include "tables/RowFactsFile.h"

#include <unordered_map>
#include <utility>

#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// A reader takes the blanks in front of a row away, and cells that hold nothing may be missing at its end.
std::string_view Essential(std::string_view cells) {
    const std::size_t first = cells.find_first_not_of(' ');
    const std::size_t last = cells.find_last_not_of('\t');
    if (first == std::string_view::npos || last == std::string_view::npos || last < first) return {};
    return cells.substr(first, last - first + 1);
}

std::string CheckOf(std::string_view cells) {
    return FactsCheck(Essential(cells));
}

/// Finds the row that a line belongs to: the one of its number, or the only other one with the same cells.
class RowFinder {
 public:
    explicit RowFinder(const DataTable& table) : table_(table) {}

    int Find(int row, const std::string& check) {
        if (row >= 1 && row < table_.Rows() && CheckOf(table_.RowText(row)) == check) return row;
        if (!filled_) Fill();
        const auto found = rows_.find(check);
        return found == rows_.end() ? 0 : found->second;
    }

 private:
    void Fill() {
        filled_ = true;
        for (int row = 1; row < table_.Rows(); ++row) {
            const auto [at, fresh] = rows_.try_emplace(CheckOf(table_.RowText(row)), row);
            if (!fresh) at->second = 0;
        }
    }

    const DataTable& table_;
    bool filled_ = false;
    std::unordered_map<std::string, int> rows_;  ///< by check; 0 when several have it
};

}  // namespace

std::string FactsLine(int row, std::string_view cells, const RowFacts& facts) {
    return facts.Empty() ? std::string() : EntryLine({row, CheckOf(cells), facts});
}

std::string FactsBytes(const DataTable& table, const std::string& name, int lastRow) {
    std::string bytes;
    for (int row = 1; row <= lastRow; ++row)
        if (!table.Facts(row).Empty()) bytes += FactsLine(row, table.RowLine(row), table.Facts(row));
    return bytes.empty() ? bytes : FactsHeading(name) + bytes;
}

int TakeFacts(DataTable& table, std::string_view bytes) {
    auto entries = ReadFacts(bytes);
    if (!entries) return -1;
    const DataTable::BatchUpdate taking(table);
    RowFinder finder(table);
    int strangers = 0;
    for (FactsEntry& entry : *entries) {
        const int row = finder.Find(entry.row, entry.check);
        if (row == 0)
            ++strangers;
        else
            table.SetFacts(row, std::move(entry.facts));
    }
    return strangers;
}

std::string WriteFactsBeside(const DataTable& table, const std::string& path, int lastRow, const std::string& backup) {
    const std::string bytes = FactsBytes(table, path, lastRow), why = WriteFactsBeside(path, bytes, backup);
    return why.empty() || bytes.empty() ? std::string() : " What is known beside the rows is not kept: " + why + ".";
}

std::string ReadFactsBeside(DataTable& table, const std::string& path) {
    const std::string name = LastPart(FactsFileOf(path));
    try {
        const auto bytes = FactsFileBeside(path);
        if (!bytes) return {};
        const int strangers = TakeFacts(table, *bytes);
        if (strangers < 0) return " " + name + " is of a newer version of this program and has not been read.";
        if (strangers == 0) return {};
        return " " + TrimStr(strangers) + (strangers == 1 ? " row is" : " rows are") + " not as measured: what " +
               name + " knows of " + (strangers == 1 ? "it" : "them") + " is not shown.";
    } catch (const RuntimeError& error) {
        return " " + name + " cannot be read: " + error.what() + ".";
    }
}

}  // namespace kelvo
