#include "text/FileHandle.h"

#include "text/RuntimeError.h"

namespace kelvo {

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
        case ENAMETOOLONG: throw RuntimeError(ErrorNumber::BadFileName);
        case EIO: throw RuntimeError(ErrorNumber::DeviceIo);
        default: throw RuntimeError(ErrorNumber::PathAccess);
    }
}

void FileHandle::Close() {
    const int descriptor = descriptor_;
    descriptor_ = -1;
    if (::close(descriptor) != 0 && errno != EINTR) FailFor(errno);
}

}  // namespace kelvo
