#include "ph/RecordingRun.h"

#include "ph/RecordingFixture.h"
#include "support/Joined.h"
#include "text/RuntimeError.h"

namespace kelvo::test {
namespace {

class RecordingRunTest : public RecordingFixture {
 protected:
    RecordingRun Begun() {
        RecordingRun run(state, inputs);
        run.Begin(state.pHMode != 0 ? RecordingKind::Ph : RecordingKind::Ise, plan);
        return run;
    }
    /// A point as "value1,value2|mV|°C".
    std::string Sampled(RecordingRun& run) {
        EXPECT_EQ(run.Sample(clock.now), RecordingRun::Outcome::Taken);
        const RecordingPoint& point = run.Points().back();
        return Joined(point.value, point.mv, point.celsius);
    }
    RecordingInputs inputs = Inputs();
};

TEST_F(RecordingRunTest, WhatAPointHolds) {
    const std::tuple<const char*, std::function<void()>, const char*> rows[] = {
        {"one electrode, its sensor; the other as it is", [] {}, "5,0|118,0|25,20"},
        {"two electrodes, two sensors",
         [&] {
             plan.electrode[1] = true;
             state.Channel = {1, 0, 1, 1, 1};
             state.BufferCount[2] = 2;
             state.Buffers2 = {{0, 0, 0}, {0, 7, 10}, {0, 4, 170}};
             state.Reading = {-59, 799.6f, 170, 688.7f, 0};
         },
         "8,4|-59,170|20,30"},
        {"compensated to the sample's 10 °C more",
         [&] {
             plan.atc = {true, true};
             state.Reading = {177, 630, 90, 688.7f, 0};
         },
         "4.09716,5.52474|177,90|34.9788,30"},
        {"a sensor that is shorted compensates nothing",
         [&] {
             plan.atc = {true, false};
             state.Reading = {177, 0, 90, 688.7f, 0};
         },
         "4,5.5|177,90|110.949,30"},
        {"a sensor that is not there compensates nothing",
         [&] {
             plan.atc = {true, false};
             state.Reading = {177, 1000, 90, 688.7f, 0};
         },
         "4,5.5|177,90|-4.56044,30"},
        {"no buffers: the usual line", [&] { state.BufferCount[2] = 0; }, "4,-29|177,90|-4.56044,30"},
        {"no buffers: the line of the settings",
         [&] { folder.Put("KELVO.ini", "[Latest Calibration Value]\r\nV1=-0.02\r\nZ1=40\r\nV0=0\r\nZ0=3\r\n"); },
         "4,6|177,90|-4.56044,30"},
    };
    for (const auto& [name, prepare, expected] : rows) {
        prepare();
        RecordingRun run = Begun();
        EXPECT_EQ(Sampled(run), expected) << name;
    }
}

TEST_F(RecordingRunTest, IonConcentrations) {
    UseIse();
    RecordingRun run = Begun();
    EXPECT_EQ(Sampled(run), "10,0|50,0|25,0");
    ppmOf = [](float) -> double { throw RuntimeError(ErrorNumber::Overflow); };
    Sampled(run);
    ppmOf = [](float) { return 1e300; };
    Sampled(run);
    EXPECT_TRUE(std::isnan(run.Points()[1].value[0]) && std::isnan(run.Points()[2].value[0]));
    EXPECT_EQ(RecordingRow(state, run.Points()[2]), "3\tF - 2\t09:05:07\t50.00\tN/A\tN/A\t25.0\t77.0\tN/A");
    EXPECT_EQ(RecordingRow(state, run.Points()[0]), "1\tF - 0\t09:05:07\t50.00\t10\t5.26E-04\t25.0\t77.0\tN/A");
    state.CaliPoints = 1;
    Sampled(run);
    EXPECT_EQ(run.Facts(3).Get(fact::Quality1), "one-point calibration: no concentration to rely on");
    EXPECT_EQ(Joined(run.Facts(0).Get(fact::Ppm), run.Facts(1).Empty(), run.EstimatedPoints(0)), "10|1|1");
}

TEST_F(RecordingRunTest, OldFramesAreKnown) {
    const std::tuple<int, std::optional<double>, bool> rows[] = {
        {0, 2.0, false}, {0, 2.1, true}, {1, 3.0, false}, {8, 3.1, true}, {8, std::nullopt, true}};
    for (const auto& [interval, age, old] : rows) {
        plan.interval = interval;
        frameAge = age;
        RecordingRun run = Begun();
        run.Sample(clock.now);
        EXPECT_EQ(Joined(run.Quality(0).old, run.OldPoints()), old ? "1,0|1" : "0,0|0") << age.value_or(-1);
    }
}

TEST_F(RecordingRunTest, AnAverageThatHoldsAnOldFrameIsKnown) {
    state.ReadAvg = 3;
    RecordingRun run = Begun();
    std::string fresh, values;
    const double ages[] = {0.5, 9, 0.5, 0.5, 0.5};
    for (int i = 0; i < 5; ++i) {
        frameAge = ages[i];
        state.Reading[0] = i == 1 ? 0.0f : 118.0f;
        run.Sample(clock.now);
        fresh += run.Quality(i).Fresh() ? '+' : '-';
        values += Joined(std::lround(run.Points().back().mv[0])) + " ";
    }
    EXPECT_EQ(fresh, "+---+");
    EXPECT_EQ(values, "118 79 79 79 118 ") << "the first reading fills the window";
    state.ReadAvg = 4;
    state.Reading[0] = 40;
    run.ResizeAverage();
    run.Sample(clock.now);
    EXPECT_EQ(run.Points().back().mv[0], 40) << "a new window holds no zeros";
}

TEST(RecordingRowTest, RowsReadBack) {
    // time|values|mV|°C|electrodes|faulty
    const std::tuple<bool, const char*, const char*> rows[] = {
        {true, "1\t0\t09:05:07\t5.00\t118.00\t25.0\t77.0\tN/A\tN/A\t21.5\t70.7",
         "09:05:07|5,nan|118,nan|25,21.5|1,0|0"},
        {true, "1\t0\t09:05:07\t-0.50\t.5\t25.0", "09:05:07|-0.5,nan|0.5,nan|25,nan|1,1|3"},
        {true, "x", "|nan,nan|nan,nan|nan,nan|1,1|6"},
        {true, "1\t0\t09\tpH\t-\t+1\t\tN/A\tN/A\t.\t", "09|nan,nan|nan,nan|1,nan|1,0|3"},
        {false, "1\tx - 0\t09:05:07\t-120.50\t10\t5.26E-04\t25.0\t77.0\tN/A", "09:05:07|10,0|-120.5,0|25,0|1,0|0"},
        {false, "1\tF - 0\t09:05:07\t-120.50\t12\t5.26E-04\t25.0\t77.0\tN/A", "09:05:07|12,0|-120.5,0|25,0|1,0|0"},
        // 1.75E-05 · 18.9984 · 1000
        {false, "1\tF - 0\t09:05:07\t-120.50\t\t1.75E-05\t25.0\t77.0\tN/A", "09:05:07|0.332472,0|-120.5,0|25,0|1,0|0"},
        {false, "1\tx - 0\t09:05:07\t-120.50\t\t1.75E-05\t25.0\t77.0\tN/A", "09:05:07|nan,0|-120.5,0|25,0|1,0|0"},
        {false, "1\tF - 0\t09:05:07\t-120.50\t\t0.00E00\t25.0\t77.0\tN/A", "09:05:07|0,0|-120.5,0|25,0|1,0|0"},
        {false, "1\tF - 0\t09:05:07\t-120.50\tN/A\tN/A\tN/A\tN/A\tN/A", "09:05:07|nan,0|-120.5,0|nan,0|0,0|0"},
    };
    for (const auto& [ph, row, expected] : rows) {
        const RecordingCells cells = ReadRecordingRow(ph, row, StandardIons());
        const RecordingPoint& point = cells.point;
        EXPECT_EQ(Joined(point.time, point.value, point.mv, point.celsius, cells.electrode, cells.faulty), expected)
            << row;
    }
}

}  // namespace
}  // namespace kelvo::test
