#include "core/FactsFile.h"

#include <zlib.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <nlohmann/json.hpp>
#include <utility>

#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

using Json = nlohmann::ordered_json;

constexpr const char* FormatName = "kelvo-rows";
constexpr int Version = 1;

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

/// A number of 32 bits; none for any other.
std::optional<int> WholeNumber(const Json& value) {
    if (!value.is_number_integer()) return std::nullopt;
    const auto number = value.get<std::int64_t>();
    return std::in_range<int>(number) ? std::optional(static_cast<int>(number)) : std::nullopt;
}

/// Version of a file of facts; none when it is something else.
std::optional<int> VersionOf(std::string_view bytes) {
    constexpr std::size_t LongestHeading = 4096;
    const auto heading = ObjectOf(bytes.substr(0, std::min(bytes.find('\n'), LongestHeading)));
    if (!heading || heading->value("format", Json()) != FormatName) return std::nullopt;
    // What is no number is no version that this program writes.
    return WholeNumber(heading->value("version", Json())).value_or(Version + 1);
}

std::optional<std::string> BytesOf(const std::string& name) {
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

std::string FactsCheck(std::string_view bytes) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08lx",
                  ::crc32_z(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
    return digits;
}

std::string EntryLine(const FactsEntry& entry) {
    if (entry.facts.Empty()) return {};
    Json object{{"row", entry.row}, {"check", entry.check}};
    for (const auto& [name, text] : entry.facts.All())
        object[name] = text;
    return Line(object);
}

bool IsFactsFile(std::string_view bytes) {
    return VersionOf(bytes).has_value();
}

std::optional<std::vector<FactsEntry>> ReadFacts(std::string_view bytes) {
    if (VersionOf(bytes) != Version) return std::nullopt;
    std::vector<FactsEntry> entries;
    NextLine(bytes);
    while (!bytes.empty()) {
        const auto object = ObjectOf(NextLine(bytes));
        if (!object || !object->contains("row") || !object->contains("check")) continue;
        const auto row = WholeNumber(object->at("row"));
        const Json check = object->at("check");
        if (!row || !check.is_string()) continue;
        FactsEntry entry{*row, check.get<std::string>(), {}};
        for (const auto& [name, text] : object->items())
            if (text.is_string() && name != "check") entry.facts.Set(name, text.get<std::string>());
        entries.push_back(std::move(entry));
    }
    return entries;
}

std::string WriteFactsBeside(const std::string& path, const std::string& bytes, const std::string& backup) {
    const std::string name = FactsFileOf(path);
    try {
        const auto old = BytesOf(name);
        if (!IsOurs(old)) return LastPart(name) + " is another file";
        const std::string aside = FactsFileOf(backup);
        if (!backup.empty() && IsOurs(BytesOf(aside))) {
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
        return LastPart(name) + ": " + error.what();
    }
    return {};
}

std::optional<std::string> FactsFileBeside(const std::string& path) {
    auto bytes = BytesOf(FactsFileOf(path));
    if (bytes && !IsFactsFile(*bytes)) return std::nullopt;
    return bytes;
}

}  // namespace kelvo
