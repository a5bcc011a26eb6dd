#include "core/RecoveryFiles.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <system_error>

#include "core/Clock.h"
#include "core/RowFacts.h"
#include "text/FileMark.h"
#include "text/Files.h"
#include "text/NewFile.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

constexpr std::size_t LargestNote = 1 << 20;
constexpr int MostNames = 10'000;

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

/// "-2" for the second of a name, nothing for the first.
std::string Copy(int n) {
    return n == 1 ? std::string() : "-" + std::to_string(n);
}

std::string NoteName(int n) {
    return "KEPT" + Copy(n) + ".TXT";
}

/// Whether it is a note of ours, by its first line.
bool IsNote(std::string_view text) {
    std::string_view first = text.substr(0, text.find('\n'));
    if (first.ends_with('\r')) first.remove_suffix(1);
    return first == RecoveryFiles::Heading(RecoveryFiles::End::Failure) ||
           first == RecoveryFiles::Heading(RecoveryFiles::End::Session);
}

/// Number of a file in the row of notes, 0 when its name is none of them.
int NoteNumber(const std::string& name) {
    constexpr std::size_t Longest = std::string_view("KEPT-10000.TXT").size();
    const std::string upper = Upper(name);
    if (upper == NoteName(1)) return 1;
    if (upper.size() > Longest || !upper.starts_with("KEPT-")) return 0;
    const int n = static_cast<int>(Val(upper.substr(5)));
    return n > 1 && upper == NoteName(n) ? n : 0;
}

}  // namespace

const char* RecoveryFiles::Heading(End end) {
    return end == End::Failure
               ? "The program ended by a failure the last time. What was not saved has been kept in:"
               : "The session was closed the last time before everything was saved. What was not saved has been kept in:";
}

std::string RecoveryFiles::MakeNew(const std::string& folder, const UnsavedPiece& piece) const {
    const DateTime time = clock_.Now();
    char stamp[96];
    std::snprintf(stamp, sizeof stamp, "KEPT%04d%02d%02d-%02d%02d%02d", time.year, time.month, time.day, time.hour,
                  time.minute, time.second);
    for (int n = 1; n <= MostNames; ++n) {
        std::string name = folder + stamp + Copy(n) + piece.extension;
        if (!CreateWholeFile(name, piece.bytes)) continue;
        if (!piece.facts.empty()) ReplaceWholeFile(FactsFileOf(name), piece.facts);
        return name;
    }
    throw RuntimeError(ErrorNumber::PathAccess);
}

std::string RecoveryFiles::Write(const UnsavedPiece& piece, Outcome& outcome) const {
    std::string name;
    const auto written = [&](const std::string& where, const auto& step) {
        const std::string failure = FailureOf(step);
        if (failure.empty()) return true;
        const std::string line = where + ": " + failure;
        auto& told = outcome.failures;
        if (std::find(told.begin(), told.end(), line) == told.end()) told.push_back(line);
        return false;
    };
    const auto replace = [&] {
        ReplaceWholeFile(piece.file, piece.bytes);
        if (!piece.facts.empty()) ReplaceWholeFile(FactsFileOf(piece.file), piece.facts);
    };
    if (!piece.file.empty() && written(piece.file, replace)) return piece.file;
    for (const std::string& folder : folders_) {
        Make(folder);
        if (written(folder, [&] { name = MakeNew(folder, piece); })) return name;
    }
    outcome.lost.push_back(piece.what);
    return {};
}

RecoveryFiles::Outcome RecoveryFiles::Keep(const std::vector<UnsavedPiece>& pieces, End end) {
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
    if (!names.empty()) WriteNote(names, end);
    return outcome;
}

void RecoveryFiles::WriteNote(const std::vector<std::string>& names, End end) {
    std::string told = std::string(Heading(end)) + "\n";
    for (const std::string& name : names)
        told += "\n" + name;
    // Its own note, unless that has been read meanwhile.
    if (!note_.path.empty() && ContentOf(note_.path, LargestNote) == note_.text) {
        const std::string whole = note_.text + "\n\n" + told;
        if (FailureOf([&] { ReplaceWholeFile(note_.path, whole); }).empty()) {
            note_.text = whole;
            return;
        }
    }
    for (const std::string& folder : folders_) {
        bool made = false;
        for (int n = 1; n <= MostNames && !made; ++n) {
            note_ = {folder + NoteName(n), told};
            if (!FailureOf([&] { made = CreateWholeFile(note_.path, told); }).empty()) break;
        }
        if (made) return;
    }
    note_ = {};
}

std::string RecoveryFiles::Notes() {
    shown_.clear();
    std::string told;
    for (const std::string& folder : folders_) {
        std::vector<std::pair<int, std::string>> found;
        std::error_code failed;
        for (const auto& entry : std::filesystem::directory_iterator(folder, failed))
            if (const int n = NoteNumber(entry.path().filename().string()); n > 0) found.emplace_back(n, entry.path());
        std::sort(found.begin(), found.end());
        for (const auto& [number, path] : found) {
            // One folder may stand there twice, under one name or two.
            const auto same = [&path = path](const Note& note) { return SameFile(note.path, path); };
            std::string text = ContentOf(path, LargestNote);
            if (!IsNote(text) || std::any_of(shown_.begin(), shown_.end(), same)) continue;
            told.append(told.empty() ? "" : "\n\n").append(text);
            shown_.push_back({path, std::move(text)});
        }
    }
    return told;
}

void RecoveryFiles::NotesRead() {
    for (const Note& note : shown_)
        if (ContentOf(note.path, LargestNote) == note.text) std::remove(note.path.c_str());
    shown_.clear();
}

}  // namespace kelvo
