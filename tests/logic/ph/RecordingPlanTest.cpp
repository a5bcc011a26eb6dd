#include "ph/RecordingPlan.h"

#include <gtest/gtest.h>

#include "ph/RecordingSchedule.h"
#include "support/Joined.h"

namespace kelvo::test {
namespace {

TEST(RecordingPlanTest, IntervalsAndTheTimeTheyCount) {
    // The times are those of points 1, 59 and 200.
    const std::tuple<int, const char*, double, const char*> rows[] = {
        {-1, "2 Sec.", 2, "00:00:02|00:01:58|00:06:40"},     {1, "5 Sec.", 5, "00:00:05|00:04:55|00:16:40"},
        {2, "10 Sec.", 10, "00:00:10|00:09:50|00:33:20"},    {3, "30 Sec.", 30, "00:00:30|00:29:30|01:40:00"},
        {4, "1 Min.", 60, "00:01:00|00:59:00|03:20:00"},     {5, "2 Min.", 120, "00:02:00|01:58:00|06:40:00"},
        {6, "5 Min.", 300, "00:05:00|04:55:00|16:40:00"},    {7, "10 Min.", 600, "00:10:00|09:50:00|33:20:00"},
        {8, "30 Min.", 1800, "00:30:00|29:30:00|100:00:00"}, {9, "2 Sec.", 2, "00:00:02|00:01:58|00:06:40"},
    };
    for (const auto& [index, text, seconds, after] : rows) {
        const RecordingInterval& i = IntervalRow(index);
        EXPECT_EQ(Joined(i.text, i.Seconds(), ElapsedAt(1, i), ElapsedAt(59, i), ElapsedAt(200, i)),
                  Joined(text, seconds, after));
    }
    EXPECT_EQ(ElapsedAt(0, IntervalRow(8)), "00:00:00");
}

TEST(RecordingPlanTest, PointsAndScales) {
    std::string periods, files;
    for (const int index : {-1, 0, 1, 2, 3, 4})
        periods += Joined(PointsOfPeriod(index)) + " ";
    for (const int points : {1, 20, 21, 50, 51, 101, 200, 201})
        files += Joined(PointsOfFile(points, 7)) + " ";
    EXPECT_EQ(periods + files, "20 20 50 100 200 20 20 20 50 50 100 200 200 7 ");
    const auto scales = [](RecordingKind kind) {
        std::string all;
        for (int i = -1; i < 6; ++i)
            all += Joined(ScaleRow(kind, i).low, ScaleRow(kind, i).span) + " ";
        return all;
    };
    EXPECT_EQ(scales(RecordingKind::Ph), "0|14 0|7 3|7 4|3.5 7|7 0|14 0|14 ");
    EXPECT_EQ(scales(RecordingKind::Ise), "0|10 0|10 0|100 0|1000 0|10000 0|10 0|10 ");
}

/// Points taken at these moments, as "ticks/point/missed".
std::string Taken(RecordingSchedule& schedule, std::initializer_list<double> moments) {
    std::string all;
    for (const double now : moments) {
        const auto due = schedule.Take(now);
        all += Joined(due.ticks, int{due.point}, due.missed) + " ";
        if (due.late > 0.5) all += "late " + Joined(due.late) + " ";
    }
    return all;
}

TEST(RecordingScheduleTest, TicksStayOnTheirGrid) {
    RecordingSchedule schedule;
    schedule.Begin(IntervalRow(0));
    schedule.Run(10);
    EXPECT_EQ(Taken(schedule, {11.9, 12, 12.1, 13.999, 15.9, 16}), "0|0|0 1|1|0 0|0|0 1|1|0 0|0|0 1|1|0 ");
    EXPECT_EQ(schedule.NextTick(), 18) << "a late tick delays no later one";
    EXPECT_EQ(Taken(schedule, {25}), "4|1|3 late 1 ") << "four fell due, one is taken";
    EXPECT_EQ(schedule.NextTick(), 26);
    schedule.Stop();
    EXPECT_EQ(Taken(schedule, {40}), "0|0|0 ");
}

TEST(RecordingScheduleTest, AStopKeepsTheMinutesCounted) {
    RecordingSchedule schedule;
    schedule.Begin(IntervalRow(6));  // 5 minutes
    schedule.Run(0);
    EXPECT_EQ(Taken(schedule, {60, 120, 180}), "1|0|0 1|0|0 1|0|0 ");
    schedule.Stop();
    schedule.Run(1000);
    EXPECT_EQ(schedule.ToPoint(1000), 120);
    EXPECT_EQ(Taken(schedule, {1060, 1120, 1180}), "1|0|0 1|1|0 1|0|0 ");
    EXPECT_EQ(Taken(schedule, {1780}), "10|1|1 late 60 ") << "slept over two points";
    EXPECT_EQ(Taken(schedule, {1840, 1900, 1960, 2020}), "1|0|0 1|0|0 1|0|0 1|1|0 ");
}

}  // namespace
}  // namespace kelvo::test
