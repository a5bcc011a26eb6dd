#include "statistics/StudentT.h"

#include <boost/math/distributions/students_t.hpp>

namespace kelvo {

double StudentT(int freedom, double confidence) {
    // In doubles throughout: the wider type that the library takes by default costs ten times as much for digits
    // that no screen shows.
    namespace policies = boost::math::policies;
    using InDoubles = policies::policy<policies::promote_double<false>>;
    const boost::math::students_t_distribution<double, InDoubles> distribution(freedom);
    return boost::math::quantile(boost::math::complement(distribution, (1 - confidence) / 2));
}

}  // namespace kelvo
