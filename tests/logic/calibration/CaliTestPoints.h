#pragma once

#include <vector>

#include "app/AppState.h"
#include "text/CodeOf.h"

namespace kelvo::test {

constexpr std::int16_t Fluoride = 10;

struct Point {
    float logC, e, ppm = 0, molar = 0;
};

inline void SetPoints(AppState& state, const std::vector<Point>& points) {
    state.CaliPoints = static_cast<std::int16_t>(points.size());
    state.CaliLogC = state.CaliE = state.CaliPpm = state.CaliMolar = {0};
    for (const Point& point : points) {
        state.CaliLogC.push_back(point.logC);
        state.CaliE.push_back(point.e);
        state.CaliPpm.push_back(point.ppm);
        state.CaliMolar.push_back(point.molar);
    }
}

/// A fluoride electrode of −58 mV per decade, standards from the strongest down; Eo = −128.182 mV.
inline AppState FluorideState() {
    AppState state;
    state.IonIndex = Fluoride;
    state.MvScaleIndex = 2;
    state.LogCScaleIndex = 1;
    SetPoints(state, {{-1.279f, -54, 1000, 0.0526f},
                      {-2.279f, 4, 100, 0.00526f},
                      {-3.279f, 62, 10, 0.000526f},
                      {-4.279f, 120, 1, 0.0000526f}});
    return state;
}

}  // namespace kelvo::test
