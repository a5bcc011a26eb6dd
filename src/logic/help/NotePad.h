#pragma once

#include <optional>
#include <string>
#include <vector>

#include "core/UnsavedWork.h"

namespace kelvo {

class Prompts;
enum class SaveOutcome;

/// The text of one note file: plain text in UTF-8 with CR LF, no structure; one in Windows-1252 is read as well and
/// becomes UTF-8 when it is next written. Inside lines end with LF. A file is replaced in one step; one that is not
/// touched is never written; one that cannot be shown whole is never written either.
class NotePad {
 public:
    /// Longest text that the pad takes, in characters, and longest file that it shows, in bytes.
    static constexpr std::size_t LongestText = 1'048'576, LongestFile = 4'000'000;

    /// A pad without a file: it is empty and cannot be written to.
    NotePad() = default;
    /// Reads the file; one that is missing gives an empty pad.
    explicit NotePad(std::string path);

    /// The text as it was read or last saved.
    const std::string& Text() const { return text_; }
    /// Whether the pad can be written to.
    bool Writable() const { return !path_.empty() && obstacle_.empty(); }
    /// Why it cannot; empty when it can, and for a pad without a file.
    const std::string& Obstacle() const { return obstacle_; }
    /// The file's own name, for messages.
    std::string Name() const;

    /// Puts the text into the file, and makes a missing file even for an empty text. When the file has been changed by
    /// someone else meanwhile, asks whether to replace it; No (and Escape) keeps both texts, one below the other.
    /// A failure is told in a box.
    SaveOutcome Save(const std::string& text, Prompts& prompts);
    /// The same without a word, where nobody can answer: a file changed by someone else gets the text below its own.
    /// @return false when the text is not in the file
    bool Keep(const std::string& text);
    /// What `Keep` would write, for an end of the program at which the sheet may yet live on.
    std::vector<UnsavedPiece> Unsaved(const std::string& text) const;

 private:
    bool MakeMissing();
    void Write(const std::string& text, bool below, const std::optional<std::string>& now);
    bool ChangedElsewhere(const std::string& text, const std::optional<std::string>& now) const;

    std::string path_, text_, obstacle_;
    std::optional<std::string> seen_;  ///< bytes of the file as last read or written; none: there was no file
};

/// Text of a file of `HelpPath` that the laboratory may have edited, UTF-8 or Windows-1252; UTF-8 with LF inside.
/// @throws RuntimeError as `ReadWholeFile`.
std::string ReadHelpText(const std::string& path);

}  // namespace kelvo
