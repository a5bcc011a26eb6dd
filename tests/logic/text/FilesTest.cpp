#include "text/Files.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <sys/wait.h>

#include <string>
#include <utility>
#include <vector>

#include "support/Joined.h"
#include "text/CodeOf.h"
#include "text/FileMark.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using namespace std::string_literals;

using Names = std::vector<std::string>;

int ReadCode(const std::string& path) {
    return CodeOf([&] { ReadWholeFile(path); });
}
int ReplaceCode(const std::string& path, const std::string& bytes = "new") {
    return CodeOf([&] { ReplaceWholeFile(path, bytes); });
}

int RightsOf(const std::string& path) {
    return static_cast<int>(std::filesystem::status(path).permissions());
}

TEST(Files, EveryByteIsReadAndWritten) {
    const ScratchFolder folder;
    const std::string longestName(255, 'N'), large(3'000'000, 'x');
    for (const std::string& bytes : {large, "a\r\n\0\x1A\xFF"s, ""s}) {
        ReplaceWholeFile(folder / longestName, bytes);
        EXPECT_EQ(folder.Get(longestName), bytes);
        EXPECT_EQ(ReadWholeFile(folder / longestName), bytes);
        EXPECT_EQ(folder.Names(), Names{longestName});
    }
    folder.Put("A.TAB", "12345");
    EXPECT_EQ(ReadWholeFile(folder / "a.tab", 5), "12345");
    EXPECT_EQ(CodeOf([&] { ReadWholeFile(folder / "A.TAB", 4); }), 75);
    EXPECT_NE(ReadWholeFile("/proc/self/status"), "") << "a file whose size is told as 0";
}

TEST(Files, FailuresAreTellingAndLeaveTheOldFile) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "PIPE").c_str(), 0600), 0);
    ASSERT_EQ(symlink("nowhere", (folder / "DANGLING").c_str()), 0);
    ASSERT_EQ(symlink("LOOP", (folder / "LOOP").c_str()), 0);
    chmod(folder.Put("READONLY", "old").c_str(), 0444);
    chmod(folder.Put("LOCKED", "old").c_str(), 0);
    folder.Put("OTHERS", "old");
    const Names before = folder.Names();
    const std::pair<std::string, int> rows[] = {
        {"none/file", 76}, {"OTHERS/file", 76}, {"none/", 76},         {"", 75},
        {"PIPE", 75},      {"LOOP", 75},        {"OTHERS\0.TAB"s, 52}, {std::string(256, 'n'), 52}};
    for (const auto& [name, code] : rows) {
        EXPECT_EQ(ReadCode(folder / name), code) << name;
        EXPECT_EQ(ReplaceCode(folder / name), code) << name;
    }
    EXPECT_EQ(Joined(ReadCode(folder / "none"), ReadCode(folder / "DANGLING"), ReadCode("/dev/full"), ReadCode("")),
              "53|53|75|52");
    EXPECT_EQ(Joined(ReplaceCode(folder / "READONLY"), ReplaceCode("/dev/full"), ReplaceCode("")), "70|75|52");
    OnSmallDisk(4096, [&] {
        EXPECT_EQ(ReplaceCode(folder / "OTHERS", std::string(10'000, 'x')), 61);
        EXPECT_EQ(ReplaceCode(folder / "NEW", std::string(10'000, 'x')), 61);
    });
    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_EQ(ReadCode(folder / "LOCKED"), 70);
        EXPECT_EQ(ReplaceCode(folder / "NEW"), 70) << "a folder that cannot be written";
        EXPECT_EQ(ReplaceCode(folder / "OTHERS"), 70);
    }
    EXPECT_EQ(folder.Get("READONLY") + folder.Get("OTHERS"), "oldold");
    EXPECT_EQ(folder.Names(), before);
}

TEST(ReplaceWholeFile, KeepsNameAndRightsAndFollowsLinks) {
    const ScratchFolder folder, other;
    const mode_t mask = umask(027);
    ReplaceWholeFile(folder / "NEW.ISE", "1");
    umask(mask);
    EXPECT_EQ(RightsOf(folder / "NEW.ISE"), 0640);

    chmod(folder.Put("run.ise", "old").c_str(), 0604);
    ReplaceWholeFile(folder / "RUN.ISE", "new");
    EXPECT_EQ(RightsOf(folder / "run.ise"), 0604);
    EXPECT_EQ(folder.Get("run.ise"), "new");

    other.Put("REAL.INI", "old");
    ASSERT_EQ(symlink((other / "REAL.INI").c_str(), (folder / "SECOND").c_str()), 0);
    ASSERT_EQ(symlink("SECOND", (folder / "FIRST").c_str()), 0);
    ASSERT_EQ(symlink("FRESH", (folder / "DANGLING").c_str()), 0);
    ReplaceWholeFile(folder / "FIRST", "linked");
    ReplaceWholeFile(folder / "DANGLING", "made");
    EXPECT_EQ(other.Get("REAL.INI") + folder.Get("FRESH"), "linkedmade");
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "FIRST"));
    EXPECT_EQ(folder.Names(), (Names{"DANGLING", "FIRST", "FRESH", "NEW.ISE", "SECOND", "run.ise"}));
}

TEST(ReplaceWholeFile, ClearsWhatAKilledSaveHasLeft) {
    const ScratchFolder folder;
    folder.Put("A.TAB", "old");
    if (const pid_t child = fork(); child == 0) {
        const rlimit small{4096, 4096};
        setrlimit(RLIMIT_FSIZE, &small);  // the signal kills in the middle of the writing
        ReplaceWholeFile(folder / "A.TAB", std::string(10'000, 'x'));
        _exit(0);
    } else {
        int status = 0;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        ASSERT_TRUE(WIFSIGNALED(status));
    }
    ASSERT_EQ(folder.Names(), (Names{".A.TAB.kelvo-0", "A.TAB"}));
    ReplaceWholeFile(folder / "B.TAB", "another");
    EXPECT_EQ(folder.Names(), (Names{".A.TAB.kelvo-0", "A.TAB", "B.TAB"})) << "a file clears its own alone";
    ReplaceWholeFile(folder / "A.TAB", "new");
    EXPECT_EQ(folder.Names(), (Names{"A.TAB", "B.TAB"}));

    // What another save still writes stays, and so does whatever is no plain file.
    const int busy = open(folder.Put(".A.TAB.kelvo-0", "half").c_str(), O_RDONLY);
    ASSERT_EQ(flock(busy, LOCK_EX), 0);
    ASSERT_EQ(symlink("B.TAB", (folder / ".A.TAB.kelvo-1").c_str()), 0);
    std::filesystem::create_directory(folder / ".A.TAB.kelvo-2");
    ReplaceWholeFile(folder / "A.TAB", "newer");
    EXPECT_EQ(folder.Get("A.TAB") + folder.Get("B.TAB"), "neweranother");
    EXPECT_EQ(folder.Names(), (Names{".A.TAB.kelvo-0", ".A.TAB.kelvo-1", ".A.TAB.kelvo-2", "A.TAB", "B.TAB"}));
    close(busy);
}

TEST(FileMark, AChangeIsSeenAndBothVersionsStand) {
    const ScratchFolder folder, other;
    const std::string path = folder.Put("RUN.TAB", "1234");
    const FileMark mark("1234");
    const auto changed = [&] { return mark.ChangedElsewhere(folder / "run.tab"); };
    EXPECT_FALSE(changed());
    folder.Put("RUN.TAB", "1235");
    EXPECT_TRUE(changed()) << "of the same length";
    std::filesystem::remove(path);
    EXPECT_FALSE(changed()) << "nothing stands there to be lost";
    std::filesystem::create_symlink(other.Put("real.tab", "old"), path);
    EXPECT_TRUE(changed()) << "through a link";
    EXPECT_FALSE(FileMark().ChangedElsewhere(path));
    EXPECT_EQ(FileMark("a").Text(), "1:af63dc4c8601ec8c") << "the published value of the hash";
    KeepChangedVersion(path);
    EXPECT_EQ(KeepChangedVersion(path), other / "real (changed elsewhere 2).tab") << "beside the file itself";
    ReplaceWholeFile(path, "new");
    EXPECT_EQ(Joined(other.Get("real.tab"), other.Get("real (changed elsewhere).tab")), "new|old");
    const std::string longest = folder.Put(std::string(199, 'n') + "\xC3\xA9" + std::string(50, 'n') + ".TAB", "");
    EXPECT_EQ(LastPart(KeepChangedVersion(longest)), std::string(199, 'n') + " (changed elsewhere).TAB");
}

TEST(FindFile, MindsNoCaseInTheLastPart) {
    const ScratchFolder folder;
    for (const char* name : {"run.ise", "BOTH.ISE", "both.ise", "Two.ise", "tWo.ise", "Süß œuvre.tab"})
        folder.Put(name, "");
    std::filesystem::create_directory(folder / "Data");
    folder.Put("Data/RUN.TAB", "");
    const char* const rows[][2] = {{"RUN.ISE", "run.ise"},
                                   {"both.ise", "both.ise"},
                                   {"Both.ise", "BOTH.ISE"},
                                   {"TWO.ISE", "Two.ise"},
                                   {"run.is", "run.is"},
                                   {"DATA", "Data"},
                                   {"SÜß ŒUVRE.TAB", "Süß œuvre.tab"},
                                   {"Data\\run.tab", "Data/RUN.TAB"},
                                   {"data/run.tab", "data/run.tab"}};
    for (const auto& [asked, found] : rows)
        EXPECT_EQ(FindFile(folder / asked), folder / found);
    EXPECT_TRUE(FileExists(folder / "SÜß ŒUVRE.TAB"));
    EXPECT_FALSE(FileExists("") || FileExists("/dev/null") || FileExists(folder / "DATA") ||
                 FileExists(folder / "run.is"));
}

TEST(FileNames, PartsAndCase) {
    const auto parts = [](const std::string& path) {
        return Joined(UpperName(path), LastPart(path), HasFolder(path), NativePath(path));
    };
    EXPECT_EQ(parts("/lab/a\\béta.cli"), "/lab/a\\BÉTA.CLI|béta.cli|1|/lab/a/béta.cli");
    EXPECT_EQ(parts("run"), "RUN|run|0|run");
    EXPECT_EQ(parts("/x/"), "/x/||1|/x/");
}

}  // namespace
}  // namespace kelvo::test
