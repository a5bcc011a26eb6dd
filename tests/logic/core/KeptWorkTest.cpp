#include "core/KeptWork.h"

#include "support/Joined.h"
#include "support/Scripted.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

class KeptWorkTest : public testing::Test {
 protected:
    /// Names of a folder's files, and what the next start would be told, with the folders' names cut short.
    std::string Left(const ScratchFolder& folder) const { return Joined(folder.Names()); }

    const ScratchFolder first, second;
    FixedClock clock;
    KeptWork kept{{first.Path(), second / "deep/"}, clock};
    const UnsavedPiece rows{"the rows", ".TAB", "1\t2\r\n", {}}, notes{"the notes", ".TXT", "pH\r\n", {}};
};

TEST_F(KeptWorkTest, EachPieceGetsAFileOfItsOwnAndIsToldOnce) {
    first.Put("KEPT20261124-090507.TAB", "of another end in the same second");
    EXPECT_TRUE(kept.Keep({rows, notes}, "Ended.").lost.empty());
    EXPECT_EQ(first.Get("KEPT20261124-090507-2.TAB") + first.Get("KEPT20261124-090507.TXT"), "1\t2\r\npH\r\n");
    clock.Pass(1);
    UnsavedPiece longer = rows;
    longer.bytes += "3\t4\r\n";
    kept.Keep({rows, longer, notes}, "Ended again.");
    EXPECT_EQ(Left(first),
              "KEPT.TXT,KEPT20261124-090507-2.TAB,KEPT20261124-090507.TAB,KEPT20261124-090507.TXT,"
              "KEPT20261124-090508.TAB")
        << "what was kept before is not kept twice";
    EXPECT_EQ(kept.TakeNotes(), "Ended.\n\n" + (first / "KEPT20261124-090507-2.TAB") + "\n" +
                                    (first / "KEPT20261124-090507.TXT") + "\n\nEnded again.\n\n" +
                                    (first / "KEPT20261124-090508.TAB"));
    EXPECT_EQ(kept.TakeNotes(), "");
    kept.Keep({}, "Nothing.");
    EXPECT_EQ(kept.TakeNotes(), "");
}

TEST_F(KeptWorkTest, AFileThatTheAnalystHasChosenComesFirst) {
    UnsavedPiece named = rows;
    named.file = first.Put("RUN.TAB", "1\t2\r\n");
    kept.Keep({named}, "Ended.");
    EXPECT_EQ(Left(first), "RUN.TAB") << "it stands there already, and nothing is told";
    named.bytes = "1\t2\r\n3\t4\r\n";
    kept.Keep({named}, "Ended.");
    EXPECT_EQ(first.Get("RUN.TAB"), named.bytes);
    EXPECT_EQ(kept.TakeNotes(), "Ended.\n\n" + named.file);
    named.bytes = "5\r\n";
    named.file = "/dev/null/RUN.TAB";
    EXPECT_TRUE(kept.Keep({named}, "Ended.").lost.empty());
    EXPECT_EQ(first.Get("KEPT20261124-090507.TAB"), "5\r\n");
}

TEST_F(KeptWorkTest, TheNextFolderIsTakenAndALossIsTold) {
    const UnsavedPiece large{"the samples", ".TAB", std::string(9000, 'x'), {}};
    OnSmallDisk(4096, [&] {
        const auto outcome = kept.Keep({large, notes}, "Ended.");
        EXPECT_EQ(Joined(outcome.lost, outcome.failures),
                  "the samples|" + first.Path() + ": Disk full," + (second / "deep/") + ": Disk full");
    });
    EXPECT_EQ(first.Get("KEPT20261124-090507.TXT"), "pH\r\n") << "the small one has its place";
    std::filesystem::permissions(first.Path(), std::filesystem::perms(0555));
    std::filesystem::permissions(second / "deep", std::filesystem::perms(0777));
    {
        const OrdinaryUser user;
        EXPECT_TRUE(kept.Keep({large}, "Ended.").lost.empty()) << "a second try, with room elsewhere";
    }
    EXPECT_TRUE(second.Get("deep/KEPT20261124-090507.TAB") == large.bytes);
    EXPECT_EQ(second.Get("deep/KEPT.TXT"), "Ended.\n\n" + (second / "deep/KEPT20261124-090507.TAB"));
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
