#include "calibration/CaliGraph.h"

#include "app/AppState.h"
#include "calibration/CaliTestPoints.h"
#include "calibration/GraphWords.h"
#include "support/Joined.h"
#include "support/Scripted.h"

namespace kelvo::test {
namespace {

AppState Scaled(int mv, int logC) {
    AppState state = FluorideState();
    state.MvScaleIndex = static_cast<std::int16_t>(mv);
    state.LogCScaleIndex = static_cast<std::int16_t>(logC);
    SetScaleConstants(state, mv, logC);
    return state;
}

/// Ends and colour of an item.
std::string LineOf(const DisplayList& picture, std::size_t i) {
    const DisplayItem& p = picture.Items().at(i);
    return Joined(p.x1, p.y1, p.x2, p.y2, p.colour);
}

TEST(CaliGraph, EveryScaleFillsTheFrame) {
    for (int mv = 0; mv < 6; ++mv) {
        for (int logC = 0; logC < 4; ++logC) {
            const AppState state = Scaled(mv, logC);
            const float left = ScaleLeft(logC), right = ScaleRight(logC), top = ScaleTop(mv), bottom = ScaleBottom(mv);
            const std::array x = {XFromLogC(state, left), XFromLogC(state, (left + right) / 2),
                                  XFromLogC(state, right)};
            const std::array y = {YFromE(state, top), YFromE(state, (top + bottom) / 2), YFromE(state, bottom)};
            EXPECT_EQ(Joined(x, y), "480,4780,9080|400,3400,6400") << mv << logC;
        }
    }
    EXPECT_THROW(Scaled(6, 0), RuntimeError);
}

TEST(CaliGraph, FiguresOfTheScales) {
    const std::tuple<int, int, std::int16_t, const char*> rows[] = {
        {0, 0, Fluoride, " 500| 0|E (mV)|-3|-2.5| 1|(F) LogC"},
        {1, 1, HydrogenIon, " 1000| 0|E (mV)|-5|-4.5|-1|(pH)LogC"},
        {3, 2, 0, " 1000|-1000|E (mV)|-7|-6.5|-3|(Ag) LogC"},
        {5, 3, CustomIonRow, " 0|-1000|E (mV)|-7|-6| 1|(Custom) LogC"}};
    for (const auto& [mv, logC, ion, texts] : rows) {
        AppState state = Scaled(mv, logC);
        state.IonIndex = ion;
        DisplayList picture;
        DrawAxes(state, picture, mv, logC);
        const auto& items = picture.Items();
        ASSERT_EQ(items.size(), 22u);
        EXPECT_EQ(Joined(items[0].text, items[10].text, items[11].text, items[12].text, items[13].text, items[20].text,
                         items[21].text),
                  texts);
        EXPECT_EQ(Joined(items[13].x1, items[20].x1, items[20].y1), "1420|8945|6220");
    }
    AppState state;
    state.IonIndex = Fluoride;  // 18.9984 g/mol
    EXPECT_EQ(Joined(LogCRow(state, 0), LogCRow(state, 1), LogCRow(state, 3)),
              " -3 .. +1  (0,019...189,984)| -5 ... -1  (0.19...1,900)| -7 .. +1  (0.00...189,984)");
}

TEST(CaliGraph, PointsOnTheEdgeAreDrawnAndBeyondItNot) {
    AppState state = Scaled(2, 1);
    SetPoints(state, {{-5, 500}, {-1, -500}, {-3, 500.1f}, {-0.99f, 0}, {-3, 0}});
    DisplayList picture;
    PlotPoints(state, picture);
    ASSERT_EQ(picture.Items().size(), 3u);
    EXPECT_EQ(ScaleRemark(state), "2 of 5 standards lie outside the scale and are not drawn.");
    AppState drawn = FluorideState();
    EXPECT_EQ(ScaleRemark(drawn), "");
    drawn.SampleCount = 2;
    drawn.SampleE[0] = 30, drawn.SampleLogC[0] = -2.7f;
    drawn.SampleE[1] = 999, drawn.SampleLogC[1] = -2.7f;
    EXPECT_EQ(ScaleRemark(drawn), "1 of 2 samples lies outside the scale and is not drawn.");
    EXPECT_EQ(LineOf(picture, 1).substr(0, 9), "9080|6400");
    EXPECT_EQ(LineOf(picture, 2).substr(0, 9), "4780|3400");
    state.Graph = picture;
    EXPECT_EQ(
        CaliGraphWords(state),
        "E from -500 to 500 mV over LogC from -5 to -1. 5 standards, 2 outside the scale: LogC -5.00 at 500.0 mV, "
        "LogC -1.00 at -500.0 mV, LogC -3.00 at 500.1 mV, LogC -0.99 at 0.0 mV, LogC -3.00 at 0.0 mV.");
    picture.Clear();
    DrawPartlyLinear(state, picture);  // the points 1 and 2 alone are neighbours in the frame
    EXPECT_EQ(Joined(picture.Items().size(), LineOf(picture, 0)), "1|480|400|9080|6400|9");
}

TEST(CaliGraph, LineIsClippedAtBothEnds) {
    // Scale 2 by 1: 500 mV at y 400, −500 at 6400, 6 twips a mV; LogC −5 at x 480, 2150 twips a decade.
    const std::tuple<float, double, const char*> rows[] = {
        {-100, -300, "1|480|2200|9080|4600|13"},   // 200 mV, −200 mV
        {-500, -1500, "1|2630|400|6930|6400|13"},  // 500 mV at −4, −500 mV at −2
        {-200, -400, "1|1555|400|9080|4600|13"},   // 500 mV at −4.5
        {-250, -750, "1|480|400|9080|6400|13"},    // corner to corner
        {0, 100, "1|480|2800|9080|2800|13"},       // level
        {-10, 600, "1|"},                          // passes above the frame
        {0, 600, "0|"}};                           // level above it
    for (const auto& [slope, eo, line] : rows) {
        AppState state = Scaled(2, 1);
        state.CaliSlope = slope;
        state.CaliEo = eo;
        DisplayList picture;
        const bool done = DrawLine(state, picture, colour::LightMagenta);
        EXPECT_EQ(Joined(done, picture.Items().empty() ? "" : LineOf(picture, 0)), line);
    }
}

TEST(CaliGraph, BestCurveRunsThroughThePoints) {
    AppState state = Scaled(2, 1);
    state.FitA = 2;
    state.FitB = -60;
    state.FitC = -100;
    SetPoints(state, {{-2, 28}, {-1, -38}, {-4, 172}});
    DisplayList picture;
    DrawBestCurve(state, picture);
    ASSERT_EQ(picture.Items().size(), 100u);
    EXPECT_EQ(picture.Items().front().x1, 2630);           // LogC −4
    EXPECT_EQ(picture.Items().front().y1, 2368);           // 172 mV
    EXPECT_NEAR(picture.Items().back().x2, 9080, 0.001f);  // two units of a 32-bit x
    EXPECT_NEAR(picture.Items().back().y2, 3628, 0.001f);  // −38 mV
}

TEST(CaliGraph, SamplesFillUpAndStop) {
    AppState state = Scaled(2, 1);
    DisplayList picture;
    DrawSample(state, picture, 100, -3, colour::Red);
    EXPECT_EQ(LineOf(picture, 1), "4780|2750|4780|6400|4");
    DrawSample(state, picture, 600, -3, colour::Red);
    while (state.SampleCount < 101)
        DrawSample(state, picture, 0, -2, colour::Red);
    EXPECT_THROW(DrawSample(state, picture, 0, -2, colour::Red), RuntimeError);
    EXPECT_EQ(Joined(state.SampleCount, state.SampleE[1], state.SampleLogC[100], picture.Items().size()),
              "101|600|-2|200")
        << "a sample outside is stored, not drawn";
}

}  // namespace
}  // namespace kelvo::test
