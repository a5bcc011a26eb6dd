#include "core/RowFacts.h"

#include <algorithm>
#include <string_view>

namespace kelvo {
namespace {

constexpr std::string_view Between = "; ";

/// With the separator around it, so that a part is found as a whole only.
std::string Framed(const std::string& words) {
    std::string framed(Between);
    return framed.append(words).append(Between);
}

}  // namespace

bool RowFacts::KnownWhenMeasured() const {
    const auto afterwards = [](const auto& text) {
        return text.first == fact::Struck || text.first == fact::Dilution || text.first == fact::Blank ||
               text.first == fact::BlankU || text.first == fact::Control || text.first == fact::Uncovered ||
               text.first == fact::Corrected || text.first == fact::DriftU || text.first == fact::Correction;
    };
    return !std::all_of(texts_.begin(), texts_.end(), afterwards);
}

void RowFacts::Remark(const std::string& words) {
    for (std::size_t start = 0; start < words.size();) {
        const std::size_t end = std::min(words.find(Between, start), words.size());
        const std::string part = words.substr(start, end - start), told = Get(fact::Remark);
        start = end + Between.size();
        if (Framed(told).find(Framed(part)) == std::string::npos)
            Set(fact::Remark, told.empty() ? part : std::string(told).append("; ").append(part));
    }
}

std::string FactsFileOf(const std::string& table) {
    return table + ".rows";
}

}  // namespace kelvo
