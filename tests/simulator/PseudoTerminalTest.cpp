#include "simulator/PseudoTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

namespace kelvo::simulator {
namespace {

namespace fs = std::filesystem;

class PseudoTerminalTest : public testing::Test {
 protected:
    ~PseudoTerminalTest() override { fs::remove_all(folder); }

    static std::string ReadAll(int handle, std::size_t count) {
        std::string bytes;
        pollfd ready = {handle, POLLIN, 0};
        while (bytes.size() < count && poll(&ready, 1, 2000) > 0) {
            char buffer[64];
            const ssize_t got = read(handle, buffer, sizeof buffer);
            if (got <= 0) break;
            bytes.append(buffer, static_cast<std::size_t>(got));
        }
        return bytes;
    }

    const fs::path folder = fs::temp_directory_path() / ("kelvo-pty-" + std::to_string(getpid()));
    const std::string link = (folder / "ports" / "COM1").string();
    PseudoTerminal terminal;
};

TEST_F(PseudoTerminalTest, PassesEveryByteBothWays) {
    terminal.Open(link);
    const int other = open(link.c_str(), O_RDWR | O_NOCTTY);
    ASSERT_GE(other, 0);
    std::string all;
    for (int byte = 0; byte < 256; ++byte)
        all += static_cast<char>(byte);
    terminal.Write({reinterpret_cast<const std::uint8_t*>(all.data()), all.size()});
    EXPECT_EQ(ReadAll(other, all.size()), all);
    ASSERT_EQ(write(other, all.data(), all.size()), 256);
    std::string back;
    for (int tries = 0; tries < 100 && back.size() < all.size(); ++tries) {
        pollfd ready = {terminal.Handle(), POLLIN, 0};
        poll(&ready, 1, 100);
        for (const std::uint8_t byte : terminal.Read())
            back += static_cast<char>(byte);
    }
    EXPECT_EQ(back, all);
    close(other);
}

TEST_F(PseudoTerminalTest, ItsNameComesStaysAndGoes) {
    terminal.Open(link);
    EXPECT_EQ(fs::read_symlink(link), terminal.Device());
    EXPECT_FALSE(PseudoTerminal::IsLeftOver(link));
    terminal.Drop();
    EXPECT_TRUE(fs::is_symlink(fs::symlink_status(link))) << "an adapter's lasting name stays";
    EXPECT_TRUE(PseudoTerminal::IsLeftOver(link));
    terminal.Open(link);
    EXPECT_TRUE(fs::exists(link));
    terminal.Close();
    EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link)));
}

TEST_F(PseudoTerminalTest, OnlyALeftOverNameIsTaken) {
    fs::create_directories(folder / "ports");
    for (const char* target : {"/dev/null", "/dev/serial/by-id/of-the-lab"}) {
        fs::create_symlink(target, link);
        EXPECT_THROW(terminal.Open(link), std::runtime_error) << target;
        EXPECT_EQ(fs::read_symlink(link), target) << "the user's own pin stands";
        EXPECT_FALSE(terminal.IsOpen());
        fs::remove(link);
    }
    fs::create_symlink("/dev/pts/99999", link);
    terminal.Open(link);
    EXPECT_TRUE(terminal.IsOpen());
}

}  // namespace
}  // namespace kelvo::simulator
