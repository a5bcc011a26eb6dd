#include "help/NotePad.h"

#include <algorithm>
#include <filesystem>
#include <string_view>

#include "core/Dialogs.h"
#include "core/SaveAndOpen.h"
#include "text/Files.h"
#include "text/RuntimeError.h"
#include "text/UserText.h"

namespace kelvo {
namespace {

/// CR LF and CR alone become LF.
std::string WithLineFeeds(std::string_view bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r') {
            text += bytes[i];
        } else if (i + 1 == bytes.size() || bytes[i + 1] != '\n') {
            text += '\n';
        }
    }
    return text;
}

/// A file is written as one print, so its last line end belongs to the file and not to the text.
std::string TextOf(std::string_view bytes) {
    std::string text = WithLineFeeds(FromUserText(bytes));
    if (!text.empty() && text.back() == '\n') text.pop_back();
    return text;
}

std::string BytesOf(const std::string& text) {
    std::string bytes;
    bytes.reserve(text.size() + 2);
    for (const char c : text) {
        if (c == '\n') bytes += '\r';
        bytes += c;
    }
    return bytes + "\r\n";
}

/// The file's content: the text, below what the file holds now if both are to stay.
std::string Joined(const std::string& text, bool below, const std::optional<std::string>& now) {
    if (!below || !now) return BytesOf(text);
    const bool ended = now->empty() || now->back() == '\n';
    // One file has one encoding.
    return FromUserText(*now) + (ended ? "\r\n" : "\r\n\r\n") + BytesOf(text);
}

bool IsText(std::string_view bytes) {
    constexpr std::string_view Allowed = "\t\n\v\f\r\x1a";
    return std::all_of(bytes.begin(), bytes.end(), [&](char c) {
        return static_cast<unsigned char>(c) >= 0x20 || Allowed.find(c) != std::string_view::npos;
    });
}

/// The file's bytes; none when there is no file. @throws RuntimeError for any other obstacle.
std::optional<std::string> BytesNow(const std::string& path) {
    try {
        return ReadWholeFile(path, NotePad::LongestFile);
    } catch (const RuntimeError& error) {
        if (error.Number() != ErrorNumber::FileNotFound && error.Number() != ErrorNumber::PathNotFound) throw;
        return std::nullopt;
    }
}

bool TooLong(const std::string& path) {
    std::error_code failure;
    const auto size = std::filesystem::file_size(FindFile(path), failure);
    return !failure && size > NotePad::LongestFile;
}

}  // namespace

NotePad::NotePad(std::string path) : path_(std::move(path)) {
    try {
        seen_ = BytesNow(path_);
    } catch (const RuntimeError& error) {
        obstacle_ = Name() +
                    (TooLong(path_) ? " is too long for a note" : " cannot be read: " + std::string(error.what())) +
                    ". It is left as it is, and nothing can be written here.";
        return;
    }
    if (!seen_) return;
    if (!IsText(*seen_)) {
        obstacle_ = Name() + " is not a text. It is left as it is, and nothing can be written here.";
        return;
    }
    text_ = TextOf(*seen_);
}

std::string NotePad::Name() const {
    return LastPart(path_);
}

bool NotePad::MakeMissing() {
    try {
        if (!seen_ && !BytesNow(path_)) Write(text_, false, std::nullopt);
    } catch (const RuntimeError&) {
        return false;
    }
    return true;
}

bool NotePad::ChangedElsewhere(const std::string& text, const std::optional<std::string>& now) const {
    return now && now != seen_ && *now != BytesOf(text);
}

void NotePad::Write(const std::string& text, bool below, const std::optional<std::string>& now) {
    std::string bytes = Joined(text, below, now);
    ReplaceWholeFile(path_, bytes);
    seen_ = std::move(bytes);
    text_ = text;
}

SaveOutcome NotePad::Save(const std::string& text, Prompts& prompts) {
    if (!Writable()) return SaveOutcome::Saved;
    if (text == text_) {
        // Nothing is lost when an empty file cannot be made, so nobody is troubled with it.
        MakeMissing();
        return SaveOutcome::Saved;
    }
    const bool saved = TakeFileStep(prompts, "Saving", path_, [&] {
        const auto now = BytesNow(path_);
        const bool replace = !ChangedElsewhere(text, now) ||
                             prompts.Ask(Name() +
                                             " has been changed by another program while this sheet was "
                                             "open. Click on 'Yes' to replace it by the text of this sheet, "
                                             "click on 'No' to keep both, one below the other",
                                         true);
        Write(text, !replace, now);
    });
    return saved ? SaveOutcome::Saved : SaveOutcome::Failed;
}

bool NotePad::Keep(const std::string& text) {
    if (!Writable() || text == text_) return true;
    try {
        const auto now = BytesNow(path_);
        Write(text, ChangedElsewhere(text, now), now);
        return true;
    } catch (const RuntimeError&) {
        return false;
    }
}

std::vector<UnsavedPiece> NotePad::Unsaved(const std::string& text) const {
    if (!Writable() || text == text_) return {};
    const std::string what = "the notes of " + Name();
    try {
        const auto now = BytesNow(path_);
        return {{what, ".TXT", Joined(text, ChangedElsewhere(text, now), now), path_}};
    } catch (const RuntimeError&) {
        return {{what, ".TXT", BytesOf(text), {}}};
    }
}

std::string ReadHelpText(const std::string& path) {
    return WithLineFeeds(FromUserText(ReadWholeFile(path, NotePad::LongestFile)));
}

}  // namespace kelvo
