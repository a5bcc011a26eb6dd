#include "core/RowFacts.h"

namespace kelvo {

void RowFacts::Remark(const std::string& words) {
    if (words.empty()) return;
    const std::string told = Get(fact::Remark);
    const std::string framed = "; " + told + "; ";
    if (framed.find("; " + words + "; ") != std::string::npos) return;
    Set(fact::Remark, told.empty() ? words : told + "; " + words);
}

std::string FactsFileOf(const std::string& table) {
    return table + ".rows";
}

}  // namespace kelvo
