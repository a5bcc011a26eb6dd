#include "text/Files.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <memory>

#include "text/FileHandle.h"
#include "text/NewFile.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

[[noreturn]] void Fail(ErrorNumber number) {
    throw RuntimeError(number);
}

int Open(const std::string& path, int flags, mode_t mode = 0) {
    return Uninterrupted([&] { return ::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, mode); });
}

std::optional<struct stat> StatusOf(const std::string& path) {
    struct stat status;
    if (::stat(path.c_str(), &status) != 0) return std::nullopt;
    return status;
}

bool EntryExists(const std::string& path) {
    struct stat status;
    return ::lstat(path.c_str(), &status) == 0;
}

/// Start of the last part; `\` counts as well.
std::size_t LastPartAt(std::string_view path) {
    const std::size_t separator = path.find_last_of("/\\");
    return separator == std::string_view::npos ? 0 : separator + 1;
}

/// Folder with its closing `/`, empty for the present one.
std::string FolderOf(const std::string& path) {
    return path.substr(0, LastPartAt(path));
}

std::string AsFolder(const std::string& folder) {
    return folder.empty() ? "." : folder;
}

bool IsFolder(const std::string& path) {
    const auto status = StatusOf(path);
    return status && S_ISDIR(status->st_mode);
}

/// A name with a NUL inside would reach the system cut short, as the name of another file.
void CheckName(const std::string& path) {
    if (path.find('\0') != std::string::npos || path.empty()) Fail(ErrorNumber::BadFileName);
}

[[noreturn]] void FailToRead(int cause, const std::string& path) {
    if (cause == ENOENT && IsFolder(AsFolder(FolderOf(path)))) Fail(ErrorNumber::FileNotFound);
    FailFor(cause);
}

/// The file that a chain of symbolic links ends at, which need not exist.
std::string Followed(std::string path) {
    constexpr int MostLinks = 40;
    for (int links = 0; links < MostLinks; ++links) {
        char target[PATH_MAX];
        const ssize_t length = ::readlink(path.c_str(), target, sizeof target);
        if (length < 0) return path;
        const std::string next(target, static_cast<std::size_t>(length));
        path = next.starts_with('/') ? next : FolderOf(path).append(next);
    }
    Fail(ErrorNumber::PathAccess);
}

bool SameFile(const struct stat& a, const struct stat& b) {
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// Whether the open file is still the one that stands under that name.
bool StandsAs(int descriptor, const std::string& name) {
    struct stat own, named;
    return ::fstat(descriptor, &own) == 0 && ::lstat(name.c_str(), &named) == 0 && SameFile(own, named);
}

/// Takes away what a killed save has left under a name that only saves use. A save that runs holds a lock on its file.
bool RemoveLeftover(const std::string& name) {
    const FileHandle handle(Open(name, O_RDONLY | O_NONBLOCK | O_NOFOLLOW));
    struct stat status;
    if (!handle.IsOpen() || ::fstat(handle.Get(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
    if (::flock(handle.Get(), LOCK_EX | LOCK_NB) != 0 || !StandsAs(handle.Get(), name)) return false;
    return ::unlink(name.c_str()) == 0;
}

/// The new content of a file, written beside it under a hidden name of its own and locked while it is in work. It goes
/// away again unless it is moved to its place.
class TemporaryFile {
 public:
    TemporaryFile(const std::string& path, mode_t mode)
        : handle_(Create(path, name_, mode)), lock_(Uninterrupted([this] { return ::dup(handle_.Get()); })) {}
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;
    ~TemporaryFile() {
        if (!name_.empty()) ::unlink(name_.c_str());
    }

    void TakeRightsOf(const struct stat& old) {
        // Another owner can be kept by a privileged program only; the rights are kept by any, and must come second.
        // They are left alone where they agree, since some media know no rights and refuse every change.
        struct stat own;
        if (::fstat(handle_.Get(), &own) != 0) FailFor(errno);
        const bool foreign = own.st_uid != old.st_uid || own.st_gid != old.st_gid;
        if (foreign && ::fchown(handle_.Get(), old.st_uid, old.st_gid) != 0 && errno != EPERM) FailFor(errno);
        constexpr mode_t Rights = 07777;
        const bool asBorn = !foreign && (own.st_mode & Rights) == (old.st_mode & Rights);
        if (!asBorn && ::fchmod(handle_.Get(), old.st_mode & Rights) != 0) FailFor(errno);
    }

    void Write(std::string_view bytes) {
        while (!bytes.empty()) {
            const ssize_t written = Uninterrupted([&] { return ::write(handle_.Get(), bytes.data(), bytes.size()); });
            if (written < 0) FailFor(errno);
            if (written == 0) Fail(ErrorNumber::DiskFull);
            bytes.remove_prefix(static_cast<std::size_t>(written));
        }
        if (Uninterrupted([&] { return ::fsync(handle_.Get()); }) != 0) FailFor(errno);
        handle_.Close();
    }

    void MoveTo(const std::string& path) {
        if (::rename(name_.c_str(), path.c_str()) != 0) FailFor(errno);
        name_.clear();
    }

    /// @return false when the name is taken
    bool MoveToFree(const std::string& path) {
        if (::renameat2(AT_FDCWD, name_.c_str(), AT_FDCWD, path.c_str(), RENAME_NOREPLACE) == 0) {
            name_.clear();
            return true;
        }
        if (errno == EEXIST) return false;
        if (errno != EINVAL && errno != ENOSYS) FailFor(errno);
        // A medium that cannot: an empty file claims the name first.
        const FileHandle claim(Open(path, O_WRONLY | O_CREAT | O_EXCL, 0600));
        if (!claim.IsOpen() && errno == EEXIST) return false;
        if (!claim.IsOpen()) FailFor(errno);
        MoveTo(path);
        return true;
    }

 private:
    /// Opens the first free name beside `path`; a leftover makes its name free.
    static int Create(const std::string& path, std::string& name, mode_t mode) {
        // Room for the ending within the longest name that a medium takes.
        constexpr std::size_t LongestStem = 200;
        constexpr int MostTries = 10000;
        const std::string stem = FolderOf(path) + "." + LastPart(path).substr(0, LongestStem) + ".kelvo-";
        for (int attempt = 0, tries = 0; tries < MostTries; ++attempt, ++tries) {
            name = stem + std::to_string(attempt);
            const int descriptor = Open(name, O_WRONLY | O_CREAT | O_EXCL, mode);
            if (descriptor < 0 && errno != EEXIST) FailFor(errno);
            if (descriptor >= 0) {
                if (TakeLock(descriptor, name)) return descriptor;
                ::close(descriptor);
            } else if (RemoveLeftover(name)) {
                --attempt;
            }
        }
        name.clear();
        Fail(ErrorNumber::PathAccess);
    }

    /// @return false when another save has taken the new file for a leftover. A medium without locks keeps leftovers.
    static bool TakeLock(int descriptor, const std::string& name) {
        const bool busy = ::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
        return !busy && StandsAs(descriptor, name);
    }

    std::string name_;
    FileHandle handle_;
    FileHandle lock_;  ///< of the same opening, so that the lock outlives the close that tells of a full disk
};

/// Makes a rename last. The new file stands by now, so that a medium that cannot do this is no failure.
void FlushFolder(const std::string& folder) {
    const FileHandle handle(Open(AsFolder(folder), O_RDONLY | O_DIRECTORY));
    if (handle.IsOpen()) Uninterrupted([&] { return ::fsync(handle.Get()); });
}

/// A file without any right to write is kept from being replaced, though its folder would allow it, and from the
/// superuser too.
void CheckReplaceable(const std::string& path, const struct stat& status) {
    constexpr mode_t AnyWrite = S_IWUSR | S_IWGRP | S_IWOTH;
    if (!S_ISREG(status.st_mode)) Fail(ErrorNumber::PathAccess);
    if ((status.st_mode & AnyWrite) == 0) Fail(ErrorNumber::PermissionDenied);
    if (::faccessat(AT_FDCWD, path.c_str(), W_OK, AT_EACCESS) != 0) FailFor(errno);
}

}  // namespace

std::string ReadWholeFile(const std::string& path, std::size_t limit) {
    CheckName(path);
    const std::string name = FindFile(path);
    // Asked for before the file is opened, since opening alone already acts on some devices.
    const auto before = StatusOf(name);
    if (!before) FailToRead(errno, name);
    if (!S_ISREG(before->st_mode)) Fail(ErrorNumber::PathAccess);
    const FileHandle handle(Open(name, O_RDONLY | O_NONBLOCK));
    if (!handle.IsOpen()) FailToRead(errno, name);
    struct stat status;
    if (::fstat(handle.Get(), &status) != 0) FailFor(errno);
    const auto size = static_cast<std::size_t>(std::max<off_t>(status.st_size, 0));
    if (!S_ISREG(status.st_mode) || size > limit) Fail(ErrorNumber::PathAccess);

    // One byte more than the size tells the end in one call; a file that grows meanwhile is followed.
    std::string bytes(size + 1, '\0');
    std::size_t filled = 0;
    for (;;) {
        const ssize_t got =
            Uninterrupted([&] { return ::read(handle.Get(), bytes.data() + filled, bytes.size() - filled); });
        if (got < 0) Fail(ErrorNumber::DeviceIo);
        if (got == 0) break;
        filled += static_cast<std::size_t>(got);
        if (filled > limit) Fail(ErrorNumber::PathAccess);
        if (filled == bytes.size()) bytes.resize(bytes.size() * 2);
    }
    bytes.resize(filled);
    return bytes;
}

std::optional<std::string> ReadIfPossible(const std::string& path, std::size_t limit) {
    try {
        return ReadWholeFile(path, limit);
    } catch (const RuntimeError&) {
        return std::nullopt;
    }
}

void ReplaceWholeFile(const std::string& path, std::string_view bytes) {
    CheckName(path);
    const std::string name = Followed(FindFile(path));
    const std::string folder = FolderOf(name);
    if (folder.size() == name.size()) Fail(IsFolder(name) ? ErrorNumber::PathAccess : ErrorNumber::PathNotFound);
    const auto old = StatusOf(name);
    if (!old && errno != ENOENT) FailFor(errno);
    if (old) CheckReplaceable(name, *old);

    TemporaryFile beside(name, old ? S_IRUSR | S_IWUSR : 0666);
    if (old) beside.TakeRightsOf(*old);
    beside.Write(bytes);
    beside.MoveTo(name);
    FlushFolder(folder);
}

bool CreateWholeFile(const std::string& path, std::string_view bytes) {
    CheckName(path);
    const std::string name = FindFile(path);
    if (EntryExists(name)) return false;
    TemporaryFile beside(name, 0666);
    beside.Write(bytes);
    if (!beside.MoveToFree(name)) return false;
    FlushFolder(FolderOf(name));
    return true;
}

std::string FindFile(const std::string& path) {
    std::string name = NativePath(path);
    const std::string wanted = Upper(LastPart(name));
    if (wanted.empty() || EntryExists(name)) return name;
    const std::string folder = FolderOf(name);
    struct Closer {
        void operator()(DIR* entries) const { ::closedir(entries); }
    };
    const std::unique_ptr<DIR, Closer> entries(::opendir(AsFolder(folder).c_str()));
    if (!entries) return name;
    std::string best;
    while (const dirent* entry = ::readdir(entries.get())) {
        const std::string_view found = entry->d_name;
        // Upper case keeps the length of a name.
        if (found.size() != wanted.size() || Upper(found) != wanted) continue;
        if (best.empty() || found < best) best = found;
    }
    return best.empty() ? name : folder + best;
}

bool FileExists(const std::string& path) {
    if (path.find('\0') != std::string::npos) return false;
    const auto status = StatusOf(FindFile(path));
    return status && S_ISREG(status->st_mode);
}

std::string UpperName(const std::string& path) {
    const std::size_t at = LastPartAt(path);
    return path.substr(0, at) + Upper(std::string_view(path).substr(at));
}

std::string LastPart(const std::string& path) {
    return path.substr(LastPartAt(path));
}

bool HasFolder(const std::string& path) {
    return LastPartAt(path) > 0;
}

std::string NativePath(const std::string& path) {
    std::string native = path;
    std::replace(native.begin(), native.end(), '\\', '/');
    return native;
}

}  // namespace kelvo
