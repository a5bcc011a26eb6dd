#include "tables/TableBackup.h"

#include "text/Backup.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// The rows of a table file with their column heads.
std::string_view RowsOf(std::string_view bytes) {
    const std::size_t heads = bytes.starts_with('\t') ? 0 : bytes.find("\n\t");
    return heads == std::string_view::npos ? std::string_view() : bytes.substr(heads);
}

}  // namespace

TableHoldings HoldingsOf(std::string_view bytes) {
    TableHoldings holdings;
    bool below = false;
    while (!bytes.empty()) {
        if (!below && bytes.front() == '\t')
            below = true;
        else
            ++(below ? holdings.rows : holdings.headLines);
        const std::size_t end = bytes.find('\n');
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
    }
    return holdings;
}

bool ReplaceTableFile(const std::string& path, std::string_view bytes) {
    std::string old;
    try {
        if (FileExists(path)) old = ReadWholeFile(path);
    } catch (const RuntimeError&) {
        // What cannot be read is kept as any other file is.
        return ReplaceKeepingBackup(path, bytes);
    }
    const TableHoldings given = HoldingsOf(old);
    const bool contained = given.rows > 0 && RowsOf(bytes).starts_with(RowsOf(old));
    constexpr int MostBackups = 9;
    for (int n = 1; n <= MostBackups; ++n) {
        const std::string backup = path + "~" + (n == 1 ? "" : std::to_string(n));
        if (!FileExists(backup)) return ReplaceKeepingBackup(path, bytes, backup);
        TableHoldings held;
        try {
            held = HoldingsOf(ReadWholeFile(backup));
        } catch (const RuntimeError&) {
            continue;
        }
        const bool poorer = given.rows < held.rows || (given.ShortHead() && !held.ShortHead());
        if (!poorer) return ReplaceKeepingBackup(path, bytes, backup);
        if (contained) break;
    }
    ReplaceWholeFile(path, bytes);
    return contained;
}

}  // namespace kelvo
