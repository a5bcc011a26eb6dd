#include "text/Backup.h"

#include <filesystem>

#include "text/Files.h"

namespace kelvo {

bool ReplaceKeepingBackup(const std::string& path, std::string_view bytes) {
    namespace fs = std::filesystem;
    const std::string backup = path + "~";
    const std::string fresh = backup + "new";
    std::error_code failed;
    const bool existed = fs::is_regular_file(path, failed);
    bool kept = !existed;
    if (existed) {
        // A second name for the old content costs nothing; a copy where the medium knows no second names.
        const fs::path old = fs::canonical(path, failed);
        fs::remove(fresh, failed);
        fs::create_hard_link(old, fresh, failed);
        if (failed) fs::copy_file(old, fresh, fs::copy_options::overwrite_existing, failed);
        kept = !failed;
    }
    try {
        ReplaceWholeFile(path, bytes);
    } catch (...) {
        if (existed) fs::remove(fresh, failed);
        throw;
    }
    if (!existed || !kept) return kept;
    fs::rename(fresh, backup, failed);
    if (!failed) return true;
    fs::remove(fresh, failed);
    return false;
}

}  // namespace kelvo
