#include "calibration/CaliSession.h"

#include "app/AppState.h"
#include "calibration/CaliGraph.h"
#include "calibration/CaliList.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/Calibration.h"
#include "calibration/CurveFit.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

constexpr Point Ppm1000{-1.279f, -54, 1000}, Ppm100{-2.279f, 4, 100}, Ppm10{-3.279f, 62, 10}, Ppm1{-4.279f, 120, 1};
constexpr int Scales = 44;  // 22 lines of the frame, 22 figures and titles

struct Session {
    explicit Session(const std::vector<Point>& standards) {
        session.StartPoints(static_cast<int>(standards.size()));
        session.DrawEmpty();
        int i = 0;
        for (const Point& p : standards)
            session.StorePoint(++i, p.e, p.ppm, p.molar, p.logC);
        session.AfterLastPoint();
    }
    int Items() const { return static_cast<int>(state.Graph.Items().size()); }
    std::string Curve() const { return Joined(state.LinearFit, state.PartlyLinearFit, state.BestFitCurve); }
    AppState state = FluorideState();
    ScriptedPrompts prompts;
    CaliSession session{state, prompts};
};

TEST(CaliSession, RisingAndFallingPotentials) {
    Session rising({Ppm1000, Ppm100, Ppm10, Ppm1});
    ASSERT_TRUE(rising.session.ShowLinear());
    EXPECT_EQ(Joined(CaliListRows(CalibrationOf(rising.state))),
              "Calibration Data:,Total Slope:   -58.00,Temperature:  ,,No.__mV______ppm______Slope,"
              "___1__-54.0___1000.00______,___2____4.0____100.00-58.00,___3___62.0_____10.00-58.00,"
              "___4__120.0______1.00-58.00");

    Session falling({Ppm1, Ppm10, Ppm100, Ppm1000});
    EXPECT_EQ(Joined(falling.state.CaliE, falling.state.CaliPpm, falling.state.CaliLogC),
              "0,-54,4,62,120|0,1000,100,10,1|0,-4.279,-3.279,-2.279,-1.279")
        << "LogC does not move with its potential";
    ASSERT_TRUE(falling.session.ShowLinear());
    EXPECT_EQ(Joined(SlopeText(falling.state), PairingRemark(falling.state).empty()), "58.00|0");
}

TEST(CaliSession, OnlyPairsThatAreReallyCrossedAreWarnedOf) {
    constexpr Point Again1000{-1.279f, -54.6f, 1000}, Again100{-2.279f, 3.8f, 100};
    // So thin that both read 0.0 ppm: potential and LogC alone tell that they were crossed.
    constexpr Point Thin{-7, 278, 0}, Thinner{-8, 336, 0};
    const std::tuple<const char*, std::vector<Point>, bool> rows[] = {
        {"each standard read twice", {Ppm1000, Again1000, Ppm100, Again100}, false},
        {"and in turn", {Ppm1000, Ppm100, Again1000, Again100}, true},
        {"one potential for two standards", {Ppm1000, {-2.279f, -54, 100}}, false},
        {"thin ones rising", {Thin, Thinner}, false},
        {"thin ones falling", {Thinner, Thin}, true},
    };
    for (const auto& [name, points, warned] : rows)
        EXPECT_EQ(PairingRemark(Session(points).state).empty(), !warned) << name;
    AppState opened;  // from a file, where the order of entry is not known
    SetPoints(opened, {{-2.279f, 4, 1000}, {-1.279f, 62, 100}});
    EXPECT_FALSE(PairingRemark(opened).empty());
}

TEST(CaliSession, ListOfOnePointAndOfPointsWithoutSlope) {
    AppState state;
    SetPoints(state, {{-2, 100, 12345670}});
    state.CaliSlope = 58;
    state.FileTemp = "25";
    auto rows = CaliListRows(CalibrationOf(state));
    EXPECT_EQ(Joined(rows[2], rows[5]), "Temperature:  25.00|___1__100.012345670.00_58.00");
    SetPoints(state, {{-2, 100, 1}, {-2, 110, 2}, {-1, 110, 3}, {0, 119, 4}});  // one LogC, one potential, 9 mV
    rows = CaliListRows(CalibrationOf(state));
    EXPECT_EQ(Joined(rows[6].substr(21), rows[7].substr(21), rows[8].substr(21)), "______|______| 09.00");
}

TEST(CaliSession, CurvesAreDrawnOnTopAndBecomeTheActiveOne) {
    Session s({Ppm1000, Ppm100, Ppm10, Ppm1});
    EXPECT_TRUE(s.session.ShowLinear());
    EXPECT_EQ(s.Curve(), "1|0|0");
    EXPECT_TRUE(s.session.ShowPartlyLinear());
    EXPECT_TRUE(s.session.ShowBestCurve());
    EXPECT_EQ(Joined(s.Curve(), s.Items()), Joined("0|0|1", Scales + 4 + 1 + 3 + 100));
    EXPECT_TRUE(s.session.MarkSample(30, -2.7f));
    s.session.Refresh();
    EXPECT_EQ(Joined(s.state.SampleCount, s.Items()), Joined(0, Scales + 4 + 100));
    s.session.ChangeMvScale(3);
    EXPECT_EQ(Joined(s.state.YRange, s.Items()), Joined(1000, Scales + 4)) << "only the linear curve follows a scale";
    s.session.ShowLinear();
    EXPECT_TRUE(s.session.MarkSample(30, -2.7f));
    s.session.ChangeLogCScale(3);
    EXPECT_EQ(CodeOf([&] { s.session.ChangeLogCScale(4); }), 9);
    EXPECT_EQ(Joined(s.state.LogCScaleIndex, s.state.XDecades, s.Items()), Joined(3, 8, Scales + 4 + 1 + 2))
        << "samples are marked again";
    const DisplayItem& mark = s.state.Graph.Items().back();
    EXPECT_EQ(Joined(mark.x1, mark.colour, s.state.SampleCount), Joined(XFromLogC(s.state, -2.7f), colour::Red, 1));

    Session two({Ppm1000, Ppm100});
    EXPECT_TRUE(two.session.ShowBestCurve());
    EXPECT_EQ(Joined(two.Curve(), two.Items()), Joined("0|1|0", Scales + 2 + 1));
}

TEST(CaliSession, OnePointTakesTheSlopeJustTyped) {
    Session s({Ppm100});
    s.state.CaliSlope = -33;  // of an earlier calibration
    s.state.PointTemp = "30";
    s.state.KnownSlope = "58";
    s.state.KnownSlopeTemp = "25.0";
    ASSERT_TRUE(s.session.ShowKnownSlopeLine());
    EXPECT_EQ(s.state.Graph.Items().back().colour, colour::LightMagenta);
    s.session.Refresh();
    EXPECT_EQ(Joined(SlopeText(s.state), s.Items()), Joined("58.97", Scales + 1 + 1));
}

TEST(CaliSession, PointsStayInTheirBounds) {
    Session s({Ppm1000, Ppm100});
    EXPECT_EQ(CodeOf([&] { s.session.StartPoints(11); }), 9);
    EXPECT_EQ(CodeOf([&] { s.session.StorePoint(3, 0, 0, 0, 0); }), 9);
    EXPECT_EQ(CodeOf([&] { s.session.StorePoint(1, 5, 1e39, 0, 0); }), 6);
    EXPECT_EQ(s.state.CaliE[1], -54) << "nothing of a refused point is stored";
}

}  // namespace
}  // namespace kelvo::test
