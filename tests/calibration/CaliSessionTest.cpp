#include "calibration/CaliSession.h"

#include <algorithm>

#include "calibration/CaliList.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/CurveFit.h"
#include "calibration/Potentiometry.h"
#include "support/Scripted.h"
#include "text/Number.h"

namespace kelvo::test {
namespace {

constexpr std::size_t Scales = 44;  // 22 lines of the frame, 22 figures and titles

std::size_t Count(const AppState& state, Primitive::Kind kind, int colour) {
    const auto& items = state.Graph.Items();
    return static_cast<std::size_t>(std::count_if(
        items.begin(), items.end(), [&](const Primitive& item) { return item.kind == kind && item.colour == colour; }));
}

/// Types a standard as the point dialog does: ppm, the other units by their masks.
void Type(AppState& state, CaliSession& session, int i, double ppm, double e) {
    const std::string molar = Format(PpmToMolar(state.Ions, ppm, state.IonIndex), "0.00E-00");
    const std::string logC = Format(Log10(Val(molar)), "#0.0000");
    session.StorePoint(i, e, ppm, Val(molar), Val(logC));
}

struct Session {
    explicit Session(std::initializer_list<std::pair<double, double>> standards = {}) : session(state, prompts) {
        state = FluorideState();
        if (standards.size() == 0) return;
        session.StartPoints(static_cast<int>(standards.size()));
        session.DrawEmpty();
        int i = 0;
        for (const auto& [ppm, e] : standards)
            Type(state, session, ++i, ppm, e);
        session.AfterLastPoint();
    }
    AppState state;
    ScriptedPrompts prompts;
    CaliSession session;
};

TEST(CaliSession, FluorideFromTheLowestPotentialUp) {
    Session s({{1000, -54}, {100, 4}, {10, 62}, {1, 120}});
    EXPECT_EQ(s.state.CaliLogC, (std::vector<float>{0, -1.279f, -2.279f, -3.279f, -4.279f}));
    EXPECT_EQ(s.state.CaliMolar, (std::vector<float>{0, 0.0526f, 0.00526f, 0.000526f, 0.0000526f}));
    EXPECT_EQ(Count(s.state, Primitive::Kind::Dot, colour::Black), 4u);
    ASSERT_TRUE(s.session.ShowLinear());
    EXPECT_EQ(SlopeText(s.state), "-58.00");
    EXPECT_TRUE(PairingRemark(s.state).empty());
    const auto sample = PotentialToSample(s.state, s.prompts, 30);
    ASSERT_TRUE(sample);
    EXPECT_EQ(sample->LogCText + " " + sample->MolarText + " " + sample->PpmText, "-2.73 1.87E-3 35.60");
    EXPECT_EQ(CaliListRows(s.state),
              (std::vector<std::string>{"Calibration Data:", "Total Slope:   -58.00", "Temperature:  ", "",
                                        "No.__mV______ppm______Slope", "___1__-54.0___1000.00______",
                                        "___2____4.0____100.00-58.00", "___3___62.0_____10.00-58.00",
                                        "___4__120.0______1.00-58.00"}));
}

TEST(CaliSession, FallingPotentialsArePairedAsStored) {
    Session s({{1, 120}, {10, 62}, {100, 4}, {1000, -54}});
    EXPECT_TRUE(s.state.PotentialsFell);
    EXPECT_EQ(s.state.CaliE, (std::vector<float>{0, -54, 4, 62, 120}));
    EXPECT_EQ(s.state.CaliPpm, (std::vector<float>{0, 1000, 100, 10, 1}));
    EXPECT_EQ(s.state.CaliLogC, (std::vector<float>{0, -4.279f, -3.279f, -2.279f, -1.279f}));
    ASSERT_TRUE(s.session.ShowLinear());
    EXPECT_EQ(SlopeText(s.state), "58.00");
    EXPECT_FALSE(PairingRemark(s.state).empty());
}

TEST(CaliSession, ListOfOnePointAndOfPointsWithoutSlope) {
    AppState state;
    SetPoints(state, {{-2, 100, 12345670}});
    state.CaliSlope = 58;
    state.FileTemp = "25";
    auto rows = CaliListRows(state);
    EXPECT_EQ(rows[2], "Temperature:  25.00");
    EXPECT_EQ(rows[5], "___1__100.012345670.00_58.00");
    SetPoints(state, {{-2, 100, 1}, {-2, 110, 2}, {-1, 110, 3}, {0, 119, 4}});
    rows = CaliListRows(state);
    EXPECT_EQ(rows[6].substr(21), "______") << "one LogC";
    EXPECT_EQ(rows[7].substr(21), "______") << "one potential";
    EXPECT_EQ(rows[8].substr(21), " 09.00");
}

TEST(CaliSession, CurvesAreDrawnOnTopAndBecomeTheActiveOne) {
    Session s({{1000, -54}, {100, 4}, {10, 62}, {1, 120}});
    const auto flags = [&] { return std::array{s.state.LinearFit, s.state.PartlyLinearFit, s.state.BestFitCurve}; };
    using Flags = std::array<std::int16_t, 3>;
    EXPECT_TRUE(s.session.ShowLinear());
    EXPECT_EQ(flags(), (Flags{1, 0, 0}));
    EXPECT_TRUE(s.session.ShowPartlyLinear());
    EXPECT_EQ(flags(), (Flags{0, 1, 0}));
    EXPECT_TRUE(s.session.ShowBestCurve());
    EXPECT_EQ(flags(), (Flags{0, 0, 1}));
    EXPECT_EQ(s.state.Graph.Items().size(), Scales + 4 + 1 + 3 + 100);
    EXPECT_TRUE(s.session.MarkSample(30, -2.7f));
    EXPECT_EQ(Count(s.state, Primitive::Kind::Line, colour::Red), 2u);

    s.session.Refresh();
    EXPECT_EQ(s.state.SampleCount, 0);
    EXPECT_EQ(s.state.Graph.Items().size(), Scales + 4 + 100);
    s.session.ChangeMvScale(3);
    EXPECT_EQ(s.state.Graph.Items().size(), Scales + 4) << "only the linear curve follows a scale";
    EXPECT_EQ(s.state.YRange, 1000);
    s.session.ShowLinear();
    s.session.ChangeLogCScale(3);
    EXPECT_EQ(s.state.Graph.Items().size(), Scales + 4 + 1);
    EXPECT_EQ(s.state.XDecades, 8);
    EXPECT_EQ(CodeOf([&] { s.session.ChangeLogCScale(4); }), 9);
    EXPECT_EQ(s.state.LogCScaleIndex, 3);
}

TEST(CaliSession, BestCurveOfTwoPointsIsPartlyLinear) {
    Session s({{1000, -54}, {100, 4}});
    EXPECT_TRUE(s.session.ShowBestCurve());
    EXPECT_TRUE(s.state.PartlyLinearFit == 1 && s.state.BestFitCurve == 0);
    EXPECT_EQ(Count(s.state, Primitive::Kind::Line, colour::LightBlue), 1u);
}

TEST(CaliSession, AFailedFitLeavesTheGraph) {
    Session s({{1000, -54}, {1000, 4}, {1000, 5}});
    const std::size_t before = s.state.Graph.Items().size();
    s.prompts.ExpectMessage("'E =Eo + S*LogC' function cannot be used with some of the X values");
    EXPECT_FALSE(s.session.ShowLinear());
    s.prompts.ExpectMessage("Some data divided by zero, function cannot be used");
    EXPECT_FALSE(s.session.ShowBestCurve());
    EXPECT_EQ(s.state.Graph.Items().size(), before);
}

TEST(CaliSession, OnePointTakesTheSlopeJustTyped) {
    Session s;
    s.state.CaliSlope = -33;  // of an earlier calibration
    s.state.PointTemp = "30";
    s.state.KnownSlope = "58";
    s.state.KnownSlopeTemp = "25.0";
    s.session.StartPoints(1);
    s.session.DrawEmpty();
    Type(s.state, s.session, 1, 100, 4);
    s.session.AfterLastPoint();
    ASSERT_TRUE(s.session.ShowKnownSlopeLine());
    EXPECT_EQ(SlopeText(s.state), "58.97");
    EXPECT_EQ(Count(s.state, Primitive::Kind::Line, colour::LightMagenta), 1u);
    EXPECT_FALSE(s.state.PotentialsFell);
    s.session.Refresh();
    EXPECT_EQ(SlopeText(s.state), "58.97");
    EXPECT_EQ(s.state.Graph.Items().size(), Scales + 1 + 1);
    s.state.KnownSlopeTemp = "-273.15";
    s.prompts.ExpectMessage("Data out of range, please try again.");
    EXPECT_FALSE(s.session.ShowKnownSlopeLine());
}

TEST(CaliSession, PointsStayInTheirBounds) {
    Session s;
    for (const int n : {0, -1, 11, 30000})
        EXPECT_EQ(CodeOf([&] { s.session.StartPoints(n); }), 9) << n;
    s.session.StartPoints(2);
    EXPECT_EQ(CodeOf([&] { s.session.StorePoint(3, 0, 0, 0, 0); }), 9);
    EXPECT_EQ(CodeOf([&] { s.session.StorePoint(0, 0, 0, 0, 0); }), 9);
    EXPECT_EQ(CodeOf([&] { s.session.StorePoint(1, 5, 1e39, 0, 0); }), 6);
    EXPECT_EQ(s.state.CaliE[1], 0) << "nothing of a refused point is stored";
    s.state.SampleCount = 101;
    EXPECT_FALSE(s.session.MarkSample(0, -2));
    s.state.CaliPoints = 0;
    EXPECT_FALSE(s.session.ShowLinear() || s.session.ShowPartlyLinear() || s.session.ShowBestCurve());
}

}  // namespace
}  // namespace kelvo::test
