#pragma once

#include <string>

#include "link/SteadyWatch.h"

namespace kelvo {

/// How much the value that a reading screen shows is worth just now. `LiveReading::State` tells it; in a window,
/// `ShowReadingState` greys the boxes and fills the status line by it, so that nothing but `Live` looks like a
/// measurement. A value in any state may still be accepted: the analyst decides, knowing what it is.
struct ReadingState {
    enum class Kind {
        Waiting,    ///< no reading yet since the link was started: there is no value
        Held,       ///< input `channel` reads exactly 0, which holds the first reading back: there is no value
        Averaging,  ///< of the window's `wanted` places only `filled` hold readings; the rest are still averaged away
        Live,       ///< a measured value, averaged over as many readings as were asked for
        Stale,      ///< the frame it stems from is `seconds` old
    };
    /// Age of a frame, in seconds, above which its value is stale.
    static constexpr double StaleSeconds = 2;

    Kind kind = Kind::Waiting;
    int seconds = 0;             ///< Stale: whole seconds
    int filled = 0, wanted = 0;  ///< Averaging
    int channel = -1;            ///< Held: 0 electrode 1, 1 sensor 1, 2 electrode 2, 3 sensor 2
    Steadiness steadiness{};     ///< Live: whether the potential stands still

    /// Whether the value may look like a measurement.
    bool IsLive() const { return kind == Kind::Live; }
    bool operator==(const ReadingState&) const = default;
};

/// The line for the status bar, empty when live: "waiting for the first reading", "averaging: 3 of 10 readings",
/// "the value is 12 s old: no new reading since", "electrode 2 reads exactly 0: ...".
std::string ReadingStateText(const ReadingState& state);
/// The same with a word on how steady a live value is: "steady", "not yet steady: drifts -3.1 mV/min".
std::string ReadingNote(const ReadingState& state);

}  // namespace kelvo
