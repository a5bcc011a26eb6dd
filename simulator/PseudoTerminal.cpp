#include "simulator/PseudoTerminal.h"

#include <fcntl.h>
#include <stdlib.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>
#include <system_error>

namespace kelvo::simulator {
namespace {

namespace fs = std::filesystem;

[[noreturn]] void Fail(const std::string& what) {
    throw std::runtime_error(what + ": " + std::strerror(errno));
}

/// Where the link points while the line is out; no terminal is ever called so.
const char* const Nowhere = "/dev/pts/unplugged";

/// A bare line: no echo, no translation of any byte, before anybody has set it.
void MakeRaw(int handle) {
    termios line{};
    if (tcgetattr(handle, &line) != 0) return;
    cfmakeraw(&line);
    tcsetattr(handle, TCSANOW, &line);
}

}  // namespace

void PseudoTerminal::Open(const std::string& link) {
    Close();
    master_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) Fail("no pseudo-terminal");
    std::array<char, 128> name{};
    if (ptsname_r(master_, name.data(), name.size()) != 0) Fail("no name for the pseudo-terminal");
    device_ = name.data();
    MakeRaw(master_);
    try {
        if (!link.empty()) MakeLink(link);
    } catch (...) {
        Close();
        throw;
    }
}

bool PseudoTerminal::IsLeftOver(const std::string& link) {
    std::error_code failed;
    const std::string target = fs::read_symlink(link, failed).string();
    return target.starts_with("/dev/pts/") && !fs::exists(target, failed);
}

void PseudoTerminal::MakeLink(const std::string& link) {
    std::error_code failed;
    fs::create_directories(fs::path(link).parent_path(), failed);
    if (fs::exists(fs::symlink_status(link, failed))) {
        const std::string target = fs::read_symlink(link, failed).string();
        // The name of a gone terminal may have come back as the one just opened.
        if (!IsLeftOver(link) && target != device_)
            throw std::runtime_error(link + " is there already and points to " + target);
        fs::remove(link, failed);
    }
    fs::create_symlink(device_, link, failed);
    if (failed) throw std::runtime_error("cannot make " + link + ": " + failed.message());
    link_ = link;
}

void PseudoTerminal::Drop() {
    const std::string link = link_;
    Close();
    if (link.empty()) return;
    std::error_code failed;
    fs::create_symlink(Nowhere, link, failed);
    device_ = Nowhere;
    link_ = link;
}

void PseudoTerminal::Close() {
    std::error_code failed;
    if (!link_.empty() && fs::read_symlink(link_, failed) == device_) fs::remove(link_, failed);
    link_.clear();
    if (master_ >= 0) close(master_);
    master_ = -1;
}

std::vector<std::uint8_t> PseudoTerminal::Read() {
    std::array<std::uint8_t, 256> buffer{};
    const ssize_t count = read(master_, buffer.data(), buffer.size());
    if (count <= 0) return {};
    return {buffer.begin(), buffer.begin() + count};
}

void PseudoTerminal::Write(std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const ssize_t count = write(master_, bytes.data(), bytes.size());
        if (count <= 0) return;
        bytes = bytes.subspan(static_cast<std::size_t>(count));
    }
}

}  // namespace kelvo::simulator
