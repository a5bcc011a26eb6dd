#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string_view>

#include "tables/TableFile.h"
#include "text/Backup.h"
#include "text/CodePage.h"
#include "text/Files.h"

namespace kelvo {
namespace {

[[noreturn]] void ThrowErrno(int error) {
    switch (error) {
        case ENOSPC:
        case EDQUOT: throw RuntimeError(ErrorNumber::DiskFull);
        case EACCES:
        case EPERM:
        case EROFS: throw RuntimeError(ErrorNumber::PermissionDenied);
        case ENOENT:
        case ENOTDIR: throw RuntimeError(ErrorNumber::PathNotFound);
        case EIO: throw RuntimeError(ErrorNumber::DeviceIo);
        default: throw RuntimeError(ErrorNumber::PathAccess);
    }
}

/// Writes all bytes or none: what stands of a half-written row is cut off again.
void WriteAtEnd(int file, std::string_view bytes) {
    struct stat before {};
    if (::fstat(file, &before) != 0) ThrowErrno(errno);
    if (!S_ISREG(before.st_mode)) throw RuntimeError(ErrorNumber::PathAccess);
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t n = ::write(file, bytes.data() + done, bytes.size() - done);
        if (n < 0 && errno == EINTR) continue;
        if (n < 0) {
            const int error = errno;
            while (::ftruncate(file, before.st_size) != 0 && errno == EINTR) {
            }
            ThrowErrno(error);
        }
        done += static_cast<std::size_t>(n);
    }
    if (::fsync(file) != 0) ThrowErrno(errno);
}

void AppendToFile(const std::string& path, std::string_view bytes) {
    const int file = ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0666);
    if (file < 0) ThrowErrno(errno);
    try {
        WriteAtEnd(file, bytes);
    } catch (...) {
        ::close(file);
        throw;
    }
    if (::close(file) != 0) ThrowErrno(errno);
}

}  // namespace

bool WriteRecordingHead(AppState& state, DataTable& table, Prompts& prompts) {
    const TableKind kind = KindOf(state);
    try {
        const std::string head = TableHeadLines(state, table, kind.form, kind.lastPass) + table.RowLine(0) + "\r\n";
        ReplaceKeepingBackup(FindFile(state.TableFile), ToCodePage(head));
        return true;
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", state.TableFile);
        return false;
    }
}

bool AppendRecordingRow(const AppState& state, const std::string& row, Prompts& prompts) {
    try {
        AppendToFile(FindFile(state.TableFile), ToCodePage(row + "\r\n"));
        return true;
    } catch (const RuntimeError& error) {
        ShowFileError(prompts, error, "Saving", state.TableFile);
        return false;
    }
}

}  // namespace kelvo
