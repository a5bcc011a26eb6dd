#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/Clock.h"
#include "core/UnsavedWork.h"

namespace kelvo {

/// Keeps unsaved work in files of their own when the program ends otherwise than by its own way out, and tells of them
/// at the next start. A file is named "KEPT20261124-204905.ISE" and goes into the first folder that takes it; a note
/// "KEPT.TXT", in the first folder that takes that, names the files for the next start.
class KeptWork {
 public:
    /// @param folders  in the order in which they are tried, each ending with '/'; those missing are made
    KeptWork(std::vector<std::string> folders, const Clock& clock) : folders_(std::move(folders)), clock_(clock) {}

    struct Outcome {
        std::vector<std::string> lost;      ///< `what` of each piece that no folder took
        std::vector<std::string> failures;  ///< "/home/lab/: Disk full", a line for each folder tried in vain
    };
    /// Writes every piece: into its own file when it has one, else into a new file. One that is on disk already, by
    /// its own file or by an earlier call, is not written again. Never throws.
    /// @param heading  what the note says above the names
    Outcome Keep(const std::vector<UnsavedPiece>& pieces, const std::string& heading);

    /// What the notes in all folders say, empty when there is none; the notes are gone afterwards.
    std::string TakeNotes() const;

 private:
    std::string Write(const UnsavedPiece& piece, Outcome& outcome) const;
    std::string FreeName(const std::string& folder, const std::string& extension) const;
    void WriteNote(const std::vector<std::string>& names, const std::string& heading) const;

    std::vector<std::string> folders_;
    const Clock& clock_;
    std::vector<std::pair<std::string, std::string>> kept_;  ///< `what` and bytes of what earlier calls have written
};

}  // namespace kelvo
