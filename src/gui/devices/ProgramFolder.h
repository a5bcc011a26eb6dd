#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// The folder of the program's own files, ending with '/': the folder of the program itself when a `KELVO.ini`, in
/// whatever case, lies there and can be written (portable use, the build tree); otherwise the per-user data folder
/// `$XDG_DATA_HOME/kelvo/` (or `~/.local/share/kelvo/`), which is made, and filled from the installed first files
/// where they are missing. A text file (`*.TXT`) that the user has not changed since it was brought gives way to a
/// newer one; one that was changed stays. When that folder can neither be written nor holds settings, it is the folder
/// of the installed first files itself, to be read only.
/// @param programDir folder of the executable; the first files are sought in `../share/kelvo` beside it and in
///                   `/usr/share/kelvo`
std::string ProgramFolder(const std::string& programDir);

/// The per-user data folder itself, ending with '/'; it may not exist yet.
std::string UserDataFolder();

/// Where unsaved work is kept when the program ends otherwise than by its own way out, in the order in which the
/// folders are tried: the program's, the per-user data folder, the home folder, one of the user's own among the
/// temporary files. Each ends with '/'; not all need exist.
std::vector<std::string> KeepFolders(const std::string& programFolder);

}  // namespace kelvo
