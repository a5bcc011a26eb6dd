#include "tables/TableFile.h"
#include "text/CodePage.h"

namespace kelvo {

std::string RecordingHead(const AppState& state, const DataTable& table) {
    const TableKind kind = KindOf(state);
    return ToCodePage(TableHeadLines(state, table, kind.form, kind.lastPass) + table.RowLine(0) + "\r\n");
}

}  // namespace kelvo
