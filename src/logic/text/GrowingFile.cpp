#include "text/GrowingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <utility>

#include "text/Backup.h"
#include "text/FileHandle.h"
#include "text/FileMark.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

/// "run.phc" -> "run (2).phc", or the next of that kind that is free.
std::string FreeName(const std::string& path) {
    namespace fs = std::filesystem;
    const fs::path whole(path);
    const std::string stem = (whole.parent_path() / whole.stem()).string();
    for (int copy = 2;; ++copy) {
        std::string name = stem + " (" + std::to_string(copy) + ")" + whole.extension().string();
        std::error_code failed;
        if (!fs::exists(fs::symlink_status(FindFile(name), failed))) return name;
    }
}

}  // namespace

void GrowingFile::Begin(std::string path, std::string content, Before before) {
    End();
    path_ = std::move(path);
    content_ = std::move(content);
    replaces_ = before == Before::Replaced;
}

void GrowingFile::Add(std::string_view piece) {
    content_ += piece;
    Flush();
}

bool GrowingFile::StandsAsLeft() const {
    const std::string name = FindFile(path_);
    if (!FileExists(name)) return true;
    const auto content = ReadIfPossible(name);
    return !replaces_ && content && content_.starts_with(*content);
}

std::optional<GrowingFile::Change> GrowingFile::TakeChange() {
    return std::exchange(change_, std::nullopt);
}

void GrowingFile::Flush() {
    const std::string name = FindFile(path_);
    const FileHandle handle(
        Uninterrupted([&] { return ::open(name.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (!handle.IsOpen()) {
        // A name that is too long is told as any other place that a row cannot be written to.
        if (errno != ENOENT) FailFor(errno == ENAMETOOLONG ? EISDIR : errno);
        MakeAnew();
        return;
    }
    struct stat status {};
    if (::fstat(handle.Get(), &status) != 0) FailFor(errno);
    if (!S_ISREG(status.st_mode)) throw RuntimeError(ErrorNumber::PathAccess);
    if (!replaces_) {
        // By its content, a few pages: what a torn-out medium has lost of its end is no change.
        const auto size = static_cast<std::size_t>(status.st_size);
        if (size > content_.size() || !content_.starts_with(ReadWholeFile(name))) {
            GiveWay(name);
            return;
        }
        written_ = size;
    }
    if (replaces_ || written_ == 0)
        MakeAnew();
    else
        Append(handle.Get(), status.st_size);
}

void GrowingFile::GiveWay(const std::string& name) {
    const RewriteTurn turn(name);
    written_ = 0;
    if (gaveWay_) {
        path_ = FreeName(name);
        change_ = Change{name, {}, path_};
        MakeAnew();
        return;
    }
    const std::string beside = KeepChangedVersion(name);
    try {
        MakeAnew();
    } catch (const RuntimeError&) {
        ::unlink(beside.c_str());
        throw;
    }
    gaveWay_ = true;
    change_ = Change{name, beside, {}};
}

void GrowingFile::MakeAnew() {
    written_ = 0;
    if (replaces_)
        backup_ = ReplaceKeepingBackup(FindFile(path_), content_).backup;
    else
        ReplaceWholeFile(path_, content_);
    replaces_ = false;
    written_ = content_.size();
}

void GrowingFile::Append(int file, long long end) {
    std::size_t done = written_;
    while (done < content_.size()) {
        const auto at = static_cast<off_t>(end) + static_cast<off_t>(done - written_);
        const ssize_t n =
            Uninterrupted([&] { return ::pwrite(file, content_.data() + done, content_.size() - done, at); });
        if (n <= 0) {
            const int cause = n == 0 ? ENOSPC : errno;
            // Half a row is taken back.
            Uninterrupted([&] { return ::ftruncate(file, static_cast<off_t>(end)); });
            FailFor(cause);
        }
        done += static_cast<std::size_t>(n);
    }
    if (Uninterrupted([&] { return ::fsync(file); }) != 0) FailFor(errno);
    written_ = done;
}

}  // namespace kelvo
