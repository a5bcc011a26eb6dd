#include "tables/RowFactsFile.h"

#include <zlib.h>

#include <cstdio>
#include <nlohmann/json.hpp>
#include <optional>
#include <unordered_map>

#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* FormatName = "kelvo-rows";
constexpr int Version = 1;

/// A reader takes the blanks in front of a row away, and cells that hold nothing may be missing at its end.
std::string_view Essential(std::string_view cells) {
    const std::size_t first = cells.find_first_not_of(' ');
    const std::size_t last = cells.find_last_not_of('\t');
    if (first == std::string_view::npos || last == std::string_view::npos || last < first) return {};
    return cells.substr(first, last - first + 1);
}

std::string CheckOf(std::string_view cells) {
    const std::string_view text = Essential(cells);
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08lx",
                  ::crc32_z(0, reinterpret_cast<const unsigned char*>(text.data()), text.size()));
    return digits;
}

std::string Line(const Json& object) {
    return object.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
}

/// The object of a line; none when it is not one.
std::optional<Json> ObjectOf(std::string_view line) {
    Json object = Json::parse(line, nullptr, false);
    if (!object.is_object()) return std::nullopt;
    return object;
}

/// Takes the first line off the text.
std::string_view NextLine(std::string_view& text) {
    const std::size_t end = text.find('\n');
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    return line;
}

/// Version of a file of facts; none when it is something else.
std::optional<int> VersionOf(std::string_view bytes) {
    constexpr std::size_t LongestHeading = 4096;
    const auto heading = ObjectOf(bytes.substr(0, std::min(bytes.find('\n'), LongestHeading)));
    if (!heading || heading->value("format", Json()) != FormatName) return std::nullopt;
    const Json version = heading->value("version", Json());
    return version.is_number_integer() ? version.get<int>() : 0;
}

/// Finds the row that a line belongs to: the one of its number, or the only other one with the same cells.
class RowFinder {
 public:
    explicit RowFinder(const DataTable& table) : table_(table) {}

    int Find(int row, const std::string& check) {
        if (row >= 1 && row < table_.Rows() && CheckOf(table_.RowText(row)) == check) return row;
        if (!filled_) Fill();
        const auto found = rows_.find(check);
        return found == rows_.end() ? 0 : found->second;
    }

 private:
    void Fill() {
        filled_ = true;
        for (int row = 1; row < table_.Rows(); ++row) {
            const auto [at, fresh] = rows_.try_emplace(CheckOf(table_.RowText(row)), row);
            if (!fresh) at->second = 0;
        }
    }

    const DataTable& table_;
    bool filled_ = false;
    std::unordered_map<std::string, int> rows_;  ///< by check; 0 when several have it
};

/// The bytes of the file there, none when there is none. @throws RuntimeError when it cannot be read
std::optional<std::string> BytesBeside(const std::string& name) {
    if (!FileExists(name)) return std::nullopt;
    return ReadWholeFile(name);
}

/// Whether a file may be written anew: it is not there, or of a version that we write.
bool IsOurs(const std::optional<std::string>& bytes) {
    return !bytes || VersionOf(*bytes).value_or(Version + 1) <= Version;
}

}  // namespace

std::string FactsHeading(const std::string& table) {
    return Line({{"format", FormatName}, {"version", Version}, {"table", LastPart(table)}});
}

std::string FactsLine(int row, std::string_view cells, const RowFacts& facts) {
    if (facts.Empty()) return {};
    Json object{{"row", row}, {"check", CheckOf(cells)}};
    for (const auto& [name, text] : facts.All())
        object[name] = text;
    return Line(object);
}

std::string FactsBytes(const DataTable& table, const std::string& name, int lastRow) {
    std::string bytes;
    for (int row = 1; row <= lastRow; ++row)
        if (!table.Facts(row).Empty()) bytes += FactsLine(row, table.RowLine(row), table.Facts(row));
    return bytes.empty() ? bytes : FactsHeading(name) + bytes;
}

bool IsFactsFile(std::string_view bytes) {
    return VersionOf(bytes).has_value();
}

int TakeFacts(DataTable& table, std::string_view bytes) {
    if (VersionOf(bytes) != Version) return -1;
    const DataTable::BatchUpdate taking(table);
    RowFinder finder(table);
    int strangers = 0;
    NextLine(bytes);
    while (!bytes.empty()) {
        const auto object = ObjectOf(NextLine(bytes));
        if (!object || !object->contains("row") || !object->contains("check")) continue;
        const Json number = object->at("row"), check = object->at("check");
        if (!number.is_number_integer() || !check.is_string()) continue;
        const int row = finder.Find(number.get<int>(), check.get<std::string>());
        if (row == 0) {
            ++strangers;
            continue;
        }
        RowFacts facts;
        for (const auto& [name, text] : object->items())
            if (text.is_string() && name != "check") facts.Set(name, text.get<std::string>());
        table.SetFacts(row, std::move(facts));
    }
    return strangers;
}

std::string WriteFactsBeside(const DataTable& table, const std::string& path, int lastRow, const std::string& backup) {
    const std::string name = FactsFileOf(path);
    const std::string bytes = FactsBytes(table, path, lastRow);
    const std::string lost = bytes.empty() ? std::string() : " What is known beside the rows is not kept: ";
    try {
        const auto old = BytesBeside(name);
        if (!IsOurs(old)) return lost.empty() ? lost : lost + LastPart(name) + " is another file.";
        const std::string aside = FactsFileOf(backup);
        if (!backup.empty() && IsOurs(BytesBeside(aside))) {
            // What a backup had that has just given way is not true of this one.
            if (old)
                ReplaceWholeFile(aside, *old);
            else
                std::remove(FindFile(aside).c_str());
        }
        if (!bytes.empty())
            ReplaceWholeFile(name, bytes);
        else if (old)
            std::remove(FindFile(name).c_str());
    } catch (const RuntimeError& error) {
        return lost.empty() ? lost : lost + LastPart(name) + ": " + error.what() + ".";
    }
    return {};
}

std::string ReadFactsBeside(DataTable& table, const std::string& path) {
    const std::string name = FactsFileOf(path);
    try {
        const auto bytes = BytesBeside(name);
        if (!bytes || !IsFactsFile(*bytes)) return {};
        const int strangers = TakeFacts(table, *bytes);
        if (strangers < 0)
            return " " + LastPart(name) + " is of a newer version of this program and has not been read.";
        if (strangers == 0) return {};
        return " " + TrimStr(strangers) + (strangers == 1 ? " row is" : " rows are") + " not as measured: what " +
               LastPart(name) + " knows of " + (strangers == 1 ? "it" : "them") + " is not shown.";
    } catch (const RuntimeError& error) {
        return " " + LastPart(name) + " cannot be read: " + error.what() + ".";
    }
}

}  // namespace kelvo
