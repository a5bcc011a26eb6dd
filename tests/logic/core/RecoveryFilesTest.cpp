#include "core/RecoveryFiles.h"

#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>

#include "core/Clock.h"
#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using End = RecoveryFiles::End;

class RecoveryFilesTest : public testing::Test {
 protected:
    std::string Left(const ScratchFolder& folder) const { return Joined(folder.Names()); }

    const ScratchFolder first, second;
    FixedClock clock;
    RecoveryFiles kept{{first.Path(), first.Path(), second / "deep/"}, clock}, other = kept;
    const UnsavedPiece rows{"the rows", ".TAB", "1\t2\r\n", {}}, notes{"the notes", ".TXT", "pH\r\n", {}};
    const std::string session = std::string(RecoveryFiles::Heading(End::Session)) + "\n\n",
                      failure = std::string(RecoveryFiles::Heading(End::Failure)) + "\n\n";
};

TEST_F(RecoveryFilesTest, EachPieceGetsAFileOfItsOwnAndIsToldUntilItIsRead) {
    first.Put("KEPT20261124-090507.TAB", "of another end in the same second");
    EXPECT_TRUE(kept.Keep({rows, notes}, End::Session).lost.empty());
    EXPECT_EQ(first.Get("KEPT20261124-090507-2.TAB") + first.Get("KEPT20261124-090507.TXT"), "1\t2\r\npH\r\n");
    clock.Pass(1);
    UnsavedPiece longer = rows;
    longer.bytes += "3\t4\r\n";
    kept.Keep({rows, longer, notes}, End::Failure);
    EXPECT_EQ(Left(first),
              "KEPT.TXT,KEPT20261124-090507-2.TAB,KEPT20261124-090507.TAB,KEPT20261124-090507.TXT,"
              "KEPT20261124-090508.TAB")
        << "what was kept before is not kept twice";
    const std::string told = session + (first / "KEPT20261124-090507-2.TAB") + "\n" +
                             (first / "KEPT20261124-090507.TXT") + "\n\n" + failure +
                             (first / "KEPT20261124-090508.TAB");
    EXPECT_EQ(kept.Notes(), told);
    EXPECT_EQ(other.Notes(), told) << "it was shown and not read";
    kept.NotesRead();
    EXPECT_EQ(kept.Notes(), "");
    kept.Keep({}, End::Session);
    EXPECT_EQ(kept.Notes(), "");
}

// Two programs of one user hear of the same log-out.
TEST_F(RecoveryFilesTest, TwoProgramsThatEndAtOnceLoseNothingOfEachOther) {
    constexpr int Programs = 6;
    first.Put("kept.txt", "Kept frozen: samples 3 to 9");
    first.Put("kept-x.txt", session + "not one of the names");
    for (int program = 0; program < Programs; ++program)
        if (fork() == 0) {
            kept.Keep({{"the rows", ".TAB", std::to_string(program), {}}}, End::Session);
            _exit(0);
        }
    while (wait(nullptr) > 0) {
    }
    std::string held;
    for (int n = 1; n <= Programs; ++n)
        held += first.Get("KEPT20261124-090507" + (n == 1 ? std::string() : "-" + std::to_string(n)) + ".TAB");
    std::sort(held.begin(), held.end());
    EXPECT_EQ(held, "012345");
    const std::string told = other.Notes();
    for (const std::string& name : first.Names())
        EXPECT_EQ(told.find(first / name) != std::string::npos, name.ends_with(".TAB")) << name;
    other.NotesRead();
    EXPECT_EQ(first.Get("kept.txt") + Joined(first.Names().size()), "Kept frozen: samples 3 to 98")
        << "the analyst's own file is neither told nor taken away";
}

TEST_F(RecoveryFilesTest, AFileThatTheAnalystHasChosenComesFirst) {
    UnsavedPiece named = rows;
    named.file = first.Put("RUN.TAB", "1\t2\r\n");
    kept.Keep({named}, End::Session);
    EXPECT_EQ(Left(first), "RUN.TAB") << "it stands there already, and nothing is told";
    named.bytes = "1\t2\r\n3\t4\r\n";
    kept.Keep({named}, End::Session);
    EXPECT_EQ(first.Get("RUN.TAB"), named.bytes);
    EXPECT_EQ(kept.Notes(), session + named.file);
    named.bytes = "5\r\n";
    named.file = "/dev/null/RUN.TAB";
    EXPECT_TRUE(kept.Keep({named}, End::Session).lost.empty());
    EXPECT_EQ(first.Get("KEPT20261124-090507.TAB"), "5\r\n");
}

TEST_F(RecoveryFilesTest, TheNextFolderIsTakenAndALossIsTold) {
    const UnsavedPiece large{"the samples", ".TAB", std::string(9000, 'x'), {}};
    OnSmallDisk(4096, [&] {
        const auto outcome = kept.Keep({large, notes}, End::Session);
        EXPECT_EQ(Joined(outcome.lost, outcome.failures),
                  "the samples|" + first.Path() + ": Disk full," + (second / "deep/") + ": Disk full");
    });
    EXPECT_EQ(first.Get("KEPT20261124-090507.TXT"), "pH\r\n") << "the small one has its place";
    std::filesystem::permissions(first.Path(), std::filesystem::perms(0555));
    std::filesystem::permissions(second / "deep", std::filesystem::perms(0777));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(kept.Keep({large}, End::Session).lost.empty()) << "a second try, with room elsewhere";
    }
    EXPECT_TRUE(second.Get("deep/KEPT20261124-090507.TAB") == large.bytes);
    EXPECT_EQ(second.Get("deep/KEPT.TXT"), session + (second / "deep/KEPT20261124-090507.TAB"));
}

TEST(UnsavedWork, EverySourceIsAskedWhileItLives) {
    UnsavedWork work;
    const auto holding = [](std::string what) {
        return [what] { return std::vector<UnsavedPiece>{{what, ".TXT", {}, {}}}; };
    };
    const auto held = [&work] {
        std::string all;
        for (const UnsavedPiece& piece : work.Collect())
            all += piece.what;
        return all;
    };
    auto a = work.Add(holding("a"));
    {
        const auto failing = work.Add([]() -> std::vector<UnsavedPiece> { throw std::runtime_error("broken"); });
        const auto b = work.Add(holding("b"));
        EXPECT_EQ(held(), "ab");
    }
    EXPECT_EQ(held(), "a");
    a = work.Add(holding("c"));
    EXPECT_EQ(held(), "c");
    a = {};
    EXPECT_EQ(held(), "");
}

}  // namespace
}  // namespace kelvo::test
