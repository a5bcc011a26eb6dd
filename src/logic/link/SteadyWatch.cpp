#include "link/SteadyWatch.h"

#include <algorithm>
#include <cmath>

#include "text/Number.h"

namespace kelvo {
namespace {

constexpr double LongestGap = 3;        ///< seconds; readings come once a second
constexpr std::size_t FewestTold = 10;  ///< readings from which a drift is told
constexpr double SecondsPerMinute = 60;

}  // namespace

void SteadyWatch::Take(double seconds, double millivolts) {
    if (!window_.empty() && seconds - window_.back().seconds > LongestGap) window_.clear();
    window_.push_back({seconds, millivolts});
    if (window_.size() > Readings) window_.pop_front();
}

Steadiness SteadyWatch::Judge() const {
    if (window_.size() < FewestTold) return {};
    const auto n = static_cast<double>(window_.size());
    double meanTime = 0, mean = 0;
    for (const Point& point : window_) {
        meanTime += point.seconds / n;
        mean += point.millivolts / n;
    }
    double times = 0, products = 0, squares = 0;
    for (const Point& point : window_) {
        const double time = point.seconds - meanTime, value = point.millivolts - mean;
        times += time * time;
        products += time * value;
        squares += value * value;
    }
    if (times <= 0) return {};
    const double slope = products / times;
    const double variance = std::max(0.0, squares - slope * products) / (n - 2);
    const double error = std::sqrt(variance / times) * SecondsPerMinute;
    Steadiness told;
    told.drift = slope * SecondsPerMinute;
    // A step shows as both, and is a drift.
    if (error > LargestDrift && std::abs(*told.drift) < 2 * error) told.scatter = std::sqrt(variance);
    told.steady = window_.size() == Readings && std::abs(*told.drift) <= LargestDrift && !told.scatter;
    return told;
}

std::string SteadyText(const Steadiness& steadiness) {
    if (steadiness.steady) return "steady";
    std::string text = "not yet steady";
    if (!steadiness.drift) return text;
    if (steadiness.scatter) return text + ": scatters by " + Format(*steadiness.scatter, "#0.0") + " mV";
    if (std::abs(*steadiness.drift) <= SteadyWatch::LargestDrift) return text;
    return text + ": drifts " + Format(*steadiness.drift, "#0.0") + " mV/min";
}

}  // namespace kelvo
