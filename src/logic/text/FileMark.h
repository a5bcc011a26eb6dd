#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

#include "text/FileHandle.h"

namespace kelvo {

// Files that other programs and hands may change while Kelvo writes them again and again. Before such a file is
// rewritten:
//
//     const RewriteTurn turn(path);                 // one program of the machine at a time
//     std::string aside;
//     if (mark.ChangedElsewhere(path)) aside = KeepChangedVersion(path);
//     ReplaceWholeFile(path, bytes);                // on a failure take `aside` away again
//     mark = FileMark(bytes);

/// What a file held when it was last written or read, by its content: neither a copy that keeps the time nor a medium
/// that tells times roughly can deceive it. A mark of nothing (the default) knows no file.
class FileMark {
 public:
    FileMark() = default;
    explicit FileMark(std::string_view bytes);
    bool Known() const { return known_; }
    bool Fits(std::string_view bytes) const { return known_ && *this == FileMark(bytes); }
    /// Whether a file stands there that does not hold what it held, or cannot be read. False of a mark of nothing and
    /// of a file that has gone: nothing is lost by writing it.
    bool ChangedElsewhere(const std::string& path) const;
    /// For a record of the mark: "1234:89abcdef01234567".
    std::string Text() const;
    bool operator==(const FileMark&) const = default;

 private:
    bool known_ = false;
    std::size_t size_ = 0;
    std::uint64_t hash_ = 0;
};

/// Gives the version that stands there a second name beside it, "RUN (changed elsewhere).TAB" or "RUN (changed
/// elsewhere 2).TAB" and so on, the first that is free; beside the file itself where `path` is a link to it. The file
/// keeps its name as well, until it is replaced.
/// @return the new name. @throws RuntimeError 70 no permission, 61 disk full, 75 something else.
std::string KeepChangedVersion(const std::string& path);

/// Whether both names lead to one file, through links and in whatever letters, or would once it is made.
bool SameFile(const std::string& a, const std::string& b);

/// While one stands, no other program of this machine looks at the files of that folder to rewrite them. It waits for
/// two seconds at most and goes on without where a medium knows no locks.
class RewriteTurn {
 public:
    explicit RewriteTurn(const std::string& path);

 private:
    FileHandle folder_;
};

}  // namespace kelvo
