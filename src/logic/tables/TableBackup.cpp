#include "tables/TableBackup.h"

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

bool TableBackupRule::GivesWay(std::string_view held, std::string_view given) const {
    const TableHoldings old = HoldingsOf(held), next = HoldingsOf(given);
    return next.rows >= old.rows && (!next.ShortHead() || old.ShortHead());
}

bool TableBackupRule::Needless(std::string_view given) const {
    return HoldingsOf(given).rows > 0 && RowsOf(fresh_).starts_with(RowsOf(given));
}

bool TableBackupRule::LooksOurs(std::string_view held) const {
    return HoldingsOf(held).rows > 0;
}

}  // namespace kelvo
