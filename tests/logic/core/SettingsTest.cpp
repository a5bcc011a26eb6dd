#include "core/Settings.h"

#include <gtest/gtest.h>
#include <random>

#include <string>
#include <vector>

#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

using namespace std::string_literals;

TEST(ReadSetting, FollowsTheRulesOfTheFile) {
    const std::pair<std::string, const char*> rows[] = {
        {"[S]\rkey=2\rk=1", "1"},
        {" \t[ s ] x\r\n\t K \t= \ta  b \t\r\n", "a  b"},
        {"\xEF\xBB\xBF[S]\r\nk=M\xFCller \x80\r\n", "Müller €"},
        {"[S]\r\nk=\" 1 \"\r\n", " 1 "},
        {"[S]\r\nk=\"1'\r\n", "\"1'"},
        {"[S]\r\nk=\"\r\n", "\""},
        // The first section of the name, and in it the first line of the key.
        {"[S]\r\nk=a=b;[c]\r\nk=2\r\n", "a=b;[c]"},
        {"[S]\r\nk=\r\nk=2\r\n", ""},
        {"[S]\r\n[T]\r\n[S]\r\nk=2\r\n", ""},
        {"k=1\r\n[T]\r\nk=2\r\n[S]\r\n[U]\r\nk=3\r\n", ""},
        // Remarks and lines of any other make.
        {"[S]\r\n;k=2\r\n ; k=3\r\nk=1\r\n;[T]\r\n", "1"},
        {"x [S]\r\n]x[\r\n[S]\r\n\r\njunk\r\n=5\r\nk\r\n[no end\r\nk=1\r\n", "1"},
        {"\0[\0\r\n[S]\r\n\0\r\nk=1\r\n"s, "1"},
    };
    const ScratchFolder folder;
    for (const auto& [bytes, value] : rows)
        EXPECT_EQ(ReadSetting("S", "k", folder.Put("KELVO.ini", bytes)), value) << bytes;
    folder.Put("KELVO.ini", "[S]\r\nph2Num=E7\r\nlong=" + std::string(253, 'x') + "\xE9yy");
    EXPECT_EQ(ReadSetting(" s ", " pH2Num ", folder / "KELVO.ini"), "E7");
    // The buffer holds 254 bytes of the file; a character of two bytes inside the program counts once.
    EXPECT_EQ(ReadSetting("S", "long", folder / "KELVO.ini"), std::string(253, 'x') + "é");
    EXPECT_EQ(ReadSetting("Ω", "long", folder / "KELVO.ini"), "");
}

TEST(ReadSetting, NeverFails) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "PIPE").c_str(), 0600), 0);
    chmod(folder.Put("LOCKED", "[S]\nk=1\n").c_str(), 0);
    const OrdinaryUser user;
    for (const std::string& file : {folder / "none.ini", folder / "none/KELVO.ini", folder.Path(), folder / "PIPE",
                                    folder / "LOCKED", "/dev/zero"s, ""s})
        EXPECT_EQ(ReadSetting("S", "k", file), "") << file;
}

TEST(WriteSetting, ChangesOneLine) {
    const std::string rows[][2] = {
        {"[s]\r\n ;k=1\r\nkey=1\r\n  K =1 \r\nk=1\r\n[S]\r\nk=1",
         "[s]\r\n ;k=1\r\nkey=1\r\n  K =\xFC\r\nk=1\r\n[S]\r\nk=1"},
        {"\0\xFF\x1A\r\n[S]\r\nk=1\nm=\x81\r\n\0=\0"s, "\0\xFF\x1A\r\n[S]\r\nk=\xFC\nm=\x81\r\n\0=\0"s},
        // A missing key goes before blank lines, a missing section to the end of the file.
        {"[S]\r\nm=1", "[S]\r\nm=1\r\nk=\xFC\r\n"},
        {"[S]\r\njunk\r\n \r\n\r\n[T]\r\nk=3\r\n", "[S]\r\njunk\r\nk=\xFC\r\n \r\n\r\n[T]\r\nk=3\r\n"},
        {"[S]\r\n\r\n[T]\r\n[S]\r\nk=1", "[S]\r\nk=\xFC\r\n\r\n[T]\r\n[S]\r\nk=1"},
        {"[S]", "[S]\r\nk=\xFC\r\n"},
        {"[T]\r\nk=1", "[T]\r\nk=1\r\n[S]\r\nk=\xFC\r\n"},
        {"", "[S]\r\nk=\xFC\r\n"},
        // LF where all lines have it.
        {"[S]\nm=1\n", "[S]\nm=1\nk=\xFC\n"},
        {"[S]\nm=1\r\n", "[S]\nm=1\r\nk=\xFC\r\n"},
    };
    for (const auto& [before, after] : rows) {
        const ScratchFolder folder;
        if (!before.empty()) folder.Put("KELVO.ini", before);
        EXPECT_TRUE(WriteSetting("S", "k", "ü", folder / "KELVO.ini")) << before;
        EXPECT_EQ(folder.Get("KELVO.ini"), after);
        EXPECT_EQ(folder.Names().size(), 1U) << before;
    }
}

TEST(WriteSetting, WhatIsWrittenReadsBack) {
    const ScratchFolder folder;
    const std::string file = folder / "KELVO.ini";
    for (const char* value : {"", "a ; b = [c]", "\"a\"", "'a'", "\"a\" and \"b\"", " \"a\" ", "\"", "[S]", ";", "ÿ"}) {
        EXPECT_TRUE(WriteSetting("S", "k", value, file));
        EXPECT_EQ(ReadSetting("S", "k", file), value);
    }
    EXPECT_TRUE(WriteSetting("S", "k", std::string(300, 'v'), file));
    EXPECT_EQ(folder.Get("KELVO.ini"), "[S]\r\nk=" + std::string(300, 'v') + "\r\n") << "only reading cuts";
}

TEST(WriteSetting, RefusesWhatWouldBreakTheFile) {
    const std::string before = "[S]\r\nk=1\r\n";
    const ScratchFolder folder;
    const std::string file = folder.Put("KELVO.ini", before);
    for (const std::string& value : {"2\r\nm=3"s, "2\n[T]"s, "2\rm=3"s, "2\0"s, "Ω"s, "\xC3"s})
        EXPECT_FALSE(WriteSetting("S", "k", value, file)) << value;
    for (const char* key : {" ", "a=b", ";a", "[a", "a\nb"})
        EXPECT_FALSE(WriteSetting("S", key, "2", file)) << key;
    for (const char* section : {"", "S]x", "S\nT", "Ω"})
        EXPECT_FALSE(WriteSetting(section, "k", "2", file)) << section;
    EXPECT_EQ(folder.Get("KELVO.ini"), before);
}

TEST(WriteSetting, FailureLeavesTheFile) {
    const ScratchFolder folder;
    const std::string before = "[S]\r\nk=1\r\n" + std::string(5000, ';');
    const std::string file = folder.Put("KELVO.ini", before);
    OnSmallDisk(4096, [&] { EXPECT_FALSE(WriteSetting("S", "k", "2", file)); });
    chmod(file.c_str(), 0444);
    EXPECT_TRUE(WriteSetting("S", "k", "1", file)) << "nothing to change";
    chmod(file.c_str(), 0222);
    chmod(folder.Path().c_str(), 0777);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(WriteSetting("S", "k", "2", file)) << "a file that cannot be read must not be started anew";
    }
    chmod(file.c_str(), 0644);
    EXPECT_EQ(folder.Get("KELVO.ini"), before);
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"KELVO.ini"});
}

TEST(Settings, NoiseOfTenMegabytes) {
    const ScratchFolder folder;
    std::mt19937 random(5);
    std::string noise(10'000'000, ' ');
    for (char& c : noise)
        c = static_cast<char>(random());
    // Not by chance: heads and brackets without end, which must not be searched again and again.
    const std::string brackets(1'000'000, '['), heads = [] {
        std::string text;
        for (int i = 0; i < 300'000; ++i)
            text += "[a]\n";
        return text;
    }();
    const std::string before = noise + "\r\n" + brackets + '\n' + heads + "[Hareware]\r\nASD=1\r\n" + noise;
    const std::string file = folder.Put("KELVO.ini", before);
    EXPECT_EQ(ReadSetting("Hareware", "ASD", file), "1");
    EXPECT_EQ(ReadSetting("No such", "ASD", file), "");
    EXPECT_TRUE(WriteSetting("Hareware", "ASD", "25", file));
    EXPECT_EQ(folder.Get("KELVO.ini"), noise + "\r\n" + brackets + '\n' + heads + "[Hareware]\r\nASD=25\r\n" + noise);
}

}  // namespace
}  // namespace kelvo::test
