#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/FileReport.h"
#include "tables/ResultsPage.h"

namespace kelvo {
namespace {

constexpr const char* CsvName = "--csv";

std::vector<ReportedResult> ResultsOfFile(const std::string& file, const Arguments& arguments, const Streams& streams) {
    const FileKindRow& kind = KindOfFile(file, arguments);
    const Report report = ReadFileReport(file, kind, arguments, streams.in);
    if (!report.told.empty()) streams.Note(file + ": " + report.told);
    if (report.table == nullptr || !HasResults(*report.table))
        Refuse(ExitCode::File, file + ": results are made of tables of samples; this is a " + kind.name);
    return ResultsOf(*report.table);
}

}  // namespace

ExitCode RunResult(const Arguments& arguments, const Streams& streams) {
    StateFor(arguments);
    if (arguments.Has(JsonOption.name) && arguments.Has(CsvName))
        Refuse(ExitCode::Usage, "--json and --csv are two ways of writing; take one");
    const std::string& file = arguments.Words().front();
    const auto results = ResultsOfFile(file, arguments, streams);
    if (arguments.Has(JsonOption.name)) {
        streams.out << ResultsJson(results);
    } else if (arguments.Has(CsvName)) {
        streams.out << ResultsCsv(results);
    } else {
        Cells cells = ResultCells(results);
        Report report;
        report.sections = {SectionOf("results", "Results", std::move(cells.heads), std::move(cells.rows))};
        WriteText(streams.out, report, results.size());
    }
    for (const ReportedResult& result : results)
        if (!result.interval) return ExitCode::RowsRefused;
    return ExitCode::Done;
}

}  // namespace kelvo
