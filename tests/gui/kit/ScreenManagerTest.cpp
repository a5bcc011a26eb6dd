#include <QAccessible>
#include <QRegularExpression>

#include "core/DisplayList.h"
#include "devices/LinkQt.h"
#include "kit/BodyArea.h"
#include "kit/PictureView.h"
#include "kit/Theme.h"
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

/// Colours of a style sheet that stand too near to one another: letters want 4.5 to 1 and a ground in the same rule,
/// marks 3 to 1 on their ground, or on a light and on a dark desktop.
QStringList TooNear(const QString& sheet) {
    static const QRegularExpression rules(R"(\{([^{}]*)\})"),
        colours(R"((?:^|[;'\s])(background|color|border)[a-z-]*:[^;]*?(#[0-9a-f]{6}))");
    QStringList near;
    for (const auto& rule : rules.globalMatch(sheet.contains(u'{') ? sheet : u'{' + sheet + u'}')) {
        QList<QColor> grounds;
        for (const auto& match : colours.globalMatch(rule.captured(1)))
            if (match.captured(1) == u"background") grounds = {QColor(match.captured(2))};
        for (const auto& match : colours.globalMatch(rule.captured(1))) {
            if (match.captured(1) == u"background") continue;
            const bool letters = match.captured(1) == u"color" && !rule.captured(1).contains(u"span");
            bool good = !letters || !grounds.isEmpty();
            for (const QColor& ground : grounds.isEmpty() ? QList<QColor>{"#efefef", "#2d2d30"} : grounds)
                good = good && Contrast(QColor(match.captured(2)), ground) >= (letters ? 4.5 : 3);
            if (!good) near << rule.captured(1);
        }
    }
    return near;
}

/// A value has a name and is heard; what takes the focus has a name; a picture has words; computed boxes are reached.
void ExpectHeard(QWidget* widget) {
    SCOPED_TRACE(FromQt(widget->objectName()) + " in " + FromQt(widget->parentWidget()->objectName()));
    const QAccessibleInterface* heard = QAccessible::queryAccessibleInterface(widget);
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        if (label->textFormat() == Qt::RichText) {
            EXPECT_EQ(FromQt(TooNear(label->text()).join(u'\n')), "");
            return;
        }
        EXPECT_EQ(label->textFormat(), Qt::PlainText);
        static const QStringList blank = {"Label1(2)", "Label4", "Label11", "Label12", "Label13", ""};
        const bool caption = label->accessibleName().isEmpty();
        EXPECT_TRUE(!caption || !label->text().isEmpty() || blank.contains(label->objectName()))
            << "filled later, but nobody hears what it is";
        label->setText(QStringLiteral("<h1>7.02"));
        EXPECT_EQ(FromQt(heard->text(caption ? QAccessible::Name : QAccessible::Value)), "<h1>7.02");
    }
    const bool stops = (widget->focusPolicy() & Qt::TabFocus) != 0,
               picture = qobject_cast<PictureView*>(widget) != nullptr;
    EXPECT_FALSE(stops && heard->text(QAccessible::Name).isEmpty());
    EXPECT_FALSE(picture && heard->text(QAccessible::Description).isEmpty());
    const auto* box = qobject_cast<EntryBox*>(widget);
    EXPECT_TRUE(stops || box == nullptr || !box->isReadOnly());
}

/// A window may be smaller than its content, which is scrolled then and never cut.
void ExpectScrolled(Screen* screen) {
    // A display of 1024 × 720 at scale 1.5.
    screen->resize(683, 480);
    QCoreApplication::processEvents();
    EXPECT_EQ(screen->size(), QSize(683, 480));
    for (const QLabel* label : screen->findChildren<QLabel*>()) {
        if (!label->isVisible() || label->text().isEmpty()) continue;
        const int needed =
            label->hasHeightForWidth() ? label->heightForWidth(label->width()) : label->minimumSizeHint().height();
        EXPECT_GE(label->height(), needed) << FromQt(label->text());
        const int wide = label->wordWrap() ? 0 : label->minimumSizeHint().width();
        EXPECT_GE(label->width(), wide) << FromQt(label->text());
    }
}

TEST_F(Desks, EveryScreenCanBeReadHeardAndScrolled) {
    using enum ScreenCode;
    LinkQt link(state, prompts, clock, PortNames(Path("ports/"), "/nonexistent/"), Path("CommPort.ini"));
    context.link = &link.GetLink();
    RegisterScreens(context);
    EXPECT_EQ(FromQt(TooNear(qApp->styleSheet() + u'{' + HintStyle() + u'}').join(u'\n')), "");
    int seen = 0;
    for (int number = 1; number < 200; ++number) {
        const auto code = static_cast<ScreenCode>(number);
        if (!screens.Knows(code)) continue;
        ++seen;
        if (code == frmPHMe)
            prompts.ExpectAsk("Would you like to save your data in a file while you are measuring", false);
        screens.Show(code);
        Screen* screen = Shown(code);
        SCOPED_TRACE(FromQt(screen->objectName()));
        const auto* body = screen->findChild<BodyArea*>();
        EXPECT_GE(body->WindowNeeded().width(), body->widget()->minimumWidth()) << "scrolls with room to spare";
        EXPECT_GT(body->WindowNeeded().height(), body->widget()->minimumHeight());
        const bool leads = screen->findChild<QMenuBar*>() != nullptr || screen->windowType() == Qt::Window;
        const auto* manual = screen->findChild<QAction*>(QStringLiteral("mnuManual"));
        const bool sheet = code == frmManual || code == frminfo2;
        EXPECT_EQ(manual != nullptr && manual->isEnabled(), leads && !sheet);
        ExpectScrolled(screen);
        for (QWidget* widget : screen->findChildren<QWidget*>()) {
            if (widget->window() != screen) continue;
            EXPECT_EQ(FromQt(TooNear(widget->styleSheet()).join(u'\n')), "") << FromQt(widget->objectName());
            ExpectHeard(widget);
        }
        screens.Close(code);
        ProcessEvents();
    }
    EXPECT_EQ(seen, 31);
    context.link = nullptr;
}

TEST(Theme, LettersReadOnEachOfTheSixteenAndMarksOnTheWhiteOfAGraph) {
    for (int i = 0; i < 16; ++i)
        EXPECT_GE(Contrast(ColourOf(i), TextOn(i)), 4.5) << i;
    for (const int mark : {colour::Black, colour::Red, colour::LightBlue, colour::LightRed, colour::LightMagenta})
        EXPECT_GE(Contrast(ColourOf(mark), Qt::white), 3) << mark;
    EXPECT_GT(QComboBox().palette().color(QPalette::PlaceholderText).alphaF(), 0.7)
        << "a list that waits for its choice";
    EXPECT_NEAR(Contrast(QColor("#777777"), Qt::white), 4.48, 0.005) << "the known grey that just fails";
    QCheckBox box;
    QRadioButton choice;
    for (QAbstractButton* tick : {static_cast<QAbstractButton*>(&box), static_cast<QAbstractButton*>(&choice)})
        for (const char* ground : {"#efefef", "#2d2d30"}) {
            tick->setPalette(QPalette(ground, ground));
            const QImage shown = tick->grab().toImage();
            double most = 0;
            for (int x = 0; x < shown.width(); ++x)
                most = std::max(most, Contrast(shown.pixelColor(x, shown.height() / 2), QColor(ground)));
            EXPECT_GE(most, 3) << ground << ": a tick that is not set";
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
