#pragma once

#include <deque>
#include <optional>
#include <string>

namespace kelvo {

/// How a potential has moved over its last readings.
struct Steadiness {
    bool steady = false;
    std::optional<double> drift;    ///< mV per minute; none while too few readings stand to tell it
    std::optional<double> scatter;  ///< mV about the line of the drift, where it is too large to tell the drift
    bool operator==(const Steadiness&) const = default;
};

/// "steady"; "not yet steady"; "not yet steady: drifts -3.1 mV/min"; "not yet steady: scatters by 0.8 mV".
std::string SteadyText(const Steadiness& steadiness);

/// Whether a potential is steady, by one rule for buffers, samples and the display: the least-squares slope of the last
/// `Readings` is within ±`LargestDrift`, and they scatter so little that the slope is known to ±`LargestDrift` (one
/// standard error; readings a second apart may scatter by 0.26 mV). 0.6 mV/min is 0.01 pH a minute; a drift of 0.26 pH
/// a minute, 15 mV, lies 24 standard errors off.
class SteadyWatch {
 public:
    static constexpr std::size_t Readings = 20;
    static constexpr double LargestDrift = 0.6;  ///< mV per minute

    void Clear() { window_.clear(); }
    /// @param seconds  when the reading came, by a steady clock; one that comes late begins a new window
    void Take(double seconds, double millivolts);
    Steadiness Judge() const;

 private:
    struct Point {
        double seconds, millivolts;
    };
    std::deque<Point> window_;
};

}  // namespace kelvo
