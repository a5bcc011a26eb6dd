#include "core/StateOf.h"
#include "tables/TableFile.h"
#include "text/CodePage.h"

namespace kelvo {

std::string RecordingHead(StateOf<const Navigation, const IseCalibration, const HardwareSettings> state,
                          const DataTable& table) {
    const TableKind kind = KindOf(state);
    return ToCodePage(TableHeadLines(state, table, kind.form, kind.lastPass) + table.RowLine(0) + "\r\n");
}

}  // namespace kelvo
