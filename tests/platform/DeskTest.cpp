#include "support/Stage.h"

namespace kelvo::test {
namespace {

using Desks = Stage;

class Plain : public Screen {
   public:
    Plain(House& house, std::vector<std::string>& log)
        : Screen(house, ScreenCode::frmMsg, "frmPlain", Kind::Dialog), log_(log) {}
    void OnLoad() override { log_.push_back("load"); }
    void OnActivate() override { log_.push_back("activate"); }
    void OnUnload() override { log_.push_back("unload"); }

   protected:
    void OnEscape() override { log_.push_back("escape"); }

   private:
    std::vector<std::string>& log_;
};

TEST_F(Desks, ScreensAreMadeOnceAndAnewAfterClosing) {
    std::vector<std::string> log;
    desk.Register(ScreenCode::frmMsg, [&] { return new Plain(house, log); });
    desk.Show(ScreenCode::frmMsg);
    desk.Hide(ScreenCode::frmMsg);
    desk.Show(ScreenCode::frmMsg);
    EXPECT_EQ(log, (std::vector<std::string>{"load", "activate", "activate"}));
    state.ReturnScreen = 13;
    desk.CloseSubScreen(13);
    EXPECT_EQ(state.ReturnScreen, 0);
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmMsg));
    desk.Show(ScreenCode::frmMsg);
    EXPECT_EQ(log.back(), "activate");
    EXPECT_EQ(std::count(log.begin(), log.end(), "load"), 2);
}

TEST_F(Desks, NumbersWithoutAScreenOnlyResetTheReturn) {
    for (const int code : {0, 5, 25, -1, 999}) {
        state.ReturnScreen = 6;
        desk.CloseSubScreen(code);
        EXPECT_EQ(state.ReturnScreen, 0) << code;
    }
}

TEST_F(Desks, TheFrameAsksTheScreenInsteadOfClosingIt) {
    std::vector<std::string> log;
    desk.Register(ScreenCode::frmMsg, [&] { return new Plain(house, log); });
    desk.Show(ScreenCode::frmMsg);
    Screen* screen = Shown(ScreenCode::frmMsg);
    screen->close();
    EXPECT_TRUE(screen->isVisible());
    EXPECT_EQ(log.back(), "escape");
}

TEST_F(Desks, ModalEndsWhenHiddenClosedOrTheProgramEnds) {
    std::vector<std::string> log;
    desk.Register(ScreenCode::frmMsg, [&] { return new Plain(house, log); });
    const std::vector<std::pair<const char*, std::function<void(Screen*)>>> ways = {
        {"hidden", [](Screen* screen) { screen->hide(); }},
        {"closed", [this](Screen*) { desk.Close(ScreenCode::frmMsg); }},
        {"ended", [this](Screen*) { desk.EndProgram(); }},
    };
    for (const auto& [name, way] : ways) {
        OnModal(way);
        desk.ShowModal(ScreenCode::frmMsg);
        EXPECT_FALSE(desk.IsShown(ScreenCode::frmMsg)) << name;
    }
    EXPECT_TRUE(desk.Ended());
}

TEST_F(Desks, ARemarkLeftForTheNextScreenIsTakenUpOnce) {
    state.Remark = "The settings could not be written.";
    desk.Show(ScreenCode::frmtxt);
    EXPECT_EQ(Shown(ScreenCode::frmtxt)->RemarkText(), "The settings could not be written.");
    EXPECT_TRUE(state.Remark.empty());
}

}  // namespace
}  // namespace kelvo::test
