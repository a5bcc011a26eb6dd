#include <filesystem>
#include <limits>
#include <set>
#include <sstream>
#include <system_error>

#include "batch/Commands.h"
#include "batch/Failure.h"
#include "batch/FileReport.h"
#include "tables/TableExport.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t FirstRows = 10;

/// What comes first in the JSON of a file.
std::string JsonHead(const std::string& file, const FileKindRow* kind) {
    std::string head = "\"file\": " + JsonString(file);
    if (kind != nullptr) head += ", \"kind\": " + JsonString(kind->key);
    return head;
}

void ShowOne(const std::string& file, const Arguments& arguments, const Streams& streams) {
    const FileKindRow& kind = KindOfFile(file, arguments);
    const Report report = ReadFileReport(file, kind, arguments, streams.in);
    if (!report.told.empty()) streams.Note(file + ": " + report.told);
    if (arguments.Has(JsonOption.name)) {
        WriteJson(streams.out, report, JsonHead(file, &kind));
        return;
    }
    streams.out << Visible(file) << ": " << kind.name << '\n';
    const std::size_t rows = arguments.Has("--all") ? std::numeric_limits<std::size_t>::max() : FirstRows;
    WriteText(streams.out, report, rows, "  ");
}

/// Path of the file that a conversion writes.
std::string TargetOf(const std::string& file, const std::string& folder, const std::string& ending) {
    const std::string native = NativePath(file);
    std::string name = LastPart(native);
    if (name.ends_with('~')) name.pop_back();
    const std::string beside = native.substr(0, native.size() - LastPart(native).size());
    return (folder.empty() ? beside : folder) + name.substr(0, name.rfind('.')) + ending;
}

bool Exists(const std::string& path) {
    std::error_code failed;
    const fs::file_type type = fs::symlink_status(FindFile(path), failed).type();
    return type != fs::file_type::not_found && type != fs::file_type::none;
}

void Write(const std::string& path, const std::string& bytes) {
    try {
        ReplaceWholeFile(path, bytes);
    } catch (const RuntimeError& error) {
        Refuse(ExitCode::File, path + ": " + error.what());
    }
}

class Conversion {
 public:
    Conversion(const Arguments& arguments, const Streams& streams) : arguments_(arguments), streams_(streams) {
        const std::string to = arguments.Value("--to").value_or("");
        if (to != "csv" && to != "json") Refuse(ExitCode::Usage, "--to takes csv or json");
        json_ = to == "json";
        folder_ = arguments.Value("--out").value_or("");
        if (folder_.empty()) return;
        if (!folder_.ends_with('/')) folder_ += '/';
        std::error_code failed;
        if (!fs::is_directory(folder_, failed)) Refuse(ExitCode::File, folder_ + ": there is no such folder");
    }

    void Convert(const std::string& file) {
        if (IsNameless(file))
            Refuse(ExitCode::Usage, file + ": this has no name to be converted under; show --json reads it");
        const FileKindRow& kind = KindOfFile(file, arguments_);
        const Report report = ReadFileReport(file, kind, arguments_, streams_.in);
        if (!report.told.empty()) streams_.Note(file + ": " + report.told);
        const std::string target = TargetOf(file, folder_, json_ ? ".json" : ".csv");
        std::vector<std::string> targets = {target};
        if (!json_ && report.csvHead) targets.push_back(HeadCsvName(target));
        for (const std::string& each : targets)
            CheckTarget(file, each);
        written_.insert(targets.begin(), targets.end());
        Write(target, json_ ? Json(file, kind, report) : report.csv ? report.csv() : CsvOf(report));
        if (targets.size() > 1) Write(targets[1], report.csvHead());
        for (const std::string& each : targets)
            streams_.out << each << '\n';
    }

 private:
    void CheckTarget(const std::string& file, const std::string& target) const {
        if (written_.contains(target))
            Refuse(ExitCode::File, file + ": " + target + " has just been written from another file");
        if (Exists(target) && !arguments_.Has("--force"))
            Refuse(ExitCode::File, file + ": " + target + " is there already; --force replaces it");
    }

    static std::string Json(const std::string& file, const FileKindRow& kind, const Report& report) {
        std::ostringstream out;
        WriteJson(out, report, JsonHead(LastPart(file), &kind));
        out << '\n';
        return std::move(out).str();
    }

    const Arguments& arguments_;
    const Streams& streams_;
    bool json_ = false;
    std::string folder_;
    std::set<std::string> written_;
};

/// Takes a step for each file. One that fails is told; the others are done all the same.
template <typename Step, typename Failed>
ExitCode ForEachFile(const Arguments& arguments, const Streams& streams, Step step, Failed failed) {
    ExitCode code = ExitCode::Done;
    for (const std::string& file : arguments.Words()) {
        if (!streams.out) break;
        try {
            step(file);
        } catch (const Failure& failure) {
            if (failure.code == ExitCode::Usage) throw;
            streams.Note(failure.text);
            failed(file, failure);
            code = failure.code;
        }
    }
    return code;
}

}  // namespace

ExitCode RunShow(const Arguments& arguments, const Streams& streams) {
    StateFor(arguments);
    const bool json = arguments.Has(JsonOption.name);
    bool first = true;
    if (json) streams.out << '[';
    const auto part = [&] {
        if (!first) streams.out << (json ? ",\n" : "\n");
        first = false;
    };
    const ExitCode code = ForEachFile(
        arguments, streams,
        [&](const std::string& file) {
            std::ostringstream held;
            const Streams into{streams.in, held, streams.err};
            ShowOne(file, arguments, into);
            part();
            streams.out << held.view();
        },
        [&](const std::string& file, const Failure& failure) {
            if (!json) return;
            part();
            streams.out << '{' << JsonHead(file, FileKindOf(file)) << ", \"error\": " << JsonString(failure.text)
                        << '}';
        });
    if (json) streams.out << "]\n";
    return code;
}

ExitCode RunConvert(const Arguments& arguments, const Streams& streams) {
    StateFor(arguments);
    Conversion conversion(arguments, streams);
    return ForEachFile(
        arguments, streams, [&](const std::string& file) { conversion.Convert(file); },
        [](const std::string&, const Failure&) {});
}

}  // namespace kelvo
