#include "text/GrowingFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <utility>

#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

[[noreturn]] void FailFor(int cause) {
    switch (cause) {
        case ENOSPC:
        case EDQUOT:
        case EFBIG: throw RuntimeError(ErrorNumber::DiskFull);
        case EACCES:
        case EPERM:
        case EROFS: throw RuntimeError(ErrorNumber::PermissionDenied);
        case ENOENT:
        case ENOTDIR: throw RuntimeError(ErrorNumber::PathNotFound);
        case EIO: throw RuntimeError(ErrorNumber::DeviceIo);
        default: throw RuntimeError(ErrorNumber::PathAccess);
    }
}

template <typename Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open file that closes itself.
class Handle {
 public:
    explicit Handle(int descriptor) : descriptor_(descriptor) {}
    Handle(const Handle&) = delete;
    Handle& operator=(const Handle&) = delete;
    ~Handle() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    int Get() const { return descriptor_; }

 private:
    int descriptor_;
};

/// Keeps a strange file as "NAME~"; a link to one goes on leading there.
void PutAside(const std::string& name) {
    std::error_code failed;
    const std::string target = std::filesystem::canonical(name, failed).string();
    if (failed || std::rename(target.c_str(), (target + "~").c_str()) != 0) throw RuntimeError(ErrorNumber::PathAccess);
}

}  // namespace

void GrowingFile::Begin(std::string path, std::string content, bool onDisk) {
    path_ = std::move(path);
    content_ = std::move(content);
    written_ = onDisk ? content_.size() : 0;
}

void GrowingFile::Add(std::string_view piece) {
    content_ += piece;
    Flush();
}

void GrowingFile::Flush() {
    const std::string name = FindFile(path_);
    const Handle handle(
        Uninterrupted([&] { return ::open(name.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (handle.Get() < 0) {
        if (errno != ENOENT) FailFor(errno);
        MakeAnew();
        return;
    }
    struct stat status {};
    if (::fstat(handle.Get(), &status) != 0) FailFor(errno);
    if (!S_ISREG(status.st_mode)) throw RuntimeError(ErrorNumber::PathAccess);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size != written_ || size == 0) {
        // A medium that was torn out may have lost the end of what it had taken.
        const bool ours = size > 0 && size <= content_.size() && content_.starts_with(ReadWholeFile(name));
        if (!ours) {
            if (size > 0) PutAside(name);
            MakeAnew();
            return;
        }
        written_ = size;
    }
    Append(handle.Get(), status.st_size);
}

void GrowingFile::MakeAnew() {
    written_ = 0;
    ReplaceWholeFile(path_, content_);
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
