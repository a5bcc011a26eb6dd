#pragma once

#include <string>
#include <utility>
#include <vector>

#include "core/UnsavedWork.h"

namespace kelvo {

class Clock;

/// Keeps unsaved work in files of their own when the program ends otherwise than by its own way out, and tells of them
/// at the next start. A file is named "KEPT20261124-204905.ISE" and goes into the first folder that takes it; a note
/// "KEPT.TXT" or "KEPT-2.TXT" and so on, in the first folder that takes that, names the files for the next start.
///
/// Several programs of one user may end at the same moment: each makes files and a note under names of its own and
/// replaces nothing. A note is known by its first line; any other file of such a name is the analyst's own.
class RecoveryFiles {
 public:
    enum class End { Failure, Session };
    /// The first line of the note.
    static const char* Heading(End end);

    /// @param folders  in the order in which they are tried, each ending with '/'; those missing are made
    RecoveryFiles(std::vector<std::string> folders, const Clock& clock) : folders_(std::move(folders)), clock_(clock) {}

    struct Outcome {
        std::vector<std::string> lost;      ///< `what` of each piece that no folder took
        std::vector<std::string> failures;  ///< "/home/lab/: Disk full", a line for each folder tried in vain
    };
    /// Writes every piece: into its own file when it has one, else into a new file. One that is on disk already, by
    /// its own file or by an earlier call, is not written again. Never throws.
    Outcome Keep(const std::vector<UnsavedPiece>& pieces, End end);

    /// What the notes in all folders say, empty when there is none. They stay until they have been read.
    std::string Notes();
    /// The analyst has read what `Notes` gave last: those notes go away.
    void NotesRead();

 private:
    struct Note {
        std::string path, text;
    };

    std::string Write(const UnsavedPiece& piece, Outcome& outcome) const;
    std::string MakeNew(const std::string& folder, const UnsavedPiece& piece) const;
    void WriteNote(const std::vector<std::string>& names, End end);

    std::vector<std::string> folders_;
    const Clock& clock_;
    std::vector<std::pair<std::string, std::string>> kept_;  ///< `what` and bytes of what earlier calls have written
    Note note_;                                              ///< of this program, empty: none yet
    std::vector<Note> shown_;                                ///< what `Notes` gave last
};

}  // namespace kelvo
