#include "calibration/CalibrationEntry.h"

#include "calibration/CaliSession.h"
#include "calibration/CalibrationFakes.h"
#include "support/Joined.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {
namespace {

/// The setup dialog's choices, and an analyst who types points of -58 mV per decade.
struct Bench : CalibrationBench {
    explicit Bench(const char* points) {
        state.IniPath = folder.Put("KELVO.ini", "");
        setup.mvIndex = 2;
        setup.logCIndex = 1;
        setup.ionIndex = Fluoride;
        setup.txtspin = points;
        setup.ticked = {false, true, false};
        screens.onModal = [this](ScreenCode code) {
            if (code == ScreenCode::frmknosp) state.KnownSlope = "-58", state.KnownSlopeTemp = "25";
            if (state.CurrentPoint == cancelAt) state.ReadingActive = false;
            if (state.CurrentPoint == endAt) screens.ended = true;
            if (code != ScreenCode::fmpaidat || !state.ReadingActive) return;
            const int i = state.CurrentPoint;
            CaliSession(state, prompts).StorePoint(i, 58 * i, 1000 / i, 1, -i);
            state.PointTemp = "25";
        };
    }
    ScratchFolder folder;
    CaliSetup setup{state, prompts};
    CalibrationEntry entry{context, setup, [this] { link.StartLink(); }};
    int cancelAt = 0, endAt = 0;
};

TEST(CalibrationEntry, PointsAreAskedForOneByOneAndTheLinkEndsWithThem) {
    const std::string before = "close 1,present 1,hide 21,start,";
    const std::string point = "modal 2,close 2,";
    // points, cancelled at, the program ends at, ReturnScreen; what is done; points, CaliDirty, ReturnScreen
    const std::tuple<const char*, const char*, int, int, std::int16_t, std::string, const char*> rows[] = {
        {"two points", "2", 0, 0, 0, before + point + point + "stop,close 21,show 1", "2|1|0"},
        {"one point and its slope", "1", 0, 0, 0, before + point + "modal 12,close 12,stop,close 21,show 1", "1|1|0"},
        {"asked for by the recording setup", "2", 0, 0, 16, before + point + point + "stop,sub 16,close 21,show 1",
         "2|1|16"},
        {"cancelled at the second", "3", 2, 0, 0, before + point + point + "stop,close 1,show 21", "0|0|0"},
        {"the program ends", "3", 0, 2, 0, before + point + point + point + "stop", "3|1|0"},
    };
    for (const auto& [name, points, cancelAt, endAt, returnScreen, done, left] : rows) {
        Bench b(points);
        b.cancelAt = cancelAt;
        b.endAt = endAt;
        b.state.ReturnScreen = returnScreen;
        EXPECT_TRUE(b.entry.Ok()) << name;
        EXPECT_EQ(Joined(b.log.Take(), b.state.CaliPoints, b.state.CaliDirty, b.state.ReturnScreen), Joined(done, left))
            << name;
    }
}

TEST(CalibrationEntry, AMissingChoiceStaysAndCancelGoesBack) {
    Bench b("2");
    b.setup.ionIndex = NoIon;
    b.prompts.ExpectMessage("Setup is incomplete, please select an ion and other options");
    EXPECT_FALSE(b.entry.Ok());
    EXPECT_EQ(b.log.Take(), "");
    b.state.CaliDirty = 1;
    b.state.ReturnScreen = 16;
    b.entry.Cancel();
    EXPECT_EQ(b.log.Take(), "sub 16,close 21,show 8");
}

}  // namespace
}  // namespace kelvo::test
