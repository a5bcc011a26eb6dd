#pragma once

#include <string>
#include <vector>

namespace kelvo {

/// One of the independent parts that an uncertainty is made of.
struct Contribution {
    std::string name;    ///< "calibration line"
    std::string source;  ///< what it was found from, "4 standards, s 0.52 mV"
    double u = 0;      ///< standard uncertainty of the result by this part alone, 0 or above, in the unit of the result
    int freedom = 0;   ///< degrees of freedom behind u; 0: taken as known
    int estimate = 0;  ///< parts that rest on one and the same estimated scatter have one number; 0: on its own
};

/// What the uncertainty of a result is made of, and the 95 % interval that follows.
///
/// The parts add up as squares, u² = Σuᵢ². Their degrees of freedom give an effective number, u⁴/Σ(uᵢ⁴/νᵢ) (Welch and
/// Satterthwaite; JCGM 100:2008, G.4.1), that is cut to a whole one, and the interval is ± t·u with Student's t of it.
/// Parts that rest on one estimate (`Contribution::estimate`) are wrong together, so they count there as one: a line
/// and readings that are taken to scatter as its standards do keep the line's own degrees. Source: EURACHEM/CITAC Guide
/// CG 4, chapters 8 and 9. u of 3 and 4 with 4 and 6 degrees: u 5, 625/(81/4 + 256/6) = 9.9, 9 degrees, t 2.262,
/// ± 11.3.
class Budget {
 public:
    Budget() = default;
    explicit Budget(std::vector<Contribution> parts) : parts_(std::move(parts)) {}

    void Add(Contribution part) { parts_.push_back(std::move(part)); }
    const std::vector<Contribution>& Parts() const { return parts_; }

    /// One standard deviation of the result.
    double Combined() const;
    /// Effective degrees of freedom, at least 1; 0 when all parts that count are taken as known.
    int Freedom() const;
    /// The factor of the 95 % interval: Student's t of `Freedom`, 1.96 where that is 0.
    double Coverage() const;
    double HalfWidth() const { return Coverage() * Combined(); }
    /// The i-th part's share of the square of the whole, %; 0 where the whole is 0.
    double Share(std::size_t i) const;
    /// "t 2.26, 9 degrees of freedom", or "k 1.96".
    std::string CoverageText() const;

 private:
    std::vector<Contribution> parts_;
};

}  // namespace kelvo
