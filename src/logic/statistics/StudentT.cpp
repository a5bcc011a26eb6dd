#include "statistics/StudentT.h"

#include <boost/math/distributions/chi_squared.hpp>
#include <boost/math/distributions/fisher_f.hpp>
#include <boost/math/distributions/students_t.hpp>

namespace kelvo {
namespace {

// In doubles throughout: the wider type that the library takes by default costs ten times as much for digits that no
// screen shows.
namespace policies = boost::math::policies;
using InDoubles = policies::policy<policies::promote_double<false>>;

}  // namespace

double StudentT(int freedom, double confidence) {
    const boost::math::students_t_distribution<double, InDoubles> distribution(freedom);
    return boost::math::quantile(boost::math::complement(distribution, (1 - confidence) / 2));
}

double FisherF(int upper, int lower, double probability) {
    const boost::math::fisher_f_distribution<double, InDoubles> distribution(upper, lower);
    return boost::math::quantile(boost::math::complement(distribution, 1 - probability));
}

double ChiSquared(int freedom, double probability) {
    const boost::math::chi_squared_distribution<double, InDoubles> distribution(freedom);
    return boost::math::quantile(distribution, probability);
}

}  // namespace kelvo
