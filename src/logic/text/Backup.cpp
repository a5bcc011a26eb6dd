#include "text/Backup.h"

#include <sys/xattr.h>

#include <array>
#include <cerrno>
#include <filesystem>
#include <optional>
#include <system_error>

#include "text/FileMark.h"
#include "text/Files.h"
#include "text/RuntimeError.h"

namespace kelvo {
namespace {

namespace fs = std::filesystem;

constexpr const char* MarkName = "user.kelvo.backup";

/// Hidden, and of one name, so that the next save of the file finds what a kill has left.
std::string HiddenName(const std::string& path) {
    constexpr std::size_t LongestStem = 200;
    const std::string name = LastPart(path);
    return path.substr(0, path.size() - name.size()) + "." + name.substr(0, LongestStem) + ".kelvo-b";
}

bool IsPlainFile(const std::string& path) {
    std::error_code failed;
    return fs::symlink_status(path, failed).type() == fs::file_type::regular;
}

bool IsOurs(const std::string& backup, std::string_view held, const BackupRule& rule) {
    std::array<char, 64> mark{};
    const ssize_t size = ::lgetxattr(backup.c_str(), MarkName, mark.data(), mark.size());
    if (size >= 0) return FileMark(held).Text() == std::string_view(mark.data(), static_cast<std::size_t>(size));
    return errno == ENOTSUP && rule.LooksOurs(held);
}

/// Where a previous version goes.
struct Place {
    std::string name;       ///< empty: nowhere
    bool needless = false;  ///< and nothing is lost by that
};
Place PlaceFor(const std::string& path, const std::optional<std::string>& given, const BackupRule& rule) {
    constexpr int MostBackups = 9;
    for (int n = 1; n <= MostBackups; ++n) {
        const std::string backup = path + "~" + (n == 1 ? "" : std::to_string(n));
        std::error_code failed;
        if (fs::symlink_status(backup, failed).type() == fs::file_type::not_found) return {backup};
        const auto held = IsPlainFile(backup) ? ReadIfPossible(backup) : std::nullopt;
        if (!held || !IsOurs(backup, *held, rule)) continue;
        // What cannot be read is as good as any.
        if (!given || rule.GivesWay(*held, *given)) return {backup};
        if (rule.Needless(*given)) return {{}, true};
    }
    return {{}, given && rule.Needless(*given)};
}

/// @return false when it could not be done
bool PutInPlace(const std::string& hidden, const std::string& backup, const std::optional<std::string>& content) {
    std::error_code failed;
    fs::rename(hidden, backup, failed);
    if (failed) return false;
    const std::string mark = content ? FileMark(*content).Text() : std::string();
    // Without it the backup counts as the analyst's own and is never replaced.
    if (content) [[maybe_unused]]
        const int marked = ::lsetxattr(backup.c_str(), MarkName, mark.data(), mark.size(), 0);
    return true;
}

/// A second name for the old content costs nothing; a copy where the medium knows no second names.
bool Link(const std::string& path, const std::string& hidden) {
    std::error_code failed;
    const fs::path old = fs::canonical(path, failed);
    fs::create_hard_link(old, hidden, failed);
    if (failed && !IsPlainFile(hidden)) fs::copy_file(old, hidden, fs::copy_options::none, failed);
    return !failed;
}

}  // namespace

bool BackupRule::GivesWay(std::string_view, std::string_view) const {
    return true;
}

bool BackupRule::Needless(std::string_view) const {
    return false;
}

bool BackupRule::LooksOurs(std::string_view) const {
    return true;
}

bool HasLeftVersion(const std::string& path) {
    return IsPlainFile(HiddenName(path));
}

void AdoptLeftVersion(const std::string& path, const BackupRule& rule) {
    if (!HasLeftVersion(path)) return;
    const std::string hidden = HiddenName(path);
    const auto left = ReadIfPossible(hidden), now = FileExists(path) ? ReadIfPossible(path) : std::nullopt;
    if (!left) return;
    const Place place = left == now ? Place{{}, true} : PlaceFor(path, left, rule);
    std::error_code failed;
    if (!place.name.empty())
        PutInPlace(hidden, place.name, left);
    else if (place.needless)
        fs::remove(hidden, failed);
}

Replaced ReplaceKeepingBackup(const std::string& path, std::string_view bytes, const BackupRule& rule) {
    AdoptLeftVersion(path, rule);
    std::error_code failed;
    if (!fs::is_regular_file(path, failed)) {
        ReplaceWholeFile(path, bytes);
        return {};
    }
    const auto old = ReadIfPossible(path);
    const Place place = PlaceFor(path, old, rule);
    const std::string hidden = HiddenName(path);
    const bool linked = !place.name.empty() && Link(path, hidden);
    try {
        ReplaceWholeFile(path, bytes);
    } catch (...) {
        if (linked) fs::remove(hidden, failed);
        throw;
    }
    if (!linked) return {place.needless, {}};
    if (PutInPlace(hidden, place.name, old)) return {true, place.name};
    fs::remove(hidden, failed);
    return {false, {}};
}

}  // namespace kelvo
