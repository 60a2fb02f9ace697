#pragma once

#include <cstddef>
#include <utility>
#include <vector>

// The order a big cloud's points are stored in, so that an even sample of
// them is one range of the storage. The points fall into K fine slices:
// fine slice f holds the points i with i mod K = residue(f), in their
// order. The residues follow the golden-ratio sequence, so every run of
// fine slices from the first is an even sample; K is prime, so a scan's row
// width (a power of two above all) is seldom a multiple of it, and a
// sample seldom takes whole columns.
// Drawing slices [from, to) of k (k <= K) draws fine slices
// [from * K / k, to * K / k): one range, the same points in the same order
// as a whole frame draws them. A small cloud keeps its own order.
class SliceOrder {
public:
    // Below this many points a cloud keeps its order.
    static constexpr size_t kFrom = 131072;
    // About this many points to a fine slice.
    static constexpr size_t kFineSlicePoints = 65536;

    SliceOrder() = default;
    explicit SliceOrder(size_t points);

    bool isIdentity() const { return fine_ <= 1; }
    unsigned int fineSlices() const { return fine_; }
    size_t size() const { return points_; }
    size_t positionOf(size_t point) const;
    size_t pointAt(size_t position) const;
    // Positions [first, last) of slices [from, to) of k, 0 < k <= fineSlices().
    // In a cloud that keeps its order, k is 1.
    std::pair<size_t, size_t> range(unsigned int k, unsigned int from, unsigned int to) const;

    // Calls visit(point, position) for every point, in the points' order.
    // From point 'first' to 'last'; runs on two threads may share the work.
    template <typename Visit>
    void forEach(size_t first, size_t last, Visit visit) const {
        if (isIdentity()) {
            for (size_t i = first; i < last; ++i)
                visit(i, i);
            return;
        }
        std::vector<size_t> next(fine_);
        for (unsigned int r = 0; r < fine_; ++r)
            next[r] = start_[rank_[r]] + (first > r ? (first - r + fine_ - 1) / fine_ : 0);
        unsigned int r = static_cast<unsigned int>(first % fine_);
        for (size_t i = first; i < last; ++i) {
            visit(i, next[r]++);
            if (++r == fine_) r = 0;
        }
    }

private:
    size_t points_ = 0;
    unsigned int fine_ = 1;
    std::vector<unsigned int> residue_;  // by fine slice
    std::vector<unsigned int> rank_;     // fine slice by residue
    std::vector<size_t> start_;          // first position by fine slice, and the end
};
