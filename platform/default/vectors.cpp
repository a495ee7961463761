#include <cmath>
#include <limits>

#include "platform/utility.h"

double vect_distance(const double* a, const double* b, int n) {
    if (n <= 0)
        return 0.0;
    if (a == nullptr || b == nullptr)
        return std::numeric_limits<double>::quiet_NaN();
    double sum = 0.0;
    for (int i = 0; i < n; ++i)
        sum += (a[i] - b[i]) * (a[i] - b[i]);
    return std::sqrt(sum);
}
