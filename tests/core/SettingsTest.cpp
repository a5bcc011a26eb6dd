#include "core/Settings.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <random>
#include <string>
#include <vector>

#include "text/ScratchFolder.h"

namespace kelvo {
namespace {

using namespace std::string_literals;

using test::OrdinaryUser;
using test::ScratchFolder;

TEST(ReadSetting, FollowsTheRulesOfTheFile) {
    const struct {
        const char* name;
        std::string bytes;
        const char* value;
    } rows[] = {
        {"plain", "[Hareware]\r\nASD=1\r\n", "1"},
        {"line ends LF", "[Hareware]\nASD=1\n", "1"},
        {"line ends CR", "[Hareware]\rASD=1\rASDavg=2", "1"},
        {"no final line end", "[Hareware]\r\nASD=1", "1"},
        {"case of names", "[hAREWARE]\r\nasd=1\r\n", "1"},
        {"blanks around everything", " \t[ Hareware ] x\r\n\t ASD \t= \t1 \t\r\n", "1"},
        {"blanks inside stay", "[Hareware]\r\nASD= a  b \r\n", "a  b"},
        {"double quotes keep blanks", "[Hareware]\r\nASD=\" 1 \"\r\n", " 1 "},
        {"single quotes", "[Hareware]\r\nASD='1'\r\n", "1"},
        {"one pair of quotes", "[Hareware]\r\nASD=\"\"1\"\"\r\n", "\"1\""},
        {"quotes that are no pair", "[Hareware]\r\nASD=\"1'\r\n", "\"1'"},
        {"one quote", "[Hareware]\r\nASD=\"\r\n", "\""},
        {"value with =, ; and brackets", "[Hareware]\r\nASD=a=b;[c]\r\n", "a=b;[c]"},
        {"empty value", "[Hareware]\r\nASD=\r\nASD=2\r\n", ""},
        {"first of two keys", "[Hareware]\r\nASD=1\r\nASD=2\r\n", "1"},
        {"key ends at its first =", "[Hareware]\r\nASDavg=2\r\nASD=1\r\n", "1"},
        {"first of two sections", "[Hareware]\r\nASD=1\r\n[Hareware]\r\nASD=2\r\n", "1"},
        {"second of two sections is not looked at", "[Hareware]\r\n[Setting]\r\n[Hareware]\r\nASD=2\r\n", ""},
        {"key of another section", "[Setting]\r\nASD=2\r\n[Hareware]\r\n[Else]\r\nASD=3\r\n", ""},
        {"key above all sections", "ASD=1\r\n[Hareware]\r\n", ""},
        {"remarks", "[Hareware]\r\n;ASD=2\r\n ; ASD=3\r\nASD=1\r\n;[Setting]\r\n", "1"},
        {"remark before a section", ";[Hareware]\r\nASD=1\r\n", ""},
        {"junk lines", "junk\r\n]x[\r\n[Hareware]\r\n\r\njunk\r\n=5\r\nASD\r\n[no end\r\nASD=1\r\n", "1"},
        {"bracket inside a line", "x [Hareware]\r\nASD=2\r\n[Hareware]\r\nASD=1", "1"},
        {"byte order mark", "\xEF\xBB\xBF[Hareware]\r\nASD=1\r\n", "1"},
        {"code page", "[Hareware]\r\nASD=M\xFCller \x80\r\n", "Müller €"},
        {"bytes 0", "\0[\0\r\n[Hareware]\r\n\0\r\nASD=1\r\n"s, "1"},
        {"section at the end", "[Hareware]", ""},
        {"empty file", "", ""},
    };
    const ScratchFolder folder;
    for (const auto& row : rows) {
        const std::string file = folder.Put("KELVO.ini", row.bytes);
        EXPECT_EQ(ReadSetting("Hareware", "ASD", file), row.value) << row.name;
    }
    folder.Put("KELVO.ini", "[Hareware]\r\nph2Num=E7\r\n");
    EXPECT_EQ(ReadSetting(" HAREWARE ", " pH2Num ", folder / "KELVO.ini"), "E7");
    EXPECT_EQ(ReadSetting("Ω", "pH2Num", folder / "KELVO.ini"), "");
}

TEST(ReadSetting, CutsAtTheBuffer) {
    const ScratchFolder folder;
    // A character of one byte in the file and two inside the program counts once.
    const std::string file = folder.Put("KELVO.ini", "[S]\r\nlong=" + std::string(253, 'x') + "\xE9" +
                                                         "yyy\r\nquoted=\"" + std::string(300, 'q') + "\"\r\n");
    EXPECT_EQ(ReadSetting("S", "long", file), std::string(253, 'x') + "é");
    EXPECT_EQ(ReadSetting("S", "quoted", file), std::string(254, 'q'));
}

TEST(ReadSetting, NeverFails) {
    const ScratchFolder folder;
    ASSERT_EQ(mkfifo((folder / "PIPE").c_str(), 0600), 0);
    const std::string locked = folder.Put("LOCKED", "[S]\nk=1\n");
    chmod(locked.c_str(), 0);
    for (const std::string& file : {folder / "none.ini", folder / "none/KELVO.ini", folder.Path(), folder / "PIPE",
                                    std::string("/dev/zero"), std::string()})
        EXPECT_EQ(ReadSetting("S", "k", file), "") << file;
    const OrdinaryUser user;
    EXPECT_EQ(ReadSetting("S", "k", locked), "");
}

TEST(WriteSetting, ChangesOneLine) {
    const struct {
        const char* name;
        const char *section, *key, *value;
        std::string before, after;
    } rows[] = {
        {"value replaced", "Hareware", "ASD", " 5", "[Hareware]\r\nASD=1\r\nPreset=30\r\n",
         "[Hareware]\r\nASD= 5\r\nPreset=30\r\n"},
        {"spelling of the file stays", "hareware", "pH2Num", "E7", "[Hareware]\r\n  ph2Num =x \r\n",
         "[Hareware]\r\n  ph2Num =E7\r\n"},
        {"first of two", "S", "k", "2", "[S]\r\nk=1\r\nk=1\r\n[S]\r\nk=1\r\n", "[S]\r\nk=2\r\nk=1\r\n[S]\r\nk=1\r\n"},
        {"remark is no key", "S", "k", "2", "[S]\r\n;k=1\r\n", "[S]\r\n;k=1\r\nk=2\r\n"},
        {"shorter key is another", "S", "ASD", "2", "[S]\r\nASDavg=1\r\n", "[S]\r\nASDavg=1\r\nASD=2\r\n"},
        {"last line without end", "S", "k", "2", "[S]\r\nk=1", "[S]\r\nk=2"},
        {"key added to an open last line", "S", "n", "2", "[S]\r\nk=1", "[S]\r\nk=1\r\nn=2\r\n"},
        {"key added before blank lines", "S", "n", "2", "[S]\r\nk=1\r\n \r\n\r\n[T]\r\nk=3\r\n",
         "[S]\r\nk=1\r\nn=2\r\n \r\n\r\n[T]\r\nk=3\r\n"},
        {"key added behind junk", "S", "n", "2", "[S]\r\njunk\r\n\r\n", "[S]\r\njunk\r\nn=2\r\n\r\n"},
        {"key added to an empty section", "S", "n", "2", "[S]\r\n\r\n[T]", "[S]\r\nn=2\r\n\r\n[T]"},
        {"key added to a bare head", "S", "n", "2", "[S]", "[S]\r\nn=2\r\n"},
        {"key of a later section of the name", "S", "k", "2", "[S]\r\n[T]\r\n[S]\r\nk=1\r\n",
         "[S]\r\nk=2\r\n[T]\r\n[S]\r\nk=1\r\n"},
        {"section added", "T", "k", "1", "[S]\r\nk=1\r\n", "[S]\r\nk=1\r\n[T]\r\nk=1\r\n"},
        {"section added to an open last line", "T", "k", "1", "[S]\r\nk=1", "[S]\r\nk=1\r\n[T]\r\nk=1\r\n"},
        {"file of LF", "S", "n", "2", "[S]\nk=1\n", "[S]\nk=1\nn=2\n"},
        {"file of both", "S", "n", "2", "[S]\nk=1\r\n", "[S]\nk=1\r\nn=2\r\n"},
        {"LF line in a file of both", "S", "k", "2", "[S]\r\nk=1\nm=3\r\n", "[S]\r\nk=2\nm=3\r\n"},
        {"file of CR", "S", "k", "2", "[S]\rk=1\rm=3", "[S]\rk=2\rm=3"},
        {"new file", "S", "k", "2", "", "[S]\r\nk=2\r\n"},
        {"nothing taken off", "S", "k", "", "[S]\r\nk=1\r\n", "[S]\r\nk=\r\n"},
        {"code page", "S", "k", "Müller €", "[S]\r\nk=\x81\r\nm=\xB5\x90\r\n",
         "[S]\r\nk=M\xFCller \x80\r\nm=\xB5\x90\r\n"},
        {"bytes of any kind stay", "S", "k", "2", "\0\xFF\x1A\r\n[S]\r\nk=1\r\n\0=\0"s,
         "\0\xFF\x1A\r\n[S]\r\nk=2\r\n\0=\0"s},
        {"quotes of the value", "S", "k", "\"a\"", "[S]\r\n", "[S]\r\nk=\"\"a\"\"\r\n"},
    };
    for (const auto& row : rows) {
        const ScratchFolder folder;
        if (!row.before.empty()) folder.Put("KELVO.ini", row.before);
        EXPECT_TRUE(WriteSetting(row.section, row.key, row.value, folder / "KELVO.ini")) << row.name;
        EXPECT_EQ(folder.Get("KELVO.ini"), row.after) << row.name;
        EXPECT_EQ(folder.Names().size(), 1U) << row.name;
    }
}

TEST(WriteSetting, WhatIsWrittenReadsBack) {
    const struct {
        std::string value, read;
    } rows[] = {
        {"abc", "abc"},
        {" 5", "5"},
        {"a ; b = [c]", "a ; b = [c]"},
        {"\"a\"", "\"a\""},
        {"'a'", "'a'"},
        {"\"a\" and \"b\"", "\"a\" and \"b\""},
        {" \"a\" ", " \"a\" "},
        {"\"", "\""},
        {"[S]", "[S]"},
        {";", ";"},
        {"\xC3\xBF", "\xC3\xBF"},
        {std::string(300, 'v'), std::string(254, 'v')},
    };
    const ScratchFolder folder;
    const std::string file = folder / "KELVO.ini";
    for (const auto& row : rows) {
        EXPECT_TRUE(WriteSetting("S", "k", row.value, file));
        EXPECT_EQ(ReadSetting("S", "k", file), row.read);
    }
    EXPECT_EQ(folder.Get("KELVO.ini"), "[S]\r\nk=" + std::string(300, 'v') + "\r\n") << "only reading cuts";
}

TEST(WriteSetting, RefusesWhatWouldBreakTheFile) {
    const std::string before = "[S]\r\nk=1\r\n";
    const struct {
        const char* name;
        std::string section, key, value;
    } rows[] = {
        {"CR LF in the value", "S", "k", "2\r\nm=3"},
        {"LF in the value", "S", "k", "2\n[T]"},
        {"CR in the value", "S", "k", "2\rm=3"},
        {"NUL in the value", "S", "k", "2\0"s},
        {"character without a byte", "S", "k", "Ω"},
        {"broken text", "S", "k", "\xC3"},
        {"empty key", "S", " ", "2"},
        {"key with =", "S", "a=b", "2"},
        {"key as remark", "S", ";a", "2"},
        {"key as section", "S", "[a", "2"},
        {"key of two lines", "S", "a\nb", "2"},
        {"empty section", "", "k", "2"},
        {"section with ]", "S]x", "k", "2"},
        {"section of two lines", "S\nT", "k", "2"},
        {"section without bytes", "Ω", "k", "2"},
    };
    const ScratchFolder folder;
    folder.Put("KELVO.ini", before);
    for (const auto& row : rows) {
        EXPECT_FALSE(WriteSetting(row.section, row.key, row.value, folder / "KELVO.ini")) << row.name;
        EXPECT_EQ(folder.Get("KELVO.ini"), before) << row.name;
    }
}

TEST(WriteSetting, FailureLeavesTheFile) {
    const ScratchFolder folder;
    const std::string before = "[S]\r\nk=1\r\n" + std::string(5000, ';');
    const std::string file = folder.Put("KELVO.ini", before);
    {
        const auto handler = signal(SIGXFSZ, SIG_IGN);
        rlimit limit{};
        getrlimit(RLIMIT_FSIZE, &limit);
        const rlimit small{4096, limit.rlim_max};
        setrlimit(RLIMIT_FSIZE, &small);
        EXPECT_FALSE(WriteSetting("S", "k", "2", file)) << "full disk";
        setrlimit(RLIMIT_FSIZE, &limit);
        signal(SIGXFSZ, handler);
    }
    chmod(file.c_str(), 0444);
    EXPECT_FALSE(WriteSetting("S", "k", "2", file)) << "read-only file";
    EXPECT_TRUE(WriteSetting("S", "k", "1", file)) << "nothing to change";
    chmod(file.c_str(), 0222);
    chmod(folder.Path().c_str(), 0777);
    {
        const OrdinaryUser user;
        EXPECT_FALSE(WriteSetting("S", "k", "2", file)) << "a file that cannot be read must not be started anew";
    }
    chmod(file.c_str(), 0644);
    EXPECT_FALSE(WriteSetting("S", "k", "2", folder / "none/KELVO.ini"));
    EXPECT_FALSE(WriteSetting("S", "k", "2", folder.Path()));
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

TEST(ResolvePhCalibration, PrefersTheLastFile) {
    const ScratchFolder app, data;
    app.Put("DEFAULT.CLI", "");
    data.Put("last.cli", "");
    const std::string section = "[Latest Calibration Value]\r\nDefaultFile=DEFAULT.CLI\r\nLastCaliFile=";
    const struct {
        const char* name;
        std::string bytes, resolved;
    } rows[] = {
        {"last one there, under the name it has", section + (data / "LAST.CLI"), data / "last.cli"},
        {"last one gone", section + (data / "GONE.CLI"), app / "DEFAULT.CLI"},
        {"last one a folder", section + data.Path(), app / "DEFAULT.CLI"},
        {"none saved yet", section, app / "DEFAULT.CLI"},
        {"no settings at all", "", app.Path()},
    };
    for (const auto& row : rows) {
        const std::string ini = app.Put("KELVO.ini", row.bytes);
        EXPECT_EQ(ResolvePhCalibration(ini, app.Path()), row.resolved) << row.name;
    }
}

}  // namespace
}  // namespace kelvo
