#include "text/FileMark.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <system_error>
#include <thread>

#include "text/Files.h"
#include "text/Number.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

/// FNV-1a of 64 bits (Fowler, Noll, Vo; draft-eastlake-fnv).
std::uint64_t HashOf(std::string_view bytes) {
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char byte : bytes) {
        hash ^= static_cast<unsigned char>(byte);
        hash *= 0x100000001b3U;
    }
    return hash;
}

[[noreturn]] void Fail(const std::error_code& cause) {
    if (cause == std::errc::no_space_on_device) throw RuntimeError(ErrorNumber::DiskFull);
    if (cause == std::errc::permission_denied || cause == std::errc::operation_not_permitted ||
        cause == std::errc::read_only_file_system)
        throw RuntimeError(ErrorNumber::PermissionDenied);
    throw RuntimeError(ErrorNumber::PathAccess);
}

/// The file itself, where the name is a link to it.
fs::path Itself(const std::string& path) {
    std::error_code failed;
    fs::path itself = fs::canonical(FindFile(path), failed);
    if (failed) Fail(failed);
    return itself;
}

/// A stem that leaves room for the words within the longest name that a medium takes, cut between two letters.
std::string ShortStem(const std::string& stem) {
    constexpr std::size_t Longest = 200;
    if (stem.size() <= Longest) return stem;
    const auto continues = [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U; };
    std::size_t end = Longest;
    while (end > 0 && continues(stem[end]))
        --end;
    return stem.substr(0, end);
}

/// @return false when the name is taken
bool SecondName(const fs::path& file, const fs::path& name) {
    std::error_code failed;
    if (fs::symlink_status(name, failed).type() != fs::file_type::not_found) return false;
    fs::create_hard_link(file, name, failed);
    if (!failed) return true;
    if (failed == std::errc::file_exists) return false;
    // A medium that knows no second names.
    fs::copy_file(file, name, fs::copy_options::none, failed);
    if (failed == std::errc::file_exists) return false;
    if (failed) {
        std::error_code ignored;
        fs::remove(name, ignored);
        Fail(failed);
    }
    return true;
}

int OpenFolderOf(const std::string& path) {
    std::error_code failed;
    const fs::path itself = fs::weakly_canonical(FindFile(path), failed);
    const std::string folder = failed ? std::string(".") : itself.parent_path().string();
    return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

}  // namespace

FileMark::FileMark(std::string_view bytes) : known_(true), size_(bytes.size()), hash_(HashOf(bytes)) {}

bool FileMark::ChangedElsewhere(const std::string& path) const {
    if (!known_ || !FileExists(path)) return false;
    const auto content = ReadIfPossible(path, size_);
    return !content || !Fits(*content);
}

std::string FileMark::Text() const {
    char text[64];
    std::snprintf(text, sizeof text, "%zu:%016llx", size_, static_cast<unsigned long long>(hash_));
    return text;
}

std::string KeepChangedVersion(const std::string& path) {
    const fs::path file = Itself(path);
    const std::string stem = ShortStem(file.stem().string()), ending = file.extension().string();
    constexpr int MostVersions = 1000;
    for (int n = 1; n <= MostVersions; ++n) {
        std::string name = (file.parent_path() / stem).string() + " (changed elsewhere";
        if (n > 1) name.append(" ").append(std::to_string(n));
        name.append(")").append(ending);
        if (SecondName(file, name)) return name;
    }
    throw RuntimeError(ErrorNumber::PathAccess);
}

bool SameFile(const std::string& a, const std::string& b) {
    std::error_code failed;
    const fs::path one = FindFile(a), other = FindFile(b);
    if (fs::equivalent(one, other, failed)) return true;
    const auto folder = [&failed](const fs::path& path) { return fs::weakly_canonical(path, failed).parent_path(); };
    return !fs::exists(one, failed) && !fs::exists(other, failed) && folder(one) == folder(other) &&
           EqualNoCase(one.filename().string(), other.filename().string());
}

RewriteTurn::RewriteTurn(const std::string& path) : folder_(OpenFolderOf(path)) {
    if (!folder_.IsOpen()) return;
    constexpr int MostTries = 400;
    for (int tries = 0; tries < MostTries; ++tries) {
        if (::flock(folder_.Get(), LOCK_EX | LOCK_NB) == 0 || (errno != EWOULDBLOCK && errno != EINTR)) return;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
}

}  // namespace kelvo
