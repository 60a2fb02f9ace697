#include "SliceOrder.h"

#include <algorithm>
#include <cmath>

namespace {

bool isPrime(unsigned int k) {
    if (k < 2) return false;
    for (unsigned int d = 2; d * d <= k; ++d)
        if (k % d == 0) return false;
    return true;
}

// Never fewer fine slices than this: the first slice of a cloud just above
// kFrom is still a few thousand points, a sample and not the whole.
constexpr unsigned int kFewest = 61;

}  // namespace

SliceOrder::SliceOrder(size_t points) : points_(points) {
    if (points < kFrom) {
        start_ = {0, points};
        return;
    }
    unsigned int k = static_cast<unsigned int>(
        std::max<size_t>(kFewest, (points + kFineSlicePoints - 1) / kFineSlicePoints));
    while (!isPrime(k))
        ++k;
    fine_ = k;
    // Steps of K / golden ratio: any run of residues from the first spreads
    // evenly over 0..K-1. K is prime, so the steps reach every residue.
    const unsigned int step =
        static_cast<unsigned int>(std::lround(k * (std::sqrt(5.0) - 1.0) / 2.0));
    residue_.resize(k);
    rank_.resize(k);
    start_.resize(k + 1);
    start_[0] = 0;
    for (unsigned int f = 0; f < k; ++f) {
        const unsigned int r =
            static_cast<unsigned int>((static_cast<unsigned long long>(f) * step) % k);
        residue_[f] = r;
        rank_[r] = f;
        start_[f + 1] = start_[f] + points / k + (r < points % k ? 1 : 0);
    }
}

size_t SliceOrder::positionOf(size_t point) const {
    if (isIdentity()) return point;
    return start_[rank_[point % fine_]] + point / fine_;
}

size_t SliceOrder::pointAt(size_t position) const {
    if (isIdentity()) return position;
    const size_t f = static_cast<size_t>(std::upper_bound(start_.begin(), start_.end(), position) -
                                         start_.begin()) -
                     1;
    return residue_[f] + fine_ * (position - start_[f]);
}

std::pair<size_t, size_t> SliceOrder::range(unsigned int k, unsigned int from,
                                            unsigned int to) const {
    const auto fineAt = [&](unsigned int slice) {
        return static_cast<size_t>(static_cast<unsigned long long>(slice) * fine_ / k);
    };
    return {start_[fineAt(from)], start_[fineAt(to)]};
}
