#include "core/KeptWork.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <system_error>

#include "core/RowFacts.h"
#include "text/Files.h"

namespace kelvo {
namespace {

constexpr const char* NoteName = "KEPT.TXT";
constexpr std::size_t LargestNote = 1 << 20;

/// Runs a step on files. @return why it failed, empty when it did not.
template <typename Step>
std::string FailureOf(Step step) {
    try {
        step();
        return {};
    } catch (const std::exception& error) {
        return error.what();
    }
}

std::string ContentOf(const std::string& path, std::size_t limit) {
    std::string bytes;
    if (!FailureOf([&] { bytes = ReadWholeFile(path, limit); }).empty()) return {};
    return bytes;
}

void Make(const std::string& folder) {
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
}

bool StandsOnDisk(const UnsavedPiece& piece) {
    return !piece.file.empty() && FileExists(piece.file) && ContentOf(piece.file, piece.bytes.size()) == piece.bytes;
}

}  // namespace

std::string KeptWork::FreeName(const std::string& folder, const std::string& extension) const {
    const DateTime time = clock_.Now();
    char stamp[96];
    std::snprintf(stamp, sizeof stamp, "KEPT%04d%02d%02d-%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    const std::string base = folder + stamp;
    std::string name = base + extension;
    for (int copy = 2; FileExists(name); ++copy)
        name.assign(base).append("-").append(std::to_string(copy)).append(extension);
    return name;
}

std::string KeptWork::Write(const UnsavedPiece& piece, Outcome& outcome) const {
    const auto replaced = [&](const std::string& name, const std::string& where) {
        const std::string failure = FailureOf([&] {
            ReplaceWholeFile(name, piece.bytes);
            if (!piece.facts.empty()) ReplaceWholeFile(FactsFileOf(name), piece.facts);
        });
        if (failure.empty()) return true;
        const std::string line = where + ": " + failure;
        auto& told = outcome.failures;
        if (std::find(told.begin(), told.end(), line) == told.end()) told.push_back(line);
        return false;
    };
    if (!piece.file.empty() && replaced(piece.file, piece.file)) return piece.file;
    for (const std::string& folder : folders_) {
        Make(folder);
        std::string name = FreeName(folder, piece.extension);
        if (replaced(name, folder)) return name;
    }
    outcome.lost.push_back(piece.what);
    return {};
}

KeptWork::Outcome KeptWork::Keep(const std::vector<UnsavedPiece>& pieces, const std::string& heading) {
    Outcome outcome;
    std::vector<std::string> names;
    for (const UnsavedPiece& piece : pieces) {
        std::pair<std::string, std::string> entry{piece.what, piece.bytes};
        if (StandsOnDisk(piece) || std::find(kept_.begin(), kept_.end(), entry) != kept_.end()) continue;
        const std::string name = Write(piece, outcome);
        if (name.empty()) continue;
        names.push_back(name);
        kept_.push_back(std::move(entry));
    }
    if (!names.empty()) WriteNote(names, heading);
    return outcome;
}

void KeptWork::WriteNote(const std::vector<std::string>& names, const std::string& heading) const {
    std::string told = heading + "\n";
    for (const std::string& name : names)
        told += "\n" + name;
    for (const std::string& folder : folders_) {
        const std::string note = folder + NoteName;
        std::string whole = ContentOf(note, LargestNote);
        if (!whole.empty()) whole += "\n\n";
        whole += told;
        if (FailureOf([&] { ReplaceWholeFile(note, whole); }).empty()) return;
    }
}

std::string KeptWork::TakeNotes() const {
    std::string told;
    for (const std::string& folder : folders_) {
        const std::string note = FindFile(folder + NoteName);
        const std::string text = ContentOf(note, LargestNote);
        if (text.empty()) continue;
        told += (told.empty() ? "" : "\n\n") + text;
        std::remove(note.c_str());
    }
    return told;
}

}  // namespace kelvo
