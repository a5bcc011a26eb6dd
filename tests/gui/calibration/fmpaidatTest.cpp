#include "calibration/CaliSession.h"
#include "support/ScreenFixture.h"

namespace kelvo::test {
namespace {

class PointDialog : public ScreenFixture {
 protected:
    Screen* Point(int number) {
        state.IonIndex = 10;
        state.ReadingActive = true;
        CaliSession(state, prompts).StartPoints(3);
        screens.Close(ScreenCode::fmpaidat);
        state.CurrentPoint = static_cast<std::int16_t>(number);
        screens.Show(ScreenCode::fmpaidat);
        return Shown(ScreenCode::fmpaidat);
    }
};

TEST_F(PointDialog, FollowsThePointForm) {
    Screen* point = Point(2);
    for (const char* hidden : {"txtbox(4)", "txtbox(5)", "Label8"})
        EXPECT_FALSE(Find<QWidget>(point, hidden)->isVisible()) << hidden;
    prompts.ExpectMessage("Invalid data type, please re-enter!");
    Keys(point, "5a");
    ProcessEvents();
    EXPECT_EQ(Text(point, "txtbox(0)") + Focus(point), "5txtbox(0)");
    Put(point, "4");
    Put(point, "100");
    EXPECT_EQ(Text(point, "txtbox(2)") + Text(point, "txtbox(3)"), "5.26E-03-2.2790");
    EXPECT_EQ(Focus(point), "cmdok");
    Enter(point);
    EXPECT_FALSE(screens.IsShown(ScreenCode::fmpaidat));
    EXPECT_EQ(state.CaliPpm[2], 100);
    Key(Point(1), Qt::Key_Escape);
    EXPECT_FALSE(screens.IsShown(ScreenCode::fmpaidat) || state.ReadingActive) << "an empty dialog closes";
}

}  // namespace
}  // namespace kelvo::test
