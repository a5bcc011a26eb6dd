#pragma once

#include <string>
#include <string_view>

namespace kelvo {

// What a save replaces stays beside the file as "NAME~", or as the first of "NAME~2" to "NAME~9" that is free or gives
// way. Only a backup that Kelvo made and nobody has changed since can give way: it carries a mark of its content as an
// extended attribute ("user.kelvo.backup"). Where a medium knows no attributes, its looks decide.

/// Which backups of a kind of file are worth more than others. The base gives every one up for a later one.
class BackupRule {
 public:
    virtual ~BackupRule() = default;
    /// Whether a backup that holds `held` may be given up for a version that holds `given`.
    virtual bool GivesWay(std::string_view held, std::string_view given) const;
    /// Whether `given` needs no place of its own where no backup gives way, since the new file holds all of it.
    virtual bool Needless(std::string_view given) const;
    /// Whether a file without a mark, on a medium that has none, looks like a version of the file.
    virtual bool LooksOurs(std::string_view held) const;
};

struct Replaced {
    bool kept = true;    ///< what stood there is in a backup, or none was needed
    std::string backup;  ///< its name, empty when there is none
};
/// Replaces a file and keeps what stood there. @throws RuntimeError as ReplaceWholeFile; then the file and older
/// backups are as they were.
Replaced ReplaceKeepingBackup(const std::string& path, std::string_view bytes, const BackupRule& rule = BackupRule());

/// A previous version that a save has left under a hidden name, because it was killed between its last two steps,
/// becomes a backup like any other. A save does so by itself.
bool HasLeftVersion(const std::string& path);
void AdoptLeftVersion(const std::string& path, const BackupRule& rule = BackupRule());

}  // namespace kelvo
