#include "simulator/Simulation.h"

#include <gtest/gtest.h>

#include <cmath>
#include <map>

#include "link/Frame.h"

namespace kelvo::simulator {
namespace {

using Bytes = std::vector<std::uint8_t>;
const Bytes Request = {0x02, 0x00};

/// A simulation without noise, and a clock to drive it.
struct Bench {
    Simulation simulation{7};
    double now = 100;

    Bench() {
        for (Electrode& electrode : simulation.instrument.electrodes)
            electrode.noise = 0;
        simulation.SetTime(now);
    }
    void Execute(const std::string& line) { EXPECT_EQ(simulation.Command(line), "") << line; }
    void Pass(double seconds) { simulation.SetTime(now += seconds); }
    /// A request, and what has come back a second later.
    Bytes Ask() {
        simulation.Receive(Request);
        Pass(1);
        return simulation.TakeDue();
    }
    std::array<float, 5> Reading() {
        Bytes frame = Ask();
        EXPECT_EQ(frame.size(), FrameBytes);
        frame.resize(FrameBytes);
        std::array<float, 5> reading{};
        DecodeFrame(std::span<const std::uint8_t>(frame).first<FrameBytes>(), reading);
        return reading;
    }
};

TEST(Simulation, AnswersWithWhatTheElectrodesSee) {
    // Electrode 1: Eo -120, slope -58.2; electrode 2: 414 at pH 0, 58.6 a unit; both at 25 °C.
    const std::tuple<std::vector<const char*>, double, double, double> rows[] = {
        {{"ion Cl", "immerse 3545.27 ppm"}, -61.8, 3.8, 25},
        {{"buffer 4.00"}, 54.6, 179.6, 25},
        {{"immerse 0", "add 10 mL of 1e-2 mol/L to 90 mL"}, 54.6, 3.8, 25},
        {{"electrode 1 eo 300", "electrode 1 slope 59.16"}, 122.5, 3.8, 25},
        {{"temperature 40", "unplug sensor 2"}, 63.4, -16.8, 40},
        {{"temperature 33", "unplug sensor 2"}, 59.3, -7.2, 33},
    };
    for (const auto& [orders, first, second, celsius] : rows) {
        Bench bench;
        for (const char* order : orders)
            bench.Execute(order);
        bench.Pass(60);
        const auto reading = bench.Reading();
        EXPECT_NEAR(reading[0], first, 0.051) << orders[0];
        EXPECT_NEAR(reading[2], second, 0.051) << orders[0];
        // A tenth of the sensor's ordinate is at most 0.016 °C.
        EXPECT_NEAR(SensorToCelsius(StandardSensor(), reading[1]), celsius, 0.02);
        EXPECT_EQ(SensorToCelsius(StandardSensor(), reading[3]) < 0, celsius > 25) << "unplugged reads below zero";
    }
}

TEST(Simulation, ElectrodesFollowWithTheirTimeAndDrift) {
    Bench bench;
    bench.Execute("electrode 1 response 10");
    bench.Execute("immerse 1e-2");
    bench.Pass(10 - 1);
    EXPECT_NEAR(bench.Reading()[0], 54.6 - 58.2 * (1 - std::exp(-0.9)), 0.051) << "asked after nine seconds";
    bench.Pass(200);
    bench.Execute("electrode 1 drift 36");
    bench.Pass(100);
    EXPECT_NEAR(bench.Reading()[0], -3.6 + 1.0, 0.051);
}

TEST(Simulation, FaultsSpoilWhatTheySay) {
    // The lengths of three answers, a second after each request.
    const std::map<const char*, std::array<std::size_t, 3>> rows = {{"fault none", {24, 24, 24}},
                                                                    {"fault silence 2", {0, 0, 24}},
                                                                    {"fault half 1", {12, 24, 24}},
                                                                    {"fault late 1.5 1", {0, 48, 24}},
                                                                    {"fault noise 3 2", {27, 27, 24}}};
    for (const auto& [order, lengths] : rows) {
        Bench bench;
        bench.Execute(order);
        for (const std::size_t length : lengths)
            EXPECT_EQ(bench.Ask().size(), length) << order;
    }
    Bench bench;
    bench.Execute("fault last 0D 1");
    EXPECT_EQ(bench.Ask().back(), 0x0D);
    EXPECT_EQ(bench.Ask().back(), 0x04);
    bench.Execute("drop");
    EXPECT_TRUE(bench.Ask().empty() && !bench.simulation.lineUp);
}

TEST(Simulation, RequestsMayComeInPiecesAndAmongNoise) {
    // Other requests are taken whole and not answered.
    for (const auto& [bytes, answers] : std::map<Bytes, std::size_t>{{{0x55, 0xAA, 0x02, 0x00, 0x02, 0x00}, 2},
                                                                     {{0x18, 0x00, 0x01, 0x02, 0x00, 0x02, 0x02, 0}, 1},
                                                                     {{0x02, 0x07}, 0}}) {
        Bench bench;
        for (const std::uint8_t byte : bytes)
            bench.simulation.Receive({&byte, 1});
        bench.Pass(1);
        EXPECT_EQ(bench.simulation.TakeDue().size(), answers * FrameBytes);
    }
}

TEST(Simulation, ScriptsWaitInModelTimeAndRunsRepeat) {
    const auto run = [&](double pause) {
        Simulation simulation(42);
        simulation.step = 1;
        simulation.AddScript({"electrode 1 noise 0.5", "wait 3", "fault random 0.3", "wait 5", "immerse 1e-2"});
        Bytes all;
        for (int i = 0; i < 40; ++i) {
            simulation.SetTime(i * (1 + pause));
            simulation.Receive(Request);
            simulation.SetTime((i + 1) * (1 + pause));
            const Bytes due = simulation.TakeDue();
            all.insert(all.end(), due.begin(), due.end());
        }
        EXPECT_EQ(simulation.ModelTime(), 40);
        EXPECT_EQ(simulation.instrument.beaker.molar, 1e-2);
        return all;
    };
    EXPECT_EQ(run(0), run(0.7)) << "with steps a run repeats byte for byte, whatever the real time";
}

TEST(Simulation, BadCommandsAreToldAndChangeNothing) {
    for (const char* line :
         {"imerse 1", "immerse", "immerse 1 mg", "immerse -1", "immerse nan", "buffer 77", "electrode 1 size 4",
          "add 10 mL of 1000", "add 10 L of 1000 ppm to 100 mL", "add 1 mL of 1 ppm to 0 mL", "electrode 3 eo 1",
          "fault odd", "fault last 1FF", "fault late", "fault silence 0", "ion Xx", "plug 1", "temperature 1e9"}) {
        Bench bench;
        EXPECT_TRUE(bench.simulation.Command(line).starts_with("error: ")) << line;
        EXPECT_NEAR(bench.Reading()[0], 54.6, 0.051) << line;
    }
    Bench bench;
    EXPECT_EQ(bench.simulation.Command("immerse 1e-2 # ten times more"), "");
    EXPECT_TRUE(bench.simulation.Command("show").starts_with("F 0.01 mol/L (190 ppm), pH 7.00, 25.0 °C"));
}

}  // namespace
}  // namespace kelvo::simulator
