#pragma once

#include <unistd.h>

#include <cerrno>

namespace kelvo {

// What whatever works on open files of the system shares.

/// @throws RuntimeError for a failure of the system, whose `errno` is told
[[noreturn]] void FailFor(int cause);

/// The result of a call that is made again while a signal interrupts it.
template <typename Call>
auto Uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

/// An open file that closes itself.
class FileHandle {
 public:
    explicit FileHandle(int descriptor) : descriptor_(descriptor) {}
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle() {
        if (descriptor_ >= 0) ::close(descriptor_);
    }
    bool IsOpen() const { return descriptor_ >= 0; }
    int Get() const { return descriptor_; }
    /// A network disk may tell only here that it is full. An interrupted close has closed.
    /// @throws as `FailFor`
    void Close();

 private:
    int descriptor_;
};

}  // namespace kelvo
