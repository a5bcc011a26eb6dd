#include "support/Stage.h"

namespace kelvo::test {
namespace {

class Plain : public Screen {
 public:
    Plain(House& house, std::string& diary)
        : Screen(house, ScreenCode::frmMsg, "frmPlain", Kind::Dialog), diary_(diary) {}
    void OnLoad() override { diary_ += "load "; }
    void OnActivate() override { diary_ += "activate "; }
    void OnUnload() override { diary_ += "unload "; }

 protected:
    void OnEscape() override { diary_ += "escape "; }

 private:
    std::string& diary_;
};

class Desks : public Stage {
 protected:
    void SetUp() override {
        Stage::SetUp();
        desk.Register(ScreenCode::frmMsg, [this] { return new Plain(house, diary); });
    }
    std::string diary;
};

TEST_F(Desks, ScreensAreMadeOnceAskedByTheFrameAndMadeAnewAfterClosing) {
    state.Remark = "The settings could not be written.";
    desk.Show(ScreenCode::frmMsg);
    EXPECT_EQ(Shown(ScreenCode::frmMsg)->RemarkText() + state.Remark, "The settings could not be written.");
    desk.Hide(ScreenCode::frmMsg);
    desk.Show(ScreenCode::frmMsg);
    Shown(ScreenCode::frmMsg)->close();
    Shown(ScreenCode::frmMsg);
    for (const int code : {0, 25, -1, 999, 13}) {
        EXPECT_TRUE(desk.IsLoaded(ScreenCode::frmMsg)) << code;
        state.ReturnScreen = 6;
        desk.CloseSubScreen(code);
        EXPECT_EQ(state.ReturnScreen, 0) << code;
    }
    EXPECT_FALSE(desk.IsLoaded(ScreenCode::frmMsg));
    desk.Show(ScreenCode::frmMsg);
    EXPECT_EQ(diary, "load activate activate escape unload load activate ");
}

TEST_F(Desks, ModalEndsWhenHiddenClosedOrTheProgramEnds) {
    const std::function<void(Screen*)> ways[] = {[](Screen* screen) { screen->hide(); },
                                                 [this](Screen*) { desk.Close(ScreenCode::frmMsg); },
                                                 [this](Screen*) { desk.EndProgram(); }};
    for (const auto& way : ways) {
        OnModal(way);
        desk.ShowModal(ScreenCode::frmMsg);
        EXPECT_FALSE(desk.IsShown(ScreenCode::frmMsg));
    }
    EXPECT_TRUE(desk.Ended());
}

}  // namespace
}  // namespace kelvo::test
