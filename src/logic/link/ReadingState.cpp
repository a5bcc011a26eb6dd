#include "link/ReadingState.h"

#include <array>

namespace kelvo {
namespace {

constexpr std::array<const char*, 4> Inputs = {"electrode 1", "temperature sensor 1", "electrode 2",
                                               "temperature sensor 2"};

}  // namespace

std::string ReadingStateText(const ReadingState& state) {
    using enum ReadingState::Kind;
    switch (state.kind) {
        case Waiting: return "waiting for the first reading";
        case Held:
            return std::string(Inputs.at(static_cast<std::size_t>(state.channel))) +
                   " reads exactly 0: the first reading waits until it does not";
        case Averaging:
            return "averaging: " + std::to_string(state.filled) + " of " + std::to_string(state.wanted) + " readings";
        case Stale: return "the value is " + std::to_string(state.seconds) + " s old: no new reading since";
        case Live: break;
    }
    return {};
}

std::string ReadingNote(const ReadingState& state) {
    return state.IsLive() ? SteadyText(state.steadiness) : ReadingStateText(state);
}

}  // namespace kelvo
