#include "calibration/StandardsPresenter.h"

#include "calibration/BlankLimits.h"
#include "core/Dialogs.h"
#include "statistics/Figures.h"
#include "statistics/Replicates.h"
#include "text/Number.h"

namespace kelvo {

void StandardsPresenter::Begin() {
    standards_ = AllStandards(calibration_);
    told_ = calibration_.Told;
}

const std::vector<std::string>& StandardsPresenter::Heads() {
    static const std::vector<std::string> heads = {"No.", "ppm", "LogC", "mV", "Left out because"};
    return heads;
}

std::vector<std::vector<std::string>> StandardsPresenter::Rows() const {
    std::vector<std::vector<std::string>> rows;
    int number = 0;
    for (const StandardEntry& standard : standards_)
        rows.push_back({standard.leftOut.empty() ? std::to_string(++number) : "-", Format(standard.ppm, "0.00"),
                        Format(standard.logC, "0.000"), Format(standard.mv, "0.00"), standard.leftOut});
    return rows;
}

std::string StandardsPresenter::LeaveOut(std::size_t i) {
    if (i >= standards_.size() || IsLeftOut(i)) return {};
    StandardEntry& standard = standards_[i];
    standard.leftOut = "-";
    std::string refused = WhyTooFew(standards_);
    standard.leftOut.clear();
    if (!refused.empty()) return refused;
    const auto reason =
        prompts_.Input("Leave Out", "Why does the standard of " + Format(standard.mv, "0.00") + " mV not count?", "");
    if (!reason) return {};
    standard.leftOut = Trim(*reason);
    return standard.leftOut.empty() ? "A standard is left out for a reason alone." : "";
}

void StandardsPresenter::TakeBack(std::size_t i) {
    if (i < standards_.size()) standards_[i].leftOut.clear();
}

void StandardsPresenter::AddBlank(const std::string& millivolts) {
    const std::string before = Trim(told_.blanks);
    told_.blanks = before.empty() ? Trim(millivolts) : before + " " + Trim(millivolts);
}

std::string StandardsPresenter::BlanksText() const {
    const auto blanks = BlanksOf(told_.blanks);
    if (!blanks) return WhyNotTold({{}, {}, {}, told_.blanks});
    if (blanks->empty()) return {};
    const auto own = Summarise(*blanks);
    if (!own) return "1 blank; limits are told from three on";
    return std::to_string(own->n) + " blanks, mean " + WithPlacesOf(own->mean, own->deviation) + " mV, s " +
           WithPlacesOf(own->deviation, own->deviation) + " mV" +
           (own->n < BlankLimits::Fewest ? "; limits are told from three on" : "");
}

std::string StandardsPresenter::Close() {
    for (std::string* text : {&told_.relativeU, &told_.lot, &told_.expires, &told_.blanks})
        *text = Trim(*text);
    return WhyNotTold(told_);
}

}  // namespace kelvo
