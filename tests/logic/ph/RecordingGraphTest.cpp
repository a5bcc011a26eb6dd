#include "ph/RecordingGraph.h"

#include <limits>

#include "core/DisplayListSvg.h"
#include "ph/RecordingFixture.h"
#include "ph/RecordingWords.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

constexpr float Left = 950, Top = 550;

class RecordingGraphTest : public RecordingFixture {
 protected:
    /// Two electrodes, N 20, with these pairs of values.
    RecordingRun Run(const std::vector<std::array<float, 2>>& values, int pointCount = 20) {
        std::vector<RecordingPoint> points;
        for (const auto& value : values) {
            points.emplace_back();
            points.back().value = value;
        }
        RecordingRun run(state, inputs);
        run.Fill(RecordingKind::Ph, pointCount, {true, true}, points);
        return run;
    }
    /// Items from the first mark or line of point `n` on, as "kind colour x,y[,x2,y2]" in the plot's own twips.
    static std::string Drawn(const RecordingRun& run, RecordingScale scale, int n) {
        DisplayList list;
        DrawRecordingPoint(run, scale, n, list);
        std::string all;
        for (const DisplayItem& item : list.Items()) {
            const bool line = item.kind == DisplayItem::Kind::Line;
            all += line ? "line " : item.shape == DisplayItem::Shape::Round ? "round " : "square ";
            all += Joined(item.colour, item.x1 - Left, item.y1 - Top) +
                   (line ? "|" + Joined(item.x2 - Left, item.y2 - Top) : "") + " ";
        }
        return all;
    }
    RecordingInputs inputs = Inputs();
};

TEST_F(RecordingGraphTest, PointsAndLines) {
    const auto none = std::numeric_limits<float>::quiet_NaN();
    const RecordingRun run = Run({{0, 14}, {7, 3.5f}, {20, -2}, {none, 7}, {7, 7}});
    const RecordingScale scale{0, 14};
    // The third lies beyond the scale and is drawn at its edge; a point without a value has no mark.
    const char* const drawn[] = {
        "round 12|0|5600 square 9|0|0 ",
        "line 12|0|5600|426.5|2800 round 12|426.5|2800 line 9|0|0|426.5|4200 square 9|426.5|4200 ",
        "line 12|426.5|2800|853|0 round 12|853|0 line 9|426.5|4200|853|5600 square 9|853|5600 ",
        "line 9|853|5600|1279.5|2800 square 9|1279.5|2800 ",
        "round 12|1706|2800 line 9|1279.5|2800|1706|2800 square 9|1706|2800 "};
    for (int n = 0; n < 5; ++n)
        EXPECT_EQ(Drawn(run, scale, n), drawn[n]);
    EXPECT_EQ(Drawn(run, {4, 3.5f}, 4), "round 12|1706|800 line 9|1279.5|800|1706|800 square 9|1706|800 ");
    EXPECT_EQ(
        RecordingWords(run),
        "5 of 21 points. Electrode 1: lowest 0.00, highest 20.00, last 7.00 pH. Electrode 2: lowest -2.00, highest "
        "14.00, last 7.00 pH.");
    EXPECT_EQ(Joined(PointsBeyond(run, scale), PointsBeyond(run, {7, 7})), "2|4");
}

TEST_F(RecordingGraphTest, AxesAreLabelled) {
    const std::tuple<RecordingKind, RecordingScale, int, const char*> rows[] = {
        {RecordingKind::Ph,
         {4, 3.5f},
         50,
         "4,4.5,5,5.5,6,6.5,7,7.5,0,5,10,15,20,25,30,35,40,45,50,pH,Data Point,Electrode 1,"},
        {RecordingKind::Ise,
         {0, 1000},
         200,
         "0,200,400,600,800,1000,0,20,40,60,80,100,120,140,160,180,200,ppm,Data Point,Electrode 1,"}};
    for (const auto& [kind, scale, pointCount, wanted] : rows) {
        RecordingRun run(state, inputs);
        run.Fill(kind, pointCount, {true, false}, {});
        DisplayList list;
        SetTiles(run, scale, list);
        std::string texts;
        for (const DisplayItem& item : list.Items()) {
            if (item.kind == DisplayItem::Kind::Text) texts += item.text + ",";
            EXPECT_TRUE(item.x1 >= 0 && item.x1 <= recording::Width && item.y1 >= 0 && item.y1 <= recording::Height);
        }
        EXPECT_EQ(texts, wanted);
    }
}

TEST_F(RecordingGraphTest, MarksKeepApart) {
    EXPECT_EQ(Joined(MarkStep(20), MarkStep(50), MarkStep(100), MarkStep(200)), "1|1|2|4");
    const RecordingRun run = Run(std::vector<std::array<float, 2>>(101, {5, 6}), 100);
    DisplayList list;
    SetTiles(run, {0, 14}, list);
    int large[2] = {}, small[2] = {};
    for (const DisplayItem& item : list.Items())
        if (item.kind == DisplayItem::Kind::Dot && item.y1 > Top)
            ++(item.size > 60 ? large : small)[item.shape == DisplayItem::Shape::Square];
    EXPECT_EQ(Joined(large[0], large[1], small[0], small[1]), "51|51|50|50");
}

TEST(DisplayListSvgTest, WritesWhatIsDrawn) {
    DisplayList list;
    list.Line(10, 20, 30.5f, 20, colour::LightRed, 2);
    list.Mark(100, 200, colour::LightBlue, DisplayItem::Shape::Square, 90, true);
    list.Mark(100, 200, 7, DisplayItem::Shape::Round, 90, false);
    list.Text(5, 6, "a<b & \"c\"", 8);
    const std::string svg = DisplayListSvg(list, 9600, 7200, "x > y");
    for (const char* part :
         {R"(viewBox="0 0 9600 7200")", "<title>x &gt; y</title>",
          R"(<line x1="10" y1="20" x2="30.5" y2="20" stroke="#ff0000" stroke-width="30"/>)",
          R"(<rect x="55" y="155" width="90" height="90" fill="#ffffff" stroke="#0000ff" stroke-width="15"/>)",
          R"(<circle cx="100" cy="200" r="45" fill="#c0c0c0"/>)", ">a&lt;b &amp; &quot;c&quot;</text>", "</svg>"})
        EXPECT_NE(svg.find(part), std::string::npos) << part << "\n" << svg;
}

}  // namespace
}  // namespace kelvo::test
