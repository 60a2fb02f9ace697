#include "RefinePace.h"

#include <algorithm>
#include <cmath>

void RefinePace::restart() {
    *this = RefinePace();
}

void RefinePace::add(unsigned int slices, double ms) {
    const double s = slices;
    n_ += 1;
    sumS_ += s;
    sumT_ += ms;
    sumSS_ += s * s;
    sumST_ += s * ms;
    last_ = slices;
    lastMs_ = std::max(1.0, ms);
}

unsigned int RefinePace::slicesFor(double ms) const {
    if (n_ == 0) return 1;
    // In proportion to the last frame, until two frames of different sizes
    // show the fixed part.
    double fits = last_ * ms / lastMs_;
    const double spread = n_ * sumSS_ - sumS_ * sumS_;
    if (spread > 0) {
        const double perSlice = (n_ * sumST_ - sumS_ * sumT_) / spread;
        const double fixed = std::max(0.0, (sumT_ - perSlice * sumS_) / n_);
        if (perSlice > 0 && fixed < ms) fits = (ms - fixed) / perSlice;
    } else if (lastMs_ < ms) {
        fits = std::max(fits, last_ + 1.0);  // one more, to see what a slice costs
    }
    return unsigned(std::clamp(std::round(fits), 1.0, 4.0 * last_));
}
