#include "devices/ProgramFolder.h"

#include <unistd.h>

#include <QtTest>

#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

namespace fs = std::filesystem;

/// An installation, a home and a user's data folder in a folder of their own.
class ProgramFolderTest : public testing::Test {
 protected:
    void SetUp() override {
        for (const char* name : {"bin", "share/kelvo", "home", "tmp"})
            fs::create_directories(folder / name);
        folder.Put("share/kelvo/KELVO.ini", "first");
        folder.Put("share/kelvo/DEFAULT.CLI", "first");
        qputenv("HOME", (folder / "home").c_str());
        qputenv("XDG_DATA_HOME", (folder / "data").c_str());
        qputenv("TMPDIR", (folder / "tmp").c_str());
    }
    void TearDown() override {
        for (const auto& [name, value] : before_)
            value.isNull() ? qunsetenv(name) : qputenv(name, value);
    }
    void Install(const std::string& name, const std::string& bytes) const { folder.Put("share/kelvo/" + name, bytes); }
    void Start() const { EXPECT_EQ(Chosen(), "data/kelvo/"); }
    std::string Mine(const std::string& name) const { return folder.Get("data/kelvo/" + name); }
    std::string Chosen() const {
        const std::string chosen = ProgramFolder(folder / "bin");
        return chosen.substr(folder.Path().size());
    }

    const ScratchFolder folder;

 private:
    const std::vector<std::pair<const char*, QByteArray>> before_ = {
        {"HOME", qgetenv("HOME")}, {"XDG_DATA_HOME", qgetenv("XDG_DATA_HOME")}, {"TMPDIR", qgetenv("TMPDIR")}};
};

TEST_F(ProgramFolderTest, AnUpgradeBringsNewTextsOnlyWhereTheUserChangedNothing) {
    Install("ISEINTRO.TXT", "first");
    Install("PHINTRO.TXT", "first");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "first");
    folder.Put("data/kelvo/PHINTRO.TXT", "mine");
    for (const char* name : {"ISEINTRO.TXT", "PHINTRO.TXT", "KELVO.ini"})
        Install(name, "second");
    for (int starts = 0; starts < 2; ++starts) {
        Start();
        EXPECT_EQ(Mine("ISEINTRO.TXT"), "second");
        EXPECT_EQ(Mine("PHINTRO.TXT"), "mine");
        EXPECT_EQ(Mine("KELVO.ini"), "first") << "settings are the user's from the first day";
    }
    // Changed after an upgrade, taken away, named in small letters by another system.
    folder.Put("data/kelvo/ISEINTRO.TXT", "mine");
    Install("ISEINTRO.TXT", "third");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "mine");
    std::filesystem::remove(folder / "data/kelvo/ISEINTRO.TXT");
    folder.Put("data/kelvo/iseintro.txt", "my own");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "");
    EXPECT_EQ(Mine("iseintro.txt"), "my own");
    std::filesystem::remove(folder / "data/kelvo/iseintro.txt");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "third");
}

TEST_F(ProgramFolderTest, IsTheProgramsOwnWhereSettingsLieThatCanBeWritten) {
    EXPECT_EQ(Chosen(), "data/kelvo/");
    for (const char* name : {"KELVO.ini", "kelvo.INI"}) {
        const std::string file = folder.Put(std::string("bin/") + name, "own");
        EXPECT_EQ(Chosen(), "bin/") << name;
        fs::remove(file);
    }
    fs::create_directory(folder / "bin/KELVO.ini");
    EXPECT_EQ(Chosen(), "data/kelvo/") << "a folder of that name holds no settings";
}

TEST_F(ProgramFolderTest, IsTheUsersWithTheFirstFilesOtherwise) {
    fs::permissions(folder / "share/kelvo/KELVO.ini", fs::perms(0444));
    Chosen();
    for (const char* name : {"KELVO.ini", "DEFAULT.CLI"})
        EXPECT_EQ(Mine(name), "first");
    EXPECT_NE(fs::status(folder / "data/kelvo/KELVO.ini").permissions() & fs::perms::owner_write, fs::perms::none);
    fs::remove(folder / "data/kelvo/KELVO.ini");
    folder.Put("data/kelvo/kelvo.ini", "mine");
    Chosen();
    EXPECT_FALSE(fs::exists(folder / "data/kelvo/KELVO.ini")) << "no second one beside the user's own";
    EXPECT_EQ(folder.Get("data/kelvo/kelvo.ini"), "mine");
    qputenv("XDG_DATA_HOME", "relative");
    EXPECT_EQ(Chosen(), "home/.local/share/kelvo/");
}

TEST_F(ProgramFolderTest, UnsavedWorkHasFourPlaces) {
    const std::string own = "tmp/kelvo-" + std::to_string(geteuid());
    const auto places = [this] {
        std::string all;
        for (const std::string& place : KeepFolders("/program/"))
            all += (place.starts_with(folder.Path()) ? place.substr(folder.Path().size()) : place) + " ";
        return all;
    };
    const std::string first = "/program/ data/kelvo/ home/ ";
    EXPECT_EQ(places(), first + own + "/ ");
    fs::create_directories(folder / own);
    EXPECT_EQ(places(), first + own + "/ ");
    fs::remove(folder / own);
    fs::create_symlink(folder / "home", folder / own);
    EXPECT_EQ(places(), first) << "a link that anybody may have laid";
    fs::remove_all(folder / "tmp");
    EXPECT_EQ(places(), first + "/tmp/kelvo-" + std::to_string(geteuid()) + "/ ") << "the variable's folder has gone";
}

TEST_F(ProgramFolderTest, WithoutAFolderOfOnesOwnTheInstalledOnesAreRead) {
    folder.Put("data", "a file, so that no folder can be made below it, not even by root");
    EXPECT_EQ(Chosen(), "share/kelvo/");
}

}  // namespace
}  // namespace kelvo::test
