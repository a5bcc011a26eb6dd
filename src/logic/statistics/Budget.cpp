#include "statistics/Budget.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

#include "statistics/Figures.h"
#include "statistics/StudentT.h"

namespace kelvo {
namespace {

/// So many degrees of freedom are as good as infinitely many.
constexpr int ManyFreedom = 1000000;

}  // namespace

double Budget::Combined() const {
    double squares = 0;
    for (const Contribution& part : parts_)
        squares += part.u * part.u;
    return std::sqrt(squares);
}

int Budget::Freedom() const {
    const double whole = Combined();
    if (whole == 0) return 0;
    double inverse = 0;
    std::map<int, std::pair<double, int>> shared;  // share and degrees by estimate
    for (const Contribution& part : parts_) {
        const double share = (part.u / whole) * (part.u / whole);
        if (part.freedom <= 0) continue;
        if (part.estimate == 0)
            inverse += share * share / part.freedom;
        else
            shared[part.estimate] = {shared[part.estimate].first + share, part.freedom};
    }
    for (const auto& [estimate, part] : shared)
        inverse += part.first * part.first / part.second;
    // A hair below a whole number is that number: rounding alone has made it so.
    constexpr double Hair = 1e-9;
    if (inverse * ManyFreedom <= 1) return 0;
    return std::max(1, static_cast<int>(1 / inverse + Hair));
}

double Budget::Coverage() const {
    const int freedom = Freedom();
    return StudentT(freedom > 0 ? freedom : ManyFreedom);
}

double Budget::Share(std::size_t i) const {
    const double whole = Combined();
    const double part = parts_.at(i).u;
    constexpr double Percent = 100;
    return whole > 0 ? Percent * (part / whole) * (part / whole) : 0;
}

std::string Budget::CoverageText() const {
    const int freedom = Freedom();
    if (freedom == 0) return "k " + WithPlaces(Coverage(), 2);
    return "t " + WithPlaces(Coverage(), 2) + ", " + std::to_string(freedom) +
           (freedom == 1 ? " degree of freedom" : " degrees of freedom");
}

}  // namespace kelvo
