#pragma once

#include <deque>
#include <string>

namespace kelvo {

/// Whether a displayed pH has been steady: the last `Readings` values lie within ±0.02 of their middle. Values count as
/// they are shown, so that the word agrees with the digits.
class SteadyWatch {
 public:
    static constexpr std::size_t Readings = 10;
    static constexpr int Hundredths = 2;

    void Clear() { window_.clear(); }
    /// @param shown  the value as text, "7.02"
    void Take(const std::string& shown);
    bool Steady() const;

 private:
    std::deque<int> window_;  ///< hundredths of pH
};

}  // namespace kelvo
