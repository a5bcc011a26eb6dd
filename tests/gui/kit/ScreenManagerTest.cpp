#include "kit/BodyArea.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class Plain : public Screen {
 public:
    Plain(AppContext& context, std::string& diary)
        : Screen(context, ScreenCode::frmMsg, "frmPlain", Kind::Dialog), diary_(diary) {}
    void OnLoad() override { diary_ += "load "; }
    void OnActivate() override { diary_ += "activate "; }
    void OnUnload() override { diary_ += "unload "; }

 protected:
    void OnEscape() override { diary_ += "escape "; }

 private:
    std::string& diary_;
};

class Desks : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        screens.Register(ScreenCode::frmMsg, [this] { return new Plain(context, diary); });
    }
    std::string diary;
};

TEST_F(Desks, ScreensAreMadeOnceAskedByTheFrameAndMadeAnewAfterClosing) {
    state.StatusMessage = "The settings could not be written.";
    screens.Show(ScreenCode::frmMsg);
    EXPECT_EQ(Shown(ScreenCode::frmMsg)->StatusText() + state.StatusMessage, "The settings could not be written.");
    screens.Hide(ScreenCode::frmMsg);
    screens.Show(ScreenCode::frmMsg);
    EXPECT_EQ(Shown(ScreenCode::frmMsg)->StatusText(), "") << "told once, not for ever";
    state.StatusMessage = "The previous version could not be kept.";
    EXPECT_EQ(Shown(ScreenCode::frmMsg)->StatusText(), "The previous version could not be kept.");
    Shown(ScreenCode::frmMsg)->SetReadingNote("averaging: 3 of 10 readings");
    EXPECT_EQ(Shown(ScreenCode::frmMsg)->StatusText(),
              "averaging: 3 of 10 readings  |  The previous version could not be kept.");
    Shown(ScreenCode::frmMsg)->close();
    Shown(ScreenCode::frmMsg);
    for (const int code : {0, 25, -1, 999, 13}) {
        EXPECT_TRUE(screens.IsLoaded(ScreenCode::frmMsg)) << code;
        state.ReturnScreen = 6;
        screens.CloseSubScreen(code);
        EXPECT_EQ(state.ReturnScreen, 0) << code;
    }
    EXPECT_FALSE(screens.IsLoaded(ScreenCode::frmMsg));
    screens.Show(ScreenCode::frmMsg);
    EXPECT_EQ(diary, "load activate activate escape unload load activate ");
}

TEST_F(Desks, AMinimisedModalScreenIsNotGone) {
    OnModal([](Screen* screen) {
        QHideEvent minimised;
        QSpontaneKeyEvent::setSpontaneous(&minimised);
        qApp->notify(screen, &minimised);
        ProcessEvents();
        screen->SetStatus("still there");
        QTimer::singleShot(0, screen, [screen] { screen->hide(); });
    });
    screens.ShowModal(ScreenCode::frmMsg);
    EXPECT_EQ(screens.Find(ScreenCode::frmMsg)->StatusText(), "still there");
    QWidget* screen = screens.Find(ScreenCode::frmMsg);
    EXPECT_FALSE(screen->isVisible()) << "the call returned when it was hidden";
}

TEST_F(Desks, AnyWindowMayBeSmallerThanItsContentWhichIsScrolledThenAndNeverCut) {
    for (const ScreenCode code :
         {ScreenCode::frmNorvak, ScreenCode::frmtxt, ScreenCode::frmenu, ScreenCode::frmHware, ScreenCode::frmsetup,
          ScreenCode::fmISEcli, ScreenCode::frmQuality, ScreenCode::frmQSave, ScreenCode::frmSampa,
          ScreenCode::frmStanad01, ScreenCode::frmacft, ScreenCode::frmcnvs, ScreenCode::frmselity}) {
        screens.Show(code);
        Screen* screen = Shown(code);
        SCOPED_TRACE(FromQt(screen->objectName()));
        const auto* body = screen->findChild<BodyArea*>();
        EXPECT_GE(body->WindowNeeded().width(), body->widget()->minimumWidth()) << "scrolls with room to spare";
        EXPECT_GT(body->WindowNeeded().height(), body->widget()->minimumHeight());
        // A display of 1024 × 720 at scale 1.5.
        screen->resize(683, 480);
        ProcessEvents();
        EXPECT_EQ(screen->size(), QSize(683, 480));
        for (const QLabel* label : screen->findChildren<QLabel*>()) {
            if (!label->isVisible() || label->text().isEmpty()) continue;
            const int needed =
                label->hasHeightForWidth() ? label->heightForWidth(label->width()) : label->minimumSizeHint().height();
            EXPECT_GE(label->height(), needed) << FromQt(label->text());
            const int wide = label->wordWrap() ? 0 : label->minimumSizeHint().width();
            EXPECT_GE(label->width(), wide) << FromQt(label->text());
        }
        screen->hide();
    }
}

TEST_F(Desks, ModalEndsWhenHiddenClosedOrTheProgramEnds) {
    const std::function<void(Screen*)> ways[] = {[](Screen* screen) { screen->hide(); },
                                                 [this](Screen*) { screens.Close(ScreenCode::frmMsg); },
                                                 [this](Screen*) { screens.EndProgram(); }};
    for (const auto& way : ways) {
        OnModal(way);
        screens.ShowModal(ScreenCode::frmMsg);
        EXPECT_FALSE(screens.IsShown(ScreenCode::frmMsg));
    }
    EXPECT_TRUE(screens.Ended());
}

}  // namespace
}  // namespace kelvo::test
