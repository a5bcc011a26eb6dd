#include "text/Files.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <string>
#include <vector>

#include "text/RuntimeError.h"
#include "text/ScratchFolder.h"

namespace kelvo {
namespace {

using namespace std::string_literals;

using test::OrdinaryUser;
using test::ScratchFolder;
using Names = std::vector<std::string>;

template <typename Step>
int CodeOf(Step step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        return error.Code();
    }
    return 0;
}

int ReadCode(const std::string& path) {
    return CodeOf([&] { ReadWholeFile(path); });
}
int ReplaceCode(const std::string& path, const std::string& bytes = "new") {
    return CodeOf([&] { ReplaceWholeFile(path, bytes); });
}

mode_t RightsOf(const std::string& path) {
    struct stat status {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status.st_mode & 07777;
}

/// Files that this process writes may not grow above some bytes; a full disk for one process.
class SmallDisk {
 public:
    explicit SmallDisk(rlim_t bytes) {
        before_ = signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &limit_);
        const rlimit small{bytes, limit_.rlim_max};
        EXPECT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    }
    SmallDisk(const SmallDisk&) = delete;
    SmallDisk& operator=(const SmallDisk&) = delete;
    ~SmallDisk() {
        setrlimit(RLIMIT_FSIZE, &limit_);
        signal(SIGXFSZ, before_);
    }

 private:
    rlimit limit_{};
    sighandler_t before_;
};

TEST(ReadWholeFile, GivesEveryByte) {
    const ScratchFolder folder;
    std::string large;
    for (int i = 0; i < 300'000; ++i)
        large += static_cast<char>(i * 7);
    for (const std::string& bytes : {std::string(), "a\r\n\0\x1A\xFF"s, large}) {
        const std::string path = folder.Put("A.TAB", bytes);
        EXPECT_EQ(ReadWholeFile(path), bytes);
        EXPECT_EQ(ReadWholeFile(folder / "a.tab"), bytes);
    }
    EXPECT_EQ(ReadWholeFile(folder / "A.TAB", large.size()).size(), large.size());
    EXPECT_EQ(CodeOf([&] { ReadWholeFile(folder / "A.TAB", large.size() - 1); }), 75);
    EXPECT_NE(ReadWholeFile("/proc/self/status"), "") << "a file whose size is told as 0";
}

TEST(ReadWholeFile, TellsWhatIsWrong) {
    const ScratchFolder folder;
    const std::string locked = folder.Put("LOCKED", "secret");
    chmod(locked.c_str(), 0);
    ASSERT_EQ(mkfifo((folder / "PIPE").c_str(), 0600), 0);
    ASSERT_EQ(symlink("nowhere", (folder / "DANGLING").c_str()), 0);
    ASSERT_EQ(symlink("LOOP", (folder / "LOOP").c_str()), 0);
    const struct {
        std::string path;
        int code;
    } rows[] = {
        {folder / "none", 53},
        {folder / "DANGLING", 53},
        {folder / "none/file", 76},
        {folder / "LOCKED/file", 76},
        {folder.Path(), 75},
        {folder / "PIPE", 75},
        {"/dev/null", 75},
        {folder / "LOOP", 75},
        {"", 52},
        {"/etc/passwd\0.TAB"s, 52},
        {folder / std::string(300, 'n'), 52},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReadCode(row.path), row.code) << row.path;
    const OrdinaryUser user;
    EXPECT_EQ(ReadCode(locked), 70);
}

TEST(ReplaceWholeFile, LeavesOneFileWithTheNewContent) {
    const ScratchFolder folder;
    const std::string large(3'000'000, 'x');
    for (const std::string& bytes : {std::string("first"), large, "a\0b"s, std::string()}) {
        ReplaceWholeFile(folder / "RUN.ISE", bytes);
        EXPECT_EQ(folder.Get("RUN.ISE"), bytes);
        EXPECT_EQ(folder.Names(), Names{"RUN.ISE"});
    }
}

TEST(ReplaceWholeFile, KeepsNameAndRights) {
    const ScratchFolder folder;
    const mode_t mask = umask(027);
    ReplaceWholeFile(folder / "NEW.ISE", "1");
    umask(mask);
    EXPECT_EQ(RightsOf(folder / "NEW.ISE"), 0640U);

    chmod(folder.Put("run.ise", "old").c_str(), 0604);
    ReplaceWholeFile(folder / "RUN.ISE", "new");
    EXPECT_EQ(RightsOf(folder / "run.ise"), 0604U);
    EXPECT_EQ(folder.Get("run.ise"), "new");
    EXPECT_EQ(folder.Names(), (Names{"NEW.ISE", "run.ise"}));
}

TEST(ReplaceWholeFile, FollowsLinks) {
    const ScratchFolder folder, other;
    other.Put("REAL.INI", "old");
    ASSERT_EQ(symlink((other / "REAL.INI").c_str(), (folder / "SECOND").c_str()), 0);
    ASSERT_EQ(symlink("SECOND", (folder / "FIRST").c_str()), 0);
    ASSERT_EQ(symlink("FRESH", (folder / "DANGLING").c_str()), 0);
    ASSERT_EQ(symlink("LOOP", (folder / "LOOP").c_str()), 0);
    ReplaceWholeFile(folder / "FIRST", "new");
    ReplaceWholeFile(folder / "DANGLING", "made");
    EXPECT_EQ(other.Get("REAL.INI"), "new");
    EXPECT_EQ(other.Names(), Names{"REAL.INI"});
    EXPECT_EQ(folder.Get("FRESH"), "made");
    EXPECT_EQ(ReplaceCode(folder / "LOOP"), 75);
    EXPECT_EQ(folder.Names(), (Names{"DANGLING", "FIRST", "FRESH", "LOOP", "SECOND"}));
    EXPECT_TRUE(std::filesystem::is_symlink(folder / "FIRST"));
}

TEST(ReplaceWholeFile, FullDiskLeavesTheOldFile) {
    const ScratchFolder folder;
    folder.Put("RUN.ISE", "old");
    const std::string large(10'000, 'x');
    {
        const SmallDisk disk(4096);
        EXPECT_EQ(ReplaceCode(folder / "RUN.ISE", large), 61);
        EXPECT_EQ(ReplaceCode(folder / "NEW.ISE", large), 61);
    }
    EXPECT_EQ(folder.Get("RUN.ISE"), "old");
    EXPECT_EQ(folder.Names(), Names{"RUN.ISE"});
}

TEST(ReplaceWholeFile, RefusalsLeaveTheOldFile) {
    const ScratchFolder folder;
    std::filesystem::create_directory(folder / "FOLDER");
    ASSERT_EQ(mkfifo((folder / "PIPE").c_str(), 0600), 0);
    chmod(folder.Put("READONLY", "old").c_str(), 0444);
    chmod(folder.Put("OTHERS", "old").c_str(), 0644);
    const Names before = folder.Names();
    const struct {
        std::string path;
        int code;
    } rows[] = {
        {folder / "FOLDER", 75},
        {folder.Path(), 75},
        {folder / "PIPE", 75},
        {"/dev/full", 75},
        {folder / "READONLY", 70},
        {folder / "none/file", 76},
        {folder / "none/", 76},
        {folder / "OTHERS/file", 76},
        {"", 52},
        {folder / std::string(256, 'n'), 52},
        {folder.Path() + "A\0B"s, 52},
    };
    for (const auto& row : rows)
        EXPECT_EQ(ReplaceCode(row.path), row.code) << row.path;

    std::filesystem::permissions(folder.Path(), std::filesystem::perms(0555));
    {
        const OrdinaryUser user;
        EXPECT_EQ(ReplaceCode(folder / "NEW"), 70) << "a folder that cannot be written";
        EXPECT_EQ(ReplaceCode(folder / "OTHERS"), 70);
    }
    EXPECT_EQ(folder.Get("READONLY"), "old");
    EXPECT_EQ(folder.Get("OTHERS"), "old");
    EXPECT_EQ(folder.Names(), before);
}

TEST(ReplaceWholeFile, LongestNameStillHasRoomBeside) {
    const ScratchFolder folder;
    const std::string name(255, 'N');
    ReplaceWholeFile(folder / name, "1");
    EXPECT_EQ(folder.Names(), Names{name});
}

TEST(FindFile, MindsNoCaseInTheLastPart) {
    const ScratchFolder folder;
    for (const char* name : {"run.ise", "BOTH.ISE", "both.ise", "Two.ise", "tWo.ise", "Süß œuvre.tab"})
        folder.Put(name, "");
    std::filesystem::create_directory(folder / "Data");
    folder.Put("Data/RUN.TAB", "");
    const struct {
        const char* asked;
        const char* found;
        bool isFile;
    } rows[] = {
        {"RUN.ISE", "run.ise", true},
        {"both.ise", "both.ise", true},
        {"BOTH.ISE", "BOTH.ISE", true},
        {"Both.ise", "BOTH.ISE", true},
        {"TWO.ISE", "Two.ise", true},
        {"SÜß ŒUVRE.TAB", "Süß œuvre.tab", true},
        {"Data\\run.tab", "Data/RUN.TAB", true},
        {"data/run.tab", "data/run.tab", false},
        {"NONE", "NONE", false},
        {"run.is", "run.is", false},
        {"DATA", "Data", false},
        {"Data/", "Data/", false},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(FindFile(folder / row.asked), folder / row.found);
        EXPECT_EQ(FileExists(folder / row.asked), row.isFile) << row.asked;
    }
    EXPECT_FALSE(FileExists(""));
    EXPECT_FALSE(FileExists("/dev/null"));
}

TEST(FileNames, PartsAndCase) {
    const struct {
        const char* path;
        const char* upper;
        const char* last;
        bool hasFolder;
        const char* native;
    } rows[] = {
        {"/home/a/run.ise", "/home/a/RUN.ISE", "run.ise", true, "/home/a/run.ise"},
        {"lab\\béta.cli", "lab\\BÉTA.CLI", "béta.cli", true, "lab/béta.cli"},
        {"/a\\b/c", "/a\\b/C", "c", true, "/a/b/c"},
        {"run", "RUN", "run", false, "run"},
        {"/x/", "/x/", "", true, "/x/"},
        {"", "", "", false, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(UpperName(row.path), row.upper);
        EXPECT_EQ(LastPart(row.path), row.last);
        EXPECT_EQ(HasFolder(row.path), row.hasFolder) << row.path;
        EXPECT_EQ(NativePath(row.path), row.native);
    }
}

}  // namespace
}  // namespace kelvo
