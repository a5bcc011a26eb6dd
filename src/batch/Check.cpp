#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/FileReport.h"
#include "calibration/DriftCheck.h"
#include "tables/DataTable.h"
#include "tables/ReportedResult.h"
#include "tables/TableExport.h"
#include "text/Number.h"

namespace kelvo {
namespace {

constexpr int SampleCol = 1, TimeCol = 2, MvCol = 3;

using Rows = std::vector<std::vector<std::string>>;

/// The standards that were measured again, one a row.
Rows ChecksOf(const DataTable& table) {
    Rows rows;
    for (int row = 1; row <= ExportRows(table); ++row) {
        const RowFacts& facts = table.Facts(row);
        if (facts.Get(fact::CheckStandard).empty()) continue;
        const auto cell = [&](int col) { return std::string(table.Cell(row, col)); };
        rows.push_back({TrimStr(row), cell(TimeCol), facts.Get(fact::CheckStandard), facts.Get(fact::CheckExpected),
                        cell(MvCol), facts.Get(fact::CheckDrift), facts.Get(fact::CheckPercent),
                        facts.Get(fact::CheckLimit), facts.Get(fact::CheckVerdict)});
    }
    return rows;
}

/// Samples that have that fact, with what it says.
Rows SamplesWith(const DataTable& table, const char* name) {
    Rows rows;
    for (int row = 1; row <= ExportRows(table); ++row)
        if (const std::string text = table.Facts(row).Get(name); !text.empty())
            rows.push_back({TrimStr(row), std::string(table.Cell(row, SampleCol)), text});
    return rows;
}

}  // namespace

ExitCode RunCheck(const Arguments& arguments, const Streams& streams) {
    StateFor(arguments);
    const std::string& file = arguments.Words().front();
    const FileKindRow& kind = KindOfFile(file, arguments);
    const Report read = ReadFileReport(file, kind, arguments, streams.in);
    if (!read.told.empty()) streams.Note(file + ": " + read.told);
    if (read.table == nullptr || !HasResults(*read.table))
        Refuse(ExitCode::File, file + ": drift is checked among samples; this is a " + kind.name);
    Rows checks = ChecksOf(*read.table), uncovered = SamplesWith(*read.table, fact::Uncovered);
    const bool sound = !checks.empty() && uncovered.empty();
    const std::size_t most = static_cast<std::size_t>(ExportRows(*read.table));
    Report report;
    report.fields = {NumberField("checks", "Checks", TrimStr(static_cast<int>(checks.size()))),
                     NumberField("not_covered", "Samples not covered", TrimStr(static_cast<int>(uncovered.size())))};
    report.sections = {
        SectionOf("drift_checks", "Drift checks",
                  {"row", "time", "standard", "expected mV", "mV", "drift mV", "drift %", "limit", "verdict"},
                  std::move(checks)),
        SectionOf("not_covered_rows", "Not covered", {"row", "sample", "why"}, std::move(uncovered)),
        SectionOf("corrected_rows", "Drift corrected in results", {"row", "sample", "correction"},
                  SamplesWith(*read.table, fact::Correction))};
    if (arguments.Has(JsonOption.name)) {
        WriteJson(streams.out, report);
        streams.out << "\n";
    } else {
        WriteText(streams.out, report, most);
    }
    return sound ? ExitCode::Done : ExitCode::RowsRefused;
}

}  // namespace kelvo
