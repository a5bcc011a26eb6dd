#include "statistics/ThreeColumns.h"

#include <cmath>
#include <cstddef>
#include <vector>

namespace kelvo {

std::optional<ThreeColumns> ThreeColumns::Of(std::span<const Three> rows) {
    constexpr double Least = 1e-9;  // what is left of a column beside the others, as a share of it
    ThreeColumns out;
    std::vector<Three> columns(rows.begin(), rows.end());
    for (std::size_t j = 0; j < 3; ++j) {
        double whole = 0, left = 0;
        for (std::size_t k = 0; k < rows.size(); ++k)
            whole += rows[k][j] * rows[k][j];
        for (std::size_t i = 0; i < j; ++i) {
            for (const Three& row : columns)
                out.r_[i][j] += row[i] * row[j];
            for (Three& row : columns)
                row[j] -= out.r_[i][j] * row[i];
        }
        for (const Three& row : columns)
            left += row[j] * row[j];
        if (!std::isfinite(whole) || !(left > Least * Least * whole)) return std::nullopt;
        out.r_[j][j] = std::sqrt(left);
        for (Three& row : columns)
            row[j] /= out.r_[j][j];
    }
    return out;
}

/// R⁻ᵀg.
Three ThreeColumns::Forward(const Three& g) const {
    Three v{};
    for (std::size_t j = 0; j < 3; ++j) {
        v[j] = g[j];
        for (std::size_t i = 0; i < j; ++i)
            v[j] -= r_[i][j] * v[i];
        v[j] /= r_[j][j];
    }
    return v;
}

Three ThreeColumns::Solve(std::span<const Three> rows, std::span<const double> y) const {
    Three theta{};
    std::vector<double> rest(y.begin(), y.end());
    // The residuals of the first solution are fitted once more, which brings back the digits that it has lost.
    for (int round = 0; round < 2; ++round) {
        Three sums{};
        for (std::size_t k = 0; k < rows.size(); ++k)
            for (std::size_t j = 0; j < 3; ++j)
                sums[j] += rows[k][j] * rest[k];
        Three step = Forward(sums);
        for (std::size_t j = 3; j-- > 0;) {
            for (std::size_t i = j + 1; i < 3; ++i)
                step[j] -= r_[j][i] * step[i];
            step[j] /= r_[j][j];
            theta[j] += step[j];
        }
        for (std::size_t k = 0; k < rows.size(); ++k)
            for (std::size_t j = 0; j < 3; ++j)
                rest[k] -= rows[k][j] * step[j];
    }
    return theta;
}

double ThreeColumns::Spread(const Three& g) const {
    const Three v = Forward(g);
    return v[0] * v[0] + v[1] * v[1] + v[2] * v[2];
}

}  // namespace kelvo
