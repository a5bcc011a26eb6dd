#include "text/GrowingFile.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "text/CodeOf.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;

/// Number of the failure, 0 when the piece went to the disk.
int Add(GrowingFile& file, const std::string& piece) {
    return CodeOf([&] { file.Add(piece); });
}

class GrowingFileTest : public testing::Test {
 protected:
    GrowingFileTest() { file.Begin(folder / "RUN.PHC", "head\r\n"); }
    ScratchFolder folder;
    GrowingFile file;
};

TEST_F(GrowingFileTest, AFullDiskTakesThePiecesLater) {
    Add(file, "1\r\n");
    OnSmallDisk(11, [&] {
        EXPECT_EQ(Add(file, "2222\r\n"), 61);
        EXPECT_EQ(Add(file, "3\r\n"), 61);
    });
    EXPECT_EQ(folder.Get("RUN.PHC"), "head\r\n1\r\n") << "half a row is taken back";
    EXPECT_FALSE(file.Whole());
    EXPECT_EQ(Add(file, "4\r\n"), 0);
    EXPECT_EQ(folder.Get("RUN.PHC"), "head\r\n1\r\n2222\r\n3\r\n4\r\n");
    EXPECT_TRUE(file.Whole());
}

TEST_F(GrowingFileTest, WhatHappensToTheFileMeanwhile) {
    const std::string path = folder / "RUN.PHC";
    folder.Put("RUN.PHC~", "the analyst's own");
    // what happens, the failure, the content of "RUN (changed elsewhere).PHC"
    const std::tuple<const char*, std::function<void()>, int, const char*> rows[] = {
        {"taken away", [&] { fs::remove(path); }, 0, ""},
        {"cut short", [&] { fs::resize_file(path, 8); }, 0, ""},
        {"emptied", [&] { fs::resize_file(path, 0); }, 0, ""},
        {"another in its place", [&] { folder.Put("RUN.PHC", "notes\r\n"); }, 0, "notes\r\n"},
        {"a digit changed", [&] { folder.Put("RUN.PHC", "head\r\n7\r\n"); }, 0, "head\r\n7\r\n"},
        {"a row of another program", [&] { folder.Put("RUN.PHC", "head\r\n1\r\n9\r\n"); }, 0, "head\r\n1\r\n9\r\n"},
        {"the whole folder gone and made anew",
         [&] {
             fs::remove_all(folder.Path());
             EXPECT_EQ(Add(file, "x\r\n"), 76);
             fs::create_directories(folder.Path());
             folder.Put("RUN.PHC~", "the analyst's own");
         },
         0, ""},
        {"a folder in its place", [&] { fs::remove(path), fs::create_directory(path); }, 75, ""},
        {"a device in its place", [&] { fs::remove(path), fs::create_symlink("/dev/null", path); }, 75, ""},
        {"a link to a file elsewhere",
         [&] {
             fs::rename(path, folder / "ELSEWHERE.PHC");
             fs::create_symlink(folder / "ELSEWHERE.PHC", path);
         },
         0, ""},
    };
    for (const auto& [name, happens, failure, aside] : rows) {
        SCOPED_TRACE(name);
        fs::remove_all(path);
        fs::remove(folder / "RUN (changed elsewhere).PHC");
        GrowingFile grown;
        std::swap(file, grown);
        file.Begin(path, "head\r\n");
        Add(file, "1\r\n");
        happens();
        EXPECT_EQ(Add(file, "2\r\n"), failure);
        EXPECT_EQ(folder.Get("RUN (changed elsewhere).PHC"), aside);
        EXPECT_EQ(file.TakeChange().has_value(), *aside != 0);
        EXPECT_EQ(folder.Get("RUN.PHC~"), "the analyst's own");
        if (failure != 0) continue;
        std::string content = folder.Get("RUN.PHC");
        if (const auto lost = content.find("x\r\n"); lost != std::string::npos) content.erase(lost, 3);
        EXPECT_EQ(content, "head\r\n1\r\n2\r\n");
        EXPECT_EQ(fs::is_symlink(path), std::string(name).starts_with("a link"));
    }
}

TEST_F(GrowingFileTest, ThatTwoWriteEndsWithTwoWholeFiles) {
    Add(file, "1\r\n");
    GrowingFile other;
    other.Begin(folder / "RUN.PHC", "another head\r\n");
    for (int row = 2; row < 6; ++row) {
        Add(other, "x\r\n");
        Add(file, std::to_string(row) + "\r\n");
    }
    const auto contents = folder.Get("RUN.PHC") + folder.Get("RUN (2).PHC");
    EXPECT_NE(contents.find("head\r\n1\r\n2\r\n3\r\n4\r\n5\r\n"), std::string::npos);
    EXPECT_NE(contents.find("another head\r\nx\r\nx\r\nx\r\nx\r\n"), std::string::npos);
    EXPECT_LE(folder.Names().size(), 5u) << "nothing is put aside again and again";
}

TEST_F(GrowingFileTest, ADirectoryWithoutRightsIsTold) {
    Add(file, "1\r\n");
    fs::permissions(folder / "RUN.PHC", fs::perms(0444));
    const OrdinaryUser user;
    EXPECT_EQ(Add(file, "2\r\n"), 70);
}

}  // namespace
}  // namespace kelvo::test
