#include "calibration/CaliGraph.h"

#include <algorithm>
#include <cmath>

#include "calibration/CaliTestPoints.h"
#include "calibration/CurveFit.h"
#include "support/Scripted.h"
#include "text/RuntimeError.h"

namespace kelvo::test {
namespace {

AppState Scaled(int mv, int logC) {
    AppState state = FluorideState();
    state.MvScaleIndex = static_cast<std::int16_t>(mv);
    state.LogCScaleIndex = static_cast<std::int16_t>(logC);
    SetScaleConstants(state, mv, logC);
    return state;
}

std::vector<float> LineOf(const Primitive& p) {
    return {p.x1, p.y1, p.x2, p.y2};
}

TEST(CaliGraph, EveryScaleFillsTheFrameAndRises) {
    for (int mv = 0; mv < 6; ++mv) {
        for (int logC = 0; logC < 4; ++logC) {
            const AppState state = Scaled(mv, logC);
            EXPECT_EQ(XFromLogC(state, ScaleLeft(logC)), 480) << logC;
            EXPECT_EQ(XFromLogC(state, ScaleRight(logC)), 9080) << logC;
            EXPECT_EQ(YFromE(state, ScaleTop(mv)), 400) << mv;
            EXPECT_EQ(YFromE(state, ScaleBottom(mv)), 6400) << mv;
            float lastX = 0, lastY = 7000;
            for (int i = 0; i <= 1000; ++i) {
                const float t = static_cast<float>(i) / 1000;
                const float x = XFromLogC(state, std::lerp(ScaleLeft(logC), ScaleRight(logC), t));
                const float y = YFromE(state, std::lerp(ScaleBottom(mv), ScaleTop(mv), t));
                ASSERT_TRUE(InFrame(x, y)) << mv << logC << i;
                ASSERT_GT(x, lastX);
                ASSERT_LT(y, lastY);
                lastX = x;
                lastY = y;
            }
        }
    }
    EXPECT_EQ(XFromLogC(Scaled(2, 3), 0), 8005);
    EXPECT_EQ(YFromE(Scaled(2, 3), 0), 3400);
    EXPECT_FALSE(InFrame(XFromLogC(Scaled(2, 3), 3e38f), YFromE(Scaled(2, 3), -3e38f)));
    EXPECT_THROW(Scaled(6, 0), RuntimeError);
    EXPECT_THROW(Scaled(0, -1), RuntimeError);
}

TEST(CaliGraph, FrameAndFigures) {
    Picture picture;
    DrawFrame(picture);
    ASSERT_EQ(picture.Items().size(), 22u);
    EXPECT_EQ(LineOf(picture.Items()[11]), (std::vector<float>{400, 6400, 480, 6400}));
    EXPECT_EQ(LineOf(picture.Items()[21]), (std::vector<float>{9080, 6400, 9080, 6500}));

    struct Case {
        int mv, logC;
        std::int16_t ion;
        const char *top, *bottom, *left, *second, *right, *title;
    } cases[] = {
        {0, 0, Fluoride, " 500", " 0", "-3", "-2.5", " 1", "(F) LogC"},
        {1, 1, HydrogenIon, " 1000", " 0", "-5", "-4.5", "-1", "(pH)LogC"},
        {3, 2, 0, " 1000", "-1000", "-7", "-6.5", "-3", "(Ag) LogC"},
        {5, 3, CustomIonRow, " 0", "-1000", "-7", "-6", " 1", "(Custom) LogC"},
    };
    for (const Case& c : cases) {
        AppState state = Scaled(c.mv, c.logC);
        state.IonIndex = c.ion;
        picture.Clear();
        DrawAxes(state, picture, c.mv, c.logC);
        const auto& items = picture.Items();
        ASSERT_EQ(items.size(), 22u);
        const std::pair<int, const char*> texts[] = {{0, c.top},     {10, c.bottom}, {11, "E (mV)"}, {12, c.left},
                                                     {13, c.second}, {20, c.right},  {21, c.title}};
        for (const auto& [i, text] : texts)
            EXPECT_EQ(items[static_cast<std::size_t>(i)].text, text) << c.title;
        EXPECT_EQ(items[10].y1, 6350);
        EXPECT_EQ(items[10].maxWidth, 380);
        EXPECT_EQ(items[12].x1, 500);
        EXPECT_EQ(items[20].x1, 1420 + 7 * 1075);
        EXPECT_EQ(items[20].size, 8.25f);
        EXPECT_EQ(items[21].size, 12);
    }
}

TEST(CaliGraph, RowsOfTheSetup) {
    AppState state;
    state.IonIndex = Fluoride;  // 18.9984 g/mol
    EXPECT_EQ(LogCRow(state, 0), " -3 .. +1  (0,019...189,984)");
    EXPECT_EQ(LogCRow(state, 1), " -5 ... -1  (0.19...1,900)");
    EXPECT_EQ(LogCRow(state, 3), " -7 .. +1  (0.00...189,984)");
    EXPECT_THROW(LogCRow(state, 4), RuntimeError);
}

TEST(CaliGraph, PointsOnTheEdgeAreDrawnAndBeyondItNot) {
    AppState state = Scaled(2, 1);
    SetPoints(state, {{-5, 500}, {-1, -500}, {-3, 500.1f}, {-0.99f, 0}, {-3, 0}});
    Picture picture;
    PlotPoints(state, picture);
    ASSERT_EQ(picture.Items().size(), 3u);
    EXPECT_EQ(picture.Items()[1].x1, 9080);
    EXPECT_EQ(picture.Items()[1].y1, 6400);
    EXPECT_EQ(picture.Items()[2].x1, 4780);
    EXPECT_EQ(picture.Items()[2].colour, colour::Black);

    picture.Clear();
    DrawPartlyLinear(state, picture);  // the points 1 and 2 alone are neighbours in the frame
    ASSERT_EQ(picture.Items().size(), 1u);
    EXPECT_EQ(LineOf(picture.Items()[0]), (std::vector<float>{480, 400, 9080, 6400}));
    EXPECT_EQ(picture.Items()[0].colour, 9);
}

TEST(CaliGraph, LineIsClippedAtBothEnds) {
    struct Case {
        const char* name;
        float slope;
        double eo;
        std::vector<float> line;  // none: not drawn
        bool done;
    };
    // Scale 2 by 1: 500 mV at y 400, −500 at 6400, 6 twips a mV; LogC −5 at x 480, 2150 twips a decade.
    const Case cases[] = {
        {"inside", -100, -300, {480, 2200, 9080, 4600}, true},              // 200 mV, −200 mV
        {"falling, both cut", -500, -1500, {2630, 400, 6930, 6400}, true},  // 500 mV at −4, −500 mV at −2
        {"rising, both cut", 500, 1500, {2630, 6400, 6930, 400}, true},
        {"left end cut", -200, -400, {1555, 400, 9080, 4600}, true},  // 500 mV at −4.5
        {"passes above", -10, 600, {}, true},
        {"level inside", 0, 100, {480, 2800, 9080, 2800}, true},
        {"level outside", 0, 600, {}, false},
        {"corner to corner", -250, -750, {480, 400, 9080, 6400}, true},
    };
    for (const Case& c : cases) {
        AppState state = Scaled(2, 1);
        state.CaliSlope = c.slope;
        state.CaliEo = c.eo;
        Picture picture;
        EXPECT_EQ(DrawLine(state, picture, colour::LightMagenta), c.done) << c.name;
        ASSERT_EQ(picture.Items().size(), c.line.empty() ? 0u : 1u) << c.name;
        if (c.line.empty()) continue;
        EXPECT_EQ(LineOf(picture.Items()[0]), c.line) << c.name;
        EXPECT_EQ(picture.Items()[0].colour, 13) << c.name;
    }
}

TEST(CaliGraph, BestCurveRunsThroughThePoints) {
    AppState state = Scaled(2, 1);
    state.FitA = 2;
    state.FitB = -60;
    state.FitC = -100;
    SetPoints(state, {{-2, 28}, {-1, -38}, {-4, 172}});
    Picture picture;
    DrawBestCurve(state, picture);
    ASSERT_EQ(picture.Items().size(), 100u);
    EXPECT_EQ(picture.Items().front().x1, XFromLogC(state, -4));
    EXPECT_EQ(picture.Items().front().y1, YFromE(state, 172));
    EXPECT_NEAR(picture.Items().back().x2, XFromLogC(state, -1), 0.001f);  // two units of a 32-bit x
    EXPECT_NEAR(picture.Items().back().y2, YFromE(state, -38), 0.001f);
    EXPECT_EQ(picture.Items().front().colour, 12);
    state.FitC = 400;  // E = 2·LogC² − 60·LogC + 400 leaves the frame towards −4
    picture.Clear();
    DrawBestCurve(state, picture);
    EXPECT_EQ(picture.Items().size(), 19u);  // 500 mV is at −1.583, steps are 0.03
}

TEST(CaliGraph, SamplesFillUpAndStop) {
    AppState state = Scaled(2, 1);
    Picture picture;
    DrawSample(state, picture, 100, -3, colour::Red);
    ASSERT_EQ(picture.Items().size(), 2u);
    EXPECT_EQ(LineOf(picture.Items()[0]), (std::vector<float>{4730, 2800, 4830, 2800}));
    EXPECT_EQ(LineOf(picture.Items()[1]), (std::vector<float>{4780, 2750, 4780, 6400}));
    EXPECT_EQ(picture.Items()[1].colour, 4);
    DrawSample(state, picture, 600, -3, colour::Red);
    EXPECT_EQ(picture.Items().size(), 2u) << "outside: stored, not drawn";
    for (int i = 2; i < 101; ++i)
        DrawSample(state, picture, 0, -2, colour::Red);
    EXPECT_EQ(state.SampleLogC[100], -2);
    const std::size_t drawn = picture.Items().size();
    EXPECT_THROW(DrawSample(state, picture, 0, -2, colour::Red), RuntimeError);
    EXPECT_EQ(state.SampleCount, 101);
    EXPECT_EQ(picture.Items().size(), drawn);
}

}  // namespace
}  // namespace kelvo::test
