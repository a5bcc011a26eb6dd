#include "calibration/frmQuality.h"

#include "kit/PictureView.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class QualityWindow : public ScreenFixture {
 protected:
    void SetUp() override {
        ScreenFixture::SetUp();
        state.IonIndex = 10;
        state.CaliPoints = 4;
        state.CaliLogC = {0, -5, -4, -3, -2};
        state.CaliE = {0, 162.3f, 103.7f, 45.7f, -11.7f};
        state.CaliPpm = state.CaliMolar = {0, 1, 1, 1, 1};
        state.FileTemp = "25.0";
        state.LinearFit = 1;
    }
    QWidget& Open() {
        screens.Show(ScreenCode::frmQuality);
        return *screens.Find(ScreenCode::frmQuality);
    }
    void Follow() { dynamic_cast<CalibrationFollower*>(screens.Find(ScreenCode::frmQuality))->CalibrationChanged(); }
    static QString Text(QWidget& window, const char* name) {
        return window.findChild<QLabel*>(QString::fromLatin1(name))->text();
    }
    static void Trigger(QWidget& window, const char* name) {
        window.findChild<QAction*>(QString::fromLatin1(name))->trigger();
    }
};

TEST_F(QualityWindow, ShowsWhetherToGoOnAndFollowsTheCalibration) {
    QWidget& window = Open();
    EXPECT_EQ(window.windowTitle(), "Calibration Quality");
    EXPECT_EQ(Text(window, "lblVerdict"), "good");
    EXPECT_EQ(window.focusWidget()->objectName(), "lblVerdict") << "in sight where the window must scroll";
    EXPECT_EQ(Text(window, "txtFigure(0)"), "-58.00 mV/decade");
    EXPECT_EQ(Text(window, "txtBeside(0)"), "± 0.19 mV/decade (standard deviation)");
    EXPECT_TRUE(window.findChild<PictureView*>()->Description().contains("4 standards"))
        << "what a picture is to the ear";
    auto* points = window.findChild<QTableWidget*>("grdPoints");
    ASSERT_EQ(points->rowCount(), 4);
    EXPECT_EQ(points->item(0, 5)->text(), "0.30");
    EXPECT_FALSE(window.isModal()) << "the calibration screen goes on beside it";

    state.CaliE = {0, 120, 80, 40, 0};
    Follow();
    EXPECT_EQ(Text(window, "lblVerdict"), "doubtful");
    EXPECT_TRUE(Text(window, "lblCauses").startsWith("Usual causes: "));
    state.CaliPoints = 0;
    Follow();
    EXPECT_EQ(Text(window, "lblVerdict"), "cannot be told");
    EXPECT_EQ(points->rowCount(), 0);
    EXPECT_TRUE(window.findChild<QLabel*>("lblCauses")->isHidden());
    QTest::keyClick(&window, Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown(ScreenCode::frmQuality));
}

TEST_F(QualityWindow, OffersTheLowConcentrationFit) {
    QWidget& window = Open();
    auto* fit = window.findChild<QAction*>("mnuLowEnd");
    EXPECT_TRUE(fit->isEnabled());
    fit->trigger();
    auto* points = window.findChild<QTableWidget*>("grdPoints");
    EXPECT_EQ(points->horizontalHeaderItem(9)->text(), "Low-end residual mV");
    fit->trigger();
    EXPECT_EQ(points->horizontalHeaderItem(9)->text(), "Mark");
    state.CaliPoints = 3;
    Follow();
    EXPECT_FALSE(fit->isEnabled());
}

TEST_F(QualityWindow, AsksTheChargeOfACustomIon) {
    state.IonIndex = 25;
    state.Ions.names[25] = "Tl";
    prompts.ExpectInput("Calibration Quality", "-1");
    QWidget& window = Open();
    EXPECT_TRUE(Text(window, "txtBeside(1)").startsWith("Tl⁻") && Text(window, "lblVerdict") == "good");
    prompts.ExpectInput("Calibration Quality", "1");
    Trigger(window, "mnuCharge");
    EXPECT_TRUE(Text(window, "lblReason").contains("sign of an anion's, but Tl⁺ is a cation"));
    Trigger(window, "mnuQClose");
    EXPECT_FALSE(screens.IsShown(ScreenCode::frmQuality));
}

TEST_F(QualityWindow, CopiesFiguresAndPicture) {
    QWidget& window = Open();
    Trigger(window, "mnuQCopy(0)");
    EXPECT_TRUE(QGuiApplication::clipboard()->text().startsWith("Calibration Quality\tgood: "));
    Trigger(window, "mnuQCopy(1)");
    const QImage image = QGuiApplication::clipboard()->image();
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.pixelColor(0, 0), Qt::white);
    files.Expect(Path("q.pdf"));
    Trigger(window, "mnuQPrint");
    EXPECT_EQ(Content("q.pdf").substr(0, 5), "%PDF-");
}

}  // namespace
}  // namespace kelvo::test
