#include "simulator/PseudoTerminal.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <numeric>

#include "text/ScratchFolder.h"

namespace kelvo::simulator {
namespace {

namespace fs = std::filesystem;

class PseudoTerminalTest : public testing::Test {
 protected:
    const test::ScratchFolder folder;
    const std::string link = folder / "ports/COM1";
    PseudoTerminal terminal;
};

TEST_F(PseudoTerminalTest, PassesEveryByteBothWays) {
    terminal.Open(link);
    const int other = open(link.c_str(), O_RDWR | O_NOCTTY);
    std::vector<std::uint8_t> all(256), there, back;
    std::iota(all.begin(), all.end(), std::uint8_t{0});
    terminal.Write(all);
    pollfd ready = {other, POLLIN, 0};
    for (std::uint8_t byte = 0; there.size() < all.size() && poll(&ready, 1, 2000) > 0 && read(other, &byte, 1) == 1;)
        there.push_back(byte);
    EXPECT_EQ(there, all);
    ASSERT_EQ(write(other, all.data(), all.size()), 256);
    ready.fd = terminal.Handle();
    while (back.size() < all.size() && poll(&ready, 1, 2000) > 0)
        for (const std::uint8_t byte : terminal.Read())
            back.push_back(byte);
    EXPECT_EQ(back, all);
    close(other);
}

TEST_F(PseudoTerminalTest, ItsNameComesStaysAndGoes) {
    terminal.Open(link);
    EXPECT_EQ(fs::read_symlink(link), terminal.Device());
    terminal.Drop();
    EXPECT_TRUE(PseudoTerminal::IsLeftOver(link)) << "an adapter's lasting name stays";
    terminal.Open(link);
    EXPECT_FALSE(PseudoTerminal::IsLeftOver(link));
    terminal.Close();
    EXPECT_FALSE(fs::is_symlink(fs::symlink_status(link)));
    fs::create_symlink("/dev/serial/by-id/of-the-lab", link);
    EXPECT_THROW(terminal.Open(link), std::runtime_error);
    EXPECT_EQ(fs::read_symlink(link), "/dev/serial/by-id/of-the-lab") << "the user's own pin stands";
    EXPECT_FALSE(terminal.IsOpen());
}

}  // namespace
}  // namespace kelvo::simulator
