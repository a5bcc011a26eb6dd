#include "devices/ProgramFolder.h"

#include <QtTest>

#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// An installation in a folder of its own, and a user's data folder.
class FirstFiles : public testing::Test {
 protected:
    void SetUp() override {
        for (const char* part : {"usr", "usr/bin", "usr/share", "usr/share/kelvo"})
            std::filesystem::create_directory(disk / part);
        saved_ = qgetenv("XDG_DATA_HOME");
        qputenv("XDG_DATA_HOME", QByteArray::fromStdString(disk / "home"));
    }
    void TearDown() override { qputenv("XDG_DATA_HOME", saved_); }

    void Install(const std::string& name, const std::string& bytes) { disk.Put("usr/share/kelvo/" + name, bytes); }
    void Start() { EXPECT_EQ(ProgramFolder(disk / "usr/bin"), disk / "home/kelvo/"); }
    std::string Mine(const std::string& name) { return disk.Get("home/kelvo/" + name); }

    ScratchFolder disk;

 private:
    QByteArray saved_;
};

TEST_F(FirstFiles, AnUpgradeBringsNewTextsOnlyWhereTheUserChangedNothing) {
    Install("ISEINTRO.TXT", "first");
    Install("PHINTRO.TXT", "first");
    Install("KELVO.ini", "first");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "first");
    disk.Put("home/kelvo/PHINTRO.TXT", "mine");
    for (const char* name : {"ISEINTRO.TXT", "PHINTRO.TXT", "KELVO.ini"})
        Install(name, "second");
    for (int starts = 0; starts < 2; ++starts) {
        Start();
        EXPECT_EQ(Mine("ISEINTRO.TXT"), "second");
        EXPECT_EQ(Mine("PHINTRO.TXT"), "mine");
        EXPECT_EQ(Mine("KELVO.ini"), "first") << "settings are the user's from the first day";
    }
    // Changed after an upgrade, taken away, named in small letters by another system.
    disk.Put("home/kelvo/ISEINTRO.TXT", "mine");
    Install("ISEINTRO.TXT", "third");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "mine");
    std::filesystem::remove(disk / "home/kelvo/ISEINTRO.TXT");
    disk.Put("home/kelvo/iseintro.txt", "my own");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "");
    EXPECT_EQ(Mine("iseintro.txt"), "my own");
    std::filesystem::remove(disk / "home/kelvo/iseintro.txt");
    Start();
    EXPECT_EQ(Mine("ISEINTRO.TXT"), "third");
}

}  // namespace
}  // namespace kelvo::test
