#include "tables/ResultsPresenter.h"

#include <algorithm>

#include "core/Dialogs.h"
#include "core/Paths.h"
#include "core/SaveAndOpen.h"
#include "core/StatusMessages.h"
#include "core/TableState.h"
#include "tables/PrintedPage.h"
#include "tables/Reports.h"
#include "tables/ResultsPage.h"
#include "tables/TableExport.h"
#include "tables/TablePresenter.h"
#include "tables/Workbook.h"
#include "text/FileMark.h"
#include "text/Files.h"
#include "text/Number.h"

namespace kelvo {
namespace {

const char* const NoReason = "A row is struck out with a reason only; nothing has been changed.";

std::string RowList(const std::vector<int>& rows) {
    std::string list = rows.size() == 1 ? "row " : "rows ";
    for (std::size_t i = 0; i < rows.size(); ++i)
        list += (i == 0 ? "" : i + 1 == rows.size() ? " and " : ", ") + std::to_string(rows[i]);
    return list;
}

/// A number typed into a box, from end to end; a comma is told instead of cut off.
std::string Refusal(const char* what, const std::string& text, double least, bool leastIncluded) {
    if (Trim(text).empty()) return {};
    const auto number = CellNumber(Trim(text));
    if (number && (*number > least || (leastIncluded && *number == least))) return {};
    const bool comma = text.find(',') != std::string::npos;
    return std::string(what) + " is a number " + (leastIncluded ? "of " : "above ") + TrimStr(least) +
           (leastIncluded ? " or above" : "") + (comma ? ", with a point instead of the comma." : ".");
}

}  // namespace

std::string StrikeRows(TablePresenter& table, const std::vector<int>& rows, Prompts& prompts) {
    if (rows.empty()) return {};
    const auto reason = prompts.Input("Strike Out", "Why does " + RowList(rows) + " not count?", {});
    if (!reason) return {};
    const std::string text = Trim(*reason);
    if (text.empty()) return NoReason;
    return table.Annotate(rows, [&](RowFacts& facts) { facts.Set(fact::Struck, text); });
}

std::string TakeRowsBack(TablePresenter& table, const std::vector<int>& rows) {
    return table.Annotate(rows, [](RowFacts& facts) { facts.Set(fact::Struck, {}); });
}

void ResultsPresenter::Refresh() {
    const std::string sample = InHand() != nullptr ? InHand()->sample : std::string();
    results_ = ResultsOf(table_.Shown());
    const auto same = std::find_if(results_.begin(), results_.end(), [&](const auto& r) { return r.sample == sample; });
    Select(same != results_.end() ? static_cast<int>(same - results_.begin()) : place_);
}

const ReportedResult* ResultsPresenter::InHand() const {
    return results_.empty() ? nullptr : &results_[static_cast<std::size_t>(place_)];
}

void ResultsPresenter::Select(int place) {
    place_ = results_.empty() ? 0 : std::clamp(place, 0, static_cast<int>(results_.size()) - 1);
}

std::string ResultsPresenter::Heading() const {
    if (!HasResults(table_.Shown())) return "Results are made of samples, and this table holds none.";
    const std::string file = LastPart(table_.Shown().FileName);
    return results_.empty() ? "No sample has been measured yet."
           : file.empty()   ? "Results of the table"
                            : "Results of " + file;
}

std::string ResultsPresenter::Strike(int place) {
    if (InHand() == nullptr || place < 0 || place >= static_cast<int>(InHand()->rows.size())) return {};
    return StrikeRows(table_, {InHand()->rows[static_cast<std::size_t>(place)].row}, prompts_);
}

std::string ResultsPresenter::TakeBack(int place) {
    if (InHand() == nullptr || place < 0 || place >= static_cast<int>(InHand()->rows.size())) return {};
    return TakeRowsBack(table_, {InHand()->rows[static_cast<std::size_t>(place)].row});
}

std::string ResultsPresenter::Correct(const std::string& dilution, const std::string& blank,
                                      const std::string& deviation) {
    if (InHand() == nullptr) return {};
    for (const std::string& refused :
         {Refusal("A dilution factor", dilution, 0, false), Refusal("A blank", blank, 0, true),
          Refusal("The deviation of a blank", deviation, 0, true)})
        if (!refused.empty()) return refused;
    std::vector<int> rows;
    for (const ResultRow& row : InHand()->rows)
        rows.push_back(row.row);
    const auto text = [](const std::string& typed, double none) {
        const auto number = CellNumber(Trim(typed));
        return number && *number != none ? TrimStr(*number) : std::string();
    };
    return table_.Annotate(rows, [&](RowFacts& facts) {
        facts.Set(fact::Dilution, text(dilution, 1));
        facts.Set(fact::Blank, text(blank, 0));
        facts.Set(fact::BlankU, text(deviation, 0));
    });
}

void ResultsPresenter::Export(const std::string& extension) {
    const Paths& paths = state_;
    const TableState& table = state_;
    StatusMessages& status = state_;
    const std::string pattern = "*" + extension;
    const SaveRequest request{.dialog = {"Results(" + pattern + ")|" + pattern, paths.DataPath, {}},
                              .use = [&](const std::string& chosen) { return FindFile(WithEnding(chosen, extension)); },
                              .refused = [&](const std::string& name) { return IsLiveTable(table, name, prompts_); }};
    const auto name = AskNameToSave(prompts_, files_, request);
    if (!name) return;
    std::string bytes;
    const auto write = [&] {
        if (extension == ".json") {
            bytes = ResultsJson(results_);
        } else if (extension == ".csv") {
            bytes = ResultsCsv(results_);
        } else {
            Workbook book;
            AddResultSheets(book, results_);
            bytes = book.Bytes();
        }
        ReplaceWholeFile(*name, bytes);
    };
    if (TakeFileStep(prompts_, "Saving", *name, write)) status.StatusMessage = "Exported to " + LastPart(*name) + ".";
}

bool ResultsPresenter::Print(const PrintServices& services) {
    // A copy: what waits is done while it prints.
    const std::vector<ReportedResult> results = results_;
    return RunPrint(state_, services, "Results", LastPart(table_.Shown().FileName), DataNotPrinted, [&](Sheets& page) {
        PrintResults(results, page);
        PrintSignature(page);
    });
}

}  // namespace kelvo
