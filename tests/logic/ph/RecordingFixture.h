#pragma once

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "app/AppState.h"
#include "ph/RecordingRun.h"
#include "support/Scripted.h"
#include "tables/RowFactsFile.h"
#include "text/ScratchFolder.h"

namespace kelvo::test {

/// A recording on scripted frames: pH of electrode 1 with two buffers (7 at 0 mV, 4 at 177), sensor 1 at 25 °C,
/// electrode 2 off.
class RecordingFixture : public testing::Test {
 protected:
    RecordingFixture() {
        state.pHMode = -1;
        state.JournalPath = folder / "own/";
        state.IniPath = folder / "KELVO.ini";
        state.Channel = {1, 0, 1, 0, 0};
        state.Temperature = {"", "25.0", "20.0"};
        state.BufferCount = {2, 2, 0};
        state.Buffers1 = {{0, 0, 0}, {0, 7, 0}, {0, 4, 177}};
        state.PhCaliDate[1] = "24/11/2026 08:00";
        state.PhCaliTemp = {0, 25, 25};
        state.Reading = {118, 745.8f, 0, 745.8f, 0};
        plan.electrode = {true, false};
        plan.interval = plan.period = 0;
        plan.scale = 4;
        clock.now = {2026, 11, 25, 9, 5, 7};
    }

    /// The ion electrode: 1 ppm at 0 mV, ten times as much every 50 mV.
    void UseIse() {
        state.pHMode = 0;
        state.Channel = {0, 1, 1, 0, 0};
        state.IonIndex = 10;
        state.Reading[0] = 50;
        plan.electrode = {};
        plan.scale = 2;
    }

    RecordingInputs Inputs() {
        return {[this](float mv) { return ppmOf(mv); },
                [this] { return frameAge; },
                [this] { return slept; },
                {FactsHeading, FactsLine, {}}};
    }

    ScratchFolder folder;
    AppState state;
    ScriptedPrompts prompts;
    ScriptedFiles files;
    FixedClock clock;
    RecordingPlan plan;
    std::function<double(float)> ppmOf = [](float mv) { return std::pow(10.0, double{mv} / 50); };
    std::optional<double> frameAge = 0.4;
    double slept = 0;
};

}  // namespace kelvo::test
