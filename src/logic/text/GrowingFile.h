#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelvo {

/// A file that grows piece by piece and is whole after each: every piece is at its end and flushed to the disk before
/// `Add` returns. What could not be written (a full disk, a folder that has gone) waits and is written with the next
/// piece, in order and once. Should the file be lost or cut short meanwhile it is made anew from all that was ever
/// added.
///
/// Before each piece it is looked whether the file is still what was written. What another program or hand has made of
/// it is kept beside it as "NAME (changed elsewhere).EXT" (`KeepChangedVersion`) and the file made anew; when that
/// happens once more, the other one is left where it is and this one goes on, whole, as "NAME (2).EXT", so that two
/// programs with one file do not take it from each other at every piece.
///
/// The file is open only while it is written, so that a medium can be taken out and put back.
class GrowingFile {
 public:
    /// What stands under the name before the first piece.
    enum class Before {
        Replaced,  ///< is replaced, and stays as a backup, "NAME~"
        Strange,   ///< is somebody else's and is kept as "NAME (changed elsewhere).EXT"
    };
    /// A file that is to hold `content`. Nothing is written yet.
    void Begin(std::string path, std::string content, Before before = Before::Replaced);
    void End() { *this = GrowingFile(); }
    bool Open() const { return !path_.empty(); }
    const std::string& Path() const { return path_; }
    const std::string& Content() const { return content_; }

    /// @throws RuntimeError 61 disk full, 70 no permission, 76 no such folder, 75 something else than a plain file, 57
    /// device failure; the piece then waits.
    void Add(std::string_view piece);
    /// Writes what waits. @throws as `Add`.
    void Flush();
    /// The backup of what the first piece has replaced; empty when there is none.
    const std::string& Backup() const { return backup_; }
    /// Whether the next piece would replace nothing: the file is as it was written, or not there.
    bool StandsAsLeft() const;
    /// Whether all that was added is on the disk.
    bool Whole() const { return written_ == content_.size(); }

    /// The file was changed by another program or hand.
    struct Change {
        std::string file;    ///< the file that was changed
        std::string beside;  ///< what was made of it is kept here; empty: it was left in its place,
        std::string goesOn;  ///< and this file goes on here
    };
    /// The last change that has not been told, once.
    std::optional<Change> TakeChange();

 private:
    void MakeAnew();
    void Append(int file, long long end);
    void GiveWay(const std::string& name);

    std::string path_, content_, backup_;
    std::size_t written_ = 0;
    bool replaces_ = false;
    bool gaveWay_ = false;  ///< a strange file has been put aside once
    std::optional<Change> change_;
};

}  // namespace kelvo
