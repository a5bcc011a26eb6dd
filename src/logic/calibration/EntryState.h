#pragma once

#include <cstdint>
#include <string>

namespace kelvo {

/// An entry of points, or a reading, in progress.
struct EntryState {
    bool OnLine = false;  ///< points are read from the interface, not typed
    bool Cancelled = false;
    bool ReadingActive = false;              ///< false after Cancel in a point, slope or reading dialog
    std::string ReadingText;                 ///< box text on its way to and from the reading dialog
    std::int16_t PointRunning = 0;           ///< 1 while a stability wait runs
    std::string PointTitle, PointPrompt;     ///< title and prompt of the point dialog
    bool SensorWarned = false;               ///< the sensor message has been shown in this entry
    std::string KnownSlope, KnownSlopeTemp;  ///< boxes 0 and 1 of frmknosp, as they were left
};

}  // namespace kelvo
