#include "text/Backup.h"

#include <filesystem>

#include "text/Files.h"

namespace kelvo {

bool ReplaceKeepingBackup(const std::string& path, std::string_view bytes) {
    return ReplaceKeepingBackup(path, bytes, path + "~");
}

bool ReplaceKeepingBackup(const std::string& path, std::string_view bytes, const std::string& backup) {
    namespace fs = std::filesystem;
    // Hidden, and of one name, so that the next save of the file clears what a kill has left.
    constexpr std::size_t LongestStem = 200;
    const std::string name = LastPart(path);
    const std::string fresh =
        path.substr(0, path.size() - name.size()) + "." + name.substr(0, LongestStem) + ".kelvo-b";
    std::error_code failed;
    const bool existed = fs::is_regular_file(path, failed);
    bool kept = !existed;
    if (existed) {
        // A second name for the old content costs nothing; a copy where the medium knows no second names.
        const fs::path old = fs::canonical(path, failed);
        fs::remove(fresh, failed);
        fs::create_hard_link(old, fresh, failed);
        if (failed) fs::copy_file(old, fresh, failed);
        kept = !failed;
    }
    try {
        ReplaceWholeFile(path, bytes);
    } catch (...) {
        if (existed) fs::remove(fresh, failed);
        throw;
    }
    if (!existed) return true;
    if (kept) fs::rename(fresh, backup, failed);
    if (kept && !failed) return true;
    fs::remove(fresh, failed);
    return false;
}

}  // namespace kelvo
