#pragma once

#include <string>
#include <string_view>

namespace kelvo {

/// A file that grows piece by piece and is whole after each: every piece is at its end and flushed to the disk before
/// `Add` returns. What could not be written (a full disk, a folder that has gone) waits and is written with the next
/// piece, in order and once. Should the file be lost or cut short meanwhile it is made anew from all that was ever
/// added; a strange file that has come into its place is kept beside it as "NAME~".
///
/// The file is open only while it is written, so that a medium can be taken out and put back.
class GrowingFile {
 public:
    /// A new file that is to hold `content`, or one that holds it already (`onDisk`). Nothing is written yet.
    void Begin(std::string path, std::string content, bool onDisk = false);
    void End() { *this = GrowingFile(); }
    bool Open() const { return !path_.empty(); }
    const std::string& Path() const { return path_; }

    /// @throws RuntimeError 61 disk full, 70 no permission, 76 no such folder, 75 something else than a plain file, 57
    /// device failure; the piece then waits.
    void Add(std::string_view piece);
    /// Writes what waits. @throws as `Add`.
    void Flush();
    /// Whether all that was added is on the disk.
    bool Whole() const { return written_ == content_.size(); }

 private:
    void MakeAnew();
    void Append(int file, long long end);

    std::string path_, content_;
    std::size_t written_ = 0;
};

}  // namespace kelvo
